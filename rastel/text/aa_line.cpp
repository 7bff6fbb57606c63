#include "rastel/text/aa_line.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <initializer_list>

namespace {

// Ends nearer than this leave room in an int for their distance and for the pixel beside.
constexpr double farthest = 1e9;

DWORD MixByte(DWORD color, DWORD pixel, int shift, double colorShare, double pixelShare) {
    const double sum = ((color >> shift) & 0xFF) * colorShare + ((pixel >> shift) & 0xFF) * pixelShare;
    return (static_cast<DWORD>(static_cast<int>(sum)) & 0xFF) << shift;
}

// `distance` from the line to the middle of the pixel: 0 is the full colour, 1 leaves the pixel.
void SetPixelAA(HDC hDC, int x, int y, DWORD color, double distance) {
    const double pixelShare = std::fabs(distance);
    if (pixelShare == 0) {
        ::SetPixelV(hDC, x, y, color);
        return;
    }
    const DWORD pixel = ::GetPixel(hDC, x, y);
    const double colorShare = 1 - pixelShare;
    ::SetPixelV(hDC, x, y,
                MixByte(color, pixel, 16, colorShare, pixelShare) | MixByte(color, pixel, 8, colorShare, pixelShare) |
                    MixByte(color, pixel, 0, colorShare, pixelShare));
}

int RoundedExtent(double from, double to) {
    return static_cast<int>(to > from ? to - from + 0.5 : to - from - 0.5);
}

// The pixels of one axis that the context may show.
struct Reach {
    int first;
    int end;

    bool Holds(std::int64_t at) const { return at >= first && at < end; }
};

// One walk along the longer side. `plot(major, minor, distance)` paints a pixel.
template <class Plot>
void Walk(double majorStart, double minorStart, int majorExtent, int minorExtent, const Reach& reach, Plot plot) {
    std::int64_t major = static_cast<std::int64_t>(majorStart + 0.5);
    double current = minorStart;
    double slope = static_cast<double>(minorExtent) / majorExtent;
    int step = 1;
    if (majorExtent < 0) {
        slope = -slope;
        step = -1;
    }
    const int count = step * majorExtent;
    for (int i = 0; i < count; ++i, current += slope, major += step) {
        // Out of sight the sum goes on, as its rounding is part of the line; behind the far edge nothing follows.
        if (!reach.Holds(major)) {
            if (step > 0 ? major >= reach.end : major < reach.first) {
                return;
            }
            continue;
        }
        const int nearest = static_cast<int>(current + 0.5);
        const double offset = current - nearest;
        plot(static_cast<int>(major), nearest, offset);
        const int beside = offset > 0 ? nearest + 1 : nearest - 1;
        plot(static_cast<int>(major), beside, current - beside);
    }
}

}   // namespace

void AALine(HDC hDC, double x1, double y1, double x2, double y2, DWORD color) {
    for (const double end : {x1, y1, x2, y2}) {
        if (!(std::fabs(end) < farthest)) {
            return;
        }
    }
    const int width = RoundedExtent(x1, x2);
    const int height = RoundedExtent(y1, y2);
    if (width == 0 && height == 0) {
        return;
    }
    // Contexts that cannot tell what they show are drawn on without a limit.
    RECT box = {};
    if (::GetClipBox(hDC, &box) == 0) {
        box = RECT{INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX};
    }
    if (std::abs(width) > std::abs(height)) {
        Walk(x1, y1, width, height, Reach{box.left, box.right},
             [&](int x, int y, double distance) { SetPixelAA(hDC, x, y, color, distance); });
    } else {
        Walk(y1, x1, height, width, Reach{box.top, box.bottom},
             [&](int y, int x, double distance) { SetPixelAA(hDC, x, y, color, distance); });
    }
}
