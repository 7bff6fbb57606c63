#include "rastel/platform/portable/gdiplus/paint_source.h"

#include <algorithm>
#include <cmath>

namespace rastel::platform::gdip {

namespace {

class Plain final : public PaintSource {
public:
    explicit Plain(DWORD color) : color_(color) {}
    void Row(int, int, int count, DWORD* argb) override { std::fill_n(argb, count, color_); }

private:
    DWORD color_;
};

class Gradient final : public PaintSource {
public:
    Gradient(const GradientBrushObject& brush, const cairo_matrix_t& inverse) : brush_(brush), inverse_(inverse) {}

    void Row(int x, int y, int count, DWORD* argb) override {
        const double length = brush_.dx * brush_.dx + brush_.dy * brush_.dy;
        for (int i = 0; i < count; ++i) {
            double px = x + i + 0.5, py = y + 0.5;
            cairo_matrix_transform_point(&inverse_, &px, &py);
            const double along = length > 0 ? ((px - brush_.x) * brush_.dx + (py - brush_.y) * brush_.dy) / length : 0;
            argb[i] = At(along);
        }
    }

private:
    DWORD At(double along) const {
        double t = std::isfinite(along) ? along : 0;
        if (brush_.wrap == Gdiplus::WrapModeClamp) {
            t = std::clamp(t, 0.0, 1.0);
        } else if (t < 0 || t > 1) {
            const bool isFlipped = brush_.wrap != Gdiplus::WrapModeTile && std::fmod(std::floor(t), 2) != 0;
            t -= std::floor(t);
            t = isFlipped ? 1 - t : t;
        }
        DWORD color = 0;
        for (int shift = 0; shift < 32; shift += 8) {
            const double first = (brush_.first >> shift) & 0xFF, second = (brush_.second >> shift) & 0xFF;
            color |= static_cast<DWORD>(first + (second - first) * t + 0.5) << shift;
        }
        return color;
    }

    GradientBrushObject brush_;
    cairo_matrix_t inverse_;
};

// Colours count by their alpha, so that transparent pixels don't stain their neighbours.
class Mean {
public:
    void Add(DWORD argb, double weight) {
        const double alpha = (argb >> 24) * weight;
        weight_ += weight;
        alpha_ += alpha;
        red_ += ((argb >> 16) & 0xFF) * alpha;
        green_ += ((argb >> 8) & 0xFF) * alpha;
        blue_ += (argb & 0xFF) * alpha;
    }
    DWORD Color() const {
        if (alpha_ <= 0) {
            return 0;
        }
        const auto byte = [](double value) { return static_cast<DWORD>(std::clamp(value + 0.5, 0.0, 255.0)); };
        return byte(alpha_ / weight_) << 24 | byte(red_ / alpha_) << 16 | byte(green_ / alpha_) << 8 |
               byte(blue_ / alpha_);
    }

private:
    double weight_ = 0, alpha_ = 0, red_ = 0, green_ = 0, blue_ = 0;
};

class Scaled final : public PaintSource {
public:
    Scaled(Picture& picture, const RECT& part, const cairo_matrix_t& toSource, Gdiplus::InterpolationMode mode)
        : part_(part),
          width_(part.right - part.left),
          toSource_(toSource),
          argb_(static_cast<std::size_t>(width_) * static_cast<std::size_t>(part.bottom - part.top)) {
        for (int y = part.top; y < part.bottom; ++y) {
            picture.Load(part.left, y, width_, argb_.data() + Index(part.left, y));
        }
        const double across = std::hypot(toSource.xx, toSource.yx), down = std::hypot(toSource.xy, toSource.yy);
        const bool isUnchanged = toSource.xx == 1 && toSource.yy == 1 && toSource.xy == 0 && toSource.yx == 0 &&
                                 toSource.x0 == std::floor(toSource.x0) && toSource.y0 == std::floor(toSource.y0);
        isNearest_ = isUnchanged || mode == Gdiplus::InterpolationModeNearestNeighbor;
        const bool isMean = mode == Gdiplus::InterpolationModeHighQuality ||
                            mode == Gdiplus::InterpolationModeHighQualityBilinear ||
                            mode == Gdiplus::InterpolationModeHighQualityBicubic;
        if (isMean && !isNearest_) {
            samplesAcross_ = static_cast<int>(std::clamp(std::ceil(across), 1.0, 16.0));
            samplesDown_ = static_cast<int>(std::clamp(std::ceil(down), 1.0, 16.0));
        }
    }

    void Row(int x, int y, int count, DWORD* argb) override {
        for (int i = 0; i < count; ++i) {
            argb[i] = isNearest_ ? Nearest(x + i + 0.5, y + 0.5) : Mixed(x + i, y);
        }
    }

private:
    std::size_t Index(int x, int y) const {
        return static_cast<std::size_t>(y - part_.top) * static_cast<std::size_t>(width_) +
               static_cast<std::size_t>(x - part_.left);
    }

    // The edge's pixel goes on beyond it: coverage says where the picture ends.
    DWORD At(double x, double y) const {
        const auto held = [](double value, LONG low, LONG high) {
            return static_cast<int>(std::clamp(std::floor(value), static_cast<double>(low), high - 1.0));
        };
        return argb_[Index(held(x, part_.left, part_.right), held(y, part_.top, part_.bottom))];
    }

    DWORD Nearest(double x, double y) const {
        cairo_matrix_transform_point(&toSource_, &x, &y);
        return At(x, y);
    }

    DWORD Mixed(int x, int y) const {
        Mean mean;
        for (int row = 0; row < samplesDown_; ++row) {
            for (int column = 0; column < samplesAcross_; ++column) {
                double u = x + (column + 0.5) / samplesAcross_, v = y + (row + 0.5) / samplesDown_;
                cairo_matrix_transform_point(&toSource_, &u, &v);
                u -= 0.5;
                v -= 0.5;
                const double right = u - std::floor(u), below = v - std::floor(v);
                mean.Add(At(u, v), (1 - right) * (1 - below));
                mean.Add(At(u + 1, v), right * (1 - below));
                mean.Add(At(u, v + 1), (1 - right) * below);
                mean.Add(At(u + 1, v + 1), right * below);
            }
        }
        return mean.Color();
    }

    RECT part_;
    int width_;
    cairo_matrix_t toSource_;
    std::vector<DWORD> argb_;
    bool isNearest_ = false;
    int samplesAcross_ = 1;
    int samplesDown_ = 1;
};

}   // namespace

std::unique_ptr<PaintSource> SourceOf(const BrushObject& brush, const cairo_matrix_t& matrix) {
    if (const auto* const solid = dynamic_cast<const SolidBrushObject*>(&brush)) {
        return std::make_unique<Plain>(solid->color);
    }
    cairo_matrix_t inverse = matrix;
    if (cairo_matrix_invert(&inverse) != CAIRO_STATUS_SUCCESS) {
        return nullptr;
    }
    return std::make_unique<Gradient>(dynamic_cast<const GradientBrushObject&>(brush), inverse);
}

std::unique_ptr<PaintSource> SourceOf(Picture& picture, const Gdiplus::RectF& source, const Gdiplus::RectF& target,
                                      const cairo_matrix_t& matrix, Gdiplus::InterpolationMode mode) {
    cairo_matrix_t toSource = matrix;
    if (cairo_matrix_invert(&toSource) != CAIRO_STATUS_SUCCESS || target.Width == 0 || target.Height == 0) {
        return nullptr;
    }
    cairo_matrix_t move{1, 0, 0, 1, -double{target.X}, -double{target.Y}};
    cairo_matrix_multiply(&toSource, &toSource, &move);
    const double scaleX = double{source.Width} / target.Width, scaleY = double{source.Height} / target.Height;
    move = {scaleX, 0, 0, scaleY, source.X, source.Y};
    cairo_matrix_multiply(&toSource, &toSource, &move);
    const auto held = [](double value, int high) {
        return static_cast<LONG>(std::clamp(std::isfinite(value) ? value : 0, 0.0, static_cast<double>(high)));
    };
    const double right = double{source.X} + source.Width, bottom = double{source.Y} + source.Height;
    const RECT part{held(std::floor(std::min<double>(source.X, right)), picture.Width()),
                    held(std::floor(std::min<double>(source.Y, bottom)), picture.Height()),
                    held(std::ceil(std::max<double>(source.X, right)), picture.Width()),
                    held(std::ceil(std::max<double>(source.Y, bottom)), picture.Height())};
    if (part.left >= part.right || part.top >= part.bottom) {
        return nullptr;
    }
    return std::make_unique<Scaled>(picture, part, toSource, mode);
}

}   // namespace rastel::platform::gdip
