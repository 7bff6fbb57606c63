// The exchange with GDI+ is not offered yet: the operations refuse.
#include "rastel/composite/adv_surface.h"

Gdiplus::Bitmap* CAdvSurface::CreateBitmap() {
    return nullptr;
}

int CAdvSurface::SetBitmap(Gdiplus::Bitmap&) {
    return 0;
}
