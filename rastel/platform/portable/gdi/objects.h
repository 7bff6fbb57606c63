// The logical objects behind GDI handles, and the table that tells good handles from bad ones.
//
// Objects are held by shared pointers: one that is deleted while it is selected lives on until it is deselected, only
// its handle is gone. The table may be used from any thread; an object with mutable state says who guards it.
#pragma once

#include <atomic>
#include <memory>
#include <mutex>
#include <vector>

#include "rastel/platform/portable/gdi.h"
#include "rastel/platform/portable/gdi/known_letters.h"
#include "rastel/platform/portable/gdi/pixel_buffer.h"
#include "rastel/platform/portable/gdi/pixel_memory.h"
#include "rastel/platform/portable/gdi/region.h"

namespace rastel::platform {

enum class ObjectKind { Context, Pen, Brush, Font, Bitmap, Palette, Region };

struct GdiObject {
    explicit GdiObject(ObjectKind objectKind) : kind(objectKind) {}
    virtual ~GdiObject() = default;
    GdiObject(const GdiObject&) = delete;
    GdiObject& operator=(const GdiObject&) = delete;

    const ObjectKind kind;
    bool stock = false;         // never deleted
    HGDIOBJ handle = nullptr;   // given by the table; stale once the object is deleted
};

struct BitmapObject : GdiObject {
    static constexpr ObjectKind kKind = ObjectKind::Bitmap;
    BitmapObject() : GdiObject(kKind) {}

    bool IsMono() const { return !isSection && format.bitsPerPixel == 1; }   // takes the colours of its context

    int width = 0;
    int height = 0;
    int pitch = 0;   // bytes a row, positive
    PixelFormat format;
    bool isSection = false;   // a DIB section; others may be laid out as we like, and theirs is top-down
    bool topDown = true;
    BITMAPINFOHEADER header{};     // of a section, as its maker gave it, sizes filled in
    DWORD bitFields[3] = {};       // of a section with BI_BITFIELDS
    std::vector<RGBQUAD> colors;   // of an indexed section; others go by the display's palette or the usual colours
    PixelMemory pixels;
    std::atomic<const void*> selectedBy{nullptr};   // the one context it may be selected in
};

struct PenObject : GdiObject {
    static constexpr ObjectKind kKind = ObjectKind::Pen;
    PenObject() : GdiObject(kKind) {}

    int style = PS_SOLID;
    int width = 0;
    COLORREF color = 0;
};

struct BrushObject : GdiObject {
    static constexpr ObjectKind kKind = ObjectKind::Brush;
    BrushObject() : GdiObject(kKind) {}

    UINT style = BS_SOLID;
    COLORREF color = 0;
    std::shared_ptr<const BitmapObject> pattern;   // a copy that nobody else draws on
};

struct FontObject : GdiObject {
    static constexpr ObjectKind kKind = ObjectKind::Font;
    FontObject() : GdiObject(kKind) {}

    LOGFONTW font{};
    std::mutex mutex;                 // guards the slot
    std::shared_ptr<void> realized;   // what the text code made of it, kept between calls
    KnownLetters letters;             // of upright lines without bars
};

struct PaletteObject : GdiObject {
    static constexpr ObjectKind kKind = ObjectKind::Palette;
    PaletteObject() : GdiObject(kKind) {}

    std::vector<PALETTEENTRY> entries;   // fixed once made
};

struct RegionObject : GdiObject {
    static constexpr ObjectKind kKind = ObjectKind::Region;
    RegionObject() : GdiObject(kKind) {}

    std::mutex mutex;   // guards the region
    Region region;
};

// Gives the object its handle. Null: no handle is left.
HGDIOBJ AddObject(const std::shared_ptr<GdiObject>& object);

// Null: not a handle, or one of something deleted.
std::shared_ptr<GdiObject> FindObject(HGDIOBJ handle);

// The object that left the table; null: stale or foreign handle, or the object is none of its kind or is a stock one.
std::shared_ptr<GdiObject> RemoveObject(HGDIOBJ handle);

// The object if it is of that kind.
template <typename Object>
std::shared_ptr<Object> Find(HGDIOBJ handle) {
    std::shared_ptr<GdiObject> object = FindObject(handle);
    if (!object || object->kind != Object::kKind) {
        return nullptr;
    }
    return std::static_pointer_cast<Object>(std::move(object));
}

// A stock object by its number (SYSTEM_FONT, WHITE_BRUSH, ...); null: none has it.
std::shared_ptr<GdiObject> StockObject(int index);

// The 1 x 1 monochrome bitmap of fresh memory contexts. Each context draws on a pixel of its own in its place.
std::shared_ptr<BitmapObject> StockBitmap();

}   // namespace rastel::platform
