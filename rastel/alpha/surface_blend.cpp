// The blending operations of CSurface: they clip and lock, and leave the rest to the kernels.
#include <algorithm>
#include <cstring>

#include "rastel/alpha/alpha_channel.h"
#include "rastel/alpha/blend.h"
#include "rastel/surface/bounds.h"
#include "rastel/surface/kernels.h"
#include "rastel/surface/mmx.h"
#include "rastel/surface/pixel_lock.h"
#include "rastel/surface/surface.h"

using rastel::Covers;
using rastel::IsEmpty;
using rastel::PixelLock;

namespace {

// The plain and the vector kernels part ways outside 0 to 255.
int Opacity(int alpha) {
    return std::clamp(alpha, 0, 255);
}

// The plain line kernel over a row of one colour.
void AlphaColorRectCPU(unsigned char* target, int targetPitch, DWORD color, const unsigned char* alpha, int alphaPitch,
                       int width, int height) {
    for (int y = 0; y < height; ++y, target += targetPitch, alpha += alphaPitch) {
        for (int x = 0; x < width; ++x) {
            unsigned char pixel[4];
            std::memcpy(pixel, &color, sizeof(pixel));
            AlphaLineCPU(target + x * 4, pixel, alpha + x, 1);
        }
    }
}

struct Rows {
    unsigned char* target;
    int targetPitch;
    const unsigned char* source;
    int sourcePitch;
    int width, height;
};

// What lies over the target is blended with it, and nothing else is needed. The rectangles are clipped.
template <class Draw>
int BlendOver(CSurface& targetStore, const CRect& rcDst, CSurface& sourceStore, const CRect& rcSrc, Draw draw) {
    const PixelLock source(sourceStore);
    if (!source) {
        return 0;
    }
    const PixelLock target(targetStore);
    if (!target) {
        return 0;
    }
    draw(Rows{target.At(rcDst.left, rcDst.top), target.Pitch(), source.At(rcSrc.left, rcSrc.top), source.Pitch(),
              rcSrc.Width(), rcSrc.Height()});
    return 1;
}

}   // namespace

int CSurface::AlphaBlt(int x, int y, CSurface& src, CAlphaChannel& alpha, CRect* pSrcRect, CRect* pClip) {
    CRect rcDst, rcSrc;
    if (!ClipRects(rcDst, rcSrc, x, y, src, pSrcRect, pClip)) {
        return 0;
    }
    return InternalAlphaBlt(rcDst.left, rcDst.top, src, alpha, rcSrc);
}

int CSurface::InternalAlphaBlt(int x, int y, CSurface& src, CAlphaChannel& alpha, const CRect& rcSrc) {
    if (!IsEmpty(rcSrc) && !Covers(alpha, rcSrc)) {
        return 0;
    }
    const PixelLock plane(alpha);
    if (!plane) {
        return 0;
    }
    const PixelLock source(src);
    if (!source) {
        return 0;
    }
    const PixelLock target(*this);
    if (!target) {
        return 0;
    }
    AlphaRect(target.At(x, y), target.Pitch(), source.At(rcSrc.left, rcSrc.top), source.Pitch(),
              plane.At(rcSrc.left, rcSrc.top), plane.Pitch(), rcSrc.Width(), rcSrc.Height());
    return 1;
}

int CSurface::AlphaColorBlt(int x, int y, DWORD color, CAlphaChannel& alpha, CRect* pSrcRect, CRect* pClip) {
    CRect rcDst, rcSrc;
    if (!ClipRects(rcDst, rcSrc, x, y, alpha, pSrcRect, pClip)) {
        return 0;
    }
    if (IsEmpty(rcSrc)) {
        return 1;
    }
    PixelLock target(*this);
    if (!target) {
        return 0;
    }
    const PixelLock plane(alpha);
    if (!plane) {
        return 0;
    }
    // Narrower than the other blends allow: a width of 3 takes the vector form here.
    constexpr int narrowestVectorWidth = 3;
    const bool isVector = UseMMX() && rcSrc.Width() >= narrowestVectorWidth;
    const auto kernel = isVector ? rastel::kernels::Rows().alphaColorRect : AlphaColorRectCPU;
    kernel(target.At(rcDst.left, rcDst.top), target.Pitch(), RGB2COLOR(color), plane.At(rcSrc.left, rcSrc.top),
           plane.Pitch(), rcSrc.Width(), rcSrc.Height());
    target.Unlock();   // before the plane
    return 1;
}

int CSurface::AlphaConstBlt(int x, int y, CSurface& src, int alpha, CRect* pSrcRect, CRect* pClip) {
    CRect rcDst, rcSrc;
    if (!ClipRects(rcDst, rcSrc, x, y, src, pSrcRect, pClip)) {
        return 0;
    }
    return BlendOver(*this, rcDst, src, rcSrc, [=](const Rows& rows) {
        AlphaConstRect(rows.target, rows.targetPitch, rows.source, rows.sourcePitch, rows.target, rows.targetPitch,
                       rows.width, rows.height, Opacity(alpha));
    });
}

int CSurface::AlphaConstBltEx(int x, int y, CSurface& src, int alpha, CRect* pSrcRect, CSurface* pSecond,
                              CRect* pClip) {
    if (!pSecond) {
        return AlphaConstBlt(x, y, src, alpha, pSrcRect, pClip);
    }
    CRect rcDst, rcSrc;
    if (!ClipRects(rcDst, rcSrc, x, y, src, pSrcRect, pClip)) {
        return 0;
    }
    if (!IsEmpty(rcSrc) && !Covers(*pSecond, rcSrc)) {
        return 0;
    }
    const PixelLock source(src);
    if (!source) {
        return 0;
    }
    const PixelLock second(*pSecond);
    if (!second) {
        return 0;
    }
    const PixelLock target(*this);
    if (!target) {
        return 0;
    }
    AlphaConstRect(target.At(rcDst.left, rcDst.top), target.Pitch(), source.At(rcSrc.left, rcSrc.top), source.Pitch(),
                   second.At(rcSrc.left, rcSrc.top), second.Pitch(), rcSrc.Width(), rcSrc.Height(), Opacity(alpha));
    return 1;
}

int CSurface::AlphaConstTransBlt(int x, int y, CSurface& src, int alpha, DWORD key, CRect* pSrcRect, CRect* pClip) {
    CRect rcDst, rcSrc;
    if (!ClipRects(rcDst, rcSrc, x, y, src, pSrcRect, pClip)) {
        return 0;
    }
    return BlendOver(*this, rcDst, src, rcSrc, [=](const Rows& rows) {
        AlphaConstTransRect(rows.target, rows.targetPitch, rows.source, rows.sourcePitch, rows.target, rows.targetPitch,
                            rows.width, rows.height, Opacity(alpha), RGB2COLOR(key));
    });
}
