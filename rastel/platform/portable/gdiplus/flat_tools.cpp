// The flat functions of matrices, brushes, pens, paths and fonts.
#include <algorithm>
#include <cmath>
#include <cwchar>
#include <numbers>

#include "rastel/platform/framework/characters.h"
#include "rastel/platform/portable/gdiplus/native.h"
#include "rastel/platform/portable/gdiplus/outline.h"

using rastel::platform::gdip::BrushOf;
using rastel::platform::gdip::Create;
using rastel::platform::gdip::FontFamilyObject;
using rastel::platform::gdip::FontObject;
using rastel::platform::gdip::GradientBrushObject;
using rastel::platform::gdip::Guarded;
using rastel::platform::gdip::MatrixObject;
using rastel::platform::gdip::ObjectOf;
using rastel::platform::gdip::Outline;
using rastel::platform::gdip::PathObject;
using rastel::platform::gdip::PenObject;
using rastel::platform::gdip::SolidBrushObject;
using rastel::platform::gdip::Spot;
using rastel::platform::gdip::StringFormatObject;

namespace Gdiplus {

namespace {

template <class Condition>
constexpr Status Result(const Condition& isGood) {   // a bool, or a pointer that must not be null
    return isGood ? Ok : InvalidParameter;
}

void Join(cairo_matrix_t& matrix, const cairo_matrix_t& other, MatrixOrder order) {
    if (order == MatrixOrderPrepend) {
        cairo_matrix_multiply(&matrix, &other, &matrix);
    } else {
        cairo_matrix_multiply(&matrix, &matrix, &other);
    }
}

std::vector<Spot> SpotsOf(const PointF* points, INT count) {
    std::vector<Spot> spots;
    for (INT i = 0; i < count; ++i) {
        spots.push_back({points[i].X, points[i].Y});
    }
    return spots;
}

template <class Draw>
Status AddTo(GpPath* path, Draw draw) {
    if (!path) {
        return InvalidParameter;
    }
    return Guarded([&] {
        draw(ObjectOf<PathObject>(path)->outline);
        return Ok;
    });
}

}   // namespace

namespace DllExports {

GpStatus GdipCreateMatrix(GpMatrix** matrix) {
    return Create<MatrixObject>(matrix, [](MatrixObject&) { return Ok; });
}

GpStatus GdipCreateMatrix2(REAL m11, REAL m12, REAL m21, REAL m22, REAL dx, REAL dy, GpMatrix** matrix) {
    return Create<MatrixObject>(matrix, [&](MatrixObject& object) {
        object.matrix = {m11, m12, m21, m22, dx, dy};
        return Ok;
    });
}

GpStatus GdipCloneMatrix(GpMatrix* matrix, GpMatrix** clone) {
    return Create<MatrixObject>(clone, [&](MatrixObject& object) {
        if (matrix) {
            object = *ObjectOf<MatrixObject>(matrix);
        }
        return Result(matrix);
    });
}

GpStatus GdipDeleteMatrix(GpMatrix* matrix) {
    delete ObjectOf<MatrixObject>(matrix);
    return Result(matrix);
}

GpStatus GdipSetMatrixElements(GpMatrix* matrix, REAL m11, REAL m12, REAL m21, REAL m22, REAL dx, REAL dy) {
    if (matrix) {
        ObjectOf<MatrixObject>(matrix)->matrix = {m11, m12, m21, m22, dx, dy};
    }
    return Result(matrix);
}

GpStatus GdipGetMatrixElements(const GpMatrix* matrix, REAL* elements) {
    if (!matrix || !elements) {
        return InvalidParameter;
    }
    const cairo_matrix_t& m = ObjectOf<MatrixObject>(matrix)->matrix;
    const double values[] = {m.xx, m.yx, m.xy, m.yy, m.x0, m.y0};
    std::transform(values, values + 6, elements, [](double value) { return static_cast<REAL>(value); });
    return Ok;
}

GpStatus GdipMultiplyMatrix(GpMatrix* matrix, GpMatrix* other, MatrixOrder order) {
    if (!matrix || !other) {
        return InvalidParameter;
    }
    const cairo_matrix_t by = ObjectOf<MatrixObject>(other)->matrix;
    Join(ObjectOf<MatrixObject>(matrix)->matrix, by, order);
    return Ok;
}

GpStatus GdipTranslateMatrix(GpMatrix* matrix, REAL dx, REAL dy, MatrixOrder order) {
    MatrixObject by;
    by.matrix = {1, 0, 0, 1, dx, dy};
    return GdipMultiplyMatrix(matrix, &by, order);
}

GpStatus GdipScaleMatrix(GpMatrix* matrix, REAL x, REAL y, MatrixOrder order) {
    MatrixObject by;
    by.matrix = {x, 0, 0, y, 0, 0};
    return GdipMultiplyMatrix(matrix, &by, order);
}

GpStatus GdipRotateMatrix(GpMatrix* matrix, REAL angle, MatrixOrder order) {
    const double radians = std::fmod(static_cast<double>(angle), 360) * std::numbers::pi / 180;
    const double cosine = std::cos(radians), sine = std::sin(radians);
    MatrixObject by;
    by.matrix = {cosine, sine, -sine, cosine, 0, 0};
    return std::isfinite(angle) ? GdipMultiplyMatrix(matrix, &by, order) : InvalidParameter;
}

GpStatus GdipInvertMatrix(GpMatrix* matrix) {
    if (!matrix) {
        return InvalidParameter;
    }
    cairo_matrix_t inverse = ObjectOf<MatrixObject>(matrix)->matrix;
    if (cairo_matrix_invert(&inverse) != CAIRO_STATUS_SUCCESS) {
        return InvalidParameter;
    }
    ObjectOf<MatrixObject>(matrix)->matrix = inverse;
    return Ok;
}

GpStatus GdipTransformMatrixPoints(GpMatrix* matrix, PointF* points, INT count) {
    if (!matrix || !points || count < 1) {
        return InvalidParameter;
    }
    for (INT i = 0; i < count; ++i) {
        double x = points[i].X, y = points[i].Y;
        cairo_matrix_transform_point(&ObjectOf<MatrixObject>(matrix)->matrix, &x, &y);
        points[i] = PointF(static_cast<REAL>(x), static_cast<REAL>(y));
    }
    return Ok;
}

GpStatus GdipDeleteBrush(GpBrush* brush) {
    delete BrushOf(brush);
    return Result(brush);
}

// A brush's tag for the host is the base of all; ours comes from it.
GpStatus GdipCreateSolidFill(ARGB color, GpSolidFill** brush) {
    if (!brush) {
        return InvalidParameter;
    }
    *brush = nullptr;
    return Guarded([&] {
        GpBrush* const object = new SolidBrushObject(color);
        *brush = static_cast<GpSolidFill*>(object);
        return Ok;
    });
}

GpStatus GdipSetSolidFillColor(GpSolidFill* brush, ARGB color) {
    auto* const solid = dynamic_cast<SolidBrushObject*>(BrushOf(brush));
    if (solid) {
        solid->color = color;
    }
    return Result(solid);
}

GpStatus GdipGetSolidFillColor(GpSolidFill* brush, ARGB* color) {
    const auto* const solid = dynamic_cast<SolidBrushObject*>(BrushOf(brush));
    if (!solid || !color) {
        return InvalidParameter;
    }
    *color = solid->color;
    return Ok;
}

GpStatus GdipCreateLineBrush(const PointF* first, const PointF* second, ARGB color1, ARGB color2, WrapMode mode,
                             GpLineGradient** brush) {
    if (!brush) {
        return InvalidParameter;
    }
    *brush = nullptr;
    if (!first || !second || (first->X == second->X && first->Y == second->Y)) {
        return InvalidParameter;
    }
    return Guarded([&] {
        auto object = std::make_unique<GradientBrushObject>();
        object->x = first->X;
        object->y = first->Y;
        object->dx = static_cast<double>(second->X) - first->X;
        object->dy = static_cast<double>(second->Y) - first->Y;
        object->first = color1;
        object->second = color2;
        object->wrap = mode;
        GpBrush* const tag = object.release();
        *brush = static_cast<GpLineGradient*>(tag);
        return Ok;
    });
}

GpStatus GdipCreateLineBrushFromRect(const RectF* rect, ARGB color1, ARGB color2, LinearGradientMode mode,
                                     WrapMode wrap, GpLineGradient** brush) {
    if (brush) {
        *brush = nullptr;
    }
    if (!rect || rect->Width == 0 || rect->Height == 0) {
        return InvalidParameter;
    }
    PointF first(rect->X, rect->Y), second(rect->GetRight(), rect->Y);
    const float square = rect->Width * rect->Width + rect->Height * rect->Height;
    switch (mode) {
        case LinearGradientModeVertical:
            second = PointF(rect->X, rect->GetBottom());
            break;
        case LinearGradientModeForwardDiagonal: {
            // The line of equal colour through the other two corners decides the direction.
            const float reach = 2 * rect->Width * rect->Height / square;
            second = PointF(rect->X + rect->Height * reach, rect->Y + rect->Width * reach);
            break;
        }
        case LinearGradientModeBackwardDiagonal: {
            const float reach = 2 * rect->Width * rect->Height / square;
            first = PointF(rect->GetRight(), rect->Y);
            second = PointF(rect->GetRight() - rect->Height * reach, rect->Y + rect->Width * reach);
            break;
        }
        default:
            break;
    }
    return GdipCreateLineBrush(&first, &second, color1, color2, wrap, brush);
}

GpStatus GdipCreatePen1(ARGB color, REAL width, Unit, GpPen** pen) {
    return Create<PenObject>(pen, [&](PenObject& object) {
        object.brush = std::make_unique<SolidBrushObject>(color);
        object.width = width;
        return Result(std::isfinite(width) && width >= 0);
    });
}

GpStatus GdipCreatePen2(GpBrush* brush, REAL width, Unit, GpPen** pen) {
    return Create<PenObject>(pen, [&](PenObject& object) {
        if (brush) {
            object.brush = BrushOf(brush)->Clone();
        }
        object.width = width;
        return Result(brush && std::isfinite(width) && width >= 0);
    });
}

GpStatus GdipDeletePen(GpPen* pen) {
    delete ObjectOf<PenObject>(pen);
    return Result(pen);
}

GpStatus GdipSetPenWidth(GpPen* pen, REAL width) {
    if (!pen || !std::isfinite(width) || width < 0) {
        return InvalidParameter;
    }
    ObjectOf<PenObject>(pen)->width = width;
    return Ok;
}

GpStatus GdipGetPenWidth(GpPen* pen, REAL* width) {
    if (!pen || !width) {
        return InvalidParameter;
    }
    *width = static_cast<REAL>(ObjectOf<PenObject>(pen)->width);
    return Ok;
}

GpStatus GdipSetPenColor(GpPen* pen, ARGB color) {
    if (!pen) {
        return InvalidParameter;
    }
    return Guarded([&] {
        ObjectOf<PenObject>(pen)->brush = std::make_unique<SolidBrushObject>(color);
        return Ok;
    });
}

GpStatus GdipSetPenDashStyle(GpPen* pen, DashStyle style) {
    if (!pen || style < DashStyleSolid || style > DashStyleDashDotDot) {
        return InvalidParameter;
    }
    ObjectOf<PenObject>(pen)->dash = style;
    return Ok;
}

// Both ends of a line have one cap here.
GpStatus GdipSetPenStartCap(GpPen* pen, LineCap cap) {
    if (pen) {
        ObjectOf<PenObject>(pen)->cap = cap;
    }
    return Result(pen);
}

GpStatus GdipSetPenEndCap(GpPen* pen, LineCap cap) {
    return GdipSetPenStartCap(pen, cap);
}

GpStatus GdipSetPenLineJoin(GpPen* pen, LineJoin join) {
    if (pen) {
        ObjectOf<PenObject>(pen)->join = join;
    }
    return Result(pen);
}

GpStatus GdipSetPenMiterLimit(GpPen* pen, REAL limit) {
    if (!pen || !std::isfinite(limit)) {
        return InvalidParameter;
    }
    ObjectOf<PenObject>(pen)->miterLimit = limit;
    return Ok;
}

GpStatus GdipCreatePath(FillMode mode, GpPath** path) {
    return Create<PathObject>(path, [&](PathObject& object) {
        object.mode = mode;
        return Ok;
    });
}

GpStatus GdipClonePath(GpPath* path, GpPath** clone) {
    return Create<PathObject>(clone, [&](PathObject& object) {
        if (path) {
            object = *ObjectOf<PathObject>(path);
        }
        return Result(path);
    });
}

GpStatus GdipDeletePath(GpPath* path) {
    delete ObjectOf<PathObject>(path);
    return Result(path);
}

GpStatus GdipResetPath(GpPath* path) {
    if (path) {
        *ObjectOf<PathObject>(path) = PathObject();
    }
    return Result(path);
}

GpStatus GdipSetPathFillMode(GpPath* path, FillMode mode) {
    if (path) {
        ObjectOf<PathObject>(path)->mode = mode;
    }
    return Result(path);
}

GpStatus GdipStartPathFigure(GpPath* path) {
    return AddTo(path, [](Outline& outline) { outline.StartFigure(); });
}

GpStatus GdipClosePathFigure(GpPath* path) {
    return AddTo(path, [](Outline& outline) { outline.CloseFigure(); });
}

GpStatus GdipAddPathLine(GpPath* path, REAL x1, REAL y1, REAL x2, REAL y2) {
    const PointF points[] = {PointF(x1, y1), PointF(x2, y2)};
    return GdipAddPathLine2(path, points, 2);
}

GpStatus GdipAddPathLine2(GpPath* path, const PointF* points, INT count) {
    return points && count > 0 ? AddTo(path, [&](Outline& outline) { outline.AddLines(SpotsOf(points, count)); })
                               : InvalidParameter;
}

GpStatus GdipAddPathArc(GpPath* path, REAL x, REAL y, REAL width, REAL height, REAL start, REAL sweep) {
    return AddTo(path, [&](Outline& outline) { outline.AddArc({x, y}, width, height, start, sweep); });
}

GpStatus GdipAddPathBezier(GpPath* path, REAL x1, REAL y1, REAL x2, REAL y2, REAL x3, REAL y3, REAL x4, REAL y4) {
    const PointF points[] = {PointF(x1, y1), PointF(x2, y2), PointF(x3, y3), PointF(x4, y4)};
    return GdipAddPathBeziers(path, points, 4);
}

GpStatus GdipAddPathBeziers(GpPath* path, const PointF* points, INT count) {
    return points && count >= 4 && count % 3 == 1
               ? AddTo(path, [&](Outline& outline) { outline.AddCurves(SpotsOf(points, count)); })
               : InvalidParameter;
}

GpStatus GdipAddPathRectangle(GpPath* path, REAL x, REAL y, REAL width, REAL height) {
    return AddTo(path, [&](Outline& outline) { outline.AddRectangle({x, y}, width, height); });
}

GpStatus GdipAddPathEllipse(GpPath* path, REAL x, REAL y, REAL width, REAL height) {
    return AddTo(path, [&](Outline& outline) { outline.AddEllipse({x, y}, width, height); });
}

GpStatus GdipAddPathPie(GpPath* path, REAL x, REAL y, REAL width, REAL height, REAL start, REAL sweep) {
    return AddTo(path, [&](Outline& outline) { outline.AddPie({x, y}, width, height, start, sweep); });
}

GpStatus GdipAddPathPolygon(GpPath* path, const PointF* points, INT count) {
    return points && count > 2 ? AddTo(path, [&](Outline& outline) { outline.AddPolygon(SpotsOf(points, count)); })
                               : InvalidParameter;
}

GpStatus GdipTransformPath(GpPath* path, GpMatrix* matrix) {
    if (!path || !matrix) {
        return InvalidParameter;
    }
    ObjectOf<PathObject>(path)->outline.Transform(ObjectOf<MatrixObject>(matrix)->matrix);
    return Ok;
}

GpStatus GdipCreateFontFamilyFromName(const WCHAR* name, void*, GpFontFamily** family) {
    return Create<FontFamilyObject>(family, [&](FontFamilyObject& object) {
        if (!name || !*name || std::wcslen(name) >= LF_FACESIZE) {
            return FontFamilyNotFound;
        }
        for (const WCHAR* unit = name; *unit; ++unit) {
            const auto code = static_cast<char32_t>(*unit);
            rastel::platform::AppendUtf8(object.name,
                                         code < 0x110000 && !rastel::platform::IsSurrogate(code) ? code : U'?');
        }
        return Ok;
    });
}

GpStatus GdipDeleteFontFamily(GpFontFamily* family) {
    delete ObjectOf<FontFamilyObject>(family);
    return Result(family);
}

GpStatus GdipCreateFont(const GpFontFamily* family, REAL size, INT style, Unit unit, GpFont** font) {
    return Create<FontObject>(font, [&](FontObject& object) {
        static constexpr double pixels[] = {1, 1, 1, 96.0 / 72, 96, 96.0 / 300, 96 / 25.4};
        if (!family || !std::isfinite(size) || size <= 0 || unit < UnitWorld || unit > UnitMillimeter) {
            return InvalidParameter;
        }
        object.family = ObjectOf<FontFamilyObject>(family)->name;
        object.pixels = size * pixels[unit];
        object.style = style;
        return Ok;
    });
}

GpStatus GdipDeleteFont(GpFont* font) {
    delete ObjectOf<FontObject>(font);
    return Result(font);
}

GpStatus GdipCreateStringFormat(INT flags, WORD, GpStringFormat** format) {
    return Create<StringFormatObject>(format, [&](StringFormatObject& object) {
        object.flags = flags;
        return Ok;
    });
}

GpStatus GdipDeleteStringFormat(GpStringFormat* format) {
    delete ObjectOf<StringFormatObject>(format);
    return Result(format);
}

GpStatus GdipSetStringFormatFlags(GpStringFormat* format, INT flags) {
    if (format) {
        ObjectOf<StringFormatObject>(format)->flags = flags;
    }
    return Result(format);
}

GpStatus GdipSetStringFormatAlign(GpStringFormat* format, StringAlignment align) {
    if (format) {
        ObjectOf<StringFormatObject>(format)->align = align;
    }
    return Result(format);
}

GpStatus GdipSetStringFormatLineAlign(GpStringFormat* format, StringAlignment align) {
    if (format) {
        ObjectOf<StringFormatObject>(format)->lineAlign = align;
    }
    return Result(format);
}

}   // namespace DllExports

}   // namespace Gdiplus
