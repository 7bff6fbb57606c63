// Blending and textured triangles are not drawn yet: the operations refuse.
#include "rastel/surface/surface.h"

int CSurface::InternalAlphaBlt(int, int, CSurface&, CAlphaChannel&, const CRect&) {
    return 0;
}

int CSurface::AlphaBlt(int, int, CSurface&, CAlphaChannel&, CRect*, CRect*) {
    return 0;
}

int CSurface::AlphaColorBlt(int, int, DWORD, CAlphaChannel&, CRect*, CRect*) {
    return 0;
}

int CSurface::AlphaConstBlt(int, int, CSurface&, int, CRect*, CRect*) {
    return 0;
}

int CSurface::AlphaConstBltEx(int, int, CSurface&, int, CRect*, CSurface*, CRect*) {
    return 0;
}

int CSurface::AlphaConstTransBlt(int, int, CSurface&, int, DWORD, CRect*, CRect*) {
    return 0;
}

int CSurface::BltTexturedTriangle(FACE3D&, CSurface&, CRect*) {
    return 0;
}

int CSurface::BltTexturedTriangleTrans(FACE3D&, CSurface&, DWORD, CRect*) {
    return 0;
}

int CSurface::BltTexturedTriangleAlpha(FACE3D&, CSurface&, CAlphaChannel&, CRect*) {
    return 0;
}
