// A quad as two textured triangles: cut from its first corner to its third.
#pragma once

#include "rastel/platform/framework.h"
#include "rastel/raster/face3d.h"

class CSurfaceBase;

namespace rastel::raster {

CRect SourceRect(const CSurfaceBase& source, const CRect* pSrcRect);   // the whole of it, cut by *pSrcRect

// In the order they are drawn: the later one wins on the diagonal.
struct QuadFaces {
    // Corners are the target's points for the rectangle's corners top-left, top-right, bottom-right, bottom-left.
    // Texels run to the rectangle's last column and row. `rect` isn't empty.
    QuadFaces(const CPoint* corners, const CRect& rect);

    FACE3D lower;   // corners 0, 2, 3
    FACE3D upper;   // corners 0, 1, 2
};

}   // namespace rastel::raster
