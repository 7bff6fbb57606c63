// Textured triangles, quads and rotation between planes.
#include "rastel/alpha/alpha_channel.h"
#include "rastel/math/plane_geometry.h"
#include "rastel/raster/quad.h"
#include "rastel/raster/texture_steps.h"
#include "rastel/raster/triangle.h"

using rastel::PixelLock;

int CAlphaChannel::BltTexturedTriangle(FACE3D& face, CAlphaChannel& src, CRect* pClip) {
    return rastel::raster::BltTexels(*this, face, src, pClip,
                                     [](const PixelLock& source) { return rastel::raster::CopyStep<1>(source); });
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
