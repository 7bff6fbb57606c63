// Rectangles and single pixels.
#include <algorithm>
#include <cstdlib>

#include "rastel/platform/portable/gdi/device_context.h"
#include "rastel/platform/portable/gdi/paint.h"
#include "rastel/platform/portable/gdi/pixel_color.h"
#include "rastel/platform/portable/gdi/pixel_rows.h"
#include "rastel/platform/portable/gdi/stretch.h"
#include "rastel/platform/portable/gdi/stroke.h"

using rastel::platform::Access;
using rastel::platform::BrushObject;
using rastel::platform::Canvas;
using rastel::platform::ClampedRect;
using rastel::platform::DeviceContext;
using rastel::platform::Find;
using rastel::platform::FindContext;
using rastel::platform::kPatternCopy;
using rastel::platform::LowOf;
using rastel::platform::PenObject;
using rastel::platform::RasterOp;

namespace {

bool IsEmpty(const RECT& rect) {
    return rect.left >= rect.right || rect.top >= rect.bottom;
}

// The border of a rectangle as four that do not overlap, `width` pixels wide.
template <typename Draw>
bool ForEachSide(const RECT& rect, std::int64_t width, const Draw& draw) {
    if (IsEmpty(rect)) {
        return true;
    }
    const std::int64_t left = rect.left;
    const std::int64_t top = rect.top;
    const std::int64_t right = rect.right;
    const std::int64_t bottom = rect.bottom;
    if (right - left <= 2 * width || bottom - top <= 2 * width) {
        return draw(rect);
    }
    return draw(ClampedRect(left, top, right, top + width)) && draw(ClampedRect(left, bottom - width, right, bottom)) &&
           draw(ClampedRect(left, top + width, left + width, bottom - width)) &&
           draw(ClampedRect(right - width, top + width, right, bottom - width));
}

// The pixel under a point, in device coordinates; an empty rectangle where no such point can be.
RECT PixelAt(const DeviceContext& context, int x, int y) {
    const std::int64_t left = std::int64_t{x} + context.state.origin.x;
    const std::int64_t top = std::int64_t{y} + context.state.origin.y;
    return ClampedRect(left, top, left + 1, top + 1);
}

// The colour that is there afterwards; CLR_INVALID: clipped away or the target is gone.
COLORREF PutPixel(HDC context, int x, int y, COLORREF color) {
    const auto found = FindContext(context);
    COLORREF put = CLR_INVALID;
    if (found) {
        const COLORREF resolved = ResolveColor(*found, color);
        DrawInside(*found, PixelAt(*found, x, y), Access::Write, [&](const Canvas& canvas, const RECT& area) {
            const DWORD raw = PixelOfColor(canvas.pixels, resolved);
            rastel::platform::StorePixel(canvas.pixels.Row(area.top - canvas.origin.y),
                                         canvas.pixels.format.bitsPerPixel, area.left - canvas.origin.x, raw);
            put = ColorOfPixel(canvas.pixels, raw);
        });
    }
    return put;
}

}   // namespace

int FillRect(HDC context, const RECT* rect, HBRUSH brush) {
    const auto found = FindContext(context);
    const auto with = Find<BrushObject>(brush);
    if (!found || rect == nullptr || !with) {
        return 0;
    }
    const auto width = std::int64_t{rect->right} - rect->left, height = std::int64_t{rect->bottom} - rect->top;
    const std::int64_t left = LowOf(rect->left, width), top = LowOf(rect->top, height);
    const RECT area = ClampedRect(left, top, left + std::abs(width), top + std::abs(height));
    return PaintRect(*found, ToDevice(*found, area), *with, kPatternCopy) ? 1 : 0;
}

int FrameRect(HDC context, const RECT* rect, HBRUSH brush) {
    const auto found = FindContext(context);
    const auto with = Find<BrushObject>(brush);
    if (!found || rect == nullptr || !with || IsEmpty(*rect)) {
        return 0;
    }
    const auto fill = [&](const RECT& side) { return PaintRect(*found, side, *with, kPatternCopy); };
    return ForEachSide(ToDevice(*found, *rect), 1, fill) ? 1 : 0;
}

BOOL Rectangle(HDC context, int left, int top, int right, int bottom) {
    const auto found = FindContext(context);
    if (!found) {
        return FALSE;
    }
    const PenObject& pen = *found->state.pen;
    const RECT logical = {std::min(left, right), std::min(top, bottom), std::max(left, right), std::max(top, bottom)};
    RECT outer = ToDevice(*found, logical);
    if (IsEmpty(outer)) {
        return TRUE;
    }
    const RasterOp mix = RasterOp::FromPenMix(found->state.rop2);
    if (pen.style == PS_NULL) {   // the border that it would have covered stays out
        outer.right -= 1;
        outer.bottom -= 1;
        return PaintShape(*found, outer, *found->state.brush, mix) ? TRUE : FALSE;
    }
    const std::int64_t width = std::max(pen.width, 1);
    if (pen.style != PS_INSIDEFRAME) {   // half of a wide border lies outside
        const std::int64_t half = width / 2;
        const std::int64_t rest = (width - 1) / 2;
        outer = ClampedRect(outer.left - half, outer.top - half, outer.right + rest, outer.bottom + rest);
    }
    const bool dashed = width == 1 && pen.style != PS_SOLID && pen.style != PS_INSIDEFRAME;
    bool drawn = true;
    if (dashed) {
        const LONG lastX = outer.right - 1;
        const LONG lastY = outer.bottom - 1;
        drawn = StrokeDevice(*found, {{outer.left, outer.top},
                                      {lastX, outer.top},
                                      {lastX, lastY},
                                      {outer.left, lastY},
                                      {outer.left, outer.top}});
    } else {
        BrushObject ink;
        ink.color = pen.color;
        drawn = ForEachSide(outer, width, [&](const RECT& side) { return PaintShape(*found, side, ink, mix); });
    }
    const RECT inner = ClampedRect(outer.left + width, outer.top + width, outer.right - width, outer.bottom - width);
    if (drawn && !IsEmpty(inner)) {
        drawn = PaintShape(*found, inner, *found->state.brush, mix);
    }
    return drawn ? TRUE : FALSE;
}

COLORREF SetPixel(HDC context, int x, int y, COLORREF color) {
    return PutPixel(context, x, y, color);
}

BOOL SetPixelV(HDC context, int x, int y, COLORREF color) {
    return PutPixel(context, x, y, color) != CLR_INVALID ? TRUE : FALSE;
}

COLORREF GetPixel(HDC context, int x, int y) {
    const auto found = FindContext(context);
    COLORREF color = CLR_INVALID;
    if (found) {
        DrawInside(*found, PixelAt(*found, x, y), Access::Read, [&](const Canvas& canvas, const RECT& area) {
            color = ColorOfPixel(canvas.pixels, rastel::platform::LoadPixel(
                                                    canvas.pixels.Row(area.top - canvas.origin.y),
                                                    canvas.pixels.format.bitsPerPixel, area.left - canvas.origin.x));
        });
    }
    return color;
}
