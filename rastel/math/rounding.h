// How coordinates become integers: always by cutting off toward zero, and without a value that has no integer.
#pragma once

#include "rastel/platform/types.h"

namespace rastel::math {

// Toward zero. What lies beyond 32 bits stops at the nearest number; NaN gives 0.
inline LONG Truncated(double value) {
    constexpr double low = -2147483648.0, high = 2147483647.0;
    if (value >= high) {
        return 2147483647;
    }
    if (value <= low) {
        return -2147483647 - 1;
    }
    return value == value ? static_cast<LONG>(value) : 0;
}

// Half up for what is positive; a negative value moves toward zero: -1.2 gives 0.
inline LONG Rounded(double value) {
    return Truncated(value + 0.5);
}

}   // namespace rastel::math
