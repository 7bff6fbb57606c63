// Rows of pixels in GDI+'s formats, to and from straight ARGB words.
#pragma once

#include <span>

#include "rastel/platform/portable/gdiplus/types.h"

namespace rastel::platform::gdip {

bool IsKnownFormat(int format);
int BytesPerPixel(int format);   // 0: not a format that is known here
bool HasAlpha(int format);

// Each of these counts from pixel `x` of a row. `palette` is for indexed formats.
void LoadArgb(int format, const unsigned char* row, int x, int count, std::span<const DWORD> palette, DWORD* argb);

// 32 bits without alpha keep their fourth byte; 8 bits take the nearest colour of the palette.
void StoreArgb(int format, unsigned char* row, int x, int count, std::span<const DWORD> palette, const DWORD* argb);

}   // namespace rastel::platform::gdip
