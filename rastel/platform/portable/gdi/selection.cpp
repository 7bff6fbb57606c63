// Objects by handle: selecting, deleting and describing them, and making the simple ones.
#include <algorithm>
#include <cstring>
#include <new>

#include "rastel/platform/portable/gdi/device_context.h"
#include "rastel/platform/portable/gdi/pixel_rows.h"

using rastel::platform::BitmapObject;
using rastel::platform::BrushObject;
using rastel::platform::DeviceContext;
using rastel::platform::Find;
using rastel::platform::FindContext;
using rastel::platform::FindObject;
using rastel::platform::FontObject;
using rastel::platform::GdiObject;
using rastel::platform::ObjectKind;
using rastel::platform::PaletteObject;
using rastel::platform::PenObject;

namespace {

template <typename Object>
HGDIOBJ Swap(std::shared_ptr<Object>* selected, std::shared_ptr<GdiObject> object) {
    const HGDIOBJ previous = (*selected)->handle;
    *selected = std::static_pointer_cast<Object>(std::move(object));
    return previous;
}

HGDIOBJ SwapBitmap(DeviceContext& context, const std::shared_ptr<GdiObject>& object) {
    if (!context.IsMemory()) {
        return nullptr;
    }
    const HGDIOBJ previous = context.state.bitmap->handle;
    return SelectBitmap(context, std::static_pointer_cast<BitmapObject>(object)) ? previous : nullptr;
}

// What a description needs, or as much of it as the caller asks for.
template <typename Description>
int Describe(const Description& description, int bytes, LPVOID target) {
    if (target == nullptr) {
        return static_cast<int>(sizeof(description));
    }
    if (bytes <= 0) {
        return 0;
    }
    const std::size_t count = std::min(static_cast<std::size_t>(bytes), sizeof(description));
    std::memcpy(target, &description, count);
    return static_cast<int>(count);
}

int DescribeBitmap(const BitmapObject& bitmap, int bytes, LPVOID target) {
    BITMAP plain{};
    plain.bmWidth = bitmap.width;
    plain.bmHeight = bitmap.height;
    plain.bmWidthBytes = bitmap.pitch;
    plain.bmPlanes = 1;
    plain.bmBitsPixel = static_cast<WORD>(bitmap.format.bitsPerPixel);
    plain.bmBits = bitmap.isSection ? bitmap.pixels.Data() : nullptr;
    if (target != nullptr && bytes < static_cast<int>(sizeof(BITMAP))) {
        return 0;
    }
    if (!bitmap.isSection || target == nullptr || bytes < static_cast<int>(sizeof(DIBSECTION))) {
        return Describe(plain, bytes, target);
    }
    DIBSECTION section{};
    section.dsBm = plain;
    section.dsBmih = bitmap.header;
    section.dsBmih.biHeight = bitmap.height;   // the system doesn't tell which way the rows run
    std::copy(bitmap.bitFields, bitmap.bitFields + 3, section.dsBitfields);
    return Describe(section, bytes, target);
}

LOGPEN DescriptionOf(const PenObject& pen) {
    LOGPEN description{};
    description.lopnStyle = static_cast<UINT>(pen.style);
    description.lopnWidth.x = pen.width;
    description.lopnColor = pen.color;
    return description;
}

LOGBRUSH DescriptionOf(const BrushObject& brush) {
    LOGBRUSH description{};
    description.lbStyle = brush.style;
    description.lbColor = brush.color;
    return description;
}

// A copy for a brush, so that the bitmap may be drawn on and deleted afterwards.
std::shared_ptr<BitmapObject> CopyOf(const BitmapObject& bitmap) {
    auto copy = std::make_shared<BitmapObject>();
    copy->width = bitmap.width;
    copy->height = bitmap.height;
    copy->pitch = bitmap.pitch;
    copy->format = bitmap.format;
    copy->isSection = bitmap.isSection;
    copy->topDown = bitmap.topDown;
    copy->colors = bitmap.colors;
    const std::int64_t bytes = std::int64_t{bitmap.pitch} * bitmap.height;
    if (!copy->pixels.Allocate(bytes)) {
        return nullptr;
    }
    std::memcpy(copy->pixels.Data(), bitmap.pixels.Data(), static_cast<std::size_t>(bytes));
    return copy;
}

}   // namespace

HGDIOBJ SelectObject(HDC context, HGDIOBJ object) {
    const auto found = FindContext(context);
    auto selected = FindObject(object);
    if (!found || !selected) {
        return nullptr;
    }
    switch (selected->kind) {
        case ObjectKind::Pen:
            return Swap(&found->state.pen, std::move(selected));
        case ObjectKind::Brush:
            return Swap(&found->state.brush, std::move(selected));
        case ObjectKind::Font:
            return Swap(&found->state.font, std::move(selected));
        case ObjectKind::Bitmap:
            return SwapBitmap(*found, selected);
        case ObjectKind::Region:
            // Not an object but a complexity comes back here.
            return reinterpret_cast<HGDIOBJ>(static_cast<LONG_PTR>(SelectClipRgn(context, static_cast<HRGN>(object))));
        case ObjectKind::Palette:
        case ObjectKind::Context:
            break;
    }
    return nullptr;
}

BOOL DeleteObject(HGDIOBJ object) {
    const auto found = FindObject(object);
    if (!found) {
        return FALSE;
    }
    if (found->kind == ObjectKind::Context) {
        return DeleteDC(static_cast<HDC>(object));
    }
    return found->stock || rastel::platform::RemoveObject(object) ? TRUE : FALSE;
}

HGDIOBJ GetStockObject(int index) {
    const auto object = rastel::platform::StockObject(index);
    return object ? object->handle : nullptr;
}

HGDIOBJ GetCurrentObject(HDC context, UINT type) {
    const auto found = FindContext(context);
    if (!found) {
        return nullptr;
    }
    switch (type) {
        case OBJ_PEN:
            return found->state.pen->handle;
        case OBJ_BRUSH:
            return found->state.brush->handle;
        case OBJ_FONT:
            return found->state.font->handle;
        case OBJ_PAL:
            return found->state.palette->handle;
        case OBJ_BITMAP:
            return found->IsMemory() ? found->state.bitmap->handle : nullptr;
        default:
            return nullptr;
    }
}

DWORD GetObjectType(HGDIOBJ object) {
    const auto found = FindObject(object);
    if (!found) {
        return 0;
    }
    switch (found->kind) {
        case ObjectKind::Context:
            return static_cast<const DeviceContext&>(*found).IsMemory() ? OBJ_MEMDC : OBJ_DC;
        case ObjectKind::Pen:
            return OBJ_PEN;
        case ObjectKind::Brush:
            return OBJ_BRUSH;
        case ObjectKind::Font:
            return OBJ_FONT;
        case ObjectKind::Bitmap:
            return OBJ_BITMAP;
        case ObjectKind::Palette:
            return OBJ_PAL;
        case ObjectKind::Region:
            return OBJ_REGION;
    }
    return 0;
}

int GetObjectW(HGDIOBJ object, int bytes, LPVOID target) {
    const auto found = FindObject(object);
    if (!found) {
        return 0;
    }
    switch (found->kind) {
        case ObjectKind::Pen:
            return Describe(DescriptionOf(static_cast<const PenObject&>(*found)), bytes, target);
        case ObjectKind::Brush:
            return Describe(DescriptionOf(static_cast<const BrushObject&>(*found)), bytes, target);
        case ObjectKind::Font:
            return Describe(static_cast<const FontObject&>(*found).font, bytes, target);
        case ObjectKind::Bitmap:
            return DescribeBitmap(static_cast<const BitmapObject&>(*found), bytes, target);
        case ObjectKind::Palette:
            return Describe(static_cast<WORD>(static_cast<const PaletteObject&>(*found).entries.size()), bytes, target);
        case ObjectKind::Context:
        case ObjectKind::Region:
            break;
    }
    return 0;
}

HBRUSH CreateSolidBrush(COLORREF color) try {
    auto brush = std::make_shared<BrushObject>();
    brush->color = color;
    return static_cast<HBRUSH>(rastel::platform::AddObject(brush));
} catch (const std::bad_alloc&) {
    return nullptr;
}

HBRUSH CreatePatternBrush(HBITMAP bitmap) try {
    const auto found = Find<BitmapObject>(bitmap);
    if (!found) {
        return nullptr;
    }
    auto brush = std::make_shared<BrushObject>();
    brush->style = BS_PATTERN;
    brush->pattern = CopyOf(*found);
    return brush->pattern ? static_cast<HBRUSH>(rastel::platform::AddObject(brush)) : nullptr;
} catch (const std::bad_alloc&) {
    return nullptr;
}

HPEN CreatePen(int style, int width, COLORREF color) try {
    auto pen = std::make_shared<PenObject>();
    pen->style = style < PS_SOLID || style > PS_INSIDEFRAME ? PS_SOLID : style;
    pen->width = width == INT32_MIN ? INT32_MAX : width < 0 ? -width : width;
    pen->color = color;
    return static_cast<HPEN>(rastel::platform::AddObject(pen));
} catch (const std::bad_alloc&) {
    return nullptr;
}
