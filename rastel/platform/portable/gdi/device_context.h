// A device context: what is drawn on, with what, and where.
//
// Three kinds of coordinates: *logical* ones come from the caller, *device* ones have the viewport origin added and
// count from the top left of the bitmap, of the window's client area or of the screen.
// Different threads may use different contexts; one context is used by one thread at a time.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "rastel/platform/portable/gdi/objects.h"
#include "rastel/platform/portable/screen/display_device.h"

namespace rastel::platform {

enum class ContextKind { Memory, Window, Screen };

// What SaveDC keeps.
struct ContextState {
    std::shared_ptr<BitmapObject> bitmap;   // memory contexts only
    std::shared_ptr<PenObject> pen;
    std::shared_ptr<BrushObject> brush;
    std::shared_ptr<FontObject> font;
    std::shared_ptr<PaletteObject> palette;
    POINT origin{};                   // of the viewport
    POINT position{};                 // logical; of MoveToEx, LineTo and text with TA_UPDATECP
    std::optional<Region> clip;       // device; none: no limit
    std::optional<Region> metaClip;   // device; none: no limit
    COLORREF textColor = RGB(0, 0, 0);
    COLORREF backColor = RGB(255, 255, 255);
    int backMode = OPAQUE;
    int rop2 = R2_COPYPEN;
    int stretchMode = BLACKONWHITE;
    UINT textAlign = 0;
};

struct DeviceContext : GdiObject {
    static constexpr ObjectKind kKind = ObjectKind::Context;
    explicit DeviceContext(ContextKind contextKind);
    ~DeviceContext() override;

    bool IsMemory() const { return target == ContextKind::Memory; }

    const ContextKind target;
    HWND window = nullptr;   // window contexts only
    bool fromGetDC = false;
    ContextState state;
    std::vector<ContextState> saved;
    unsigned char defaultPixel[4] = {};   // what the stock bitmap stands for here
};

inline std::shared_ptr<DeviceContext> FindContext(HDC context) {
    return Find<DeviceContext>(context);
}

// A new context with the stock objects selected; null: no handle is left.
std::shared_ptr<DeviceContext> MakeContext(ContextKind kind, HWND window);

// Puts a bitmap into a memory context. False: another context has it.
bool SelectBitmap(DeviceContext& context, const std::shared_ptr<BitmapObject>& bitmap);

// Pixels that may be read or written now: the device point (x, y) lies at (x - origin.x, y - origin.y) of `pixels`.
struct Canvas {
    PixelBuffer pixels;
    POINT origin{};
    bool isMono = false;   // takes the colours of its context, not those of the buffer
};

// The pixels of a bitmap as a view, with the colours they stand for.
PixelBuffer PixelsOf(const BitmapObject& bitmap);

// The bitmap of a memory context.
Canvas BitmapCanvas(const DeviceContext& context);

// The size of what is drawn on. False: its window is gone.
bool TargetSize(const DeviceContext& context, SIZE* size);

// Where drawing shows, in device coordinates: the target, what other windows leave of it, clip and meta region.
// False: the window is gone.
bool EffectiveClip(const DeviceContext& context, Region* clip);

// A rectangle from 64-bit numbers: clamped to what a RECT can hold, so that wild coordinates cannot wrap.
RECT ClampedRect(std::int64_t left, std::int64_t top, std::int64_t right, std::int64_t bottom);

// From logical to device coordinates.
RECT ToDevice(const DeviceContext& context, const RECT& logical);

// Calls `draw` for each rectangle of the effective clip inside `bounds` (device coordinates): the area that may be
// touched and a canvas that holds it. Access::Write promises that every pixel of each area will be written.
// False: the target is gone. Nothing visible is success.
using DrawArea = std::function<void(const Canvas& canvas, const RECT& area)>;
bool DrawInside(DeviceContext& context, const RECT& bounds, Access access, const DrawArea& draw);

// The same for parts of an already computed clip.
bool DrawInside(DeviceContext& context, const Region& clip, Access access, const DrawArea& draw);

// What a COLORREF means here: the indices of the selected palette are looked up. 0x00BBGGRR.
COLORREF ResolveColor(const DeviceContext& context, COLORREF color);

// For text. Logical coordinates, clipped; false: the target is gone or nonsense was passed.
//
// Mixes the text colour in by `coverage`: one byte a pixel, 0 (leaves the pixel alone, alpha byte included) to 255,
// rows `pitch` bytes apart. Each call is one trip to the display, so one for a line of text beats one a glyph.
bool BlendCoverage(DeviceContext& context, int x, int y, const unsigned char* coverage, int width, int height,
                   int pitch, COLORREF color);
// Fills with one colour, whatever brush and raster operation are set.
bool FillArea(DeviceContext& context, const RECT& rect, COLORREF color);

}   // namespace rastel::platform
