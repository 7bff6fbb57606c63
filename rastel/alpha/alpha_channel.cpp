#include "rastel/alpha/alpha_channel.h"

#include <new>

#include "rastel/platform/user.h"
#include "rastel/surface/kernels.h"
#include "rastel/surface/pixel_lock.h"
#include "rastel/surface/surface.h"

using rastel::PixelLock;
using rastel::kernels::Rows;

namespace {

// The frame of every operation between this plane and another store: both locked, then one kernel over the size of
// the clipped source.
template <class Kernel, class... Constants>
int RunOnPair(CAlphaChannel& plane, const CRect& rcDst, CSurfaceBase& src, const CRect& rcSrc, Kernel kernel,
              Constants... constants) {
    const PixelLock target(plane);
    if (!target) {
        return 0;
    }
    const PixelLock source(src);
    if (!source) {
        return 0;
    }
    kernel(target.At(rcDst.left, rcDst.top), target.Pitch(), source.At(rcSrc.left, rcSrc.top), source.Pitch(),
           rcSrc.Width(), rcSrc.Height(), constants...);
    return 1;
}

}   // namespace

CAlphaChannel::CAlphaChannel() = default;
CAlphaChannel::~CAlphaChannel() = default;

BITMAPINFO* CAlphaChannel::GetBitmapInfo() {
    auto* const block = new (std::nothrow) unsigned char[sizeof(BITMAPINFOHEADER) + 256 * sizeof(RGBQUAD)]();
    if (!block) {
        return nullptr;
    }
    auto* const info = reinterpret_cast<BITMAPINFO*>(block);
    info->bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
    info->bmiHeader.biWidth = m_Width;
    info->bmiHeader.biHeight = -m_Height;   // top-down
    info->bmiHeader.biPlanes = 1;
    info->bmiHeader.biBitCount = 8;
    auto* const colors = reinterpret_cast<RGBQUAD*>(block + sizeof(BITMAPINFOHEADER));
    for (int i = 0; i < 256; ++i) {
        const auto grey = static_cast<BYTE>(i);
        colors[i] = {grey, grey, grey, 0};
    }
    return info;
}

int CAlphaChannel::GetBytesPrPixel() {
    return 1;
}

CRect CAlphaChannel::Region(const CRect* pRect) const {
    CRect rc = GetRect();
    if (pRect) {
        ::IntersectRect(&rc, &rc, pRect);
    }
    return rc;
}

int CAlphaChannel::Fill(CRect* pRect, unsigned char value, CRect* pClip) {
    CRect rc = Region(pRect);
    if (pClip) {
        ::IntersectRect(&rc, &rc, pClip);
    }
    return InternalFill(rc, value);
}

int CAlphaChannel::InternalFill(CRect& rc, unsigned char value) {
    if (rc.Width() < 1) {
        return 1;
    }
    const PixelLock target(*this);
    if (!target) {
        return 0;
    }
    Rows().fillBytesRect(target.At(rc.left, rc.top), target.Pitch(), rc.Width(), rc.Height(), value);
    return 1;
}

int CAlphaChannel::CopyBlt(int x, int y, CSurfaceBase& src, CRect* pSrcRect, CRect* pClip) {
    if (!dynamic_cast<CAlphaChannel*>(&src)) {
        return 0;
    }
    CRect rcDst, rcSrc;
    if (!ClipRects(rcDst, rcSrc, x, y, src, pSrcRect, pClip)) {
        return 0;
    }
    return InternalCopyBlt(rcDst.left, rcDst.top, src, rcSrc);
}

int CAlphaChannel::StretchBlt(CRect& rcDst, CAlphaChannel& src, CRect* pSrcRect, CRect* pClip) {
    CRect rcSrc = pSrcRect ? *pSrcRect : src.GetRect();
    return InternalStretchBlt(rcDst, src, rcSrc, pClip);
}

int CAlphaChannel::Merge(int x, int y, CAlphaChannel& src, CRect* pSrcRect, CRect* pClip) {
    CRect rcDst, rcSrc;
    return ClipRects(rcDst, rcSrc, x, y, src, pSrcRect, pClip) && RunOnPair(*this, rcDst, src, rcSrc, Rows().mergeRect);
}

int CAlphaChannel::BltMix(int x, int y, CAlphaChannel& src, CRect* pSrcRect, CRect* pClip) {
    CRect rcDst, rcSrc;
    return ClipRects(rcDst, rcSrc, x, y, src, pSrcRect, pClip) && RunOnPair(*this, rcDst, src, rcSrc, Rows().maxRect);
}

int CAlphaChannel::TransparentMask(int x, int y, CSurface& src, DWORD color, CRect* pSrcRect, CRect* pClip) {
    CRect rcDst, rcSrc;
    return ClipRects(rcDst, rcSrc, x, y, src, pSrcRect, pClip) &&
           RunOnPair(*this, rcDst, src, rcSrc, Rows().transparentMaskRect, color);
}

int CAlphaChannel::OpaqueMask(int x, int y, CSurface& src, DWORD color, CRect* pSrcRect, CRect* pClip) {
    CRect rcDst, rcSrc;
    return ClipRects(rcDst, rcSrc, x, y, src, pSrcRect, pClip) &&
           RunOnPair(*this, rcDst, src, rcSrc, Rows().opaqueMaskRect, color);
}

int CAlphaChannel::Multiply(CRect* pRect, int factor) {
    const PixelLock target(*this);
    if (!target) {
        return 0;
    }
    const CRect rc = Region(pRect);
    Rows().multiplyRect(target.At(rc.left, rc.top), target.Pitch(), rc.Width(), rc.Height(), factor);
    return 1;
}

int CAlphaChannel::Invert(CRect* pRect) {
    const PixelLock target(*this);
    if (!target) {
        return 0;
    }
    const CRect rc = Region(pRect);
    Rows().invertRect(target.At(rc.left, rc.top), target.Pitch(), rc.Width(), rc.Height());
    return 1;
}
