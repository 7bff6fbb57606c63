#include "rastel/platform/portable/gdi/device_context.h"

#include <algorithm>
#include <vector>

#include "rastel/platform/portable/gdi/pixel_color.h"

namespace rastel::platform {

namespace {

HWND TargetWindow(const DeviceContext& context) {
    return context.target == ContextKind::Window ? context.window : nullptr;
}

class DisplayAccess {
public:
    DisplayAccess(DisplayDevice& display, HWND window, const RECT& area, Access access, PixelBuffer* pixels)
        : display_(display), granted_(display.BeginAccess(window, area, access, pixels)) {
        if (granted_ && pixels->format.IsIndexed() && pixels->colors == nullptr) {
            colors_ = display.SystemPalette();
            pixels->colors = colors_.data();
            pixels->colorCount = static_cast<int>(colors_.size());
        }
    }
    ~DisplayAccess() {
        if (granted_) {
            display_.EndAccess();
        }
    }
    DisplayAccess(const DisplayAccess&) = delete;
    DisplayAccess& operator=(const DisplayAccess&) = delete;

    bool IsGranted() const { return granted_; }

private:
    DisplayDevice& display_;
    std::vector<RGBQUAD> colors_;
    bool granted_;
};

void DrawOnBitmap(const Canvas& canvas, const Region& clip, const DrawArea& draw) {
    for (const RECT& area : clip.Rects()) {
        draw(canvas, area);
    }
}

}   // namespace

DeviceContext::DeviceContext(ContextKind contextKind) : GdiObject(kKind), target(contextKind) {}

DeviceContext::~DeviceContext() {
    saved.clear();
    if (state.bitmap && !state.bitmap->stock) {
        state.bitmap->selectedBy = nullptr;
    }
}

std::shared_ptr<DeviceContext> MakeContext(ContextKind kind, HWND window) {
    auto context = std::make_shared<DeviceContext>(kind);
    context->window = window;
    ContextState& state = context->state;
    if (kind == ContextKind::Memory) {
        state.bitmap = StockBitmap();
    }
    state.pen = std::static_pointer_cast<PenObject>(StockObject(BLACK_PEN));
    state.brush = std::static_pointer_cast<BrushObject>(StockObject(WHITE_BRUSH));
    state.font = std::static_pointer_cast<FontObject>(StockObject(SYSTEM_FONT));
    state.palette = std::static_pointer_cast<PaletteObject>(StockObject(DEFAULT_PALETTE));
    return AddObject(context) != nullptr ? context : nullptr;
}

bool SelectBitmap(DeviceContext& context, const std::shared_ptr<BitmapObject>& bitmap) {
    if (!context.IsMemory() || !bitmap) {
        return false;
    }
    if (bitmap == context.state.bitmap) {
        return true;
    }
    const void* nobody = nullptr;
    if (!bitmap->stock && !bitmap->selectedBy.compare_exchange_strong(nobody, &context)) {
        return false;
    }
    if (!context.state.bitmap->stock) {
        context.state.bitmap->selectedBy = nullptr;
    }
    context.state.bitmap = bitmap;
    return true;
}

Canvas BitmapCanvas(const DeviceContext& context) {
    const BitmapObject& bitmap = *context.state.bitmap;
    Canvas canvas;
    canvas.pixels = PixelsOf(bitmap);
    canvas.isMono = bitmap.IsMono();
    if (bitmap.stock) {
        canvas.pixels.bits = const_cast<unsigned char*>(context.defaultPixel);
    }
    return canvas;
}

PixelBuffer PixelsOf(const BitmapObject& bitmap) {
    PixelBuffer pixels;
    pixels.width = bitmap.width;
    pixels.height = bitmap.height;
    pixels.format = bitmap.format;
    pixels.pitch = bitmap.topDown ? bitmap.pitch : -bitmap.pitch;
    pixels.bits = bitmap.pixels.Data();
    if (!bitmap.topDown) {
        pixels.bits += static_cast<std::ptrdiff_t>(bitmap.height - 1) * bitmap.pitch;
    }
    if (bitmap.format.IsIndexed()) {
        pixels.colors = bitmap.colors.empty() ? UsualColors(bitmap.format.bitsPerPixel) : bitmap.colors.data();
        pixels.colorCount =
            bitmap.colors.empty() ? 1 << bitmap.format.bitsPerPixel : static_cast<int>(bitmap.colors.size());
    }
    return pixels;
}

bool TargetSize(const DeviceContext& context, SIZE* size) {
    if (context.IsMemory()) {
        *size = {context.state.bitmap->width, context.state.bitmap->height};
        return true;
    }
    RECT area{};
    const std::shared_ptr<DisplayDevice> display = Display();
    if (context.target == ContextKind::Screen) {
        const DisplayMode mode = display->Mode();
        *size = {mode.width, mode.height};
        return true;
    }
    if (!display->ClientArea(context.window, &area)) {
        return false;
    }
    *size = {area.right - area.left, area.bottom - area.top};
    return true;
}

bool EffectiveClip(const DeviceContext& context, Region* clip) {
    if (context.target == ContextKind::Window) {
        const std::shared_ptr<DisplayDevice> display = Display();
        RECT client{};
        if (!display->ClientArea(context.window, &client) || !display->VisibleArea(context.window, clip)) {
            *clip = Region();
            return false;
        }
        clip->Intersect(client);
        // The far corner of a LONG has no negative twin; no client area lies there.
        clip->Offset(static_cast<int>(-std::int64_t{std::max(client.left, -INT32_MAX)}),
                     static_cast<int>(-std::int64_t{std::max(client.top, -INT32_MAX)}));
    } else {
        SIZE size{};
        if (!TargetSize(context, &size)) {
            *clip = Region();
            return false;
        }
        *clip = Region(RECT{0, 0, size.cx, size.cy});
    }
    for (const std::optional<Region>* part : {&context.state.clip, &context.state.metaClip}) {
        if (part->has_value()) {
            clip->Intersect(part->value());
        }
    }
    return true;
}

RECT ClampedRect(std::int64_t left, std::int64_t top, std::int64_t right, std::int64_t bottom) {
    const auto clamped = [](std::int64_t value) {
        return static_cast<LONG>(std::clamp<std::int64_t>(value, INT32_MIN, INT32_MAX));
    };
    return {clamped(left), clamped(top), clamped(right), clamped(bottom)};
}

RECT ToDevice(const DeviceContext& context, const RECT& logical) {
    const POINT& origin = context.state.origin;
    return ClampedRect(std::int64_t{logical.left} + origin.x, std::int64_t{logical.top} + origin.y,
                       std::int64_t{logical.right} + origin.x, std::int64_t{logical.bottom} + origin.y);
}

bool DrawInside(DeviceContext& context, const RECT& bounds, Access access, const DrawArea& draw) {
    Region clip;
    if (!EffectiveClip(context, &clip)) {
        return false;
    }
    clip.Intersect(bounds);
    return DrawInside(context, clip, access, draw);
}

namespace {

// The rectangles of the clip, those of more than so many bytes in several.
std::vector<RECT> BandsOf(const Region& clip, std::int64_t mostBytes) {
    std::vector<RECT> bands;
    for (const RECT& rect : clip.Rects()) {
        const std::int64_t rowBytes = (std::int64_t{rect.right} - rect.left) * 4;
        const std::int64_t height = std::int64_t{rect.bottom} - rect.top;
        const std::int64_t rows =
            mostBytes > 0 && rowBytes > 0 ? std::max<std::int64_t>(mostBytes / rowBytes, 1) : height;
        for (RECT band = rect; band.top < rect.bottom; band.top = band.bottom) {
            band.bottom = static_cast<LONG>(std::min<std::int64_t>(rect.bottom, band.top + rows));
            bands.push_back(band);
        }
    }
    return bands;
}

}   // namespace

bool DrawInside(DeviceContext& context, const Region& clip, Access access, const DrawArea& draw) {
    if (context.IsMemory()) {
        DrawOnBitmap(BitmapCanvas(context), clip, draw);
        return true;
    }
    const std::shared_ptr<DisplayDevice> display = Display();
    for (const RECT& area : BandsOf(clip, access == Access::Write ? display->BandBytes() : 0)) {
        Canvas canvas;
        canvas.origin = {area.left, area.top};
        const DisplayAccess granted(*display, TargetWindow(context), area, access, &canvas.pixels);
        if (!granted.IsGranted() || canvas.pixels.bits == nullptr) {
            return false;
        }
        draw(canvas, area);
    }
    return true;
}

COLORREF ResolveColor(const DeviceContext& context, COLORREF color) {
    switch (color >> 24) {
        case 1: {   // an index into the palette
            const std::vector<PALETTEENTRY>& entries = context.state.palette->entries;
            const DWORD index = color & 0xFFFF;
            if (index >= entries.size()) {
                return 0;
            }
            return RGB(entries[index].peRed, entries[index].peGreen, entries[index].peBlue);
        }
        default:
            return color & 0xFFFFFF;
    }
}

}   // namespace rastel::platform
