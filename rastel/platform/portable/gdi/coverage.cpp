// Mixing a colour in by coverage: what text is drawn with.
#include <algorithm>

#include "rastel/platform/portable/gdi/device_context.h"
#include "rastel/platform/portable/gdi/pixel_color.h"
#include "rastel/platform/portable/gdi/pixel_convert.h"
#include "rastel/platform/portable/gdi/pixel_rows.h"
#include "rastel/platform/portable/gdi/row_kernels.h"

namespace rastel::platform {

namespace {

// Blends rows of one canvas. Pixels are widened to 8 bits a channel and back; those that nothing covers are not
// written at all, so that no bit of theirs is lost on the way.
class Blender {
public:
    Blender(const Canvas& canvas, int width)
        : canvas_(canvas),
          widen_(canvas.pixels, Wide(), {}),
          narrow_(Wide(), canvas.pixels, {}),
          values_(static_cast<std::size_t>(width)) {}

    void Row(int x, int y, const unsigned char* coverage, int count, DWORD color) {
        const int bitsPerPixel = canvas_.pixels.format.bitsPerPixel;
        unsigned char* const row = canvas_.pixels.Row(y);
        for (int i = 0; i < count;) {
            if (coverage[i] == 0) {
                ++i;
                continue;
            }
            int end = i + 1;
            while (end < count && coverage[end] != 0) {
                ++end;
            }
            LoadRow(row, bitsPerPixel, x + i, end - i, values_.data());
            widen_.Map(values_.data(), values_.data(), end - i);
            Kernels().mix(reinterpret_cast<unsigned char*>(values_.data()), 0, coverage + i, 0, end - i, 1, color);
            narrow_.Map(values_.data(), values_.data(), end - i);
            StoreRow(row, bitsPerPixel, x + i, end - i, values_.data());
            i = end;
        }
    }

private:
    static PixelBuffer Wide() {
        PixelBuffer buffer;
        buffer.format = FormatOfDepth(32);
        return buffer;
    }

    const Canvas& canvas_;
    PixelConverter widen_;
    PixelConverter narrow_;
    std::vector<DWORD> values_;
};

}   // namespace

bool BlendCoverage(DeviceContext& context, int x, int y, const unsigned char* coverage, int width, int height,
                   int pitch, COLORREF color) {
    if (coverage == nullptr || width < 0 || height < 0 || pitch < width) {
        return false;
    }
    const std::int64_t left = std::int64_t{x} + context.state.origin.x;
    const std::int64_t top = std::int64_t{y} + context.state.origin.y;
    const COLORREF resolved = ResolveColor(context, color);
    const DWORD ink = RGB(GetBValue(resolved), GetGValue(resolved), GetRValue(resolved));   // in 32-bit pixel order
    const RECT bounds = ClampedRect(left, top, left + width, top + height);
    return DrawInside(context, bounds, Access::ReadWrite, [&](const Canvas& canvas, const RECT& area) {
        Blender blender(canvas, area.right - area.left);
        for (int row = area.top; row < area.bottom; ++row) {
            const unsigned char* const line = coverage + static_cast<std::ptrdiff_t>(row - top) * pitch;
            blender.Row(area.left - canvas.origin.x, row - canvas.origin.y, line + (area.left - left),
                        area.right - area.left, ink);
        }
    });
}

}   // namespace rastel::platform
