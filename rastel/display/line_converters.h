// Rows and rectangles of surface pixels in the formats of displays. Each channel keeps its top bits: no rounding, no
// dithering. The source's alpha byte is dropped, but by the 32-bit form, which copies whole words.
//
// Words of 16 bits are little-endian with red on top; 24-bit pixels are bytes from blue to red; 8-bit ones are indices
// out of the map of SetPaletteMap. Widths are pixels, pitches bytes and of either sign. Nothing is written at or beyond
// the width; a width or height of 0 or less writes nothing. Source and target don't overlap, but for Blt32Line, which
// copies word by word from the row's last to its first.
#pragma once

#include "rastel/platform/export.h"

RASTEL_API void Blt555Line(unsigned char* dst, unsigned char* src, int width);
RASTEL_API void Blt555LineMMX(unsigned char* dst, unsigned char* src, int width);   // an odd last pixel stays unwritten
RASTEL_API void Blt555LineMMX2(unsigned char* dst, unsigned char* src, int width);   // whole groups of 4
RASTEL_API void Blt565Line(unsigned char* dst, unsigned char* src, int width);
RASTEL_API void Blt565LineMMX4(unsigned char* dst, unsigned char* src, int width);   // whole groups of 4
RASTEL_API void Blt24Line(unsigned char* dst, unsigned char* src, int width);
RASTEL_API void Blt32Line(unsigned char* dst, unsigned char* src, int width);
RASTEL_API void Blt8Line(unsigned char* dst, unsigned char* src, int width);

// The MMX forms give the same bytes as the others for any width.
RASTEL_API void Blt555(unsigned char* dst, unsigned char* src, int width, int height, int dstPitch, int srcPitch);
RASTEL_API void Blt555MMX(unsigned char* dst, unsigned char* src, int width, int height, int dstPitch, int srcPitch);
RASTEL_API void Blt565(unsigned char* dst, unsigned char* src, int width, int height, int dstPitch, int srcPitch);
RASTEL_API void Blt565MMX(unsigned char* dst, unsigned char* src, int width, int height, int dstPitch, int srcPitch);
RASTEL_API void Blt24(unsigned char* dst, unsigned char* src, int width, int height, int dstPitch, int srcPitch);
RASTEL_API void Blt32(unsigned char* dst, unsigned char* src, int width, int height, int dstPitch, int srcPitch);
RASTEL_API void Blt8(unsigned char* dst, unsigned char* src, int width, int height, int dstPitch, int srcPitch);
