// Moving pixels from a rectangle of a source to a rectangle of a context, in any format, size and raster operation.
#pragma once

#include "rastel/platform/portable/gdi/device_context.h"
#include "rastel/platform/portable/gdi/raster_op.h"

namespace rastel::platform {

// Rectangles by corner and signed size; 64 bits, so that sums of wild numbers stay right.
struct BlitRect {
    std::int64_t x = 0;
    std::int64_t y = 0;
    std::int64_t width = 0;
    std::int64_t height = 0;
};

struct BlitSource {
    PixelBuffer pixels;
    bool isMono = false;                // takes the colours of the target's context
    COLORREF background = 0x00FFFFFF;   // becomes 1 in monochrome targets
    bool hasBackground = true;          // false: black or white there, whichever is nearer
};

// `to` in device coordinates of the target, `from` in pixels of the source; parts of it outside the source are not
// moved. The source may share memory with the target. False: the target is gone or memory ran out.
bool Blit(DeviceContext& target, const BlitRect& to, const BlitSource& source, const BlitRect& from,
          RasterOp operation);

// The pixels of a bitmap's rectangle or of the screen, ready for Blit: of memory contexts they are the bitmap itself,
// of others a copy of `area` in `memory`. `origin`: the device point of the first pixel. False: nothing to read.
bool OpenSource(DeviceContext& source, const RECT& area, PixelMemory* memory, std::vector<RGBQUAD>* colors,
                BlitSource* opened, POINT* origin);

}   // namespace rastel::platform
