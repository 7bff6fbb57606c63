#include "rastel/platform/portable/screen/frame_clock.h"

#include <chrono>
#include <thread>

namespace rastel::platform {

void WaitForTick(int ticksPerSecond) {
    if (ticksPerSecond < 1 || ticksPerSecond > 1000) {
        return;
    }
    using Clock = std::chrono::steady_clock;
    const std::chrono::nanoseconds period(1'000'000'000 / ticksPerSecond);
    const auto now = std::chrono::duration_cast<std::chrono::nanoseconds>(Clock::now().time_since_epoch());
    const std::chrono::nanoseconds next = (now / period + 1) * period;
    std::this_thread::sleep_until(Clock::time_point(std::chrono::duration_cast<Clock::duration>(next)));
}

}   // namespace rastel::platform
