// What a surface draws: fills, copies, stretches and keyed copies, inside what its clipper lets through.
#include <algorithm>
#include <functional>
#include <new>
#include <vector>

#include "rastel/platform/portable/ddraw/surface.h"
#include "rastel/platform/portable/gdi/blit.h"
#include "rastel/platform/portable/gdi/pixel_convert.h"
#include "rastel/platform/portable/gdi/pixel_rows.h"
#include "rastel/platform/portable/gdi/stretch.h"

namespace rastel::platform {

namespace {

bool IsEmpty(const RECT& rect) {
    return rect.left >= rect.right || rect.top >= rect.bottom;
}

bool IsInside(const RECT& inner, const RECT& outer) {
    return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right &&
           inner.bottom <= outer.bottom;
}

BlitRect ToBlitRect(const RECT& rect) {
    return {rect.left, rect.top, std::int64_t{rect.right} - rect.left, std::int64_t{rect.bottom} - rect.top};
}

// Copies pixels whose colour bits lie outside the key.
class KeyedRows {
public:
    KeyedRows(const PixelBuffer& source, const BlitRect& to, const BlitRect& from, const DDCOLORKEY& key)
        : source_(source),
          columns_(to.x, to.width, from.x, from.width, source.width),
          rows_(to.y, to.height, from.y, from.height, source.height) {
        const PixelFormat& format = source.format;
        mask_ = format.IsIndexed() ? 0xFF : format.redMask | format.greenMask | format.blueMask;
        low_ = key.dwColorSpaceLowValue & mask_;
        high_ = std::max(low_, key.dwColorSpaceHighValue & mask_);
    }

    // Where there is something to draw from.
    RECT Area() const { return ClampedRect(columns_.First(), rows_.First(), columns_.Last(), rows_.Last()); }

    void Draw(const Canvas& canvas, const RECT& area) {
        const int width = area.right - area.left, bits = canvas.pixels.format.bitsPerPixel;
        const auto count = static_cast<std::size_t>(width);
        std::vector<int> picked(count);
        std::vector<DWORD> raw(count), mapped(count), old(count);
        columns_.Fill(area.left, width, picked.data());
        PixelConverter converter(source_, canvas.pixels, {});
        for (int y = area.top; y < area.bottom; ++y) {
            const unsigned char* const from = source_.Row(rows_.SourceOf(y));
            unsigned char* const to = canvas.pixels.Row(y - canvas.origin.y);
            const int x = area.left - canvas.origin.x;
            if (columns_.IsPlain()) {
                LoadRow(from, source_.format.bitsPerPixel, picked[0], width, raw.data());
            } else {
                for (std::size_t i = 0; i < count; ++i) {
                    raw[i] = LoadPixel(from, source_.format.bitsPerPixel, picked[i]);
                }
            }
            converter.Map(raw.data(), mapped.data(), width);
            LoadRow(to, bits, x, width, old.data());
            for (std::size_t i = 0; i < count; ++i) {
                const DWORD color = raw[i] & mask_;
                old[i] = color - low_ <= high_ - low_ ? old[i] : mapped[i];
            }
            StoreRow(to, bits, x, width, old.data());
        }
    }

private:
    PixelBuffer source_;
    StretchAxis columns_, rows_;
    DWORD mask_ = 0, low_ = 0, high_ = 0;
};

}   // namespace

struct DeviceSurface::Landing {
    explicit Landing(ContextKind kind) : context(kind) {}
    DeviceContext context;
    RECT rect{};
    BlitRect place;   // the same, never cut to what a RECT can hold
};

// In the order of their addresses, so that two blits in opposite directions don't wait for each other for ever.
class DeviceSurface::Turns {
public:
    Turns(DeviceSurface& target, DeviceSurface* source, bool waits)
        : surfaces_{&target, source == &target ? nullptr : source} {
        if (surfaces_[1] && std::less<DeviceSurface*>()(surfaces_[1], surfaces_[0])) {
            std::swap(surfaces_[0], surfaces_[1]);
        }
        for (DeviceSurface* const surface : surfaces_) {
            if (surface) {
                result_ = surface->turn_.Take(SurfaceTurn::Use::Blit, waits);
                if (result_ != DD_OK) {
                    return;
                }
                ++taken_;
            }
        }
    }
    ~Turns() {
        while (taken_ > 0) {
            surfaces_[--taken_]->turn_.Give();
        }
    }
    Turns(const Turns&) = delete;
    Turns& operator=(const Turns&) = delete;

    HRESULT Result() const { return result_; }

private:
    DeviceSurface* surfaces_[2];
    int taken_ = 0;
    HRESULT result_ = DD_OK;
};

HRESULT DeviceSurface::Blt(LPRECT target, LPDIRECTDRAWSURFACE source, LPRECT part, DWORD flags, LPDDBLTFX effects) {
    return ShouldFail("Blt") ? E_FAIL : Draw(target, static_cast<DeviceSurface*>(source), part, flags, effects);
}

HRESULT DeviceSurface::Blt(LPRECT target, LPDIRECTDRAWSURFACE2 source, LPRECT part, DWORD flags, LPDDBLTFX effects) {
    return ShouldFail("Blt") ? E_FAIL : Draw(target, static_cast<DeviceSurface*>(source), part, flags, effects);
}

HRESULT DeviceSurface::BltFast(DWORD x, DWORD y, LPDIRECTDRAWSURFACE source, LPRECT part, DWORD flags) {
    return DrawFast(x, y, static_cast<DeviceSurface*>(source), part, flags);
}

HRESULT DeviceSurface::BltFast(DWORD x, DWORD y, LPDIRECTDRAWSURFACE2 source, LPRECT part, DWORD flags) {
    return DrawFast(x, y, static_cast<DeviceSurface*>(source), part, flags);
}

HRESULT DeviceSurface::DrawFast(DWORD x, DWORD y, DeviceSurface* source, const RECT* part, DWORD flags) {
    if (ShouldFail("BltFast")) {
        return E_FAIL;
    }
    if (!source || HeldClipper()) {
        return source ? DDERR_BLTFASTCANTCLIP : DDERR_INVALIDPARAMS;
    }
    const RECT from = part ? *part : source->Whole();
    const RECT to =
        ClampedRect(x, y, std::int64_t{x} + from.right - from.left, std::int64_t{y} + from.bottom - from.top);
    const DWORD wait = flags & DDBLTFAST_WAIT ? DDBLT_WAIT : 0;
    return Draw(&to, source, &from, wait | (flags & DDBLTFAST_SRCCOLORKEY ? DDBLT_KEYSRC : 0u), nullptr);
}

HRESULT DeviceSurface::Draw(const RECT* target, DeviceSurface* source, const RECT* part, DWORD flags,
                            const DDBLTFX* effects) try {
    constexpr DWORD known =
        DDBLT_ASYNC | DDBLT_COLORFILL | DDBLT_KEYSRC | DDBLT_KEYSRCOVERRIDE | DDBLT_ROP | DDBLT_WAIT;
    constexpr DWORD withEffects = DDBLT_COLORFILL | DDBLT_KEYSRCOVERRIDE | DDBLT_ROP;
    const bool isFill = (flags & DDBLT_COLORFILL) != 0;
    if (((flags & withEffects) && (!effects || effects->dwSize != sizeof(DDBLTFX))) || (!isFill && !source)) {
        return DDERR_INVALIDPARAMS;
    }
    if ((flags & ~known) || ((flags & DDBLT_ROP) && effects->dwROP != SRCCOPY)) {
        return DDERR_UNSUPPORTED;
    }
    source = isFill ? nullptr : source;
    if (HasLostMemory() || (source && source->HasLostMemory())) {
        return DDERR_SURFACELOST;
    }
    const RECT to = target ? *target : Whole();
    const RECT from = !source ? RECT{} : part ? *part : source->Whole();
    const ComReference<Clipper> clipper = HeldClipper();
    if (IsEmpty(to) || (!clipper && !IsInside(to, Whole())) ||
        (source && (IsEmpty(from) || !IsInside(from, source->Whole())))) {
        return DDERR_INVALIDRECT;
    }
    std::optional<DDCOLORKEY> key;
    if (source && (flags & (DDBLT_KEYSRC | DDBLT_KEYSRCOVERRIDE))) {
        key = flags & DDBLT_KEYSRCOVERRIDE ? effects->ddckSrcColorkey : source->SourceKey();
        if (!key) {
            return DDERR_NOCOLORKEY;
        }
    }
    const Turns turns(*this, source, (flags & DDBLT_WAIT) != 0);
    if (turns.Result() != DD_OK) {
        return turns.Result();
    }
    return source ? Copy(to, clipper.get(), *source, from, key ? &*key : nullptr)
                  : Fill(to, clipper.get(), effects->dwFillColor);
} catch (const std::bad_alloc&) {
    return DDERR_OUTOFMEMORY;
}

HRESULT DeviceSurface::Land(const RECT& target, const Clipper* clipper, Landing* landing) const {
    landing->rect = target;
    landing->place = ToBlitRect(target);
    if (bitmap_) {
        landing->context.state.bitmap = bitmap_;
    }
    if (!clipper) {
        return DD_OK;
    }
    if (landing->context.target == ContextKind::Window) {
        // A window clips by itself; its own coordinates begin at its client area.
        RECT client{};
        landing->context.window = clipper->Window();
        if (!Display()->ClientArea(landing->context.window, &client)) {
            return DDERR_INVALIDOBJECT;
        }
        landing->rect = ClampedRect(std::int64_t{target.left} - client.left, std::int64_t{target.top} - client.top,
                                    std::int64_t{target.right} - client.left, std::int64_t{target.bottom} - client.top);
        landing->place.x -= client.left;
        landing->place.y -= client.top;
        return DD_OK;
    }
    Region visible;
    if (!clipper->Visible(&visible)) {
        return DDERR_NOCLIPLIST;
    }
    landing->context.state.clip = std::move(visible);
    return DD_OK;
}

HRESULT DeviceSurface::Fill(const RECT& target, const Clipper* clipper, DWORD pixel) {
    const bool isOnWindow = isScreen_ && clipper && clipper->Window();
    Landing landing(bitmap_ ? ContextKind::Memory : isOnWindow ? ContextKind::Window : ContextKind::Screen);
    const HRESULT result = Land(target, clipper, &landing);
    if (result != DD_OK) {
        return result;
    }
    const bool isDrawn =
        DrawInside(landing.context, landing.rect, Access::Write, [&](const Canvas& canvas, const RECT& area) {
            DWORD value = pixel;
            if (!isLockable_) {
                PixelBuffer described;
                described.format = format_;
                PixelConverter(described, canvas.pixels, {}).Map(&pixel, &value, 1);
            }
            for (int y = area.top; y < area.bottom; ++y) {
                FillPixels(canvas.pixels.Row(y - canvas.origin.y), canvas.pixels.format.bitsPerPixel,
                           area.left - canvas.origin.x, area.right - area.left, value);
            }
        });
    return isDrawn ? DD_OK : DDERR_GENERIC;
}

HRESULT DeviceSurface::Copy(const RECT& target, const Clipper* clipper, DeviceSurface& source, const RECT& part,
                            const DDCOLORKEY* key) {
    const bool isOnWindow = isScreen_ && clipper && clipper->Window();
    Landing landing(bitmap_ ? ContextKind::Memory : isOnWindow ? ContextKind::Window : ContextKind::Screen);
    const HRESULT result = Land(target, clipper, &landing);
    if (result != DD_OK) {
        return result;
    }
    // Indices mean what the display makes of them.
    for (DeviceSurface* const surface : {this, &source}) {
        if (surface->bitmap_ && surface->format_.IsIndexed()) {
            surface->bitmap_->colors = Display()->SystemPalette();
        }
    }
    DeviceContext from(source.bitmap_ ? ContextKind::Memory : ContextKind::Screen);
    from.state.bitmap = source.bitmap_;
    PixelMemory memory;
    std::vector<RGBQUAD> colors;
    BlitSource opened;
    POINT origin{};
    if (!OpenSource(from, part, &memory, &colors, &opened, &origin)) {
        return DDERR_GENERIC;
    }
    BlitRect fromRect = ToBlitRect(part);
    fromRect.x -= origin.x;
    fromRect.y -= origin.y;
    if (!key) {
        return Blit(landing.context, landing.place, opened, fromRect, kSourceCopy) ? DD_OK : DDERR_GENERIC;
    }
    PixelMemory copy;
    if (&source == this && bitmap_) {   // rows must not be read after they were written
        const std::int64_t bytes = std::int64_t{pitch_} * height_;
        if (!copy.Allocate(bytes)) {
            return DDERR_OUTOFMEMORY;
        }
        std::copy_n(bitmap_->pixels.Data(), bytes, copy.Data());
        opened.pixels.bits = copy.Data();
    }
    KeyedRows rows(opened.pixels, landing.place, fromRect, *key);
    const bool isDrawn = DrawInside(landing.context, rows.Area(), Access::ReadWrite,
                                    [&](const Canvas& canvas, const RECT& area) { rows.Draw(canvas, area); });
    return isDrawn ? DD_OK : DDERR_GENERIC;
}

}   // namespace rastel::platform
