#include "rastel/platform/portable/gdiplus/outline.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace rastel::platform::gdip {

namespace {

// The rasters count in 24.8 bits. A line from edge to edge stays well below what dashes can take.
double Held(double value) {
    constexpr double limit = 1 << 20;
    return std::isfinite(value) ? std::clamp(value, -limit, limit) : 0;
}

double Radians(double degrees) {
    return degrees * std::numbers::pi / 180;
}

// On an ellipse an angle names the ray that it makes, not the parameter of the curve.
double ParameterOf(double radians, double width, double height) {
    constexpr double circle = 2 * std::numbers::pi;
    const double parameter = std::atan2(std::sin(radians) * width, std::cos(radians) * height);
    // Ray and parameter share a quadrant, so that the nearest turn is the right one.
    return parameter + std::round((radians - parameter) / circle) * circle;
}

}   // namespace

Spot Transformed(const cairo_matrix_t& matrix, Spot spot) {
    cairo_matrix_transform_point(&matrix, &spot.x, &spot.y);
    return {Held(spot.x), Held(spot.y)};
}

void Outline::Clear() {
    segments_.clear();
    isOpen_ = false;
}

void Outline::CloseFigure() {
    if (isOpen_) {
        segments_.push_back({Kind::Close, {}});
        isOpen_ = false;
    }
}

void Outline::GoTo(Spot spot) {
    segments_.push_back({isOpen_ ? Kind::Line : Kind::Move, {spot}});
    isOpen_ = true;
}

void Outline::AddLines(std::span<const Spot> spots) {
    for (const Spot& spot : spots) {
        GoTo(spot);
    }
}

void Outline::AddCurves(std::span<const Spot> spots) {
    if (spots.empty()) {
        return;
    }
    GoTo(spots[0]);
    for (std::size_t i = 1; i + 2 < spots.size(); i += 3) {
        segments_.push_back({Kind::Curve, {spots[i], spots[i + 1], spots[i + 2]}});
    }
}

void Outline::AddArc(Spot corner, double width, double height, double startDegrees, double sweepDegrees) {
    if (!std::isfinite(startDegrees) || !std::isfinite(sweepDegrees) || !std::isfinite(width) ||
        !std::isfinite(height)) {
        return;
    }
    const double sweepLimited = std::clamp(sweepDegrees, -360.0, 360.0);
    const double startRadians = Radians(std::fmod(startDegrees, 360));
    const double from = ParameterOf(startRadians, width, height);
    const double sweep = std::abs(sweepLimited) == 360
                             ? Radians(sweepLimited)
                             : ParameterOf(startRadians + Radians(sweepLimited), width, height) - from;
    const int pieces = std::max(1, static_cast<int>(std::ceil(std::abs(sweep) / (std::numbers::pi / 2) - 1e-9)));
    const double step = sweep / pieces;
    const double reach = 4.0 / 3 * std::tan(step / 4);
    const Spot radius{width / 2, height / 2};
    const Spot center{corner.x + radius.x, corner.y + radius.y};
    const auto at = [&](double cosine, double sine) {
        return Spot{center.x + radius.x * cosine, center.y + radius.y * sine};
    };
    std::vector<Spot> spots{at(std::cos(from), std::sin(from))};
    for (int i = 0; i < pieces; ++i) {
        const double a = from + i * step;
        const double b = a + step;
        spots.push_back(at(std::cos(a) - reach * std::sin(a), std::sin(a) + reach * std::cos(a)));
        spots.push_back(at(std::cos(b) + reach * std::sin(b), std::sin(b) - reach * std::cos(b)));
        spots.push_back(at(std::cos(b), std::sin(b)));
    }
    AddCurves(spots);
}

void Outline::AddPolygon(std::span<const Spot> spots) {
    StartFigure();
    AddLines(spots);
    CloseFigure();
}

void Outline::AddRectangle(Spot corner, double width, double height) {
    const Spot spots[] = {
        corner, {corner.x + width, corner.y}, {corner.x + width, corner.y + height}, {corner.x, corner.y + height}};
    AddPolygon(spots);
}

void Outline::AddEllipse(Spot corner, double width, double height) {
    StartFigure();
    AddArc(corner, width, height, 0, 360);
    CloseFigure();
}

void Outline::AddPie(Spot corner, double width, double height, double startDegrees, double sweepDegrees) {
    StartFigure();
    GoTo({corner.x + width / 2, corner.y + height / 2});
    AddArc(corner, width, height, startDegrees, sweepDegrees);
    CloseFigure();
}

void Outline::Transform(const cairo_matrix_t& matrix) {
    for (Segment& segment : segments_) {
        for (Spot& spot : segment.spots) {
            cairo_matrix_transform_point(&matrix, &spot.x, &spot.y);
        }
    }
}

void Outline::AppendTo(cairo_t* cairo, const cairo_matrix_t& matrix) const {
    for (const Segment& segment : segments_) {
        Spot spots[3];
        std::ranges::transform(segment.spots, spots, [&](Spot spot) { return Transformed(matrix, spot); });
        switch (segment.kind) {
            case Kind::Move:
                cairo_move_to(cairo, spots[0].x, spots[0].y);
                break;
            case Kind::Line:
                cairo_line_to(cairo, spots[0].x, spots[0].y);
                break;
            case Kind::Curve:
                cairo_curve_to(cairo, spots[0].x, spots[0].y, spots[1].x, spots[1].y, spots[2].x, spots[2].y);
                break;
            case Kind::Close:
                cairo_close_path(cairo);
                break;
        }
    }
}

bool Outline::IsRectangle(const cairo_matrix_t& matrix, Spot* topLeft, Spot* bottomRight) const {
    if (segments_.size() != 5 || segments_[4].kind != Kind::Close) {
        return false;
    }
    Spot spots[4];
    for (int i = 0; i < 4; ++i) {
        const Segment& segment = segments_[static_cast<std::size_t>(i)];
        if (segment.kind != (i == 0 ? Kind::Move : Kind::Line)) {
            return false;
        }
        spots[i] = Transformed(matrix, segment.spots[0]);
    }
    const bool isAlong =
        spots[0].y == spots[1].y && spots[1].x == spots[2].x && spots[2].y == spots[3].y && spots[3].x == spots[0].x;
    const bool isAcross =
        spots[0].x == spots[1].x && spots[1].y == spots[2].y && spots[2].x == spots[3].x && spots[3].y == spots[0].y;
    if (!isAlong && !isAcross) {
        return false;
    }
    *topLeft = {std::min(spots[0].x, spots[2].x), std::min(spots[0].y, spots[2].y)};
    *bottomRight = {std::max(spots[0].x, spots[2].x), std::max(spots[0].y, spots[2].y)};
    return true;
}

}   // namespace rastel::platform::gdip
