// A path: figures of lines and curves, in the host's coordinates.
#pragma once

#include <cairo.h>

#include <span>
#include <vector>

#include "rastel/platform/portable/gdiplus/flat.h"

namespace rastel::platform::gdip {

struct Spot {
    double x = 0;
    double y = 0;
};

// Where a point lands, held within what the rasters can count; nonsense lands at 0.
Spot Transformed(const cairo_matrix_t& matrix, Spot spot);

class Outline {
public:
    void Clear();
    void StartFigure() { isOpen_ = false; }
    void CloseFigure();
    void AddLines(std::span<const Spot> spots);    // joined to an open figure
    void AddCurves(std::span<const Spot> spots);   // the start, then three spots a curve
    void AddArc(Spot corner, double width, double height, double startDegrees, double sweepDegrees);
    void AddPolygon(std::span<const Spot> spots);   // a figure of its own, closed
    void AddRectangle(Spot corner, double width, double height);
    void AddEllipse(Spot corner, double width, double height);
    void AddPie(Spot corner, double width, double height, double startDegrees, double sweepDegrees);
    void Transform(const cairo_matrix_t& matrix);

    bool IsEmpty() const { return segments_.empty(); }
    void AppendTo(cairo_t* cairo, const cairo_matrix_t& matrix) const;

    // The rectangle it is on the target; false: it is something else.
    bool IsRectangle(const cairo_matrix_t& matrix, Spot* topLeft, Spot* bottomRight) const;

private:
    enum class Kind { Move, Line, Curve, Close };
    struct Segment {
        Kind kind;
        Spot spots[3];
    };

    void GoTo(Spot spot);   // a line to it from an open figure, else a new figure from there

    std::vector<Segment> segments_;
    bool isOpen_ = false;
};

struct PathObject : Gdiplus::GpPath {
    Outline outline;
    Gdiplus::FillMode mode = Gdiplus::FillModeAlternate;
};

}   // namespace rastel::platform::gdip
