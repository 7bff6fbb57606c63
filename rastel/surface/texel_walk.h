// Texels that a straight line through a texture meets, one a pixel: the definition, and what serves where a vector
// form doesn't pay.
#pragma once

#include <cstddef>
#include <cstring>

#include "rastel/platform/types.h"
#include "rastel/surface/texel_line.h"

namespace rastel::kernels {

// Internal to each file that includes it: the files are compiled for different processors, and the linker keeps one
// copy of what they share.
namespace {

// Sums wrap.
struct TexelWalk : TexelLine {
    int Column() const { return static_cast<int>(u >> 16); }
    int Row() const { return static_cast<int>(v >> 16); }
    TexelWalk After(int pixels) const {
        const auto count = static_cast<DWORD>(pixels);
        return {{u + stepU * count, v + stepV * count, stepU, stepV}};
    }
};

template <int bytesPerPixel = 4>
inline void TexelsInTurn(BYTE* target, const BYTE* source, std::ptrdiff_t pitch, int count, TexelWalk walk) {
    const auto texel = [&](int i) {
        const TexelWalk at = walk.After(i);
        std::memcpy(target + i * bytesPerPixel,
                    source + at.Row() * pitch + static_cast<std::ptrdiff_t>(at.Column()) * bytesPerPixel,
                    bytesPerPixel);
    };
    for (; count >= 4; count -= 4, target += 4 * bytesPerPixel, walk = walk.After(4)) {
        texel(0);
        texel(1);
        texel(2);
        texel(3);
    }
    for (int i = 0; i < count; ++i) {
        texel(i);
    }
}

// What texels are wanted for: a row of pixels, or `tileRows` of them, one below the other.
struct TexelRow {
    BYTE* target;
    int count;
    TexelWalk walk;
};

struct TexelTile {
    BYTE* target;
    int targetPitch;
    int count;
    const TexelLine* lines;

    // drawRow(target, line)
    template <class DrawRow>
    void ForRows(DrawRow drawRow) const {
        for (int row = 0; row < tileRows; ++row) {
            drawRow(target + static_cast<std::ptrdiff_t>(row) * targetPitch, lines[row]);
        }
    }
};

}   // namespace

}   // namespace rastel::kernels
