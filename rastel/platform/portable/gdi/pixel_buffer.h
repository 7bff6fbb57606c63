// A rectangle of pixels in any format the rasters know, as a view: it owns nothing.
#pragma once

#include "rastel/platform/portable/types.h"

namespace rastel::platform {

// Formats are told apart by masks, never by depth alone: 16 bits may be 5-6-5 or 5-5-5, 32 bits may have 10-bit
// channels. At 8 bits and below a pixel is an index and the masks are 0, unless the display is direct-colour.
struct PixelFormat {
    int bitsPerPixel = 32;   // stored: 1, 4, 8, 16, 24 or 32
    DWORD redMask = 0x00FF0000;
    DWORD greenMask = 0x0000FF00;
    DWORD blueMask = 0x000000FF;

    bool IsIndexed() const { return redMask == 0; }
    bool operator==(const PixelFormat&) const = default;
};

PixelFormat FormatOfDepth(int bitsPerPixel);   // the usual masks: 5-6-5 at 16, 5-5-5 at 15 (stored in 16 bits)

struct PixelBuffer {
    unsigned char* bits = nullptr;   // first byte of the top row
    int width = 0;
    int height = 0;
    int pitch = 0;   // bytes to the next row down; negative where rows run upwards
    PixelFormat format;
    const RGBQUAD* colors = nullptr;   // indexed formats: what each index means
    int colorCount = 0;

    unsigned char* Row(int y) const { return bits + static_cast<std::ptrdiff_t>(y) * pitch; }
};

}   // namespace rastel::platform
