// Bitmaps of GDI+ out of images.
#include <cstddef>
#include <cstdlib>
#include <cstring>

#include "rastel/image/dib.h"
#include "rastel/platform/gdiplus.h"

namespace winext {

Gdiplus::Bitmap* CDib::CreateBitmap() {
    const BITMAPINFO* const info = GetBitmapInfo();
    const unsigned char* const bits = GetBits();
    if (!bits || !info || info->bmiHeader.biBitCount < 9) {
        return nullptr;
    }
    const int bitCount = info->bmiHeader.biBitCount, width = GetWidth(), height = GetHeight();
    if ((bitCount != 24 && bitCount != 32) || width < 1 || height < 1) {
        return nullptr;
    }
    const Gdiplus::PixelFormat format = bitCount == 24 ? PixelFormat24bppRGB : PixelFormat32bppARGB;
    auto* const bitmap = new Gdiplus::Bitmap(width, height, format);   // its own operator new: GdipAlloc
    if (!bitmap) {
        return nullptr;
    }
    const Gdiplus::Rect whole(0, 0, width, height);
    Gdiplus::BitmapData data = {};
    if (bitmap->GetLastStatus() != Gdiplus::Ok ||
        bitmap->LockBits(&whole, Gdiplus::ImageLockModeWrite, format, &data) != Gdiplus::Ok) {
        delete bitmap;
        return nullptr;
    }
    const auto rowBytes = static_cast<std::size_t>(width) * static_cast<std::size_t>(bitCount / 8);
    for (int y = 0; y < height; ++y) {
        std::memcpy(static_cast<unsigned char*>(data.Scan0) + std::ptrdiff_t{height - 1 - y} * std::abs(data.Stride),
                    bits + std::ptrdiff_t{y} * GetPitch(), rowBytes);
    }
    bitmap->UnlockBits(&data);
    return bitmap;
}

}   // namespace winext
