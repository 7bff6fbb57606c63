#include "rastel/platform/portable/gdi/pixel_buffer.h"

namespace rastel::platform {

PixelFormat FormatOfDepth(int bitsPerPixel) {
    switch (bitsPerPixel) {
        case 15:
            return {16, 0x7C00, 0x03E0, 0x001F};
        case 16:
            return {16, 0xF800, 0x07E0, 0x001F};
        case 24:
        case 32:
            return {bitsPerPixel, 0xFF0000, 0x00FF00, 0x0000FF};
        default:
            return {bitsPerPixel, 0, 0, 0};
    }
}

}   // namespace rastel::platform
