// The inner loops: one span of a triangle, in the cheapest of its shapes. All shapes give the same pixels. Each is a
// function of its own, so that a vector form can stand in for it.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "rastel/platform/types.h"
#include "rastel/raster/texture_steps.h"
#include "rastel/raster/triangle_walk.h"
#include "rastel/surface/texel_walk.h"

namespace rastel::raster {

using kernels::TexelWalk;

inline TexelWalk WalkAlong(const Span<std::int32_t>& span) {
    return {{static_cast<DWORD>(span.u), static_cast<DWORD>(span.v), static_cast<DWORD>(span.stepU),
             static_cast<DWORD>(span.stepV)}};
}

// On one row of the texture, with steps of nearly one texel: runs of texels that lie side by side, broken where the
// steps' difference from one texel has summed up to one.
template <int bytesPerPixel>
void CopyRuns(CopyStep<bytesPerPixel> step, BYTE* target, int count, TexelWalk walk) {
    constexpr DWORD one = 0x10000;
    while (count > 0) {
        const DWORD fraction = walk.u & 0xFFFF;
        DWORD length = static_cast<DWORD>(count);
        if (walk.stepU < one) {
            length = std::min(length, fraction / (one - walk.stepU) + 1);
        } else if (walk.stepU > one) {
            length = std::min(length, (0xFFFF - fraction) / (walk.stepU - one) + 1);
        }
        const int run = static_cast<int>(length);
        const std::size_t bytes = static_cast<std::size_t>(length) * bytesPerPixel;
        std::memmove(target, step.At(walk.Column(), walk.Row()), bytes);
        target += bytes;
        count -= run;
        walk = walk.After(run);
    }
}

// On one row of the texture, with any step.
template <int bytesPerPixel>
void CopyAlongRow(CopyStep<bytesPerPixel> step, BYTE* target, int count, TexelWalk walk) {
    const BYTE* const row = step.At(0, walk.Row());
    const auto texel = [&](int i) {
        const std::ptrdiff_t column = (walk.u + static_cast<DWORD>(i) * walk.stepU) >> 16;
        std::memcpy(target + i * bytesPerPixel, row + column * bytesPerPixel, bytesPerPixel);
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

constexpr int longSpan = 16;   // below, the call costs more than it saves

// Across the rows of the texture.
template <int bytesPerPixel>
void CopyAcross(CopyStep<bytesPerPixel> step, BYTE* target, int count, TexelWalk walk) {
    if (count >= longSpan) {
        const auto copy = bytesPerPixel == 4 ? kernels::Rows().textureRow : kernels::Rows().textureBytesRow;
        copy(target, step.bits, static_cast<int>(step.pitch), count, walk);
    } else {
        kernels::TexelsInTurn<bytesPerPixel>(target, step.bits, step.pitch, count, walk);
    }
}

// v moves one way only, so a span that ends on the row it began on never left it.
inline bool StaysOnRow(const TexelWalk& walk, int count) {
    return walk.Row() == walk.After(count - 1).Row();
}

// DrawSpan: all texels lie inside the texture; count is at least 1.
template <int bytesPerPixel>
void DrawSpan(CopyStep<bytesPerPixel> step, BYTE* target, int count, TexelWalk walk) {
    if (!StaysOnRow(walk, count)) {
        CopyAcross(step, target, count, walk);
        return;
    }
    // With steps this near to one texel, runs but for the first are at least 16 pixels long.
    constexpr DWORD nearStep = 0x10000 / 16;
    if (walk.stepU - (0x10000 - nearStep) <= 2 * nearStep) {
        CopyRuns(step, target, count, walk);
    } else {
        CopyAlongRow(step, target, count, walk);
    }
}

constexpr int scratchPixels = 256;

inline void DrawSpan(KeyStep step, BYTE* target, int count, TexelWalk walk) {
    if (!StaysOnRow(walk, count)) {
        step.CombineAcross(target, count, walk);
        return;
    }
    BYTE texels[scratchPixels * 4];
    for (; count > 0; count -= scratchPixels, target += sizeof(texels), walk = walk.After(scratchPixels)) {
        const int part = std::min(count, scratchPixels);
        DrawSpan(step.source, texels, part, walk);
        step.Combine(target, texels, part);
    }
}

inline void DrawSpan(BlendStep step, BYTE* target, int count, TexelWalk walk) {
    if (!StaysOnRow(walk, count)) {
        step.CombineAcross(target, count, walk);
        return;
    }
    BYTE texels[scratchPixels * 4], coverage[scratchPixels];
    for (; count > 0; count -= scratchPixels, target += sizeof(texels), walk = walk.After(scratchPixels)) {
        const int part = std::min(count, scratchPixels);
        DrawSpan(step.source, texels, part, walk);
        DrawSpan(step.plane, coverage, part, walk);
        step.Combine(target, texels, coverage, part);
    }
}

// Any texels: those beyond an edge of the texture are the edge's.
template <class Step, class SpanOfNumber>
void DrawSpanGuarded(const Step& step, BYTE* target, const SpanOfNumber& span, int textureWidth, int textureHeight) {
    auto u = span.u;
    auto v = span.v;
    using Number = decltype(u);
    const auto inside = [](Number value, int size) {
        return static_cast<int>(std::clamp<Number>(value >> 16, 0, static_cast<Number>(size) - 1));
    };
    for (int x = span.x; x <= span.last; ++x, target += Step::pixelBytes) {
        step.DrawTexel(target, inside(u, textureWidth), inside(v, textureHeight));
        u += span.stepU;
        v += span.stepV;
    }
}

}   // namespace rastel::raster
