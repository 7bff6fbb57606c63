#include "examples/support/stores.h"

#include <cstring>

#include "rastel/surface/pixel_lock.h"

namespace rastel::example {

namespace {

template <class Value>
Plane FillPlane(CDisplayManager& manager, const Picture& picture, Value valueOf) {
    Plane plane(manager.CreateAlphaChannel(picture.width, picture.height));
    if (!plane) {
        return nullptr;
    }
    {
        const rastel::PixelLock lock(*plane);
        if (!lock) {
            return nullptr;
        }
        for (int y = 0; y < picture.height; ++y) {
            unsigned char* const row = lock.At(0, y);
            for (int x = 0; x < picture.width; ++x) {
                row[x] = static_cast<unsigned char>(valueOf(picture.Row(y)[x]));
            }
        }
    }
    return plane;
}

struct ScreenCopy {
    HDC screen = ::CreateDCW(L"DISPLAY", nullptr, nullptr, nullptr);
    HDC memory = ::CreateCompatibleDC(screen);
    HBITMAP bitmap = nullptr;
    HGDIOBJ old = nullptr;

    ~ScreenCopy() {
        if (old) {
            ::SelectObject(memory, old);
        }
        if (bitmap) {
            ::DeleteObject(bitmap);
        }
        if (memory) {
            ::DeleteDC(memory);
        }
        if (screen) {
            ::DeleteDC(screen);
        }
    }
};

}   // namespace

Surface ToSurface(CDisplayManager& manager, const Picture& picture) {
    Surface surface(manager.CreateSurface(picture.width, picture.height));
    if (!surface) {
        return nullptr;
    }
    {
        const rastel::PixelLock lock(*surface);
        if (!lock) {
            return nullptr;
        }
        for (int y = 0; y < picture.height; ++y) {
            auto* const row = reinterpret_cast<DWORD*>(lock.At(0, y));
            for (int x = 0; x < picture.width; ++x) {
                row[x] = picture.Row(y)[x] & 0xFFFFFF;
            }
        }
    }
    return surface;
}

Plane ToPlane(CDisplayManager& manager, const Picture& picture) {
    return FillPlane(manager, picture, [](DWORD pixel) {
        return ((pixel >> 16 & 0xFF) * 77 + (pixel >> 8 & 0xFF) * 150 + (pixel & 0xFF) * 29) >> 8;
    });
}

Plane AlphaToPlane(CDisplayManager& manager, const Picture& picture) {
    return FillPlane(manager, picture, [](DWORD pixel) { return pixel >> 24; });
}

Picture Keyed(const Picture& picture, COLORREF key) {
    Picture keyed = picture;
    const DWORD keyPixel = CSurface::RGB2COLOR(key);
    for (DWORD& pixel : keyed.pixels) {
        const DWORD color = pixel & 0xFFFFFF;
        pixel = 0xFF000000u | (pixel >> 24 < 128 ? keyPixel : color == keyPixel ? color ^ 1 : color);
    }
    keyed.hasAlpha = false;
    return keyed;
}

std::optional<Picture> CaptureScreen(const RECT& area) {
    std::optional<Picture> picture = MakePicture(area.right - area.left, area.bottom - area.top);
    if (!picture) {
        return picture;
    }
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof(info.bmiHeader);
    info.bmiHeader.biWidth = picture->width;
    info.bmiHeader.biHeight = -picture->height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    ScreenCopy copy;
    void* bits = nullptr;
    copy.bitmap = ::CreateDIBSection(copy.memory, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    if (!copy.screen || !copy.memory || !copy.bitmap || !bits) {
        return std::nullopt;
    }
    copy.old = ::SelectObject(copy.memory, copy.bitmap);
    if (!::BitBlt(copy.memory, 0, 0, picture->width, picture->height, copy.screen, area.left, area.top, SRCCOPY)) {
        return std::nullopt;
    }
    ::GdiFlush();
    std::memcpy(picture->pixels.data(), bits, picture->pixels.size() * sizeof(DWORD));
    for (DWORD& pixel : picture->pixels) {
        pixel |= 0xFF000000u;
    }
    return picture;
}

}   // namespace rastel::example
