// The flat functions of images.
#include <cstring>

#include "rastel/platform/portable/gdi.h"
#include "rastel/platform/portable/gdiplus/native.h"
#include "rastel/platform/portable/gdiplus/picture.h"

using rastel::platform::gdip::Guarded;
using rastel::platform::gdip::IsKnownFormat;
using rastel::platform::gdip::Picture;

namespace Gdiplus {

Status GdiplusStartup(ULONG_PTR* token, const GdiplusStartupInput* input, GdiplusStartupOutput* output) {
    if (!token || !input) {
        return InvalidParameter;
    }
    *token = 1;
    if (output) {
        *output = GdiplusStartupOutput();
    }
    return Ok;
}

void GdiplusShutdown(ULONG_PTR) {}

namespace DllExports {

void* GdipAlloc(std::size_t size) {
    return std::malloc(size == 0 ? 1 : size);
}

void GdipFree(void* memory) {
    std::free(memory);
}

GpStatus GdipCreateBitmapFromScan0(INT width, INT height, INT stride, PixelFormat format, BYTE* scan0,
                                   GpBitmap** bitmap) {
    if (!bitmap) {
        return InvalidParameter;
    }
    *bitmap = nullptr;
    return Guarded([&] {
        Status status = Ok;
        *bitmap = Picture::Make(width, height, stride, format, scan0, &status).release();
        return status;
    });
}

GpStatus GdipCreateBitmapFromHBITMAP(HBITMAP source, HPALETTE, GpBitmap** bitmap) {
    if (!bitmap) {
        return InvalidParameter;
    }
    *bitmap = nullptr;
    BITMAP shape{};
    if (!::GetObjectW(source, sizeof(shape), &shape)) {
        return InvalidParameter;
    }
    return Guarded([&] {
        Status status = Ok;
        auto picture = Picture::Make(shape.bmWidth, shape.bmHeight, 0, PixelFormat32bppRGB, nullptr, &status);
        if (!picture) {
            return status;
        }
        BITMAPINFO info{};
        info.bmiHeader.biSize = sizeof(info.bmiHeader);
        info.bmiHeader.biWidth = shape.bmWidth;
        info.bmiHeader.biHeight = -shape.bmHeight;
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        const HDC context = ::CreateCompatibleDC(nullptr);
        const int rows = context ? ::GetDIBits(context, source, 0, static_cast<UINT>(shape.bmHeight), picture->Row(0),
                                               &info, DIB_RGB_COLORS)
                                 : 0;
        ::DeleteDC(context);
        if (rows != shape.bmHeight) {
            return Win32Error;
        }
        *bitmap = picture.release();
        return Ok;
    });
}

GpStatus GdipCreateHBITMAPFromBitmap(GpBitmap* bitmap, HBITMAP* target, ARGB background) {
    if (!bitmap || !target) {
        return InvalidParameter;
    }
    *target = nullptr;
    Picture& picture = *Picture::Of(bitmap);
    return Guarded([&] {
        BITMAPINFO info{};
        info.bmiHeader.biSize = sizeof(info.bmiHeader);
        info.bmiHeader.biWidth = picture.Width();
        info.bmiHeader.biHeight = -picture.Height();
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        std::vector<DWORD> row(static_cast<std::size_t>(picture.Width()));
        void* bits = nullptr;
        const HBITMAP made = ::CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
        if (!made) {
            return OutOfMemory;
        }
        auto* const words = static_cast<unsigned char*>(bits);
        for (int y = 0; y < picture.Height(); ++y) {
            picture.Load(0, y, picture.Width(), row.data());
            for (DWORD& pixel : row) {
                // What shows through takes the background's colour.
                const DWORD alpha = pixel >> 24;
                DWORD mixed = pixel & 0xFF000000;
                for (int shift = 0; shift < 24; shift += 8) {
                    const DWORD over = (pixel >> shift) & 0xFF, under = (background >> shift) & 0xFF;
                    mixed |= ((over * alpha + under * (255 - alpha) + 127) / 255) << shift;
                }
                pixel = mixed;
            }
            std::memcpy(words + static_cast<std::size_t>(y) * row.size() * 4, row.data(), row.size() * 4);
        }
        *target = made;
        return Ok;
    });
}

GpStatus GdipCloneImage(GpImage* image, GpImage** clone) {
    if (!clone) {
        return InvalidParameter;
    }
    *clone = nullptr;
    if (!image) {
        return InvalidParameter;
    }
    const Picture& picture = *Picture::Of(image);
    GpBitmap* copy = nullptr;
    const Status status =
        GdipCloneBitmapAreaI(0, 0, picture.Width(), picture.Height(), picture.Format(), Picture::Of(image), &copy);
    *clone = copy;
    return status;
}

GpStatus GdipCloneBitmapAreaI(INT x, INT y, INT width, INT height, PixelFormat format, GpBitmap* source,
                              GpBitmap** clone) {
    if (!clone) {
        return InvalidParameter;
    }
    *clone = nullptr;
    if (!source || !IsKnownFormat(format)) {
        return InvalidParameter;
    }
    Picture& picture = *Picture::Of(source);
    if (x < 0 || y < 0 || width < 1 || height < 1 || width > picture.Width() - x || height > picture.Height() - y) {
        return InvalidParameter;
    }
    return Guarded([&] {
        *clone = picture.Copy(Rect(x, y, width, height), format).release();
        return *clone ? Ok : OutOfMemory;
    });
}

GpStatus GdipDisposeImage(GpImage* image) {
    delete Picture::Of(image);
    return image ? Ok : InvalidParameter;
}

GpStatus GdipGetImageType(GpImage* image, ImageType* type) {
    if (!image || !type) {
        return InvalidParameter;
    }
    *type = ImageTypeBitmap;
    return Ok;
}

GpStatus GdipGetImageWidth(GpImage* image, UINT* width) {
    if (!image || !width) {
        return InvalidParameter;
    }
    *width = static_cast<UINT>(Picture::Of(image)->Width());
    return Ok;
}

GpStatus GdipGetImageHeight(GpImage* image, UINT* height) {
    if (!image || !height) {
        return InvalidParameter;
    }
    *height = static_cast<UINT>(Picture::Of(image)->Height());
    return Ok;
}

GpStatus GdipGetImageDimension(GpImage* image, REAL* width, REAL* height) {
    if (!image || !width || !height) {
        return InvalidParameter;
    }
    *width = static_cast<REAL>(Picture::Of(image)->Width());
    *height = static_cast<REAL>(Picture::Of(image)->Height());
    return Ok;
}

GpStatus GdipGetImagePixelFormat(GpImage* image, PixelFormat* format) {
    if (!image || !format) {
        return InvalidParameter;
    }
    *format = Picture::Of(image)->Format();
    return Ok;
}

GpStatus GdipGetImagePaletteSize(GpImage* image, INT* size) {
    if (!image || !size) {
        return InvalidParameter;
    }
    const std::size_t count = Picture::Of(image)->Palette().size();
    *size = static_cast<INT>(offsetof(ColorPalette, Entries) + (count == 0 ? 1 : count) * sizeof(ARGB));
    return Ok;
}

GpStatus GdipGetImagePalette(GpImage* image, ColorPalette* palette, INT size) {
    INT needed = 0;
    if (!palette || GdipGetImagePaletteSize(image, &needed) != Ok || size < needed) {
        return InvalidParameter;
    }
    const std::vector<DWORD>& colors = Picture::Of(image)->Palette();
    palette->Flags = 0;
    palette->Count = static_cast<UINT>(colors.size());
    if (!colors.empty()) {
        std::memcpy(reinterpret_cast<unsigned char*>(palette) + offsetof(ColorPalette, Entries), colors.data(),
                    colors.size() * sizeof(ARGB));
    }
    return Ok;
}

GpStatus GdipSetImagePalette(GpImage* image, const ColorPalette* palette) {
    if (!image || !palette || palette->Count < 1 || palette->Count > 256 ||
        Picture::Of(image)->Format() != PixelFormat8bppIndexed) {
        return InvalidParameter;
    }
    return Guarded([&] {
        std::vector<DWORD> colors(palette->Count);
        std::memcpy(colors.data(), reinterpret_cast<const unsigned char*>(palette) + offsetof(ColorPalette, Entries),
                    colors.size() * sizeof(ARGB));
        Picture::Of(image)->Palette() = std::move(colors);
        return Ok;
    });
}

GpStatus GdipBitmapLockBits(GpBitmap* bitmap, const Rect* rect, UINT flags, PixelFormat format, BitmapData* data) {
    if (!bitmap) {
        return InvalidParameter;
    }
    return Guarded([&] { return Picture::Of(bitmap)->Lock(rect, flags, format, data); });
}

GpStatus GdipBitmapUnlockBits(GpBitmap* bitmap, BitmapData* data) {
    if (!bitmap) {
        return InvalidParameter;
    }
    return Guarded([&] { return Picture::Of(bitmap)->Unlock(data); });
}

GpStatus GdipBitmapGetPixel(GpBitmap* bitmap, INT x, INT y, ARGB* color) {
    Picture* const picture = Picture::Of(bitmap);
    if (!bitmap || !color || x < 0 || y < 0 || x >= picture->Width() || y >= picture->Height()) {
        return InvalidParameter;
    }
    if (picture->IsLocked()) {
        return WrongState;
    }
    picture->Load(x, y, 1, color);
    return Ok;
}

GpStatus GdipBitmapSetPixel(GpBitmap* bitmap, INT x, INT y, ARGB color) {
    Picture* const picture = Picture::Of(bitmap);
    if (!bitmap || x < 0 || y < 0 || x >= picture->Width() || y >= picture->Height()) {
        return InvalidParameter;
    }
    if (picture->IsLocked()) {
        return WrongState;
    }
    picture->Store(x, y, 1, &color);
    return Ok;
}

}   // namespace DllExports

}   // namespace Gdiplus
