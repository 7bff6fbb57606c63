// Drawing text into a context.
#include <new>

#include "rastel/platform/portable/gdi.h"
#include "rastel/platform/portable/gdi/device_context.h"
#include "rastel/platform/portable/gdi/text_decode.h"
#include "rastel/platform/portable/gdi/text_font.h"
#include "rastel/platform/portable/gdi/text_ink.h"
#include "rastel/platform/portable/gdi/text_layout.h"
#include "rastel/platform/portable/gdi/text_quick.h"

namespace rastel::platform {

namespace {

// In logical coordinates; empty where nothing shows. False: the target is gone.
bool VisibleBounds(const DeviceContext& context, RECT* bounds) {
    Region clip;
    if (!EffectiveClip(context, &clip)) {
        return false;
    }
    const RECT device = clip.Bounds();
    const POINT origin = context.state.origin;
    const auto back = [](LONG value, LONG by) { return static_cast<std::int64_t>(value) - by; };
    *bounds = ClampedRect(back(device.left, origin.x), back(device.top, origin.y), back(device.right, origin.x),
                          back(device.bottom, origin.y));
    return true;
}

bool Blend(DeviceContext& context, const PlacedImage& placed, COLORREF color) {
    return !placed.image || BlendCoverage(context, placed.x, placed.y, placed.image->coverage.data(),
                                          placed.image->width, placed.image->height, placed.image->width, color);
}

bool DrawLine(DeviceContext& context, int x, int y, const std::u32string& text) {
    ContextState& state = context.state;
    TextPlacement placement;
    placement.align = state.textAlign;
    placement.cell = state.backMode == OPAQUE;
    const bool fromPosition = (state.textAlign & TA_UPDATECP) != 0;
    placement.x = fromPosition ? state.position.x : x;
    placement.y = fromPosition ? state.position.y : y;
    if (!VisibleBounds(context, &placement.visible)) {
        return false;
    }

    TextLine line;
    {
        EngineLock engine;
        const auto font = RealizedFontOf(*engine, context);
        if (!font) {
            return false;
        }
        line = LayOutLine(*engine, *font, text, placement);
    }
    const PlacedImage ink = MergeInk(line, placement.visible);

    const COLORREF backColor = ResolveColor(context, state.backColor);
    bool drawn = true;
    for (const TextBar& bar : line.cell) {
        drawn = (bar.turned.image ? Blend(context, bar.turned, backColor) : FillArea(context, bar.rect, backColor)) &&
                drawn;
    }
    drawn = Blend(context, ink, ResolveColor(context, state.textColor)) && drawn;
    if (fromPosition) {
        state.position = line.end;
    }
    return drawn;
}

}   // namespace

}   // namespace rastel::platform

BOOL TextOutW(HDC context, int x, int y, LPCWSTR text, int length) {
    const auto target = rastel::platform::FindContext(context);
    if (!target || length < 0 || (!text && length > 0)) {
        return FALSE;
    }
    try {
        if (rastel::platform::DrawQuickly(*target, x, y, text, length)) {
            return TRUE;
        }
        const std::u32string characters = rastel::platform::DecodeText(text, length);
        return characters.empty() || rastel::platform::DrawLine(*target, x, y, characters);
    } catch (const std::bad_alloc&) {
        return FALSE;
    }
}

UINT SetTextAlign(HDC context, UINT align) {
    const auto target = rastel::platform::FindContext(context);
    if (!target) {
        return GDI_ERROR;
    }
    const UINT before = target->state.textAlign;
    target->state.textAlign = align;
    return before;
}

UINT GetTextAlign(HDC context) {
    const auto target = rastel::platform::FindContext(context);
    return target ? target->state.textAlign : GDI_ERROR;
}
