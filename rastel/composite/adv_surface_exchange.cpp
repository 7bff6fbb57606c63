// The exchange with GDI+ bitmaps. Colours are straight on both sides: bytes are copied as they are, and the
// plane is the bitmap's alpha.
#include <cstdlib>
#include <cstring>
#include <memory>

#include "rastel/alpha/alpha_channel.h"
#include "rastel/composite/adv_surface.h"
#include "rastel/platform/gdiplus.h"
#include "rastel/surface/bounds.h"
#include "rastel/surface/kernels.h"
#include "rastel/surface/pixel_lock.h"
#include "rastel/surface/surface.h"

namespace {

using rastel::PixelLock;

// The whole bitmap in one format, top-down, for the length of a scope.
class BitmapLock {
public:
    BitmapLock(Gdiplus::Bitmap& bitmap, int width, int height, Gdiplus::ImageLockMode mode, INT format)
        : bitmap_(bitmap) {
        const Gdiplus::Rect whole(0, 0, width, height);
        isLocked_ = bitmap_.LockBits(&whole, mode, format, &data_) == Gdiplus::Ok;
    }
    ~BitmapLock() {
        if (isLocked_) {
            bitmap_.UnlockBits(&data_);
        }
    }
    BitmapLock(const BitmapLock&) = delete;
    BitmapLock& operator=(const BitmapLock&) = delete;

    explicit operator bool() const { return isLocked_ && data_.Scan0; }
    int Pitch() const { return std::abs(data_.Stride); }
    unsigned char* Row(int y) const {
        return static_cast<unsigned char*>(data_.Scan0) + static_cast<std::ptrdiff_t>(y) * Pitch();
    }

private:
    Gdiplus::Bitmap& bitmap_;
    Gdiplus::BitmapData data_;
    bool isLocked_ = false;
};

DWORD LoadWord(const unsigned char* pixel) {
    DWORD word;
    std::memcpy(&word, pixel, sizeof(word));
    return word;
}

// Pixels with the plane's bytes as their fourth. In one pass: each pixel is touched once.
void JoinRow(unsigned char* __restrict target, const unsigned char* __restrict colors,
             const unsigned char* __restrict plane, int width) {
    for (int x = 0; x < width; ++x) {
        const DWORD word = (LoadWord(colors + x * 4) & 0x00FFFFFF) | static_cast<DWORD>(plane[x]) << 24;
        std::memcpy(target + x * 4, &word, sizeof(word));
    }
}

// Opaque, but for the key, which becomes the word 0.
void KeyRow(unsigned char* __restrict target, const unsigned char* __restrict colors, DWORD key, int width) {
    for (int x = 0; x < width; ++x) {
        const DWORD word = LoadWord(colors + x * 4);
        const DWORD shown = word == key ? 0 : word | 0xFF000000;
        std::memcpy(target + x * 4, &shown, sizeof(shown));
    }
}

// A store that was made anew, smaller, behind the composite holds less than the composite says.
bool StoresReach(CAdvSurface& composite) {
    const CRect whole = composite.GetRect();
    CSurface* const colors = composite.GetSurface();
    CAlphaChannel* const plane = composite.GetAlphaChannel();
    return colors && rastel::Covers(*colors, whole) && (!plane || rastel::Covers(*plane, whole));
}

}   // namespace

Gdiplus::Bitmap* CAdvSurface::CreateBitmap() {
    if (!StoresReach(*this)) {
        return nullptr;
    }
    const bool isOpaque = !m_pAlphaChannel && !HasColorKey();
    const INT format = isOpaque ? PixelFormat32bppRGB : PixelFormat32bppARGB;
    std::unique_ptr<Gdiplus::Bitmap> bitmap(new Gdiplus::Bitmap(m_Width, m_Height, format));
    if (!bitmap || bitmap->GetLastStatus() != Gdiplus::Ok) {
        return nullptr;
    }
    const PixelLock colors(*this);
    if (!colors) {
        return nullptr;
    }
    if (m_pAlphaChannel) {
        PixelLock plane(*m_pAlphaChannel);
        const BitmapLock target(*bitmap, m_Width, m_Height, Gdiplus::ImageLockModeWrite, format);
        if (!plane || !target) {
            return nullptr;
        }
        for (int y = 0; y < m_Height; ++y) {
            JoinRow(target.Row(y), colors.At(0, y), plane.At(0, y), m_Width);
        }
        plane.Unlock();
        return bitmap.release();
    }
    const BitmapLock target(*bitmap, m_Width, m_Height, Gdiplus::ImageLockModeWrite, format);
    if (!target) {
        return nullptr;
    }
    const DWORD key = CSurface::RGB2COLOR(m_ColorKey);
    for (int y = 0; y < m_Height; ++y) {
        if (isOpaque) {
            std::memcpy(target.Row(y), colors.At(0, y), static_cast<std::size_t>(m_Width) * 4);
        } else {
            KeyRow(target.Row(y), colors.At(0, y), key, m_Width);
        }
    }
    return bitmap.release();
}

int CAdvSurface::SetBitmap(Gdiplus::Bitmap& bitmap) {
    if (bitmap.GetWidth() != static_cast<UINT>(m_Width) || bitmap.GetHeight() != static_cast<UINT>(m_Height)) {
        return 0;
    }
    const INT format = m_pAlphaChannel ? PixelFormat32bppARGB : PixelFormat32bppRGB;
    if (bitmap.GetPixelFormat() != format || !StoresReach(*this)) {
        return 0;
    }
    const PixelLock colors(*this);
    if (!colors) {
        return 0;
    }
    if (m_pAlphaChannel) {
        PixelLock plane(*m_pAlphaChannel);
        const BitmapLock source(bitmap, m_Width, m_Height, Gdiplus::ImageLockModeRead, format);
        if (!plane || !source) {
            return 0;
        }
        rastel::kernels::Rows().splitAlphaRect(colors.At(0, 0), colors.Pitch(), plane.At(0, 0), plane.Pitch(),
                                               source.Row(0), source.Pitch(), m_Width, m_Height);
        plane.Unlock();
        return 1;
    }
    const BitmapLock source(bitmap, m_Width, m_Height, Gdiplus::ImageLockModeRead, format);
    if (!source) {
        return 0;
    }
    for (int y = 0; y < m_Height; ++y) {
        std::memcpy(colors.At(0, y), source.Row(y), static_cast<std::size_t>(m_Width) * 4);
    }
    return 1;
}
