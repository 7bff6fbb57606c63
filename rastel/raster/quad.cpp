#include "rastel/raster/quad.h"

#include "rastel/platform/user.h"
#include "rastel/surface/surface_base.h"

namespace rastel::raster {

CRect SourceRect(const CSurfaceBase& source, const CRect* pSrcRect) {
    const CRect whole = source.GetRect();
    CRect rect;   // stays empty where they don't meet
    ::IntersectRect(&rect, &whole, pSrcRect ? pSrcRect : &whole);
    return rect;
}

QuadFaces::QuadFaces(const CPoint* corners, const CRect& rect) {
    const int right = rect.right - 1, bottom = rect.bottom - 1;
    const auto vertex = [corners](int corner, int u, int v) {
        return FACE3D::Vertex{corners[corner].x, corners[corner].y, u, v};
    };
    const FACE3D::Vertex topLeft = vertex(0, rect.left, rect.top), topRight = vertex(1, right, rect.top);
    const FACE3D::Vertex bottomRight = vertex(2, right, bottom), bottomLeft = vertex(3, rect.left, bottom);
    lower = {{topLeft, bottomRight, bottomLeft}};
    upper = {{topLeft, topRight, bottomRight}};
}

}   // namespace rastel::raster
