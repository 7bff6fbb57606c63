// Which operations of the stores a blit between composites comes down to.
#include "rastel/alpha/alpha_channel.h"
#include "rastel/composite/adv_surface.h"
#include "rastel/display/display_manager.h"
#include "rastel/platform/user.h"
#include "rastel/surface/mmx.h"
#include "rastel/surface/reference.h"
#include "rastel/surface/surface.h"

using rastel::Reference;

int CAdvSurface::Blt(int x, int y, CAdvSurface& src, CRect* pSrcRect, CRect* pClip) {
    if (!m_pSurface || !src.m_pSurface) {
        return 0;
    }
    CRect rcDst, rcSrc;
    if (!ClipRects(rcDst, rcSrc, x, y, src, pSrcRect, pClip)) {
        return 0;
    }
    if (src.m_pAlphaChannel) {
        return AlphaBlt(rcDst.left, rcDst.top, src, *src.m_pAlphaChannel, &rcSrc, nullptr);
    }
    const DWORD key = src.GetColorKey();
    if (key != noColorKey) {
        if (m_pAlphaChannel) {
            m_pAlphaChannel->OpaqueMask(rcDst.left, rcDst.top, *src.m_pSurface, CSurface::RGB2COLOR(key), &rcSrc,
                                        nullptr);
        }
        return m_pSurface->TransparentBlt(x, y, *src.m_pSurface, key, pSrcRect, pClip);
    }
    // A blit that only touches an edge has an empty source, but rcDst may still have a size: nothing is made opaque.
    if (m_pAlphaChannel && rcSrc.Width() > 0 && rcSrc.Height() > 0) {
        m_pAlphaChannel->Fill(&rcDst, 255, nullptr);
    }
    return CopyBlt(rcDst.left, rcDst.top, src, &rcSrc, pClip);
}

int CAdvSurface::CopyBlt(int x, int y, CAdvSurface& src, CRect* pSrcRect, CRect* pClip) {
    if (!m_pSurface || !src.m_pSurface) {
        return 0;
    }
    if (!m_pSurface->CopyBlt(x, y, *src.m_pSurface, pSrcRect, pClip)) {
        return 0;
    }
    if (m_pAlphaChannel && src.m_pAlphaChannel) {
        return m_pAlphaChannel->CopyBlt(x, y, *src.m_pAlphaChannel, pSrcRect, pClip);
    }
    return 1;
}

int CAdvSurface::FillColor(CRect* pRect, DWORD color, CRect* pClip) {
    return m_pSurface ? m_pSurface->FillColor(pRect, color, pClip) : 0;
}

int CAdvSurface::ShadowBlt(CRect* pRect, int percent) {
    return m_pSurface ? m_pSurface->ShadowBlt(pRect, percent) : 0;
}

int CAdvSurface::AlphaBlt(int x, int y, CAdvSurface& src, CAlphaChannel& alpha, CRect* pSrcRect, CRect* pClip) {
    if (!m_pSurface || !src.m_pSurface) {
        return 0;
    }
    if (!m_pAlphaChannel) {
        return m_pSurface->AlphaBlt(x, y, *src.m_pSurface, alpha, pSrcRect, pClip);
    }
    CRect rcDst, rcSrc;
    if (!ClipRects(rcDst, rcSrc, x, y, alpha, pSrcRect, pClip)) {
        return 0;
    }
    return UseMMX() ? InternalAlphaBltAdvMMX(rcDst.left, rcDst.top, src, alpha, rcSrc)
                    : InternalAlphaBltAdvCPU(rcDst.left, rcDst.top, src, alpha, rcSrc);
}

int CAdvSurface::AlphaColorBlt(int x, int y, DWORD color, CAlphaChannel& alpha, CRect* pSrcRect, CRect* pClip) {
    if (!m_pSurface) {
        return 0;
    }
    if (!m_pAlphaChannel) {
        return m_pSurface->AlphaColorBlt(x, y, color, alpha, pSrcRect, pClip);
    }
    CRect rcDst, rcSrc;
    if (!ClipRects(rcDst, rcSrc, x, y, alpha, pSrcRect, pClip)) {
        return 0;
    }
    return UseMMX() ? InternalAlphaColorBltAdvMMX(rcDst.left, rcDst.top, color, alpha, rcSrc)
                    : InternalAlphaColorBltAdvCPU(rcDst.left, rcDst.top, color, alpha, rcSrc);
}

int CAdvSurface::AlphaConstBlt(int x, int y, CAdvSurface& src, int alpha, CRect* pSrcRect, CRect* pClip) {
    if (!m_pSurface || !src.m_pSurface) {
        return 0;
    }
    if (alpha <= 0) {
        return 1;
    }
    if (alpha >= 255) {
        return Blt(x, y, src, pSrcRect, pClip);
    }
    const DWORD key = src.GetColorKey();
    const bool hasKey = key != noColorKey;
    if (!src.m_pAlphaChannel && !m_pAlphaChannel) {
        return hasKey ? m_pSurface->AlphaConstTransBlt(x, y, *src.m_pSurface, alpha, key, pSrcRect, pClip)
                      : m_pSurface->AlphaConstBlt(x, y, *src.m_pSurface, alpha, pSrcRect, pClip);
    }

    // Everything else fades through a temporary plane that lies over the whole source.
    CDisplayManager* const manager = GetDisplayManager();
    const Reference<CAlphaChannel> mask(manager ? manager->CreateAlphaChannel(src.GetWidth(), src.GetHeight())
                                                : nullptr);
    if (!mask) {
        return 0;
    }
    if (src.m_pAlphaChannel) {
        mask->CopyBlt(0, 0, *src.m_pAlphaChannel, nullptr, nullptr);
        mask->Multiply(nullptr, alpha);
    } else if (hasKey) {
        mask->OpaqueMask(0, 0, *src.m_pSurface, CSurface::RGB2COLOR(key), nullptr, nullptr);
        mask->Multiply(nullptr, alpha);
    } else {
        mask->Fill(nullptr, static_cast<unsigned char>(alpha), nullptr);
    }
    return AlphaBlt(x, y, src, *mask, pSrcRect, pClip);
}

int CAdvSurface::StretchBlt(CRect* pDstRect, CAdvSurface& src, CRect* pSrcRect, CRect* pClip) {
    CRect rcDst = pDstRect ? *pDstRect : GetRect();
    CRect rcSrc = src.GetRect();
    if (pSrcRect) {
        ::IntersectRect(&rcSrc, &rcSrc, pSrcRect);
    }
    const int width = rcDst.Width(), height = rcDst.Height();
    if (width == 0 || height == 0) {
        return 1;
    }
    if (!m_pSurface || !src.m_pSurface) {
        return 0;
    }
    if (width == rcSrc.Width() && height == rcSrc.Height()) {
        return Blt(rcDst.left, rcDst.top, src, &rcSrc, pClip);
    }
    const DWORD key = src.GetColorKey();
    if (!src.m_pAlphaChannel && key == noColorKey) {
        return m_pSurface->StretchBlt(&rcDst, *src.m_pSurface, &rcSrc, pClip);
    }

    CDisplayManager* const manager = GetDisplayManager();
    const int withAlpha = src.m_pAlphaChannel ? 1 : 0;
    const Reference<CAdvSurface> temp(manager ? manager->CreateAdvSurface(width, height, withAlpha) : nullptr);
    if (!temp || (withAlpha && !temp->m_pAlphaChannel)) {
        return 0;
    }
    CRect rcTemp(0, 0, width, height);
    temp->InternalStretchBlt(rcTemp, src, rcSrc, nullptr);
    if (!withAlpha) {
        return m_pSurface->TransparentBlt(rcDst.left, rcDst.top, *temp->m_pSurface, key, nullptr, pClip);
    }
    temp->m_pAlphaChannel->InternalStretchBlt(rcTemp, *src.m_pAlphaChannel, rcSrc, nullptr);
    return Blt(rcDst.left, rcDst.top, *temp, &rcTemp, pClip);
}
