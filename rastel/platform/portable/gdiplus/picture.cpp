#include "rastel/platform/portable/gdiplus/picture.h"

#include <cstring>

namespace rastel::platform::gdip {

namespace {

// Bytes of a row padded to 4; 0: more than 31 bits count.
int StrideOf(int width, int format) {
    const std::int64_t stride = (std::int64_t{width} * BytesPerPixel(format) + 3) / 4 * 4;
    return stride > INT32_MAX ? 0 : static_cast<int>(stride);
}

}   // namespace

std::unique_ptr<Picture> Picture::Make(int width, int height, int stride, int format, unsigned char* pixels,
                                       Gdiplus::Status* status) {
    Gdiplus::Status ignored;
    Gdiplus::Status& result = status ? *status : ignored;
    result = Gdiplus::InvalidParameter;
    if (width < 1 || height < 1 || !IsKnownFormat(format)) {
        return nullptr;
    }
    const int needed = StrideOf(width, format);
    if (pixels) {
        const std::int64_t rowBytes = std::int64_t{width} * BytesPerPixel(format);
        if (stride % 4 != 0 || std::abs(std::int64_t{stride}) < rowBytes || stride == INT32_MIN) {
            return nullptr;
        }
    }
    result = Gdiplus::OutOfMemory;
    if (needed == 0 || std::int64_t{needed} * height > INT32_MAX) {
        return nullptr;
    }
    std::unique_ptr<Picture> picture(new Picture);
    picture->width_ = width;
    picture->height_ = height;
    picture->format_ = format;
    picture->stride_ = pixels ? stride : needed;
    picture->bits_ = pixels;
    if (!pixels) {
        const auto bytes = static_cast<std::size_t>(needed) * static_cast<std::size_t>(height);
        picture->owned_.reset(static_cast<unsigned char*>(std::malloc(bytes)));
        picture->bits_ = picture->owned_.get();
        picture->isCleared_ = false;
        if (!picture->bits_) {
            return nullptr;
        }
    }
    if (format == PixelFormat8bppIndexed) {
        for (DWORD i = 0; i < 256; ++i) {
            picture->palette_.push_back(0xFF000000 | i * 0x010101);
        }
    }
    result = Gdiplus::Ok;
    return picture;
}

void Picture::Clear() {
    if (!isCleared_) {
        std::memset(bits_, 0, static_cast<std::size_t>(stride_) * static_cast<std::size_t>(height_));
        isCleared_ = true;
    }
}

Gdiplus::Status Picture::Lock(const Gdiplus::Rect* rect, UINT flags, int format, Gdiplus::BitmapData* data) {
    const Gdiplus::Rect part = rect ? *rect : Gdiplus::Rect(0, 0, width_, height_);
    if (!data || part.X < 0 || part.Y < 0 || part.Width < 1 || part.Height < 1 || part.Width > width_ - part.X ||
        part.Height > height_ - part.Y || !IsKnownFormat(format) ||
        (flags & (Gdiplus::ImageLockModeRead | Gdiplus::ImageLockModeWrite)) == 0) {
        return Gdiplus::InvalidParameter;
    }
    if (isLocked_) {
        return Gdiplus::WrongState;
    }
    const bool isHosts = (flags & Gdiplus::ImageLockModeUserInputBuf) != 0;
    const bool isWhole = part.Width == width_ && part.Height == height_;
    lockBits_ = nullptr;
    if (isHosts) {
        if (!data->Scan0 || std::abs(std::int64_t{data->Stride}) < std::int64_t{part.Width} * BytesPerPixel(format)) {
            return Gdiplus::InvalidParameter;
        }
        lockBits_ = static_cast<unsigned char*>(data->Scan0);
        lockStride_ = data->Stride;
    } else if (format != format_) {
        lockStride_ = StrideOf(part.Width, format);
        const std::int64_t bytes = std::int64_t{lockStride_} * part.Height;
        if (bytes == 0 || bytes > INT32_MAX) {
            return Gdiplus::OutOfMemory;
        }
        lockOwned_.reset(static_cast<unsigned char*>(std::calloc(1, static_cast<std::size_t>(bytes))));
        lockBits_ = lockOwned_.get();
        if (!lockBits_) {
            return Gdiplus::OutOfMemory;
        }
    } else if (isWhole && (flags & Gdiplus::ImageLockModeRead) == 0) {
        isCleared_ = true;   // the host writes it all
    }
    if (lockBits_ && (flags & Gdiplus::ImageLockModeRead) != 0) {
        std::vector<DWORD> argb(static_cast<std::size_t>(part.Width));
        for (int y = 0; y < part.Height; ++y) {
            Load(part.X, part.Y + y, part.Width, argb.data());
            StoreArgb(format, lockBits_ + static_cast<std::ptrdiff_t>(y) * lockStride_, 0, part.Width, palette_,
                      argb.data());
        }
    }
    data->Width = static_cast<UINT>(part.Width);
    data->Height = static_cast<UINT>(part.Height);
    data->PixelFormat = format;
    data->Stride = lockBits_ ? lockStride_ : stride_;
    data->Scan0 = lockBits_ ? lockBits_ : Row(part.Y) + static_cast<std::ptrdiff_t>(part.X) * BytesPerPixel(format_);
    isLocked_ = true;
    lockedRect_ = part;
    lockFlags_ = flags;
    lockFormat_ = format;
    return Gdiplus::Ok;
}

Gdiplus::Status Picture::Unlock(Gdiplus::BitmapData* data) {
    if (!data) {
        return Gdiplus::InvalidParameter;
    }
    if (!isLocked_) {
        return Gdiplus::WrongState;
    }
    isLocked_ = false;
    if (lockBits_ && (lockFlags_ & Gdiplus::ImageLockModeWrite) != 0) {
        std::vector<DWORD> argb(static_cast<std::size_t>(lockedRect_.Width));
        for (int y = 0; y < lockedRect_.Height; ++y) {
            LoadArgb(lockFormat_, lockBits_ + static_cast<std::ptrdiff_t>(y) * lockStride_, 0, lockedRect_.Width,
                     palette_, argb.data());
            Store(lockedRect_.X, lockedRect_.Y + y, lockedRect_.Width, argb.data());
        }
    }
    lockBits_ = nullptr;
    lockOwned_.reset();
    return Gdiplus::Ok;
}

std::unique_ptr<Picture> Picture::Copy(const Gdiplus::Rect& rect, int format) {
    std::unique_ptr<Picture> copy = Make(rect.Width, rect.Height, 0, format, nullptr);
    if (!copy) {
        return nullptr;
    }
    if (format == PixelFormat8bppIndexed && format == format_) {
        copy->palette_ = palette_;
    }
    std::vector<DWORD> argb(static_cast<std::size_t>(rect.Width));
    for (int y = 0; y < rect.Height; ++y) {
        if (format == format_) {   // to the bit, fourth bytes too
            const int bytes = BytesPerPixel(format);
            std::memcpy(copy->Row(y), Row(rect.Y + y) + static_cast<std::ptrdiff_t>(rect.X) * bytes,
                        static_cast<std::size_t>(rect.Width) * static_cast<std::size_t>(bytes));
        } else {
            Load(rect.X, rect.Y + y, rect.Width, argb.data());
            copy->Store(0, y, rect.Width, argb.data());
        }
    }
    return copy;
}

}   // namespace rastel::platform::gdip
