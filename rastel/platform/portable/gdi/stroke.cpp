#include "rastel/platform/portable/gdi/stroke.h"

#include <algorithm>
#include <cmath>
#include <span>

#include "rastel/platform/portable/gdi/paint.h"
#include "rastel/platform/portable/gdi/pixel_color.h"
#include "rastel/platform/portable/gdi/pixel_rows.h"
#include "rastel/platform/portable/gdi/stroke_walk.h"

namespace rastel::platform {

namespace {

// Lengths of ink and gap in turn, in pixels.
std::span<const int> DashesOf(int style) {
    static constexpr int kDash[] = {18, 6};
    static constexpr int kDot[] = {3, 3};
    static constexpr int kDashDot[] = {9, 6, 3, 6};
    static constexpr int kDashDotDot[] = {9, 3, 3, 3, 3, 3};
    switch (style) {
        case PS_DASH:
            return kDash;
        case PS_DOT:
            return kDot;
        case PS_DASHDOT:
            return kDashDot;
        case PS_DASHDOTDOT:
            return kDashDotDot;
        default:
            return {};
    }
}

class DashPattern {
public:
    explicit DashPattern(int style) {
        bool ink = true;
        for (const int length : DashesOf(style)) {
            isInk_.insert(isInk_.end(), static_cast<std::size_t>(length), ink);
            ink = !ink;
        }
    }

    bool IsSolid() const { return isInk_.empty(); }
    bool InkAt(std::int64_t step) const {
        return isInk_.empty() || isInk_[static_cast<std::size_t>(step) % isInk_.size()];
    }

private:
    std::vector<bool> isInk_;
};

RECT BoundsOf(const std::vector<StrokePoint>& points, std::int64_t margin) {
    StrokePoint low = points.front();
    StrokePoint high = low;
    for (const StrokePoint& point : points) {
        low = {std::min(low.x, point.x), std::min(low.y, point.y)};
        high = {std::max(high.x, point.x), std::max(high.y, point.y)};
    }
    return ClampedRect(low.x - margin, low.y - margin, high.x + margin + 1, high.y + margin + 1);
}

// Lays the pen's mix over pixels of one canvas.
class PenInk {
public:
    PenInk(const Canvas& canvas, RasterOp mix) : canvas_(canvas), mix_(mix), mask_(ColorBits(canvas.pixels.format)) {}

    void Pixel(int x, int y, DWORD ink) const {
        unsigned char* const row = canvas_.pixels.Row(y - canvas_.origin.y);
        const int bitsPerPixel = canvas_.pixels.format.bitsPerPixel;
        const int column = x - canvas_.origin.x;
        StorePixel(row, bitsPerPixel, column, Mixed(LoadPixel(row, bitsPerPixel, column), ink));
    }

    void Span(int left, int right, int y, DWORD ink) const {
        if (mix_.NeedsTarget()) {
            for (int x = left; x < right; ++x) {
                Pixel(x, y, ink);
            }
        } else {
            FillPixels(canvas_.pixels.Row(y - canvas_.origin.y), canvas_.pixels.format.bitsPerPixel,
                       left - canvas_.origin.x, right - left, Mixed(0, ink));
        }
    }

private:
    DWORD Mixed(DWORD target, DWORD ink) const {
        return mix_ == kWhiteness ? WhitePixel(canvas_.pixels.format) : mix_.Apply(ink, 0, target) & mask_;
    }

    const Canvas& canvas_;
    const RasterOp mix_;
    const DWORD mask_;
};

void DrawThin(const DeviceContext& context, const std::vector<StrokePoint>& points, const Canvas& canvas,
              const RECT& area) {
    const ContextState& state = context.state;
    const PenInk pen(canvas, RasterOp::FromPenMix(state.rop2));
    const DWORD ink = PixelOfColor(canvas.pixels, ResolveColor(context, state.pen->color));
    const DWORD gap = PixelOfColor(canvas.pixels, ResolveColor(context, state.backColor));
    const DashPattern dashes(state.pen->style);
    std::int64_t walked = 0;
    for (std::size_t i = 0; i + 1 < points.size(); ++i) {
        LineWalk walk(points[i], points[i + 1]);
        std::int64_t step = 0;
        std::int64_t last = 0;
        walk.StepsInside(area, &step, &last);
        for (walk.Seek(step); step < last; ++step, walk.Next()) {
            const std::int64_t x = walk.X();
            const std::int64_t y = walk.Y();
            if (x < area.left || x >= area.right || y < area.top || y >= area.bottom) {
                continue;
            }
            if (dashes.InkAt(walked + step)) {
                pen.Pixel(static_cast<int>(x), static_cast<int>(y), ink);
            } else if (state.backMode == OPAQUE) {
                pen.Pixel(static_cast<int>(x), static_cast<int>(y), gap);
            }
        }
        walked += walk.Steps();
    }
}

// A line with round ends, as what it covers of a row of pixel centres.
class WideSegment {
public:
    WideSegment(const StrokePoint& from, const StrokePoint& to, int width) : radius_(width / 2.0) {
        // An even width has its middle between two pixels.
        const double shift = width % 2 == 0 ? 0.5 : 0.0;
        ends_[0] = {static_cast<double>(from.x) - shift, static_cast<double>(from.y) - shift};
        ends_[1] = {static_cast<double>(to.x) - shift, static_cast<double>(to.y) - shift};
        const double dx = ends_[1].x - ends_[0].x;
        const double dy = ends_[1].y - ends_[0].y;
        const double length = std::hypot(dx, dy);
        if (length > 0) {
            across_ = {-dy / length * radius_, dx / length * radius_};
        }
    }

    // False: nothing of the row.
    bool CoverOf(double y, double* left, double* right) const {
        *left = HUGE_VAL;
        *right = -HUGE_VAL;
        for (const Point& end : ends_) {
            const double rise = y - end.y;
            if (std::abs(rise) <= radius_) {
                const double reach = std::sqrt(radius_ * radius_ - rise * rise);
                *left = std::min(*left, end.x - reach);
                *right = std::max(*right, end.x + reach);
            }
        }
        for (const double side : {-1.0, 1.0}) {
            const Point a = {ends_[0].x + side * across_.x, ends_[0].y + side * across_.y};
            const Point b = {ends_[1].x + side * across_.x, ends_[1].y + side * across_.y};
            if (std::min(a.y, b.y) <= y && y <= std::max(a.y, b.y) && a.y != b.y) {
                const double x = a.x + (b.x - a.x) * ((y - a.y) / (b.y - a.y));
                *left = std::min(*left, x);
                *right = std::max(*right, x);
            }
        }
        return *left <= *right;
    }

private:
    struct Point {
        double x = 0;
        double y = 0;
    };
    double radius_;
    Point ends_[2];
    Point across_;
};

void DrawWide(const DeviceContext& context, const std::vector<StrokePoint>& points, const Canvas& canvas,
              const RECT& area) {
    const ContextState& state = context.state;
    const PenInk pen(canvas, RasterOp::FromPenMix(state.rop2));
    const DWORD ink = PixelOfColor(canvas.pixels, ResolveColor(context, state.pen->color));
    std::vector<WideSegment> segments;
    for (std::size_t i = 0; i + 1 < points.size(); ++i) {
        segments.emplace_back(points[i], points[i + 1], state.pen->width);
    }
    struct Cover {
        int left;
        int right;
    };
    std::vector<Cover> covers;
    for (int y = area.top; y < area.bottom; ++y) {
        covers.clear();
        for (const WideSegment& segment : segments) {
            double left = 0;
            double right = 0;
            if (segment.CoverOf(y, &left, &right)) {
                const double low = std::max(std::ceil(left), static_cast<double>(area.left));
                const double high = std::min(std::floor(right) + 1, static_cast<double>(area.right));
                if (low < high) {
                    covers.push_back({static_cast<int>(low), static_cast<int>(high)});
                }
            }
        }
        std::sort(covers.begin(), covers.end(), [](const Cover& a, const Cover& b) { return a.left < b.left; });
        int done = area.left;
        for (const Cover& cover : covers) {
            const int left = std::max(cover.left, done);
            if (left < cover.right) {
                pen.Span(left, cover.right, y, ink);
                done = cover.right;
            }
        }
    }
}

std::vector<StrokePoint> OnDevice(const DeviceContext& context, const POINT* points, std::size_t count) {
    std::vector<StrokePoint> device;
    device.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        device.push_back(
            {std::int64_t{points[i].x} + context.state.origin.x, std::int64_t{points[i].y} + context.state.origin.y});
    }
    return device;
}

}   // namespace

bool StrokeDevice(DeviceContext& context, const std::vector<StrokePoint>& points) {
    const PenObject& pen = *context.state.pen;
    if (points.size() < 2 || pen.style == PS_NULL || context.state.rop2 == R2_NOP) {
        return true;
    }
    const bool wide = pen.width > 1;
    const RECT bounds = BoundsOf(points, wide ? pen.width / 2 + 1 : 0);
    return DrawInside(context, bounds, Access::ReadWrite, [&](const Canvas& canvas, const RECT& area) {
        if (wide) {
            DrawWide(context, points, canvas, area);
        } else {
            DrawThin(context, points, canvas, area);
        }
    });
}

}   // namespace rastel::platform

BOOL LineTo(HDC context, int x, int y) {
    const auto found = rastel::platform::FindContext(context);
    if (!found) {
        return FALSE;
    }
    const POINT points[2] = {found->state.position, {x, y}};
    found->state.position = points[1];
    return StrokeDevice(*found, rastel::platform::OnDevice(*found, points, 2)) ? TRUE : FALSE;
}

BOOL Polyline(HDC context, const POINT* points, int count) {
    const auto found = rastel::platform::FindContext(context);
    if (!found || points == nullptr || count < 2) {
        return FALSE;
    }
    return StrokeDevice(*found, rastel::platform::OnDevice(*found, points, static_cast<std::size_t>(count))) ? TRUE
                                                                                                             : FALSE;
}
