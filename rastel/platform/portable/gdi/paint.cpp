#include "rastel/platform/portable/gdi/paint.h"

#include <new>

#include "rastel/platform/portable/gdi/pixel_color.h"
#include "rastel/platform/portable/gdi/pixel_rows.h"

namespace rastel::platform {

BrushPixels::BrushPixels(const DeviceContext& context, const BrushObject& brush, const Canvas& canvas) {
    if (brush.style != BS_PATTERN || !brush.pattern) {
        solid_ = PixelOfColor(canvas.pixels, ResolveColor(context, brush.color));
        return;
    }
    tile_ = PixelsOf(*brush.pattern);
    mask_ = ColorBits(canvas.pixels.format);
    MonoColors mono;
    mono.sourceIsMono = brush.pattern->IsMono();
    mono.text = ResolveColor(context, context.state.textColor);
    mono.back = ResolveColor(context, context.state.backColor);
    mono.targetIsMono = canvas.isMono;
    mono.match = mono.back;
    mono.matchExactly = false;
    converter_.emplace(tile_, canvas.pixels, mono);
    row_.resize(static_cast<std::size_t>(tile_.width));
}

void BrushPixels::Row(int x, int y, int count, DWORD* values) {
    if (IsSolid()) {
        for (int i = 0; i < count; ++i) {
            values[i] = solid_;
        }
        return;
    }
    if (y % tile_.height != rowIndex_) {
        rowIndex_ = y % tile_.height;
        LoadRow(tile_.Row(rowIndex_), tile_.format.bitsPerPixel, 0, tile_.width, row_.data());
        converter_->Map(row_.data(), row_.data(), tile_.width);
        for (DWORD& value : row_) {
            value &= mask_;
        }
    }
    int column = x % tile_.width;
    for (int i = 0; i < count; ++i) {
        values[i] = row_[static_cast<std::size_t>(column)];
        column = column + 1 == tile_.width ? 0 : column + 1;
    }
}

namespace {

enum class FourthByte { Mixed, Zero };

bool Paint(DeviceContext& context, const RECT& device, const BrushObject& brush, RasterOp operation,
           FourthByte fourthByte) try {
    if (operation.NeedsPattern() && brush.style == BS_NULL) {
        return true;
    }
    const Access access = operation.NeedsTarget() ? Access::ReadWrite : Access::Write;
    return DrawInside(context, device, access, [&](const Canvas& canvas, const RECT& area) {
        const PixelFormat& format = canvas.pixels.format;
        const int bitsPerPixel = format.bitsPerPixel;
        const int x = area.left - canvas.origin.x;
        const int width = area.right - area.left;
        BrushPixels pattern(context, brush, canvas);
        const DWORD mask = fourthByte == FourthByte::Zero ? ColorBits(format) : 0xFFFFFFFF;
        const bool constant = !operation.NeedsTarget() && (!operation.NeedsPattern() || pattern.IsSolid());
        const DWORD value =
            operation == kWhiteness ? WhitePixel(format) : operation.Apply(pattern.Solid(), 0, 0) & mask;
        std::vector<DWORD> values(constant ? 0 : static_cast<std::size_t>(width));
        std::vector<DWORD> patternRow(values.size(), pattern.Solid());
        for (int y = area.top; y < area.bottom; ++y) {
            unsigned char* const row = canvas.pixels.Row(y - canvas.origin.y);
            if (constant) {
                FillPixels(row, bitsPerPixel, x, width, value);
                continue;
            }
            if (!pattern.IsSolid()) {
                pattern.Row(area.left, y, width, patternRow.data());
            }
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
} catch (const std::bad_alloc&) {
    return false;
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
