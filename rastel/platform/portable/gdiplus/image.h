// The wrapper classes of images. Each owns one native object; deleting the wrapper ends it.
#pragma once

#include "rastel/platform/portable/gdiplus/flat.h"

namespace Gdiplus {

// Wrappers live in memory of GdipAlloc; `new` gives null without memory.
class GdiplusBase {
public:
    static void* operator new(std::size_t size) noexcept { return DllExports::GdipAlloc(size); }
    static void* operator new[](std::size_t size) noexcept { return DllExports::GdipAlloc(size); }
    static void* operator new(std::size_t, void* place) noexcept { return place; }
    static void operator delete(void* memory) { DllExports::GdipFree(memory); }
    static void operator delete[](void* memory) { DllExports::GdipFree(memory); }
    static void operator delete(void*, void*) noexcept {}
};

class Image : public GdiplusBase {
public:
    explicit Image(const WCHAR* name, BOOL = FALSE) {
        lastResult = DllExports::GdipLoadImageFromFile(name, &nativeImage);
    }
    Image(const Image&) = delete;
    Image& operator=(const Image&) = delete;
    virtual ~Image() { DllExports::GdipDisposeImage(nativeImage); }

    static Image* FromFile(const WCHAR* name, BOOL useEmbeddedColorManagement = FALSE) {
        return new Image(name, useEmbeddedColorManagement);
    }
    virtual Image* Clone() const {
        GpImage* clone = nullptr;
        SetStatus(DllExports::GdipCloneImage(nativeImage, &clone));
        return clone ? new Image(clone, lastResult) : nullptr;
    }

    Status GetLastStatus() const {
        const Status status = lastResult;
        lastResult = Ok;
        return status;
    }
    Status Save(const WCHAR* name, const CLSID* encoder, const EncoderParameters* parameters = nullptr) {
        return SetStatus(DllExports::GdipSaveImageToFile(nativeImage, name, encoder, parameters));
    }
    ImageType GetType() const {
        ImageType type = ImageTypeUnknown;
        SetStatus(DllExports::GdipGetImageType(nativeImage, &type));
        return type;
    }
    UINT GetWidth() const {
        UINT width = 0;
        SetStatus(DllExports::GdipGetImageWidth(nativeImage, &width));
        return width;
    }
    UINT GetHeight() const {
        UINT height = 0;
        SetStatus(DllExports::GdipGetImageHeight(nativeImage, &height));
        return height;
    }
    PixelFormat GetPixelFormat() const {
        PixelFormat format = PixelFormatUndefined;
        SetStatus(DllExports::GdipGetImagePixelFormat(nativeImage, &format));
        return format;
    }
    INT GetPaletteSize() const {
        INT size = 0;
        SetStatus(DllExports::GdipGetImagePaletteSize(nativeImage, &size));
        return size;
    }
    Status GetPalette(ColorPalette* palette, INT size) const {
        return SetStatus(DllExports::GdipGetImagePalette(nativeImage, palette, size));
    }
    Status SetPalette(const ColorPalette* palette) {
        return SetStatus(DllExports::GdipSetImagePalette(nativeImage, palette));
    }

protected:
    friend class Graphics;
    Image() = default;
    Image(GpImage* image, Status status) : nativeImage(image), lastResult(status) {}
    Status SetStatus(Status status) const {
        if (status != Ok) {
            lastResult = status;
        }
        return status;
    }

    GpImage* nativeImage = nullptr;
    mutable Status lastResult = Ok;
};

class Bitmap : public Image {
public:
    explicit Bitmap(const WCHAR* name, BOOL = FALSE) {
        GpBitmap* bitmap = nullptr;
        lastResult = DllExports::GdipCreateBitmapFromFile(name, &bitmap);
        nativeImage = bitmap;
    }
    Bitmap(INT width, INT height, PixelFormat format = PixelFormat32bppARGB) : Bitmap(width, height, 0, format, {}) {}
    // The pixels stay the caller's and must outlive the bitmap.
    Bitmap(INT width, INT height, INT stride, PixelFormat format, BYTE* scan0) {
        GpBitmap* bitmap = nullptr;
        lastResult = DllExports::GdipCreateBitmapFromScan0(width, height, stride, format, scan0, &bitmap);
        nativeImage = bitmap;
    }
    Bitmap(HBITMAP source, HPALETTE palette) {
        GpBitmap* bitmap = nullptr;
        lastResult = DllExports::GdipCreateBitmapFromHBITMAP(source, palette, &bitmap);
        nativeImage = bitmap;
    }

    static Bitmap* FromFile(const WCHAR* name, BOOL useEmbeddedColorManagement = FALSE) {
        return new Bitmap(name, useEmbeddedColorManagement);
    }
    static Bitmap* FromHBITMAP(HBITMAP source, HPALETTE palette) { return new Bitmap(source, palette); }

    Bitmap* Clone(INT x, INT y, INT width, INT height, PixelFormat format) {
        GpBitmap* clone = nullptr;
        SetStatus(DllExports::GdipCloneBitmapAreaI(x, y, width, height, format, Native(), &clone));
        return clone ? new Bitmap(clone) : nullptr;
    }
    Bitmap* Clone(const Rect& rect, PixelFormat format) {
        return Clone(rect.X, rect.Y, rect.Width, rect.Height, format);
    }
    using Image::Clone;

    Status LockBits(const Rect* rect, UINT flags, PixelFormat format, BitmapData* data) {
        return SetStatus(DllExports::GdipBitmapLockBits(Native(), rect, flags, format, data));
    }
    Status UnlockBits(BitmapData* data) { return SetStatus(DllExports::GdipBitmapUnlockBits(Native(), data)); }
    Status GetPixel(INT x, INT y, Color* color) {
        ARGB argb = 0;
        const Status status = SetStatus(DllExports::GdipBitmapGetPixel(Native(), x, y, &argb));
        if (status == Ok && color) {
            color->SetValue(argb);
        }
        return status;
    }
    Status SetPixel(INT x, INT y, const Color& color) {
        return SetStatus(DllExports::GdipBitmapSetPixel(Native(), x, y, color.GetValue()));
    }
    Status GetHBITMAP(const Color& background, HBITMAP* target) {
        return SetStatus(DllExports::GdipCreateHBITMAPFromBitmap(Native(), target, background.GetValue()));
    }

protected:
    explicit Bitmap(GpBitmap* bitmap) : Image(bitmap, Ok) {}
    GpBitmap* Native() const { return static_cast<GpBitmap*>(nativeImage); }
};

}   // namespace Gdiplus
