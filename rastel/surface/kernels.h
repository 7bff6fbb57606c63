// The table of inner loops: one row of functions for each instruction set, chosen once.
//
// A kernel takes pointers, pitches in bytes (they may be negative), a width in pixels, a height, and constants. It
// knows no surface and allocates nothing, takes any alignment and a width or height of 0 or less, and touches nothing
// outside its rectangles. Rectangles rather than single rows, because at sprite sizes a call for each row is what
// costs. Source and target may share memory only in the copies. Pixels are 0xAARRGGBB words, planes bytes.
#pragma once

#include <span>

#include "rastel/platform/types.h"
#include "rastel/surface/texel_line.h"

namespace rastel::kernels {

constexpr int filterPadding = 64;

// The column sums of a window, of up to 61 bytes each: 16 bits hold them. Even columns are apart from odd ones, so that
// bytes become words, and words bytes, in their order. Zeros stand for the columns ahead of the first, (window + 1) / 2
// in each half, and for filterPadding in each half behind the last column that a row asks for.
struct BoxSums {
    WORD* even;
    WORD* odd;
    WORD& At(int column) const {
        WORD* const half = column & 1 ? odd : even;
        return half[column >> 1];
    }
};

struct RowTable {
    const char* name;     // "avx2", "sse2", "plain"
    bool (*runsHere)();   // the processor and the system allow it

    // All bytes move, row by row from the top, each row as memmove moves it.
    void (*copyRect)(BYTE* target, int targetPitch, const BYTE* source, int sourcePitch, int width, int height);
    void (*fillRect)(BYTE* target, int targetPitch, int width, int height, DWORD pixel);
    // Leaves out pixels whose low 24 bits equal the key's; the others land with alpha byte 0.
    void (*keyCopyRect)(BYTE* target, int targetPitch, const BYTE* source, int sourcePitch, int width, int height,
                        DWORD key);
    // Every byte: (byte * factor) >> 8, its low 8 bits.
    void (*shadowRect)(BYTE* target, int targetPitch, int width, int height, DWORD factor);

    // Planes: a pixel is a byte.
    void (*copyBytesRect)(BYTE* target, int targetPitch, const BYTE* source, int sourcePitch, int width, int height);
    void (*fillBytesRect)(BYTE* target, int targetPitch, int width, int height, BYTE value);
    void (*mergeRect)(BYTE* target, int targetPitch, const BYTE* source, int sourcePitch, int width, int height);
    void (*maxRect)(BYTE* target, int targetPitch, const BYTE* source, int sourcePitch, int width, int height);
    // (byte * factor) >> 8 of the signed 32-bit product, its low 8 bits.
    void (*multiplyRect)(BYTE* target, int targetPitch, int width, int height, int factor);
    void (*invertRect)(BYTE* target, int targetPitch, int width, int height);

    // A plane from pixels. Whole words are compared: equal gives 0; different gives 255; the other bytes stay.
    void (*transparentMaskRect)(BYTE* plane, int planePitch, const BYTE* source, int sourcePitch, int width, int height,
                                DWORD color);
    void (*opaqueMaskRect)(BYTE* plane, int planePitch, const BYTE* source, int sourcePitch, int width, int height,
                           DWORD color);
    // All words move to the target, and their fourth bytes to the plane as well.
    void (*splitAlphaRect)(BYTE* target, int targetPitch, BYTE* plane, int planePitch, const BYTE* source,
                           int sourcePitch, int width, int height);
    // The low 24 bits are compared: equal gives `outside`, different `inside`.
    void (*keyMaskRect)(BYTE* plane, int planePitch, const BYTE* source, int sourcePitch, int width, int height,
                        DWORD key, BYTE outside, BYTE inside);

    // Blends in 7-bit arithmetic: for each byte back + ((source - back) * weight >> 7). A plane byte a weighs a >> 1,
    // but 253 weighs 127 and 255 weighs 128; a constant alpha weighs (alpha & 255) >> 1. Pixels go in pairs from the
    // row's start: the first of a pair gets alpha byte 0, the second the blend of the alpha bytes, and the odd last
    // pixel, with weight a >> 1, keeps the target's.
    void (*alphaRect)(BYTE* target, int targetPitch, const BYTE* source, int sourcePitch, const BYTE* alpha,
                      int alphaPitch, int width, int height);
    void (*alphaColorRect)(BYTE* target, int targetPitch, DWORD color, const BYTE* alpha, int alphaPitch, int width,
                           int height);
    // `back` may be the target. In the keyed form all alpha bytes become 0, and a pixel whose low 24 bits equal the
    // key's weighs 0.
    void (*alphaConstRect)(BYTE* target, int targetPitch, const BYTE* source, int sourcePitch, const BYTE* back,
                           int backPitch, int width, int height, int alpha);
    void (*alphaConstTransRect)(BYTE* target, int targetPitch, const BYTE* source, int sourcePitch, const BYTE* back,
                                int backPitch, int width, int height, int alpha, DWORD key);

    // "Over" on straight colours, onto pixels with a plane of their own, which is updated (see docs/arithmetic.md).
    void (*alphaAdvRect)(BYTE* target, int targetPitch, BYTE* plane, int planePitch, const BYTE* source,
                         int sourcePitch, const BYTE* alpha, int alphaPitch, int width, int height);
    void (*alphaColorAdvRect)(BYTE* target, int targetPitch, BYTE* plane, int planePitch, DWORD color,
                              const BYTE* alpha, int alphaPitch, int width, int height);

    // Mask filters.
    void (*thresholdRect)(BYTE* plane, int planePitch, int width, int height, BYTE level, BYTE low, BYTE high);
    void (*subtractRect)(BYTE* target, int targetPitch, const BYTE* source, int sourcePitch, int width, int height);
    // A row of a window's averages, the row below the last one. `entering` and `leaving` change the column sums:
    // sum[x] += entering[x] - leaving[x], x up to width. Then, for width + window - 1 bytes, target[x] =
    // (sum[x - window + 1] + ... + sum[x]) / (window * window), truncated. Windows are odd, up to 61.
    void (*boxRow)(BYTE* target, const BoxSums& sums, const BYTE* entering, const BYTE* leaving, int width, int window);
    // How many rows of the window are not zero there: counts[x] changes by what enters and what leaves.
    void (*countColumns)(BYTE* counts, const BYTE* entering, const BYTE* leaving, int width);
    // A row of width + window - 1 bytes, window up to 64: target[x] = value where any of counts[x - window + 1] ...
    // counts[x] isn't zero, else 0. Zeros follow `counts` up to filterPadding elements beyond `width`.
    void (*dilateRow)(BYTE* target, const BYTE* counts, int width, int window, BYTE value);

    // Texels side by side: pixel i is the source's at column (u + i * stepU) >> 16 of row (v + i * stepV) >> 16. Sums
    // wrap; all texels lie inside the source, below 32768 both ways.
    void (*textureRow)(BYTE* target, const BYTE* source, int sourcePitch, int count, TexelLine line);
    // The same for a plane's bytes.
    void (*textureBytesRow)(BYTE* target, const BYTE* source, int sourcePitch, int count, TexelLine line);
    // textureRow onto a target, as keyCopyRect and as textureBlendRow do it; the plane's byte is the one at the texel's
    // column and row.
    void (*textureKeyRow)(BYTE* target, const BYTE* source, int sourcePitch, int count, TexelLine line, DWORD key);
    void (*texturePlaneRow)(BYTE* target, const BYTE* source, int sourcePitch, const BYTE* plane, int planePitch,
                            int count, TexelLine line);
    // The same four for `tileRows` rows at once, in an order that meets the source's cache lines again soon where the
    // texels' lines run down it. `count` is a multiple of tileColumns.
    void (*textureTile)(BYTE* target, int targetPitch, const BYTE* source, int sourcePitch, int count,
                        const TexelLine* lines);
    void (*textureBytesTile)(BYTE* target, int targetPitch, const BYTE* source, int sourcePitch, int count,
                             const TexelLine* lines);
    void (*textureKeyTile)(BYTE* target, int targetPitch, const BYTE* source, int sourcePitch, int count,
                           const TexelLine* lines, DWORD key);
    void (*texturePlaneTile)(BYTE* target, int targetPitch, const BYTE* source, int sourcePitch, const BYTE* plane,
                             int planePitch, int count, const TexelLine* lines);
    // For each colour byte (target * (256 - w) + source * w) >> 8, w the plane's byte, but 256 for 255; the target
    // keeps its alpha byte.
    void (*textureBlendRow)(BYTE* target, const BYTE* source, const BYTE* alpha, int count);

    // Pixels in the formats of displays, each channel cut to its top bits: words of 5-5-5 and 5-6-5 bits with red on
    // top, three bytes from blue to red, and indices out of a map of 512 entries that the top three bits choose from,
    // red lowest.
    void (*to555Rect)(BYTE* target, int targetPitch, const BYTE* source, int sourcePitch, int width, int height);
    void (*to565Rect)(BYTE* target, int targetPitch, const BYTE* source, int sourcePitch, int width, int height);
    void (*to24Rect)(BYTE* target, int targetPitch, const BYTE* source, int sourcePitch, int width, int height);
    void (*toIndexRect)(BYTE* target, int targetPitch, const BYTE* source, int sourcePitch, const BYTE* map, int width,
                        int height);
};

std::span<const RowTable* const> AllTables();   // best first; the last runs anywhere
const RowTable& Rows();                         // the chosen one
const RowTable& PlainRows();                    // the definition of the numbers

// For tests: the table of that name from now on, or the best again for null. False: unknown, or it doesn't run here.
bool ForceTable(const char* name);

}   // namespace rastel::kernels
