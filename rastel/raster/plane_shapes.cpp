// Textured triangles, quads and rotation between planes.
#include "rastel/alpha/alpha_channel.h"
#include "rastel/math/plane_geometry.h"
#include "rastel/raster/quad.h"
#include "rastel/raster/texture_steps.h"
#include "rastel/raster/triangle.h"

using rastel::PixelLock;

int CAlphaChannel::BltTexturedTriangle(FACE3D& face, CAlphaChannel& src, CRect* pClip) {
    const CRect clip = rastel::raster::ClipOf(*this, pClip);
    if (rastel::raster::HasNothingToDraw(face, clip)) {
        return 1;
    }
    PixelLock source(src);
    if (!source) {
        return 0;
    }
    const PixelLock target(*this);
    if (!target) {
        return 0;
    }
    const rastel::raster::CopyStep<1> step(source);
    rastel::raster::DrawTriangle(target, face, clip, src.GetWidth(), src.GetHeight(), step);
    source.Unlock();   // ahead of the target
    return 1;
}

int CAlphaChannel::BltTexture(CPoint* const corners, CRect*, CAlphaChannel& src, CRect* pSrcRect, CRect* pClip) {
    const CRect rcSrc = rastel::raster::SourceRect(src, pSrcRect);
    if (!corners || rcSrc.IsRectEmpty()) {
        return 0;
    }
    rastel::raster::QuadFaces faces(corners, rcSrc);
    return BltTexturedTriangle(faces.lower, src, pClip) ? BltTexturedTriangle(faces.upper, src, pClip) : 0;
}

int CAlphaChannel::BltRotate(CRect* pDstRect, double angle, CPoint centre, CAlphaChannel& src, CRect* pSrcRect,
                             CRect* pClip) {
    CRect rcDst = pDstRect ? *pDstRect : GetRect();
    CPoint corners[4];
    RotateRect(corners, rcDst, angle, centre);
    return BltTexture(corners, &rcDst, src, pSrcRect, pClip);
}
