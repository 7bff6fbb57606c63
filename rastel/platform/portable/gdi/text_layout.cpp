#include "rastel/platform/portable/gdi/text_layout.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>
#include <optional>
#include <utility>

namespace rastel::platform {

namespace {

constexpr UINT kHorizontalBits = TA_RIGHT | TA_CENTER;
constexpr UINT kVerticalBits = TA_BOTTOM | TA_BASELINE;

// Positions come from any host coordinate plus any width; beyond this they are out of every picture.
constexpr double kFarAway = 1e12;

struct Direction {
    double alongX = 1;   // one pixel along the line, y downwards
    double alongY = 0;
};

Direction DirectionOf(int angle) {
    switch (angle) {   // quarter turns without a rounding error
        case 0:
            return {1, 0};
        case 900:
            return {0, -1};
        case 1800:
            return {-1, 0};
        case 2700:
            return {0, 1};
        default:
            break;
    }
    const double radians = angle * std::numbers::pi / 1800.0;
    return {std::cos(radians), -std::sin(radians)};
}

// A place on the line: along it from the start, and up from the baseline.
class Line {
public:
    Line(double startX, double startY, int angle)
        : startX_(startX), startY_(startY), direction_(DirectionOf(angle)), upright_(angle == 0) {}

    double X(double along, double up) const { return startX_ + along * direction_.alongX + up * direction_.alongY; }
    double Y(double along, double up) const { return startY_ + along * direction_.alongY - up * direction_.alongX; }
    bool Upright() const { return upright_; }

private:
    double startX_;
    double startY_;
    Direction direction_;
    bool upright_;
};

std::int64_t Round(double value) {
    return static_cast<std::int64_t>(std::floor(std::clamp(value, -kFarAway, kFarAway) + 0.5));
}

LONG ToLong(std::int64_t value) {
    return static_cast<LONG>(
        std::clamp<std::int64_t>(value, std::numeric_limits<LONG>::min(), std::numeric_limits<LONG>::max()));
}

bool IsVisible(const RECT& visible, std::int64_t left, std::int64_t top, std::int64_t right, std::int64_t bottom) {
    return left < visible.right && right > visible.left && top < visible.bottom && bottom > visible.top;
}

// Nothing, or an image that shows, whose position therefore fits an int.
std::optional<PlacedImage> Place(std::shared_ptr<const GlyphImage> image, std::int64_t penX, std::int64_t penY,
                                 const RECT& visible) {
    if (!image || image->IsEmpty()) {
        return std::nullopt;
    }
    const std::int64_t left = penX + image->left;
    const std::int64_t top = penY - image->top;
    if (!IsVisible(visible, left, top, left + image->width, top + image->height)) {
        return std::nullopt;
    }
    return PlacedImage{ToLong(left), ToLong(top), std::move(image)};
}

GlyphBox VisibleRoundPen(const RECT& visible, std::int64_t penX, std::int64_t penY) {
    return GlyphBox{visible.left - penX, penY - visible.bottom, visible.right - penX, penY - visible.top};
}

// A bar along the line: `top` and `thickness` are measured up and down from the baseline.
std::optional<TextBar> MakeBar(FT_Library library, const Line& line, std::int64_t length, int top, int thickness,
                               const RECT& visible) {
    if (length <= 0 || thickness <= 0) {
        return std::nullopt;
    }
    if (line.Upright()) {
        const std::int64_t left = Round(line.X(0, 0));
        const std::int64_t upper = Round(line.Y(0, top));
        if (!IsVisible(visible, left, upper, left + length, upper + thickness)) {
            return std::nullopt;
        }
        return TextBar{RECT{ToLong(left), ToLong(upper), ToLong(left + length), ToLong(upper + thickness)}, {}};
    }
    // Corners round the start of the line, in 1/64 pixel and y upwards, so that one rasteriser draws bars and glyphs.
    const std::int64_t penX = Round(line.X(0, 0));
    const std::int64_t penY = Round(line.Y(0, 0));
    const std::array<std::pair<double, double>, 4> corners = {{{0, top},
                                                               {static_cast<double>(length), top},
                                                               {static_cast<double>(length), top - thickness},
                                                               {0, top - thickness}}};
    std::array<FT_Vector, 4> points;
    for (std::size_t i = 0; i < corners.size(); i++) {
        const auto [along, up] = corners[i];
        // The rasteriser counts in 32 bits with 8 of them behind the point; a longer bar is cut off out of sight.
        constexpr double kReach = 1 << 22;
        const double x = std::clamp(line.X(along, up) - static_cast<double>(penX), -kReach, kReach);
        const double y = std::clamp(static_cast<double>(penY) - line.Y(along, up), -kReach, kReach);
        points[i] = FT_Vector{static_cast<FT_Pos>(std::lround(x * 64)), static_cast<FT_Pos>(std::lround(y * 64))};
    }
    std::array<char, 4> tags;
    tags.fill(FT_CURVE_TAG_ON);
    std::array<short, 1> contours = {3};
    FT_Outline outline = {};
    outline.n_contours = 1;
    outline.n_points = 4;
    outline.points = points.data();
    outline.tags = reinterpret_cast<decltype(outline.tags)>(tags.data());
    outline.contours = reinterpret_cast<decltype(outline.contours)>(contours.data());
    const GlyphBox box = CommonPart(BoxOf(outline), VisibleRoundPen(visible, penX, penY));
    auto image = std::make_shared<const GlyphImage>(DrawOutline(library, outline, box, Smoothing::Grey));
    if (auto placed = Place(std::move(image), penX, penY, visible)) {
        return TextBar{{}, std::move(*placed)};
    }
    return std::nullopt;
}

void AppendBar(std::vector<TextBar>& bars, std::optional<TextBar> bar) {
    if (bar) {
        bars.push_back(std::move(*bar));
    }
}

Line StartOfLine(const RealizedFont& font, std::int64_t width, const TextPlacement& placement) {
    std::int64_t back = 0;
    if ((placement.align & kHorizontalBits) == TA_CENTER) {
        back = width / 2;
    } else if ((placement.align & kHorizontalBits) == TA_RIGHT) {
        back = width;
    }
    int down = font.Metrics().ascent;
    if ((placement.align & kVerticalBits) == TA_BASELINE) {
        down = 0;
    } else if ((placement.align & kVerticalBits) == TA_BOTTOM) {
        down = -font.Metrics().descent;
    }
    const Line reference(placement.x, placement.y, font.Angle());
    const auto along = -static_cast<double>(back);
    return Line(reference.X(along, -down), reference.Y(along, -down), font.Angle());
}

POINT EndOfLine(const RealizedFont& font, std::int64_t width, const TextPlacement& placement) {
    double along = 0;
    if ((placement.align & kHorizontalBits) == TA_RIGHT) {
        along = -static_cast<double>(width);
    } else if ((placement.align & kHorizontalBits) != TA_CENTER) {
        along = static_cast<double>(width);
    }
    const Line reference(placement.x, placement.y, font.Angle());
    return POINT{ToLong(Round(reference.X(along, 0))), ToLong(Round(reference.Y(along, 0)))};
}

}   // namespace

std::int64_t LineWidth(RealizedFont& font, const std::u32string& text) {
    std::int64_t width = 0;
    for (const char32_t character : text) {
        width += font.Find(character).advance;
    }
    return width;
}

TextLine LayOutLine(FontEngine& engine, RealizedFont& font, const std::u32string& text,
                    const TextPlacement& placement) {
    const FontMetrics& metrics = font.Metrics();
    const RECT& visible = placement.visible;
    TextLine result;
    result.width = LineWidth(font, text);
    result.end = EndOfLine(font, result.width, placement);
    if (visible.left >= visible.right || visible.top >= visible.bottom) {
        return result;
    }
    const Line line = StartOfLine(font, result.width, placement);
    const auto bar = [&](int top, int thickness) {
        return MakeBar(engine.Library(), line, result.width, top, thickness, visible);
    };
    if (placement.cell) {
        AppendBar(result.cell, bar(metrics.ascent, metrics.height));
    }

    // A glyph may reach out of its advance and its cell, slanted and accented ones do, but not by more than this.
    const std::int64_t reach = 2 * (static_cast<std::int64_t>(metrics.height) + metrics.maximumWidth) + 64;
    std::int64_t along = 0;
    for (const char32_t character : text) {
        const FontGlyph glyph = font.Find(character);
        const std::int64_t penX = Round(line.X(static_cast<double>(along), 0));
        const std::int64_t penY = Round(line.Y(static_cast<double>(along), 0));
        along += glyph.advance;
        if (!IsVisible(visible, penX - reach, penY - reach, penX + reach, penY + reach)) {
            continue;
        }
        auto image = engine.Glyphs().Get(*glyph.face, glyph.glyph, VisibleRoundPen(visible, penX, penY));
        if (auto placed = Place(std::move(image), penX, penY, visible)) {
            result.glyphs.push_back(std::move(*placed));
        }
    }

    if (font.Wanted().lfUnderline) {
        AppendBar(result.bars, bar(metrics.underlineTop, metrics.underlineThickness));
    }
    if (font.Wanted().lfStrikeOut) {
        AppendBar(result.bars, bar(metrics.strikeOutTop, metrics.strikeOutThickness));
    }
    return result;
}

}   // namespace rastel::platform
