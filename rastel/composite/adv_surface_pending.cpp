// The exchange with DIBs and GDI+ is not offered yet: the operations refuse.
#include "rastel/composite/adv_surface.h"

int CAdvSurface::SetDib(winext::CDib&, winext::CDib*) {
    return 0;
}

Gdiplus::Bitmap* CAdvSurface::CreateBitmap() {
    return nullptr;
}

int CAdvSurface::SetBitmap(Gdiplus::Bitmap&) {
    return 0;
}
