// Quads, rotation and the exchange with DIBs and GDI+ are not offered yet: the operations refuse.
#include "rastel/composite/adv_surface.h"

int CAdvSurface::BltTexture(CPoint* const, CAdvSurface&, CRect*, CRect*) {
    return 0;
}

int CAdvSurface::BltRotate(CRect*, double, CPoint, CAdvSurface&, CRect*, CRect*) {
    return 0;
}

int CAdvSurface::SetDib(winext::CDib&, winext::CDib*) {
    return 0;
}

Gdiplus::Bitmap* CAdvSurface::CreateBitmap() {
    return nullptr;
}

int CAdvSurface::SetBitmap(Gdiplus::Bitmap&) {
    return 0;
}
