// Quads and rotation between composites: which triangles draw them, and where a target's plane takes part.
#include "rastel/alpha/alpha_channel.h"
#include "rastel/composite/adv_surface.h"
#include "rastel/display/display_manager.h"
#include "rastel/math/plane_geometry.h"
#include "rastel/raster/quad.h"
#include "rastel/surface/reference.h"
#include "rastel/surface/surface.h"

using rastel::raster::QuadFaces;

int CAdvSurface::BltTexture(CPoint* const corners, CAdvSurface& src, CRect* pSrcRect, CRect* pClip) {
    if (!m_pSurface || !src.m_pSurface || !corners) {
        return 0;
    }
    const CRect rcSrc = rastel::raster::SourceRect(src, pSrcRect);
    if (rcSrc.IsRectEmpty()) {
        return 0;
    }
    const auto draw = [&](FACE3D& face) {
        if (src.m_pAlphaChannel) {
            return m_pSurface->BltTexturedTriangleAlpha(face, *src.m_pSurface, *src.m_pAlphaChannel, pClip);
        }
        const DWORD key = src.GetColorKey();
        return key == noColorKey ? m_pSurface->BltTexturedTriangle(face, *src.m_pSurface, pClip)
                                 : m_pSurface->BltTexturedTriangleTrans(face, *src.m_pSurface, key, pClip);
    };
    QuadFaces faces(corners, rcSrc);
    return draw(faces.lower) && draw(faces.upper) ? 1 : 0;
}

int CAdvSurface::BltRotate(CRect* pDstRect, double angle, CPoint centre, CAdvSurface& src, CRect* pSrcRect,
                           CRect* pClip) {
    if (!m_pSurface || !src.m_pSurface) {
        return 0;
    }
    CPoint corners[4];
    RotateRect(corners, pDstRect ? *pDstRect : GetRect(), angle, centre);
    if (!src.m_pAlphaChannel || !m_pAlphaChannel) {
        return BltTexture(corners, src, pSrcRect, pClip);
    }

    // Both have planes, and the target's must take part: the quad goes onto a composite of its own first. That one ends
    // where its bounding box ends, without the quad's last column and row.
    const CRect rcSrc = rastel::raster::SourceRect(src, pSrcRect);
    const CRect bound = GetBoundingRectOfVertexList(corners);
    if (rcSrc.IsRectEmpty() || bound.Width() < 1 || bound.Height() < 1) {   // below 1 also where 32 bits overflow
        return 0;
    }
    CDisplayManager* const manager = GetDisplayManager();
    const rastel::Reference<CAdvSurface> temp(manager ? manager->CreateAdvSurface(bound.Width(), bound.Height(), 1)
                                                      : nullptr);
    if (!temp || !temp->m_pSurface || !temp->m_pAlphaChannel) {
        return 0;
    }
    temp->m_pAlphaChannel->Fill(nullptr, 0, nullptr);   // transparent outside the quad
    for (CPoint& corner : corners) {
        corner -= bound.TopLeft();
    }
    QuadFaces faces(corners, rcSrc);
    for (FACE3D* const face : {&faces.lower, &faces.upper}) {
        temp->m_pSurface->BltTexturedTriangle(*face, *src.m_pSurface, nullptr);
        temp->m_pAlphaChannel->BltTexturedTriangle(*face, *src.m_pAlphaChannel, nullptr);
    }
    return Blt(bound.left, bound.top, *temp, nullptr, pClip);
}
