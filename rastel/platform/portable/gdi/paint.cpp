#include "rastel/platform/portable/gdi/paint.h"

#include "rastel/platform/portable/gdi/pixel_color.h"
#include "rastel/platform/portable/gdi/pixel_convert.h"
#include "rastel/platform/portable/gdi/pixel_rows.h"

namespace rastel::platform {

BrushPixels::BrushPixels(const DeviceContext& context, const BrushObject& brush, const Canvas& canvas) {
    if (brush.style != BS_PATTERN || !brush.pattern) {
        solid_ = PixelOfColor(canvas.pixels, ResolveColor(context, brush.color));
        return;
    }
    const PixelBuffer tile = PixelsOf(*brush.pattern);
    MonoColors mono;
    mono.sourceIsMono = brush.pattern->IsMono();
    mono.text = ResolveColor(context, context.state.textColor);
    mono.back = ResolveColor(context, context.state.backColor);
    mono.targetIsMono = canvas.isMono;
    mono.match = mono.back;
    mono.matchExactly = false;
    PixelConverter converter(tile, canvas.pixels, mono);
    tileWidth_ = tile.width;
    tileHeight_ = tile.height;
    tile_.resize(static_cast<std::size_t>(tileWidth_) * static_cast<std::size_t>(tileHeight_));
    for (int y = 0; y < tileHeight_; ++y) {
        DWORD* const row = tile_.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(tileWidth_);
        LoadRow(tile.Row(y), tile.format.bitsPerPixel, 0, tileWidth_, row);
        converter.Map(row, row, tileWidth_);
        for (int x = 0; x < tileWidth_ && canvas.pixels.format.bitsPerPixel == 32; ++x) {
            row[x] &= ColorBits(canvas.pixels.format);
        }
    }
}

void BrushPixels::Row(int x, int y, int count, DWORD* values) const {
    if (IsSolid()) {
        for (int i = 0; i < count; ++i) {
            values[i] = solid_;
        }
        return;
    }
    // Device coordinates of what is visible are never negative.
    const DWORD* const row =
        tile_.data() + static_cast<std::size_t>(y % tileHeight_) * static_cast<std::size_t>(tileWidth_);
    int column = x % tileWidth_;
    for (int i = 0; i < count; ++i) {
        values[i] = row[column];
        column = column + 1 == tileWidth_ ? 0 : column + 1;
    }
}

namespace {

enum class FourthByte { Mixed, Zero };

bool Paint(DeviceContext& context, const RECT& device, const BrushObject& brush, RasterOp operation,
           FourthByte fourthByte) {
    if (operation.NeedsPattern() && brush.style == BS_NULL) {
        return true;
    }
    const Access access = operation.NeedsTarget() ? Access::ReadWrite : Access::Write;
    return DrawInside(context, device, access, [&](const Canvas& canvas, const RECT& area) {
        const PixelFormat& format = canvas.pixels.format;
        const int bitsPerPixel = format.bitsPerPixel;
        const int x = area.left - canvas.origin.x;
        const int width = area.right - area.left;
        const BrushPixels pattern(context, brush, canvas);
        const DWORD mask = fourthByte == FourthByte::Zero ? ColorBits(format) : 0xFFFFFFFF;
        const bool constant = !operation.NeedsTarget() && (!operation.NeedsPattern() || pattern.IsSolid());
        const DWORD value = operation == kWhiteness ? WhitePixel(format) : operation.Apply(pattern.Solid(), 0, 0) & mask;
        std::vector<DWORD> values(constant ? 0 : static_cast<std::size_t>(width));
        std::vector<DWORD> patternRow(values.size());
        for (int y = area.top; y < area.bottom; ++y) {
            unsigned char* const row = canvas.pixels.Row(y - canvas.origin.y);
            if (constant) {
                FillPixels(row, bitsPerPixel, x, width, value);
                continue;
            }
            pattern.Row(area.left, y, width, patternRow.data());
            if (operation.NeedsTarget()) {
                LoadRow(row, bitsPerPixel, x, width, values.data());
            }
            operation.Apply(patternRow.data(), nullptr, values.data(), width);
            for (DWORD& mixed : values) {
                mixed &= mask;
            }
            StoreRow(row, bitsPerPixel, x, width, values.data());
        }
    });
}

}   // namespace

bool PaintRect(DeviceContext& context, const RECT& device, const BrushObject& brush, RasterOp operation) {
    return Paint(context, device, brush, operation, FourthByte::Mixed);
}

bool PaintShape(DeviceContext& context, const RECT& device, const BrushObject& brush, RasterOp mix) {
    return mix == RasterOp::FromPenMix(R2_NOP) || Paint(context, device, brush, mix, FourthByte::Zero);
}

bool FillArea(DeviceContext& context, const RECT& rect, COLORREF color) {
    BrushObject brush;
    brush.color = color;
    return PaintRect(context, ToDevice(context, rect), brush, kPatternCopy);
}

}   // namespace rastel::platform
