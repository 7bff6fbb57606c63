// Textured triangles onto colour surfaces: as they are, through a key, through a plane.
#include <algorithm>

#include "rastel/alpha/alpha_channel.h"
#include "rastel/raster/texture_steps.h"
#include "rastel/raster/triangle.h"
#include "rastel/surface/surface.h"

using rastel::PixelLock;
using rastel::raster::BlendStep;
using rastel::raster::CopyStep;
using rastel::raster::KeyStep;

int CSurface::BltTexturedTriangle(FACE3D& face, CSurface& src, CRect* pClip) {
    return rastel::raster::BltTexels(*this, face, src, pClip,
                                     [](const PixelLock& source) { return CopyStep<4>(source); });
}

int CSurface::BltTexturedTriangleTrans(FACE3D& face, CSurface& src, DWORD key, CRect* pClip) {
    return rastel::raster::BltTexels(*this, face, src, pClip, [=](const PixelLock& source) {
        return KeyStep{CopyStep<4>(source), RGB2COLOR(key)};
    });
}

int CSurface::BltTexturedTriangleAlpha(FACE3D& face, CSurface& src, CAlphaChannel& alpha, CRect* pClip) {
    return rastel::raster::BltTriangle(
        *this, face, src, pClip, [&](const PixelLock& target, const PixelLock& source, const CRect& clip) {
            const PixelLock plane(alpha);
            if (plane) {
                const BlendStep step = {CopyStep<4>(source), CopyStep<1>(plane)};
                rastel::raster::DrawTriangle(target, face, clip, std::min(src.GetWidth(), alpha.GetWidth()),
                                             std::min(src.GetHeight(), alpha.GetHeight()), step);
            }
            return static_cast<bool>(plane);
        });
}
