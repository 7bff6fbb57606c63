// Single rows of pixels in memory, by depth alone: raw values in and out, no colours.
//
// Pixels of 1 and 4 bits start at the highest bits of a byte. Depths: 1, 4, 8, 16, 24, 32. Counts may be 0 or less.
#pragma once

#include "rastel/platform/portable/types.h"

namespace rastel::platform {

DWORD LoadPixel(const unsigned char* row, int bitsPerPixel, int x);
void StorePixel(unsigned char* row, int bitsPerPixel, int x, DWORD value);

void LoadRow(const unsigned char* row, int bitsPerPixel, int x, int count, DWORD* values);
void StoreRow(unsigned char* row, int bitsPerPixel, int x, int count, const DWORD* values);
void FillPixels(unsigned char* row, int bitsPerPixel, int x, int count, DWORD value);

// Where a pixel of 8 or more bits begins.
inline std::ptrdiff_t ByteOffset(int bitsPerPixel, std::int64_t x) {
    return static_cast<std::ptrdiff_t>(x * (bitsPerPixel / 8));
}

}   // namespace rastel::platform
