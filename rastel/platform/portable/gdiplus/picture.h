// The native bitmap behind Gdiplus::Bitmap: pixels top-down in one of the known formats, and the one lock on them.
#pragma once

#include <cstdlib>
#include <memory>
#include <vector>

#include "rastel/platform/portable/gdiplus/argb_rows.h"
#include "rastel/platform/portable/gdiplus/flat.h"

namespace rastel::platform::gdip {

class Picture : public Gdiplus::GpBitmap {
public:
    static constexpr int longestSide = 65535;   // of an image file

    // Null pixels: its own, zero. Null on failure, and `status` says why.
    static std::unique_ptr<Picture> Make(int width, int height, int stride, int format, unsigned char* pixels,
                                         Gdiplus::Status* status = nullptr);

    static Picture* Of(Gdiplus::GpImage* image) { return static_cast<Picture*>(static_cast<GpBitmap*>(image)); }

    int Width() const { return width_; }
    int Height() const { return height_; }
    int Format() const { return format_; }
    bool IsLocked() const { return isLocked_; }
    std::vector<DWORD>& Palette() { return palette_; }

    unsigned char* Row(int y) {
        Clear();
        return bits_ + static_cast<std::ptrdiff_t>(y) * stride_;
    }
    void Load(int x, int y, int count, DWORD* argb) { LoadArgb(format_, Row(y), x, count, palette_, argb); }
    void Store(int x, int y, int count, const DWORD* argb) { StoreArgb(format_, Row(y), x, count, palette_, argb); }

    Gdiplus::Status Lock(const Gdiplus::Rect* rect, UINT flags, int format, Gdiplus::BitmapData* data);
    Gdiplus::Status Unlock(Gdiplus::BitmapData* data);

    // A copy of a part of it, inside, in any known format. Null: no memory.
    std::unique_ptr<Picture> Copy(const Gdiplus::Rect& rect, int format);

private:
    struct Free {
        void operator()(unsigned char* block) const { std::free(block); }
    };

    Picture() = default;
    void Clear();   // what Make put off: the zeros

    int width_ = 0;
    int height_ = 0;
    int stride_ = 0;
    int format_ = 0;
    unsigned char* bits_ = nullptr;
    std::unique_ptr<unsigned char, Free> owned_;
    bool isCleared_ = true;
    std::vector<DWORD> palette_;

    bool isLocked_ = false;
    Gdiplus::Rect lockedRect_;
    UINT lockFlags_ = 0;
    int lockFormat_ = 0;
    unsigned char* lockBits_ = nullptr;   // where the host looks, if not at the pixels themselves
    int lockStride_ = 0;
    std::unique_ptr<unsigned char, Free> lockOwned_;
};

}   // namespace rastel::platform::gdip
