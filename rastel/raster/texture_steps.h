// What texels do to pixels of the target, in four ways. A step is built over locked stores and knows nothing of
// triangles.
//
// A copy is drawn straight into the target. The others, on one row of the texture, have their texels copied side by
// side into a scratch row first, so that what they do there, Combine, is a plain loop over neighbours. Across the rows
// that would cost more than it saves, and CombineAcross does both at once.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "rastel/platform/types.h"
#include "rastel/surface/kernels.h"
#include "rastel/surface/pixel_lock.h"
#include "rastel/surface/texel_walk.h"

namespace rastel::raster {

// The texel as it is: a colour with all four bytes, or a byte of a plane.
template <int bytesPerPixel>
struct CopyStep {
    static constexpr int pixelBytes = bytesPerPixel;

    explicit CopyStep(const PixelLock& texture) : bits(texture.At(0, 0)), pitch(texture.Pitch()) {}

    std::ptrdiff_t Pitch() const { return pitch; }
    const BYTE* At(int u, int v) const { return bits + v * pitch + static_cast<std::ptrdiff_t>(u) * pixelBytes; }
    void DrawTexel(BYTE* target, int u, int v) const { std::memcpy(target, At(u, v), pixelBytes); }
    void DrawTile(BYTE* target, int targetPitch, int count, const kernels::TexelLine* lines) const {
        const auto draw = pixelBytes == 4 ? kernels::Rows().textureTile : kernels::Rows().textureBytesTile;
        draw(target, targetPitch, bits, static_cast<int>(pitch), count, lines);
    }

    const BYTE* bits;
    std::ptrdiff_t pitch;
};

// The colour with alpha byte 0, unless its 24 bits equal the key's; then the target stays.
struct KeyStep {
    static constexpr int pixelBytes = 4;

    void Combine(BYTE* target, const BYTE* texels, int count) const {
        kernels::Rows().keyCopyRect(target, 0, texels, 0, count, 1, key);
    }
    void CombineAcross(BYTE* target, int count, const kernels::TexelWalk& walk) const {
        kernels::Rows().textureKeyRow(target, source.bits, static_cast<int>(source.pitch), count, walk, key);
    }
    void DrawTexel(BYTE* target, int u, int v) const { Combine(target, source.At(u, v), 1); }
    void DrawTile(BYTE* target, int targetPitch, int count, const kernels::TexelLine* lines) const {
        kernels::Rows().textureKeyTile(target, targetPitch, source.bits, static_cast<int>(source.pitch), count, lines,
                                       key);
    }
    std::ptrdiff_t Pitch() const { return source.pitch; }

    CopyStep<4> source;
    DWORD key;   // 0x00RRGGBB
};

// For each of the three colour bytes (t * (256 - w) + s * w) >> 8, with w = a * 256 / 255 and a the plane's byte at the
// texel; the target's alpha byte stays.
struct BlendStep {
    static constexpr int pixelBytes = 4;

    static void Combine(BYTE* target, const BYTE* texels, const BYTE* coverage, int count) {
        kernels::Rows().textureBlendRow(target, texels, coverage, count);
    }
    void CombineAcross(BYTE* target, int count, const kernels::TexelWalk& walk) const {
        kernels::Rows().texturePlaneRow(target, source.bits, static_cast<int>(source.pitch), plane.bits,
                                        static_cast<int>(plane.pitch), count, walk);
    }
    void DrawTexel(BYTE* target, int u, int v) const { Combine(target, source.At(u, v), plane.At(u, v), 1); }
    void DrawTile(BYTE* target, int targetPitch, int count, const kernels::TexelLine* lines) const {
        kernels::Rows().texturePlaneTile(target, targetPitch, source.bits, static_cast<int>(source.pitch), plane.bits,
                                         static_cast<int>(plane.pitch), count, lines);
    }
    std::ptrdiff_t Pitch() const { return source.pitch; }

    CopyStep<4> source;
    CopyStep<1> plane;
};

}   // namespace rastel::raster
