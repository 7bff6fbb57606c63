// A stand-in for the vertical blank of displays that tell their rate but not their moments.
#pragma once

namespace rastel::platform {

// Sleeps until the next tick of a clock of that rate; with no rate, or a senseless one, returns at once.
void WaitForTick(int ticksPerSecond);

}   // namespace rastel::platform
