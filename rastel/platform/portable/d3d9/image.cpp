#include "rastel/platform/portable/d3d9/image.h"

#include <cstring>
#include <new>

#include "rastel/platform/portable/gdi/blit.h"

namespace rastel::platform::d3d {

bool IsColorFormat(D3DFORMAT format) {
    return format == D3DFMT_A8R8G8B8 || format == D3DFMT_X8R8G8B8 || format == D3DFMT_R5G6B5 ||
           format == D3DFMT_X1R5G5B5;
}

bool IsDepthFormat(D3DFORMAT format) {
    return format == D3DFMT_D32 || format == D3DFMT_D24X8 || format == D3DFMT_D24S8 || format == D3DFMT_D16;
}

D3DFORMAT DisplayFormat() {
    const PixelFormat format = Display()->Format();
    if (format.bitsPerPixel != 16) {
        return D3DFMT_X8R8G8B8;
    }
    return format.greenMask == 0x07E0 ? D3DFMT_R5G6B5 : D3DFMT_X1R5G5B5;
}

ImagePointer MakeImage(UINT width, UINT height, D3DFORMAT format, DWORD usage, D3DPOOL pool) try {
    if (width < 1 || height < 1 || width > longestSide || height > longestSide ||
        !(IsColorFormat(format) || IsDepthFormat(format))) {
        return nullptr;
    }
    auto image = std::make_shared<Image>();
    image->description = {format, D3DRTYPE_SURFACE, usage, pool, D3DMULTISAMPLE_NONE, 0, width, height};
    if (IsDepthFormat(format)) {
        image->depths.assign(std::size_t{width} * height, 1.0f);
        return image;
    }
    auto bitmap = std::make_shared<BitmapObject>();
    bitmap->width = image->Width();
    bitmap->height = image->Height();
    bitmap->format = FormatOfDepth(format == D3DFMT_R5G6B5 ? 16 : format == D3DFMT_X1R5G5B5 ? 15 : 32);
    bitmap->pitch = (bitmap->width * bitmap->format.bitsPerPixel / 8 + 15) / 16 * 16;
    if (!bitmap->pixels.Allocate(std::int64_t{bitmap->pitch} * bitmap->height)) {
        return nullptr;
    }
    image->bitmap = std::move(bitmap);
    return image;
} catch (const std::bad_alloc&) {
    return nullptr;
}

DWORD LoadColor(D3DFORMAT format, const BYTE* pixel) {
    if (format == D3DFMT_A8R8G8B8 || format == D3DFMT_X8R8G8B8) {
        DWORD color;
        std::memcpy(&color, pixel, sizeof(color));
        return format == D3DFMT_A8R8G8B8 ? color : color | 0xFF000000;
    }
    WORD word;
    std::memcpy(&word, pixel, sizeof(word));
    const auto widened = [](DWORD bits, DWORD most) { return (bits * 255 + most / 2) / most; };
    const bool is565 = format == D3DFMT_R5G6B5;
    const DWORD red = widened(word >> (is565 ? 11 : 10) & 31u, 31), blue = widened(word & 31u, 31);
    const DWORD green = is565 ? widened(word >> 5 & 63u, 63) : widened(word >> 5 & 31u, 31);
    return 0xFF000000 | red << 16 | green << 8 | blue;
}

void StoreColor(D3DFORMAT format, BYTE* pixel, DWORD color) {
    if (format == D3DFMT_A8R8G8B8 || format == D3DFMT_X8R8G8B8) {
        std::memcpy(pixel, &color, sizeof(color));
        return;
    }
    const auto word =
        static_cast<WORD>(format == D3DFMT_R5G6B5 ? (color >> 8 & 0xF800) | (color >> 5 & 0x7E0) | (color >> 3 & 0x1F)
                                                  : (color >> 9 & 0x7C00) | (color >> 6 & 0x3E0) | (color >> 3 & 0x1F));
    std::memcpy(pixel, &word, sizeof(word));
}

bool IsPart(const RECT& part, const Image& image) {
    return part.left >= 0 && part.top >= 0 && part.right <= image.Width() && part.bottom <= image.Height() &&
           part.left < part.right && part.top < part.bottom;
}

bool CopyImage(const Image& source, const RECT& part, const Image& target, const RECT& landing) {
    if (!source.bitmap || !target.bitmap || !IsPart(part, source) || !IsPart(landing, target)) {
        return false;
    }
    DeviceContext context(ContextKind::Memory);
    context.state.bitmap = target.bitmap;
    BlitSource opened;
    opened.pixels = PixelsOf(*source.bitmap);
    const auto rect = [](const RECT& r) { return BlitRect{r.left, r.top, r.right - r.left, r.bottom - r.top}; };
    return Blit(context, rect(landing), opened, rect(part), kSourceCopy);
}

}   // namespace rastel::platform::d3d
