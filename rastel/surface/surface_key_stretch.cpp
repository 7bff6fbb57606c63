// The colour-key copy, the shadow and the stretch of CSurface.
#include "rastel/platform/user.h"
#include "rastel/surface/kernels.h"
#include "rastel/surface/pixel_lock.h"
#include "rastel/surface/surface.h"

using rastel::PixelLock;

int CSurface::TransparentBlt(int x, int y, CSurface& src, DWORD key, CRect* pSrcRect, CRect* pClip) {
    CRect rcDst, rcSrc;
    if (!ClipRects(rcDst, rcSrc, x, y, src, pSrcRect, pClip)) {
        return 0;
    }
    if (rcSrc.Width() < 1 || rcSrc.Height() < 1) {
        return 1;
    }
    return InternalTransparentBlt(rcDst.left, rcDst.top, src, key, rcSrc);
}

int CSurface::InternalTransparentBlt(int x, int y, CSurface& src, DWORD key, const CRect& rcSrc) {
    const PixelLock target(*this);
    if (!target) {
        return 0;
    }
    const PixelLock source(src);
    if (!source) {
        return 0;
    }
    rastel::kernels::Rows().keyCopyRect(target.At(x, y), target.Pitch(), source.At(rcSrc.left, rcSrc.top),
                                        source.Pitch(), rcSrc.Width(), rcSrc.Height(), RGB2COLOR(key));
    return 1;
}

int CSurface::ShadowBlt(CRect* pRect, int percent) {
    const PixelLock target(*this);
    if (!target) {
        return 0;
    }
    CRect rc = GetRect();
    if (pRect) {
        ::IntersectRect(&rc, &rc, pRect);
    }
    // Any percent is taken: outside 0 to 100 the bytes wrap. The wide product keeps its low 32 bits.
    const long long scaled = (100LL - percent) * 256 / 100;
    rastel::kernels::Rows().shadowRect(target.At(rc.left, rc.top), target.Pitch(), rc.Width(), rc.Height(),
                                       static_cast<DWORD>(scaled));
    return 0;
}

int CSurface::StretchBlt(CRect* pDstRect, CSurface& src, CRect* pSrcRect, CRect* pClip) {
    CRect target = pDstRect ? *pDstRect : GetRect();
    CRect source = src.GetRect();
    if (pSrcRect) {
        ::IntersectRect(&source, &source, pSrcRect);
    }
    if (target.Width() == 0 || target.Height() == 0) {
        return 1;
    }
    if (target.Width() == source.Width() && target.Height() == source.Height()) {
        return CopyBlt(target.left, target.top, src, &source, pClip);
    }
    return InternalStretchBlt(target, src, source, pClip);
}
