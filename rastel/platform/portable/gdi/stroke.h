// Lines with the pen of a context.
#pragma once

#include <vector>

#include "rastel/platform/portable/gdi/device_context.h"

namespace rastel::platform {

// A point in device coordinates, wide enough for any logical point plus any origin.
struct StrokePoint {
    std::int64_t x = 0;
    std::int64_t y = 0;
};

// From point to point with the context's pen, mix and background mode. Pens one pixel wide leave the last pixel out;
// wide ones have round ends, and each of their pixels is mixed in once. False: the target is gone.
bool StrokeDevice(DeviceContext& context, const std::vector<StrokePoint>& points);

}   // namespace rastel::platform
