#include "rastel/platform/portable/gdiplus/coverage_mask.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace rastel::platform::gdip {

namespace {

struct EndCairo {
    void operator()(cairo_t* cairo) const { cairo_destroy(cairo); }
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};
using Cairo = std::unique_ptr<cairo_t, EndCairo>;
using CairoSurface = std::unique_ptr<cairo_surface_t, EndCairo>;

// A context that counts shapes and draws none.
Cairo Measuring() {
    const CairoSurface surface(cairo_image_surface_create(CAIRO_FORMAT_A8, 0, 0));
    return Cairo(cairo_create(surface.get()));
}

RECT CommonPart(const RECT& first, const RECT& second) {
    return {std::max(first.left, second.left), std::max(first.top, second.top), std::min(first.right, second.right),
            std::min(first.bottom, second.bottom)};
}

// The pixels that a box touches, with one to spare: smoothing reaches beyond its numbers.
RECT PixelsOf(double left, double top, double right, double bottom) {
    const auto held = [](double value) { return static_cast<LONG>(std::clamp(value, -4e6, 4e6)); };
    return {held(std::floor(left)) - 1, held(std::floor(top)) - 1, held(std::ceil(right)) + 1,
            held(std::ceil(bottom)) + 1};
}

void SetPen(cairo_t* cairo, const Raster& raster, const PenObject& pen) {
    // Thinner than a pixel is drawn as a pixel.
    const double scale = std::sqrt(std::abs(raster.matrix.xx * raster.matrix.yy - raster.matrix.xy * raster.matrix.yx));
    const bool isHairline = pen.width * scale <= 1;
    const double width = isHairline ? 1 / std::max(scale, 1e-6) : std::min(pen.width, 1e6);
    cairo_set_line_width(cairo, width);
    cairo_set_line_join(cairo, pen.join == Gdiplus::LineJoinRound   ? CAIRO_LINE_JOIN_ROUND
                               : pen.join == Gdiplus::LineJoinBevel ? CAIRO_LINE_JOIN_BEVEL
                                                                    : CAIRO_LINE_JOIN_MITER);
    cairo_set_miter_limit(cairo, std::clamp(pen.miterLimit, 1.0, 1e3));
    // A line of single pixels includes the pixel that it ends on.
    const bool isSquare = pen.cap == Gdiplus::LineCapSquare || (isHairline && !raster.isSmooth);
    cairo_set_line_cap(cairo, pen.cap == Gdiplus::LineCapRound ? CAIRO_LINE_CAP_ROUND
                              : isSquare                       ? CAIRO_LINE_CAP_SQUARE
                                                               : CAIRO_LINE_CAP_BUTT);
    static constexpr double patterns[][6] = {{}, {3, 1}, {1, 1}, {3, 1, 1, 1}, {3, 1, 1, 1, 1, 1}};
    static constexpr int lengths[] = {0, 2, 2, 4, 6};
    const int style = std::clamp<int>(pen.dash, 0, 4);
    if (style != 0) {
        double dashes[6];
        std::transform(patterns[style], patterns[style] + 6, dashes, [&](double part) { return part * width; });
        cairo_set_dash(cairo, dashes, lengths[style], 0);
        cairo_set_line_cap(cairo, pen.cap == Gdiplus::LineCapRound ? CAIRO_LINE_CAP_ROUND : CAIRO_LINE_CAP_BUTT);
    }
}

void Prepare(cairo_t* cairo, const Raster& raster) {
    cairo_set_antialias(cairo, raster.isSmooth ? CAIRO_ANTIALIAS_GOOD : CAIRO_ANTIALIAS_NONE);
    cairo_set_tolerance(cairo, 0.05);
}

}   // namespace

CoverageMask DrawnMask(const Raster& raster, const std::function<void(cairo_t*)>& draw) {
    CoverageMask mask;
    const RECT& area = raster.limit;
    if (area.left >= area.right || area.top >= area.bottom) {
        return mask;
    }
    const std::int64_t width = std::int64_t{area.right} - area.left, height = std::int64_t{area.bottom} - area.top;
    const std::int64_t stride = (width + 3) / 4 * 4;   // as cairo has it
    if (stride > INT32_MAX || stride * height > INT32_MAX) {
        return mask;
    }
    mask.bytes.resize(static_cast<std::size_t>(stride * height));
    // In pieces that cairo, which counts pixels in 16 bits, can draw on.
    constexpr std::int64_t side = 32764;
    for (std::int64_t top = 0; top < height; top += side) {
        for (std::int64_t left = 0; left < width; left += side) {
            const CairoSurface surface(cairo_image_surface_create_for_data(
                mask.bytes.data() + top * stride + left, CAIRO_FORMAT_A8,
                static_cast<int>(std::min(side, width - left)), static_cast<int>(std::min(side, height - top)),
                static_cast<int>(stride)));
            cairo_surface_set_device_offset(surface.get(), -static_cast<double>(area.left + left),
                                            -static_cast<double>(area.top + top));
            {
                const Cairo cairo(cairo_create(surface.get()));
                Prepare(cairo.get(), raster);
                draw(cairo.get());
            }
            cairo_surface_finish(surface.get());
        }
    }
    mask.area = area;
    mask.stride = static_cast<int>(stride);
    return mask;
}

CoverageMask FillMask(const Raster& raster, const Outline& outline, Gdiplus::FillMode mode) {
    const cairo_fill_rule_t rule =
        mode == Gdiplus::FillModeWinding ? CAIRO_FILL_RULE_WINDING : CAIRO_FILL_RULE_EVEN_ODD;
    double left = 0, top = 0, right = 0, bottom = 0;
    {
        const Cairo measuring = Measuring();
        outline.AppendTo(measuring.get(), raster.matrix);
        cairo_path_extents(measuring.get(), &left, &top, &right, &bottom);
    }
    Raster inside = raster;
    inside.limit = CommonPart(raster.limit, PixelsOf(left, top, right, bottom));
    return DrawnMask(inside, [&](cairo_t* cairo) {
        cairo_set_fill_rule(cairo, rule);
        outline.AppendTo(cairo, raster.matrix);
        cairo_fill(cairo);
    });
}

CoverageMask StrokeMask(const Raster& raster, const Outline& outline, const PenObject& pen) {
    // The pen is turned and scaled with the world, the path lies on the target already.
    cairo_matrix_t turn = raster.matrix;
    turn.x0 = turn.y0 = 0;
    cairo_matrix_t inverse = turn;
    if (cairo_matrix_invert(&inverse) != CAIRO_STATUS_SUCCESS) {
        return {};
    }
    const auto stroke = [&](cairo_t* cairo) {
        outline.AppendTo(cairo, raster.matrix);
        cairo_set_matrix(cairo, &turn);
        SetPen(cairo, raster, pen);
    };
    double left = 0, top = 0, right = 0, bottom = 0;
    {
        const Cairo measuring = Measuring();
        outline.AppendTo(measuring.get(), raster.matrix);
        cairo_path_extents(measuring.get(), &left, &top, &right, &bottom);
    }
    // How far a pen reaches: half its width, further where it ends square or joins in a point.
    const double reach = (std::min(pen.width, 1e6) / 2 + 1) *
                             (pen.join == Gdiplus::LineJoinMiter ? std::clamp(pen.miterLimit, 1.5, 1e3) : 1.5) *
                             (std::abs(turn.xx) + std::abs(turn.xy) + std::abs(turn.yx) + std::abs(turn.yy)) +
                         2;
    Raster inside = raster;
    inside.limit = CommonPart(raster.limit, PixelsOf(left - reach, top - reach, right + reach, bottom + reach));
    return DrawnMask(inside, [&](cairo_t* cairo) {
        stroke(cairo);
        cairo_stroke(cairo);
    });
}

}   // namespace rastel::platform::gdip
