// Logical palettes, and how they reach the display's colour table.
#include <algorithm>
#include <new>

#include "rastel/platform/portable/gdi/device_context.h"
#include "rastel/platform/portable/gdi/pixel_color.h"

using rastel::platform::Find;
using rastel::platform::FindContext;
using rastel::platform::PaletteObject;

namespace {

constexpr WORD kPaletteVersion = 0x300;
constexpr int kMaxEntries = 1024;
constexpr int kFixedAtEachEnd = 10;
constexpr int kSystemEntries = 256;

COLORREF ColorOfEntry(const PALETTEENTRY& entry) {
    return RGB(entry.peRed, entry.peGreen, entry.peBlue);
}

// Gives the entries of a palette their places in a display's table: where the colour is fixed already it stays, the
// others take free places in turn. What finds none is left to the nearest colour.
class Realizer {
public:
    explicit Realizer(std::vector<RGBQUAD> system) : system_(std::move(system)) {}

    void Place(const PALETTEENTRY& entry) {
        if ((entry.peFlags & PC_EXPLICIT) != 0) {
            return;   // names a place, brings no colour
        }
        const COLORREF color = ColorOfEntry(entry);
        const bool mayShare = (entry.peFlags & (PC_RESERVED | PC_NOCOLLAPSE)) == 0;
        if ((mayShare && IsPlaced(color)) || next_ >= kSystemEntries - kFixedAtEachEnd) {
            return;
        }
        RGBQUAD& place = system_[static_cast<std::size_t>(next_++)];
        if (rastel::platform::ColorOf(place) != color) {
            place = rastel::platform::QuadOf(color);
            ++changed_;
        }
    }

    UINT Changed() const { return changed_; }
    std::vector<RGBQUAD> Own() const { return {system_.begin() + kFixedAtEachEnd, system_.end() - kFixedAtEachEnd}; }

private:
    bool IsPlaced(COLORREF color) const {
        for (int i = 0; i < kSystemEntries; ++i) {
            const bool placed = i < next_ || i >= kSystemEntries - kFixedAtEachEnd;
            if (placed && rastel::platform::ColorOf(system_[static_cast<std::size_t>(i)]) == color) {
                return true;
            }
        }
        return false;
    }

    std::vector<RGBQUAD> system_;
    int next_ = kFixedAtEachEnd;
    UINT changed_ = 0;
};

}   // namespace

HPALETTE CreatePalette(const LOGPALETTE* palette) try {
    if (palette == nullptr || palette->palVersion != kPaletteVersion || palette->palNumEntries == 0 ||
        palette->palNumEntries > kMaxEntries) {
        return nullptr;
    }
    auto object = std::make_shared<PaletteObject>();
    const PALETTEENTRY* const entries = palette->palPalEntry;
    object->entries.assign(entries, entries + palette->palNumEntries);
    return static_cast<HPALETTE>(rastel::platform::AddObject(object));
} catch (const std::bad_alloc&) {
    return nullptr;
}

HPALETTE SelectPalette(HDC context, HPALETTE palette, BOOL background) {
    static_cast<void>(background);   // one program has the display's table to itself
    const auto found = FindContext(context);
    auto object = Find<PaletteObject>(palette);
    if (!found || !object) {
        return nullptr;
    }
    const auto previous = static_cast<HPALETTE>(found->state.palette->handle);
    found->state.palette = std::move(object);
    return previous;
}

UINT RealizePalette(HDC context) {
    const auto found = FindContext(context);
    if (!found) {
        return GDI_ERROR;
    }
    // The stock palette asks for nothing but the fixed colours.
    if (found->IsMemory() || found->state.palette->stock) {
        return 0;
    }
    const auto display = rastel::platform::Display();
    std::vector<RGBQUAD> system = display->SystemPalette();
    if (system.size() != kSystemEntries) {
        return 0;
    }
    Realizer realizer(std::move(system));
    for (const PALETTEENTRY& entry : found->state.palette->entries) {
        realizer.Place(entry);
    }
    if (realizer.Changed() != 0 && !display->SetSystemPalette(kFixedAtEachEnd, realizer.Own())) {
        return GDI_ERROR;
    }
    return realizer.Changed();
}

UINT GetPaletteEntries(HPALETTE palette, UINT first, UINT count, LPPALETTEENTRY entries) {
    const auto found = Find<PaletteObject>(palette);
    if (!found) {
        return 0;
    }
    const auto size = static_cast<UINT>(found->entries.size());
    if (entries == nullptr) {
        return size;
    }
    if (first >= size) {
        return 0;
    }
    count = std::min(count, size - first);
    std::copy_n(found->entries.begin() + first, count, entries);
    return count;
}

UINT GetSystemPaletteEntries(HDC context, UINT first, UINT count, LPPALETTEENTRY entries) {
    if (!FindContext(context)) {
        return 0;
    }
    const std::vector<RGBQUAD> system = rastel::platform::Display()->SystemPalette();
    const auto size = static_cast<UINT>(system.size());
    if (entries == nullptr) {
        return size;
    }
    if (first >= size) {
        return 0;
    }
    count = std::min(count, size - first);
    for (UINT i = 0; i < count; ++i) {
        const RGBQUAD& quad = system[first + i];
        entries[i] = {quad.rgbRed, quad.rgbGreen, quad.rgbBlue, 0};
    }
    return count;
}

UINT GetNearestPaletteIndex(HPALETTE palette, COLORREF color) {
    const auto found = Find<PaletteObject>(palette);
    if (!found) {
        return CLR_INVALID;
    }
    if (color >> 24 == 1) {   // an index names itself
        const UINT index = color & 0xFFFF;
        return index < found->entries.size() ? index : 0;
    }
    std::vector<RGBQUAD> colors;
    colors.reserve(found->entries.size());
    for (const PALETTEENTRY& entry : found->entries) {
        colors.push_back({entry.peBlue, entry.peGreen, entry.peRed, 0});
    }
    return static_cast<UINT>(rastel::platform::NearestColor(colors.data(), static_cast<int>(colors.size()), color));
}

COLORREF GetNearestColor(HDC context, COLORREF color) {
    const auto found = FindContext(context);
    if (!found) {
        return CLR_INVALID;
    }
    rastel::platform::PixelBuffer buffer;
    std::vector<RGBQUAD> colors;
    if (found->IsMemory()) {
        buffer = BitmapCanvas(*found).pixels;
    } else {
        const auto display = rastel::platform::Display();
        buffer.format = display->Format();
        colors = display->SystemPalette();
        buffer.colors = colors.data();
        buffer.colorCount = static_cast<int>(colors.size());
    }
    return ColorOfPixel(buffer, PixelOfColor(buffer, ResolveColor(*found, color)));
}
