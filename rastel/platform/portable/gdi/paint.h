// Brushes as rows of pixels, and the fills that need no source.
#pragma once

#include <optional>
#include <vector>

#include "rastel/platform/portable/gdi/device_context.h"
#include "rastel/platform/portable/gdi/pixel_convert.h"
#include "rastel/platform/portable/gdi/raster_op.h"

namespace rastel::platform {

// A brush in the format of a canvas. Patterns start at the device's top left corner. The brush must outlive this.
class BrushPixels {
public:
    BrushPixels(const DeviceContext& context, const BrushObject& brush, const Canvas& canvas);

    bool IsSolid() const { return !converter_; }
    DWORD Solid() const { return solid_; }

    // Raw pixels of the device row y from x on, neither below 0.
    void Row(int x, int y, int count, DWORD* values);

private:
    DWORD solid_ = 0;
    DWORD mask_ = 0;
    PixelBuffer tile_;
    std::optional<PixelConverter> converter_;   // patterns only
    std::vector<DWORD> row_;                    // one converted row of the tile
    int rowIndex_ = -1;
};

// Mixes a brush into a rectangle in device coordinates. False: the target is gone. A hollow brush leaves no trace.
bool PaintRect(DeviceContext& context, const RECT& device, const BrushObject& brush, RasterOp operation);

// The same as a shape of GDI: whatever the mix, the byte that is no colour becomes 0 on 32 bits.
bool PaintShape(DeviceContext& context, const RECT& device, const BrushObject& brush, RasterOp mix);

// The bits that carry colour in a format, all bits of an index.
inline DWORD ColorBits(const PixelFormat& format) {
    return format.IsIndexed() ? 0xFFFFFFFFu : format.redMask | format.greenMask | format.blueMask;
}

}   // namespace rastel::platform
