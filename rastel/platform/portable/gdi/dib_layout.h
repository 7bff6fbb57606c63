// What a BITMAPINFO says about the pixels that go with it.
#pragma once

#include <vector>

#include "rastel/platform/portable/gdi/device_context.h"

namespace rastel::platform {

struct DibLayout {
    int width = 0;
    int height = 0;   // positive
    bool topDown = false;
    int pitch = 0;   // bytes a row, a multiple of 4
    PixelFormat format;
    DWORD bitFields[3] = {};       // with BI_BITFIELDS
    std::vector<RGBQUAD> colors;   // indexed formats: 2 to the depth entries

    std::int64_t Bytes() const { return std::int64_t{pitch} * height; }

    // The pixels as a view; it lives as long as this and as the bits do.
    PixelBuffer View(const void* bits) const;
};

// False: no format that we know (1, 4, 8, 16, 24, 32 bits, BI_RGB or BI_BITFIELDS), or sizes that make no sense.
// `context` gives the palette for DIB_PAL_COLORS and may be null otherwise.
bool ReadDibLayout(const BITMAPINFO* info, UINT usage, const DeviceContext* context, DibLayout* layout);

// Where the colour table begins: behind the header and the masks that may follow it.
RGBQUAD* DibColorTable(BITMAPINFO* info);
const RGBQUAD* DibColorTable(const BITMAPINFO* info);

}   // namespace rastel::platform
