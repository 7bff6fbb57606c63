// What the four triangle operations share around the walk: the clip, what needs no lock, and the choice between the
// fast walk and the one that minds every texel.
#pragma once

#include "rastel/platform/framework.h"
#include "rastel/raster/face3d.h"
#include "rastel/raster/span_tiles.h"
#include "rastel/raster/texture_spans.h"
#include "rastel/raster/triangle_walk.h"
#include "rastel/surface/pixel_lock.h"

namespace rastel::raster {

CRect ClipOf(const CSurfaceBase& target, const CRect* pClip);   // the whole target, cut by *pClip

// Wholly to one side of the clip, or collapsed to a vertical or level line.
bool HasNothingToDraw(const FACE3D& face, const CRect& clip);

// Within the limits in which 32 bits are enough and no texel lies outside a texture of that size.
bool KeepsLimits(const FACE3D& face, int textureWidth, int textureHeight);

// The stores are locked. Texels stay within the given size, whatever the face asks for.
template <class Step>
void DrawTriangle(const PixelLock& target, const FACE3D& face, const CRect& clip, int textureWidth, int textureHeight,
                  Step step) {
    BYTE* const bits = target.At(0, 0);
    const std::ptrdiff_t pitch = target.Pitch();
    const auto pixelAt = [=](const auto& span) {
        return bits + span.y * pitch + static_cast<std::ptrdiff_t>(span.x) * Step::pixelBytes;
    };
    if (KeepsLimits(face, textureWidth, textureHeight)) {
        if (CrowdsTheCache(face, step.Pitch(), Step::pixelBytes)) {
            DrawInTiles(target, face, clip, step);
            return;
        }
        const auto draw = [=](const Span<std::int32_t>& span) {
            DrawSpan(step, pixelAt(span), span.last - span.x + 1, WalkAlong(span));
        };
        TriangleWalk<std::int32_t, decltype(draw)>(face, clip, draw).Run();
    } else if (textureWidth > 0 && textureHeight > 0) {
        const auto draw = [=](const Span<std::int64_t>& span) {
            DrawSpanGuarded(step, pixelAt(span), span, textureWidth, textureHeight);
        };
        TriangleWalk<std::int64_t, decltype(draw)>(face, clip, draw).Run();
    }
}

// One triangle operation: nothing is locked where nothing is to be drawn, and the source is given back ahead of the
// target. draw(target, source, clip) draws, or returns false for a store that can't be locked.
template <class Draw>
int BltTriangle(CSurfaceBase& targetStore, const FACE3D& face, CSurfaceBase& sourceStore, const CRect* pClip,
                Draw draw) {
    const CRect clip = ClipOf(targetStore, pClip);
    if (HasNothingToDraw(face, clip)) {
        return 1;
    }
    PixelLock source(sourceStore);
    if (!source) {
        return 0;
    }
    const PixelLock target(targetStore);
    if (!target || !draw(target, source, clip)) {
        return 0;
    }
    source.Unlock();
    return 1;
}

// The same where the source's texels and a constant are all that a step needs.
template <class MakeStep>
int BltTexels(CSurfaceBase& targetStore, const FACE3D& face, CSurfaceBase& sourceStore, const CRect* pClip,
              MakeStep makeStep) {
    return BltTriangle(targetStore, face, sourceStore, pClip,
                       [&](const PixelLock& target, const PixelLock& source, const CRect& clip) {
                           DrawTriangle(target, face, clip, sourceStore.GetWidth(), sourceStore.GetHeight(),
                                        makeStep(source));
                           return true;
                       });
}

}   // namespace rastel::raster
