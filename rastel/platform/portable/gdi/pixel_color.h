// From raw pixel values to colours and back. Colours are COLORREFs, 0x00BBGGRR, without flags.
//
// A channel of fewer than 8 bits is widened by repeating its bits, so that full stays full; it is narrowed by dropping
// its low bits. That makes every round trip through 8 bits exact.
#pragma once

#include "rastel/platform/portable/gdi/pixel_buffer.h"

namespace rastel::platform {

// Place and width of a contiguous mask. A mask of more than 8 bits counts with its upper 8.
struct Channel {
    explicit Channel(DWORD mask);

    BYTE Widen(DWORD raw) const { return static_cast<BYTE>((((raw >> shift) & ((1u << bits) - 1)) * repeat) >> drop); }
    DWORD Narrow(BYTE value) const { return (DWORD{value} >> (8 - bits)) << shift; }

    int shift = 0;
    int bits = 0;       // 0 to 8
    DWORD repeat = 0;   // a product with this repeats the bits often enough,
    int drop = 0;       // and what is below the upper 8 goes
};

COLORREF ColorOfPixel(const PixelBuffer& buffer, DWORD raw);

// The nearest one in indexed formats; the fourth byte of 32 bits is 0.
DWORD PixelOfColor(const PixelBuffer& buffer, COLORREF color);

// The entry with the least squared distance, the first of several; 0 for an empty table.
int NearestColor(const RGBQUAD* colors, int count, COLORREF color);

// All bits that a pixel uses: what WHITENESS writes.
DWORD WhitePixel(const PixelFormat& format);

// The colours that go with an index where nobody gave a table: black and white, the 16 of old, or 256: the fixed
// colours of indexed displays at both ends, a cube between.
const RGBQUAD* UsualColors(int bitsPerPixel);

inline COLORREF ColorOf(const RGBQUAD& quad) {
    return quad.rgbRed | (DWORD{quad.rgbGreen} << 8) | (DWORD{quad.rgbBlue} << 16);
}

inline RGBQUAD QuadOf(COLORREF color) {
    return {static_cast<BYTE>(color >> 16), static_cast<BYTE>(color >> 8), static_cast<BYTE>(color), 0};
}

}   // namespace rastel::platform
