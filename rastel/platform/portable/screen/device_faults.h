// What tests ask devices to suffer.
#pragma once

#include <cstdint>

namespace rastel::platform {

// Rises whenever every device surface is to count as lost. A surface remembers the number it was made or restored at.
std::uint64_t DeviceSurfaceGeneration();

}   // namespace rastel::platform
