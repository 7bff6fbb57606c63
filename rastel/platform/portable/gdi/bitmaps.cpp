// Making bitmaps and their colour tables.
#include <algorithm>
#include <cstring>
#include <new>

#include "rastel/platform/portable/gdi/dib_layout.h"
#include "rastel/platform/portable/gdi/pixel_color.h"

using rastel::platform::BitmapObject;
using rastel::platform::DibLayout;
using rastel::platform::FindContext;
using rastel::platform::PixelFormat;

namespace {

// Null: too large, or no memory.
std::shared_ptr<BitmapObject> MakeBitmap(int width, int height, const PixelFormat& format) {
    const std::int64_t pitch = (std::int64_t{width} * format.bitsPerPixel + 31) / 32 * 4;
    if (width <= 0 || height <= 0 || pitch > INT32_MAX || pitch > INT32_MAX / height) {
        return nullptr;
    }
    auto bitmap = std::make_shared<BitmapObject>();
    bitmap->width = width;
    bitmap->height = height;
    bitmap->pitch = static_cast<int>(pitch);
    bitmap->format = format;
    return bitmap->pixels.Allocate(pitch * height) ? bitmap : nullptr;
}

HBITMAP HandleOf(const std::shared_ptr<BitmapObject>& bitmap) {
    return bitmap ? static_cast<HBITMAP>(rastel::platform::AddObject(bitmap)) : nullptr;
}

// The display's own layout where the depth is the same, the usual one elsewhere.
PixelFormat FormatForDepth(int depth) {
    const PixelFormat display = rastel::platform::Display()->Format();
    return display.bitsPerPixel == depth ? display : rastel::platform::FormatOfDepth(depth);
}

void GiveDisplayColors(BitmapObject* bitmap) {
    if (bitmap->format.bitsPerPixel == 8 && bitmap->format.IsIndexed()) {
        bitmap->colors = rastel::platform::Display()->SystemPalette();
    }
}

// The colour table of the section that a context draws on; null: there is none.
std::shared_ptr<BitmapObject> SelectedTable(HDC context) {
    const auto found = FindContext(context);
    if (!found || !found->IsMemory()) {
        return nullptr;
    }
    const std::shared_ptr<BitmapObject>& bitmap = found->state.bitmap;
    return bitmap->isSection && !bitmap->colors.empty() ? bitmap : nullptr;
}

}   // namespace

HBITMAP CreateBitmap(int width, int height, UINT planes, UINT bitsPerPixel, const void* bits) try {
    if (width == 0 || height == 0) {
        return static_cast<HBITMAP>(rastel::platform::StockBitmap()->handle);
    }
    if (planes == 0 || planes > 32 || bitsPerPixel == 0 || bitsPerPixel > 32 || planes * bitsPerPixel > 32) {
        return nullptr;
    }
    int depth = 1;
    for (const int known : {4, 8, 16, 24, 32}) {
        if (static_cast<UINT>(depth) < planes * bitsPerPixel) {
            depth = known;
        }
    }
    const auto bitmap = MakeBitmap(width, height, FormatForDepth(depth));
    if (!bitmap) {
        return nullptr;
    }
    GiveDisplayColors(bitmap.get());
    if (bits != nullptr) {
        // Rows handed in are padded to 2 bytes only.
        const std::size_t rowBytes = static_cast<std::size_t>((std::int64_t{width} * depth + 15) / 16 * 2);
        const auto* row = static_cast<const unsigned char*>(bits);
        for (int y = 0; y < height; ++y, row += rowBytes) {
            std::memcpy(bitmap->pixels.Data() + static_cast<std::ptrdiff_t>(y) * bitmap->pitch, row, rowBytes);
        }
    }
    return HandleOf(bitmap);
} catch (const std::bad_alloc&) {
    return nullptr;
}

HBITMAP CreateCompatibleBitmap(HDC context, int width, int height) try {
    const auto found = FindContext(context);
    if (!found) {
        return nullptr;
    }
    if (width == 0 || height == 0) {
        return static_cast<HBITMAP>(rastel::platform::StockBitmap()->handle);
    }
    if (!found->IsMemory()) {
        const auto bitmap = MakeBitmap(width, height, rastel::platform::Display()->Format());
        if (bitmap) {
            GiveDisplayColors(bitmap.get());
        }
        return HandleOf(bitmap);
    }
    const auto bitmap = MakeBitmap(width, height, found->state.bitmap->format);
    if (bitmap) {
        bitmap->colors = found->state.bitmap->colors;
    }
    return HandleOf(bitmap);
} catch (const std::bad_alloc&) {
    return nullptr;
}

HBITMAP CreateDIBSection(HDC context, const BITMAPINFO* info, UINT usage, void** bits, HANDLE section,
                         DWORD offset) try {
    static_cast<void>(offset);   // counts within a mapped file only
    if (bits != nullptr) {
        *bits = nullptr;
    }
    const auto found = FindContext(context);
    DibLayout layout;
    if (rastel::platform::ShouldFail("CreateDIBSection") || section != nullptr || (context != nullptr && !found) ||
        !ReadDibLayout(info, usage, found.get(), &layout) || info->bmiHeader.biPlanes != 1) {
        return nullptr;
    }
    const auto bitmap = MakeBitmap(layout.width, layout.height, layout.format);
    if (!bitmap) {
        return nullptr;
    }
    bitmap->isSection = true;
    bitmap->topDown = layout.topDown;
    bitmap->header = info->bmiHeader;
    bitmap->header.biSize = sizeof(BITMAPINFOHEADER);
    bitmap->header.biSizeImage = static_cast<DWORD>(layout.Bytes());
    bitmap->header.biClrUsed = static_cast<DWORD>(layout.colors.size());
    std::copy(layout.bitFields, layout.bitFields + 3, bitmap->bitFields);
    bitmap->colors = std::move(layout.colors);
    const HBITMAP handle = HandleOf(bitmap);
    if (handle != nullptr && bits != nullptr) {
        *bits = bitmap->pixels.Data();
    }
    return handle;
} catch (const std::bad_alloc&) {
    return nullptr;
}

UINT SetDIBColorTable(HDC context, UINT first, UINT count, const RGBQUAD* colors) {
    const auto bitmap = SelectedTable(context);
    if (!bitmap || colors == nullptr || first >= bitmap->colors.size()) {
        return 0;
    }
    count = std::min(count, static_cast<UINT>(bitmap->colors.size()) - first);
    std::copy(colors, colors + count, bitmap->colors.begin() + first);
    return count;
}

UINT GetDIBColorTable(HDC context, UINT first, UINT count, RGBQUAD* colors) {
    const auto bitmap = SelectedTable(context);
    if (!bitmap || colors == nullptr || first >= bitmap->colors.size()) {
        return 0;
    }
    count = std::min(count, static_cast<UINT>(bitmap->colors.size()) - first);
    std::copy(bitmap->colors.begin() + first, bitmap->colors.begin() + first + count, colors);
    return count;
}
