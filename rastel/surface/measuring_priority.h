// The process at real-time class and the thread at time-critical priority, for the length of a measurement.
#pragma once

#include "rastel/platform/kernel.h"

namespace rastel {

class MeasuringPriority {
public:
    MeasuringPriority() {
        ::SetPriorityClass(::GetCurrentProcess(), REALTIME_PRIORITY_CLASS);
        ::SetThreadPriority(::GetCurrentThread(), THREAD_PRIORITY_TIME_CRITICAL);
    }
    // To normal, whatever they were before.
    ~MeasuringPriority() {
        ::SetThreadPriority(::GetCurrentThread(), THREAD_PRIORITY_NORMAL);
        ::SetPriorityClass(::GetCurrentProcess(), NORMAL_PRIORITY_CLASS);
    }
    MeasuringPriority(const MeasuringPriority&) = delete;
    MeasuringPriority& operator=(const MeasuringPriority&) = delete;
};

}   // namespace rastel
