// Textured triangles are not drawn yet: the operations refuse.
#include "rastel/surface/surface.h"

int CSurface::BltTexturedTriangle(FACE3D&, CSurface&, CRect*) {
    return 0;
}

int CSurface::BltTexturedTriangleTrans(FACE3D&, CSurface&, DWORD, CRect*) {
    return 0;
}

int CSurface::BltTexturedTriangleAlpha(FACE3D&, CSurface&, CAlphaChannel&, CRect*) {
    return 0;
}
