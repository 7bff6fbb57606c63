// The wrapper classes of what one draws with: matrices, brushes, pens, paths, fonts.
#pragma once

#include "rastel/platform/portable/gdiplus/image.h"

namespace Gdiplus {

// One native object, owned, and the status of the last call that failed.
template <class Native, Status (*End)(Native*)>
class GdipObject : public GdiplusBase {
public:
    GdipObject(const GdipObject&) = delete;
    GdipObject& operator=(const GdipObject&) = delete;
    virtual ~GdipObject() {
        if (native) {
            End(native);
        }
    }
    Status GetLastStatus() const {
        const Status status = lastResult;
        lastResult = Ok;
        return status;
    }

protected:
    friend class Graphics;
    GdipObject() = default;
    Status SetStatus(Status status) const {
        if (status != Ok) {
            lastResult = status;
        }
        return status;
    }

    Native* native = nullptr;
    mutable Status lastResult = Ok;
};

class Matrix : public GdipObject<GpMatrix, DllExports::GdipDeleteMatrix> {
public:
    Matrix() { lastResult = DllExports::GdipCreateMatrix(&native); }
    Matrix(REAL m11, REAL m12, REAL m21, REAL m22, REAL dx, REAL dy) {
        lastResult = DllExports::GdipCreateMatrix2(m11, m12, m21, m22, dx, dy, &native);
    }
    Matrix* Clone() const {
        auto* const clone = new Matrix;
        REAL m[6] = {};
        if (clone && GetElements(m) == Ok) {
            clone->SetElements(m[0], m[1], m[2], m[3], m[4], m[5]);
        }
        return clone;
    }
    Status GetElements(REAL* m) const { return SetStatus(DllExports::GdipGetMatrixElements(native, m)); }
    Status SetElements(REAL m11, REAL m12, REAL m21, REAL m22, REAL dx, REAL dy) {
        return SetStatus(DllExports::GdipSetMatrixElements(native, m11, m12, m21, m22, dx, dy));
    }
    Status Reset() { return SetElements(1, 0, 0, 1, 0, 0); }
    Status Multiply(const Matrix* matrix, MatrixOrder order = MatrixOrderPrepend) {
        return SetStatus(DllExports::GdipMultiplyMatrix(native, matrix ? matrix->native : nullptr, order));
    }
    Status Translate(REAL dx, REAL dy, MatrixOrder order = MatrixOrderPrepend) {
        return SetStatus(DllExports::GdipTranslateMatrix(native, dx, dy, order));
    }
    Status Scale(REAL x, REAL y, MatrixOrder order = MatrixOrderPrepend) {
        return SetStatus(DllExports::GdipScaleMatrix(native, x, y, order));
    }
    Status Rotate(REAL angle, MatrixOrder order = MatrixOrderPrepend) {
        return SetStatus(DllExports::GdipRotateMatrix(native, angle, order));
    }
    Status RotateAt(REAL angle, const PointF& center, MatrixOrder order = MatrixOrderPrepend) {
        if (order == MatrixOrderPrepend) {
            Translate(center.X, center.Y);
            Rotate(angle);
            return Translate(-center.X, -center.Y);
        }
        Translate(-center.X, -center.Y, order);
        Rotate(angle, order);
        return Translate(center.X, center.Y, order);
    }
    Status Invert() { return SetStatus(DllExports::GdipInvertMatrix(native)); }
    Status TransformPoints(PointF* points, INT count = 1) const {
        return SetStatus(DllExports::GdipTransformMatrixPoints(native, points, count));
    }

private:
    friend class GraphicsPath;
    friend class Graphics;
};

class Brush : public GdipObject<GpBrush, DllExports::GdipDeleteBrush> {
protected:
    friend class Graphics;
    friend class Pen;
    Brush() = default;
};

class SolidBrush : public Brush {
public:
    explicit SolidBrush(const Color& color) {
        GpSolidFill* brush = nullptr;
        lastResult = DllExports::GdipCreateSolidFill(color.GetValue(), &brush);
        native = brush;
    }
    Status GetColor(Color* color) const {
        ARGB argb = 0;
        const Status status =
            SetStatus(DllExports::GdipGetSolidFillColor(static_cast<GpSolidFill*>(native), color ? &argb : nullptr));
        if (status == Ok) {
            color->SetValue(argb);
        }
        return status;
    }
    Status SetColor(const Color& color) {
        return SetStatus(DllExports::GdipSetSolidFillColor(static_cast<GpSolidFill*>(native), color.GetValue()));
    }
};

class LinearGradientBrush : public Brush {
public:
    LinearGradientBrush(const PointF& first, const PointF& second, const Color& color1, const Color& color2) {
        GpLineGradient* brush = nullptr;
        lastResult = DllExports::GdipCreateLineBrush(&first, &second, color1.GetValue(), color2.GetValue(),
                                                     WrapModeTile, &brush);
        native = brush;
    }
    LinearGradientBrush(const Point& first, const Point& second, const Color& color1, const Color& color2)
        : LinearGradientBrush(PointF(static_cast<REAL>(first.X), static_cast<REAL>(first.Y)),
                              PointF(static_cast<REAL>(second.X), static_cast<REAL>(second.Y)), color1, color2) {}
    LinearGradientBrush(const RectF& rect, const Color& color1, const Color& color2, LinearGradientMode mode) {
        GpLineGradient* brush = nullptr;
        lastResult = DllExports::GdipCreateLineBrushFromRect(&rect, color1.GetValue(), color2.GetValue(), mode,
                                                             WrapModeTile, &brush);
        native = brush;
    }
    LinearGradientBrush(const Rect& rect, const Color& color1, const Color& color2, LinearGradientMode mode)
        : LinearGradientBrush(RectF(static_cast<REAL>(rect.X), static_cast<REAL>(rect.Y), static_cast<REAL>(rect.Width),
                                    static_cast<REAL>(rect.Height)),
                              color1, color2, mode) {}
};

class Pen : public GdipObject<GpPen, DllExports::GdipDeletePen> {
public:
    explicit Pen(const Color& color, REAL width = 1.0f) {
        lastResult = DllExports::GdipCreatePen1(color.GetValue(), width, UnitWorld, &native);
    }
    explicit Pen(const Brush* brush, REAL width = 1.0f) {
        lastResult = DllExports::GdipCreatePen2(brush ? brush->native : nullptr, width, UnitWorld, &native);
    }
    Status SetWidth(REAL width) { return SetStatus(DllExports::GdipSetPenWidth(native, width)); }
    REAL GetWidth() const {
        REAL width = 0;
        SetStatus(DllExports::GdipGetPenWidth(native, &width));
        return width;
    }
    Status SetColor(const Color& color) { return SetStatus(DllExports::GdipSetPenColor(native, color.GetValue())); }
    Status SetDashStyle(DashStyle style) { return SetStatus(DllExports::GdipSetPenDashStyle(native, style)); }
    Status SetStartCap(LineCap cap) { return SetStatus(DllExports::GdipSetPenStartCap(native, cap)); }
    Status SetEndCap(LineCap cap) { return SetStatus(DllExports::GdipSetPenEndCap(native, cap)); }
    Status SetLineJoin(LineJoin join) { return SetStatus(DllExports::GdipSetPenLineJoin(native, join)); }
    Status SetMiterLimit(REAL limit) { return SetStatus(DllExports::GdipSetPenMiterLimit(native, limit)); }
};

class GraphicsPath : public GdipObject<GpPath, DllExports::GdipDeletePath> {
public:
    explicit GraphicsPath(FillMode mode = FillModeAlternate) { lastResult = DllExports::GdipCreatePath(mode, &native); }
    Status Reset() { return SetStatus(DllExports::GdipResetPath(native)); }
    Status SetFillMode(FillMode mode) { return SetStatus(DllExports::GdipSetPathFillMode(native, mode)); }
    Status StartFigure() { return SetStatus(DllExports::GdipStartPathFigure(native)); }
    Status CloseFigure() { return SetStatus(DllExports::GdipClosePathFigure(native)); }
    Status AddLine(REAL x1, REAL y1, REAL x2, REAL y2) {
        return SetStatus(DllExports::GdipAddPathLine(native, x1, y1, x2, y2));
    }
    Status AddLine(const PointF& from, const PointF& to) { return AddLine(from.X, from.Y, to.X, to.Y); }
    Status AddLines(const PointF* points, INT count) {
        return SetStatus(DllExports::GdipAddPathLine2(native, points, count));
    }
    Status AddArc(REAL x, REAL y, REAL width, REAL height, REAL start, REAL sweep) {
        return SetStatus(DllExports::GdipAddPathArc(native, x, y, width, height, start, sweep));
    }
    Status AddBezier(REAL x1, REAL y1, REAL x2, REAL y2, REAL x3, REAL y3, REAL x4, REAL y4) {
        return SetStatus(DllExports::GdipAddPathBezier(native, x1, y1, x2, y2, x3, y3, x4, y4));
    }
    Status AddBezier(const PointF& a, const PointF& b, const PointF& c, const PointF& d) {
        return AddBezier(a.X, a.Y, b.X, b.Y, c.X, c.Y, d.X, d.Y);
    }
    Status AddBeziers(const PointF* points, INT count) {
        return SetStatus(DllExports::GdipAddPathBeziers(native, points, count));
    }
    Status AddRectangle(const RectF& r) {
        return SetStatus(DllExports::GdipAddPathRectangle(native, r.X, r.Y, r.Width, r.Height));
    }
    Status AddEllipse(REAL x, REAL y, REAL width, REAL height) {
        return SetStatus(DllExports::GdipAddPathEllipse(native, x, y, width, height));
    }
    Status AddEllipse(const RectF& r) { return AddEllipse(r.X, r.Y, r.Width, r.Height); }
    Status AddPie(REAL x, REAL y, REAL width, REAL height, REAL start, REAL sweep) {
        return SetStatus(DllExports::GdipAddPathPie(native, x, y, width, height, start, sweep));
    }
    Status AddPolygon(const PointF* points, INT count) {
        return SetStatus(DllExports::GdipAddPathPolygon(native, points, count));
    }
    Status Transform(const Matrix* matrix) {
        return matrix ? SetStatus(DllExports::GdipTransformPath(native, matrix->native)) : Ok;
    }
};

class FontFamily : public GdipObject<GpFontFamily, DllExports::GdipDeleteFontFamily> {
public:
    explicit FontFamily(const WCHAR* name) {
        lastResult = DllExports::GdipCreateFontFamilyFromName(name, nullptr, &native);
    }
    BOOL IsAvailable() const { return native ? TRUE : FALSE; }

private:
    friend class Font;
};

class Font : public GdipObject<GpFont, DllExports::GdipDeleteFont> {
public:
    Font(const WCHAR* family, REAL size, INT style = FontStyleRegular, Unit unit = UnitPoint) {
        const FontFamily named(family);
        lastResult = DllExports::GdipCreateFont(named.native, size, style, unit, &native);
    }
    Font(const FontFamily* family, REAL size, INT style = FontStyleRegular, Unit unit = UnitPoint) {
        lastResult = DllExports::GdipCreateFont(family ? family->native : nullptr, size, style, unit, &native);
    }
    BOOL IsAvailable() const { return native ? TRUE : FALSE; }
};

class StringFormat : public GdipObject<GpStringFormat, DllExports::GdipDeleteStringFormat> {
public:
    explicit StringFormat(INT flags = 0, WORD language = 0) {
        lastResult = DllExports::GdipCreateStringFormat(flags, language, &native);
    }
    Status SetFormatFlags(INT flags) { return SetStatus(DllExports::GdipSetStringFormatFlags(native, flags)); }
    Status SetAlignment(StringAlignment align) {
        return SetStatus(DllExports::GdipSetStringFormatAlign(native, align));
    }
    Status SetLineAlignment(StringAlignment align) {
        return SetStatus(DllExports::GdipSetStringFormatLineAlign(native, align));
    }
};

}   // namespace Gdiplus
