// The native Graphics: a target, its clip and transform, and the one way in which anything is drawn on it.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "rastel/platform/portable/gdiplus/coverage_mask.h"
#include "rastel/platform/portable/gdiplus/paint_source.h"

namespace rastel::platform::gdip {

// A picture or a device context: rows of straight ARGB that may be changed.
class DrawTarget {
public:
    virtual ~DrawTarget() = default;
    virtual bool Size(SIZE* size) const = 0;
    virtual bool IsBusy() const { return false; }

    // Calls `change` with runs of pixels inside `area`; what it leaves in them is stored where `isTouched` says.
    using Change = std::function<void(int x, int y, int count, DWORD* argb)>;
    using Touched = std::function<const unsigned char*(int x, int y)>;   // a byte a pixel, 0: leave it alone
    virtual bool Modify(const RECT& area, const Touched& isTouched, const Change& change) = 0;

    virtual POINT Origin() const { return {}; }
};

// Both null where there is no such target.
std::unique_ptr<DrawTarget> TargetOf(HDC context);
std::unique_ptr<DrawTarget> TargetOf(Picture& picture);

struct GraphicsState {
    cairo_matrix_t world{1, 0, 0, 1, 0, 0};
    Gdiplus::SmoothingMode smoothing = Gdiplus::SmoothingModeDefault;
    Gdiplus::PixelOffsetMode offset = Gdiplus::PixelOffsetModeDefault;
    Gdiplus::CompositingMode compositing = Gdiplus::CompositingModeSourceOver;
    Gdiplus::InterpolationMode interpolation = Gdiplus::InterpolationModeDefault;
    Gdiplus::TextRenderingHint text = Gdiplus::TextRenderingHintSystemDefault;
    bool isLimited = false;
    RECT clip{};                                                    // on the target
    std::shared_ptr<const std::vector<unsigned char>> clipPixels;   // of the whole target, where a box doesn't do
};

class GraphicsObject : public Gdiplus::GpGraphics {
public:
    explicit GraphicsObject(std::unique_ptr<DrawTarget> target) : target_(std::move(target)) {}

    GraphicsState state;

    Gdiplus::Status Save(UINT* number);
    Gdiplus::Status Restore(UINT number);
    Gdiplus::Status SetClip(const Outline& outline, Gdiplus::FillMode fill, Gdiplus::CombineMode mode);

    Gdiplus::Status Clear(DWORD color);
    Gdiplus::Status Fill(const Outline& outline, Gdiplus::FillMode mode, const BrushObject& brush);
    Gdiplus::Status Stroke(const Outline& outline, const PenObject& pen);
    Gdiplus::Status DrawPicture(Picture& picture, const Gdiplus::RectF& target, const Gdiplus::RectF& source);

    // `draw` covers pixels in the coordinates of the target that it is given the matrix for.
    Gdiplus::Status DrawCovered(const BrushObject& brush, bool isSmooth,
                                const std::function<void(cairo_t*, const cairo_matrix_t&)>& draw);

private:
    Gdiplus::Status Prepare(Raster* raster) const;
    cairo_matrix_t ToTarget(bool withOffset) const;
    bool IsSmooth() const;
    Gdiplus::Status Compose(CoverageMask mask, PaintSource& source, Gdiplus::CompositingMode mode);

    std::unique_ptr<DrawTarget> target_;
    std::vector<GraphicsState> saved_;
};

}   // namespace rastel::platform::gdip
