// Textured triangles onto colour surfaces: as they are, through a key, through a plane.
#include "rastel/alpha/alpha_channel.h"
#include "rastel/raster/texture_steps.h"
#include "rastel/raster/triangle.h"
#include "rastel/surface/surface.h"

using rastel::PixelLock;

int CSurface::BltTexturedTriangle(FACE3D& face, CSurface& src, CRect* pClip) {
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
    const rastel::raster::CopyStep<4> step(source);
    rastel::raster::DrawTriangle(target, face, clip, src.GetWidth(), src.GetHeight(), step);
    source.Unlock();   // ahead of the target
    return 1;
}

int CSurface::BltTexturedTriangleTrans(FACE3D& face, CSurface& src, DWORD key, CRect* pClip) {
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
    const rastel::raster::KeyStep step = {rastel::raster::CopyStep<4>(source), RGB2COLOR(key)};
    rastel::raster::DrawTriangle(target, face, clip, src.GetWidth(), src.GetHeight(), step);
    source.Unlock();   // ahead of the target
    return 1;
}

int CSurface::BltTexturedTriangleAlpha(FACE3D& face, CSurface& src, CAlphaChannel& alpha, CRect* pClip) {
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
    PixelLock plane(alpha);
    if (!plane) {
        return 0;
    }
    const rastel::raster::BlendStep step = {rastel::raster::CopyStep<4>(source), rastel::raster::CopyStep<1>(plane)};
    rastel::raster::DrawTriangle(target, face, clip, std::min(src.GetWidth(), alpha.GetWidth()),
                                 std::min(src.GetHeight(), alpha.GetHeight()), step);
    plane.Unlock();
    source.Unlock();   // ahead of the target
    return 1;
}
