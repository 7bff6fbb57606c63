#include "rastel/surface/surface.h"

#include <new>

#include "rastel/platform/user.h"
#include "rastel/surface/kernels.h"
#include "rastel/surface/mmx.h"
#include "rastel/surface/pixel_lock.h"

using rastel::PixelLock;
using rastel::ScopedDc;

CSurface::CopyBltFunction CSurface::s_pCopyBlt = nullptr;
CSurface::FillColorFunction CSurface::s_pFillColor = nullptr;

CSurface::CSurface() = default;
CSurface::~CSurface() = default;

DWORD CSurface::RGB2COLOR(DWORD c) {
    return (c & 0xFF) << 16 | (c & 0xFF00) | (c >> 16 & 0xFF);
}

BITMAPINFO* CSurface::GetBitmapInfo() {
    auto* const block = new (std::nothrow) unsigned char[sizeof(BITMAPINFOHEADER)]();
    if (!block) {
        return nullptr;
    }
    auto* const header = new (block) BITMAPINFOHEADER{};
    header->biSize = sizeof(BITMAPINFOHEADER);
    header->biWidth = m_Width;
    header->biHeight = -m_Height;   // top-down
    header->biPlanes = 1;
    header->biBitCount = 32;
    return reinterpret_cast<BITMAPINFO*>(block);
}

int CSurface::GetBytesPrPixel() {
    return 4;
}

void CSurface::Destroy() {}

int CSurface::CopyBlt(int x, int y, CSurface& src, CRect* pSrcRect, CRect* pClip) {
    CRect rcDst, rcSrc;
    if (!ClipRects(rcDst, rcSrc, x, y, src, pSrcRect, pClip)) {
        return 0;
    }
    if (!s_pCopyBlt) {
        return 0;
    }
    return (this->*s_pCopyBlt)(rcDst.left, rcDst.top, src, rcSrc);
}

int CSurface::FillColor(CRect* pRect, DWORD color, CRect* pClip) {
    CRect rc = GetRect();
    if (pRect) {
        ::IntersectRect(&rc, &rc, pRect);
    }
    if (pClip) {
        ::IntersectRect(&rc, &rc, pClip);
    }
    if (!s_pFillColor) {
        return 0;
    }
    return (this->*s_pFillColor)(rc, color);
}

int CSurface::InternalCopyBlt(int x, int y, CSurfaceBase& src, const CRect& rcSrc) {
    return UseMMX() ? InternalCopyBltMMX(x, y, src, rcSrc) : CSurfaceBase::InternalCopyBlt(x, y, src, rcSrc);
}

int CSurface::InternalCopyBltMMX(int x, int y, CSurfaceBase& src, const CRect& rcSrc) {
    if (rcSrc.Width() < 1 || rcSrc.Height() < 1) {
        return 1;
    }
    const PixelLock target(*this);
    if (!target) {
        return 0;
    }
    const PixelLock source(src);
    if (!source) {
        return 0;
    }
    rastel::kernels::Rows().copyRect(target.At(x, y), target.Pitch(), source.At(rcSrc.left, rcSrc.top), source.Pitch(),
                                     rcSrc.Width(), rcSrc.Height());
    return 1;
}

int CSurface::InternalCopyBltGDI(int x, int y, CSurfaceBase& src, const CRect& rcSrc) {
    if (rcSrc.Width() < 1 || rcSrc.Height() < 1) {
        return 1;
    }
    const ScopedDc target(*this);
    if (!target) {
        return 0;
    }
    const ScopedDc source(src);
    if (!source) {
        return 0;
    }
    return ::BitBlt(target.Get(), x, y, rcSrc.Width(), rcSrc.Height(), source.Get(), rcSrc.left, rcSrc.top, SRCCOPY);
}

int CSurface::InternalFillColor(CRect& rc, DWORD color) {
    return UseMMX() ? InternalFillColorMMX(rc, color) : InternalFillColorCPU(rc, color);
}

int CSurface::InternalFillColorCPU(CRect& rc, DWORD color) {
    if (rc.Width() < 1 || rc.Height() < 1) {
        return 1;
    }
    const PixelLock target(*this);
    if (!target) {
        return 0;
    }
    rastel::kernels::PlainRows().fillRect(target.At(rc.left, rc.top), target.Pitch(), rc.Width(), rc.Height(),
                                          RGB2COLOR(color));
    return 1;
}

int CSurface::InternalFillColorMMX(CRect& rc, DWORD color) {
    if (rc.Width() < 1 || rc.Height() < 1) {
        return 1;
    }
    const PixelLock target(*this);
    if (!target) {
        return 0;
    }
    rastel::kernels::Rows().fillRect(target.At(rc.left, rc.top), target.Pitch(), rc.Width(), rc.Height(),
                                     RGB2COLOR(color));
    return 1;
}

int CSurface::InternalFillColorGDI(CRect& rc, DWORD color) {
    const HDC dc = GetDC();
    const HBRUSH brush = ::CreateSolidBrush(color);
    ::FillRect(dc, &rc, brush);
    ::DeleteObject(brush);
    ReleaseDC(dc);
    return 1;
}
