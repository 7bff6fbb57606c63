// Bitmaps of GDI+ out of images: not offered yet, every image gives null.
#include "rastel/image/dib.h"

namespace winext {

Gdiplus::Bitmap* CDib::CreateBitmap() {
    return nullptr;
}

}   // namespace winext
