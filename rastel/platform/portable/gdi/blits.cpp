// The blits that hosts call: between contexts, and from packed pixels in memory.
#include <algorithm>
#include <cstdlib>

#include "rastel/platform/portable/gdi/blit.h"
#include "rastel/platform/portable/gdi/dib_layout.h"
#include "rastel/platform/portable/gdi/paint.h"
#include "rastel/platform/portable/gdi/stretch.h"

using rastel::platform::BlitRect;
using rastel::platform::BlitSource;
using rastel::platform::ClampedRect;
using rastel::platform::DeviceContext;
using rastel::platform::DibLayout;
using rastel::platform::FindContext;
using rastel::platform::LowOf;
using rastel::platform::PixelMemory;
using rastel::platform::RasterOp;

namespace {

BlitRect OnDevice(const DeviceContext& context, int x, int y, std::int64_t width, std::int64_t height) {
    const POINT& origin = context.state.origin;
    return {std::int64_t{x} + origin.x, std::int64_t{y} + origin.y, width, height};
}

RECT AreaOf(const BlitRect& rect) {
    const std::int64_t left = LowOf(rect.x, rect.width), top = LowOf(rect.y, rect.height);
    return ClampedRect(left, top, left + std::abs(rect.width), top + std::abs(rect.height));
}

bool PaintOnly(DeviceContext& target, const BlitRect& to, RasterOp operation) {
    return PaintRect(target, AreaOf(to), *target.state.brush, operation);
}

// How many of the rows [first, first + count) exist; a count below 0 reaches back.
int RowsInside(std::int64_t first, std::int64_t count, int rows) {
    const std::int64_t low = std::clamp<std::int64_t>(std::min(first, first + count), 0, rows);
    const std::int64_t high = std::clamp<std::int64_t>(std::max(first, first + count), 0, rows);
    return static_cast<int>(high - low);
}

}   // namespace

BOOL StretchBlt(HDC target, int x, int y, int width, int height, HDC source, int sourceX, int sourceY, int sourceWidth,
                int sourceHeight, DWORD operation) {
    const auto to = FindContext(target);
    if (!to) {
        return FALSE;
    }
    const RasterOp rasterOp = RasterOp::FromCode(operation);
    const BlitRect area = OnDevice(*to, x, y, width, height);
    if (!rasterOp.NeedsSource()) {
        return PaintOnly(*to, area, rasterOp) ? TRUE : FALSE;
    }
    const auto from = FindContext(source);
    if (!from) {
        return FALSE;
    }
    BlitRect sourceArea = OnDevice(*from, sourceX, sourceY, sourceWidth, sourceHeight);
    PixelMemory memory;
    std::vector<RGBQUAD> colors;
    BlitSource opened;
    POINT origin{};
    if (!OpenSource(*from, AreaOf(sourceArea), &memory, &colors, &opened, &origin)) {
        return FALSE;
    }
    sourceArea.x -= origin.x;
    sourceArea.y -= origin.y;
    return Blit(*to, area, opened, sourceArea, rasterOp) ? TRUE : FALSE;
}

BOOL BitBlt(HDC target, int x, int y, int width, int height, HDC source, int sourceX, int sourceY, DWORD operation) {
    return StretchBlt(target, x, y, width, height, source, sourceX, sourceY, width, height, operation);
}

BOOL PatBlt(HDC target, int x, int y, int width, int height, DWORD operation) {
    const auto to = FindContext(target);
    const RasterOp rasterOp = RasterOp::FromCode(operation);
    if (!to || rasterOp.NeedsSource()) {
        return FALSE;
    }
    return PaintOnly(*to, OnDevice(*to, x, y, width, height), rasterOp) ? TRUE : FALSE;
}

int StretchDIBits(HDC target, int x, int y, int width, int height, int sourceX, int sourceY, int sourceWidth,
                  int sourceHeight, const void* bits, const BITMAPINFO* info, UINT usage, DWORD operation) {
    const auto to = FindContext(target);
    if (!to) {
        return 0;
    }
    const RasterOp rasterOp = RasterOp::FromCode(operation);
    const BlitRect area = OnDevice(*to, x, y, width, height);
    if (!rasterOp.NeedsSource()) {
        return PaintOnly(*to, area, rasterOp) ? 1 : 0;
    }
    DibLayout layout;
    if (bits == nullptr || !ReadDibLayout(info, usage, to.get(), &layout)) {
        return 0;
    }
    BlitSource source;
    source.pixels = layout.View(bits);
    source.hasBackground = false;
    BlitRect from = {sourceX, sourceY, sourceWidth, sourceHeight};
    if (!layout.topDown) {   // rows are counted from the lower edge
        from.y = std::int64_t{layout.height} - sourceY - sourceHeight;
    }
    return Blit(*to, area, source, from, rasterOp) ? RowsInside(from.y, from.height, layout.height) : 0;
}

int SetDIBitsToDevice(HDC target, int x, int y, DWORD width, DWORD height, int sourceX, int sourceY, UINT firstRow,
                      UINT rows, const void* bits, const BITMAPINFO* info, UINT usage) {
    const auto to = FindContext(target);
    DibLayout layout;
    if (!to || bits == nullptr || !ReadDibLayout(info, usage, to.get(), &layout) ||
        firstRow >= static_cast<UINT>(layout.height)) {
        return 0;
    }
    // The bits hold a band of the picture only.
    const int pictureHeight = layout.height;
    const int band = static_cast<int>(std::min(rows, static_cast<UINT>(pictureHeight) - firstRow));
    if (band == 0) {
        return 0;
    }
    layout.height = band;
    const auto first = static_cast<std::int64_t>(firstRow);
    const std::int64_t bandTop = layout.topDown ? first : pictureHeight - first - band;
    const auto wide = static_cast<std::int64_t>(std::min<DWORD>(width, INT32_MAX));
    const auto high = static_cast<std::int64_t>(std::min<DWORD>(height, INT32_MAX));
    BlitSource source;
    source.pixels = layout.View(bits);
    source.hasBackground = false;
    const std::int64_t top = layout.topDown ? sourceY : std::int64_t{pictureHeight} - sourceY - high;
    return Blit(*to, OnDevice(*to, x, y, wide, high), source, {sourceX, top - bandTop, wide, high},
                rastel::platform::kSourceCopy)
               ? band
               : 0;
}
