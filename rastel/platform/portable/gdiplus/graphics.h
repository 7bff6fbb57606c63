// The wrapper class that draws, on a device context or on an image.
#pragma once

#include "rastel/platform/portable/gdiplus/tools.h"

namespace Gdiplus {

// The context or the image must outlive it; nothing it is handed is kept.
class Graphics : public GdiplusBase {
public:
    explicit Graphics(HDC context) { lastResult = DllExports::GdipCreateFromHDC(context, &nativeGraphics); }
    explicit Graphics(Image* image) {
        lastResult = DllExports::GdipGetImageGraphicsContext(image ? image->nativeImage : nullptr, &nativeGraphics);
    }
    Graphics(const Graphics&) = delete;
    Graphics& operator=(const Graphics&) = delete;
    ~Graphics() { DllExports::GdipDeleteGraphics(nativeGraphics); }

    static Graphics* FromHDC(HDC context) { return new Graphics(context); }
    static Graphics* FromImage(Image* image) { return new Graphics(image); }

    Status GetLastStatus() const {
        const Status status = lastResult;
        lastResult = Ok;
        return status;
    }
    void Flush(FlushIntention intention = FlushIntentionFlush) {
        Set(DllExports::GdipFlush(nativeGraphics, intention));
    }
    GraphicsState Save() const {
        GraphicsState state = 0;
        Set(DllExports::GdipSaveGraphics(nativeGraphics, &state));
        return state;
    }
    Status Restore(GraphicsState state) { return Set(DllExports::GdipRestoreGraphics(nativeGraphics, state)); }

    Status SetSmoothingMode(SmoothingMode mode) { return Set(DllExports::GdipSetSmoothingMode(nativeGraphics, mode)); }
    SmoothingMode GetSmoothingMode() const {
        SmoothingMode mode = SmoothingModeInvalid;
        Set(DllExports::GdipGetSmoothingMode(nativeGraphics, &mode));
        return mode;
    }
    Status SetPixelOffsetMode(PixelOffsetMode mode) {
        return Set(DllExports::GdipSetPixelOffsetMode(nativeGraphics, mode));
    }
    Status SetCompositingMode(CompositingMode mode) {
        return Set(DllExports::GdipSetCompositingMode(nativeGraphics, mode));
    }
    Status SetInterpolationMode(InterpolationMode mode) {
        return Set(DllExports::GdipSetInterpolationMode(nativeGraphics, mode));
    }
    Status SetTextRenderingHint(TextRenderingHint hint) {
        return Set(DllExports::GdipSetTextRenderingHint(nativeGraphics, hint));
    }

    Status SetTransform(const Matrix* matrix) {
        return Set(DllExports::GdipSetWorldTransform(nativeGraphics, matrix ? matrix->native : nullptr));
    }
    Status GetTransform(Matrix* matrix) const {
        return Set(DllExports::GdipGetWorldTransform(nativeGraphics, matrix ? matrix->native : nullptr));
    }
    Status ResetTransform() { return Set(DllExports::GdipResetWorldTransform(nativeGraphics)); }
    Status MultiplyTransform(const Matrix* matrix, MatrixOrder order = MatrixOrderPrepend) {
        return Set(DllExports::GdipMultiplyWorldTransform(nativeGraphics, matrix ? matrix->native : nullptr, order));
    }
    Status TranslateTransform(REAL dx, REAL dy, MatrixOrder order = MatrixOrderPrepend) {
        return Set(DllExports::GdipTranslateWorldTransform(nativeGraphics, dx, dy, order));
    }
    Status ScaleTransform(REAL x, REAL y, MatrixOrder order = MatrixOrderPrepend) {
        return Set(DllExports::GdipScaleWorldTransform(nativeGraphics, x, y, order));
    }
    Status RotateTransform(REAL angle, MatrixOrder order = MatrixOrderPrepend) {
        return Set(DllExports::GdipRotateWorldTransform(nativeGraphics, angle, order));
    }

    Status SetClip(const Rect& r, CombineMode mode = CombineModeReplace) {
        return Set(DllExports::GdipSetClipRectI(nativeGraphics, r.X, r.Y, r.Width, r.Height, mode));
    }
    Status SetClip(const RectF& r, CombineMode mode = CombineModeReplace) {
        return Set(DllExports::GdipSetClipRect(nativeGraphics, r.X, r.Y, r.Width, r.Height, mode));
    }
    Status SetClip(const GraphicsPath* path, CombineMode mode = CombineModeReplace) {
        return Set(DllExports::GdipSetClipPath(nativeGraphics, path ? path->native : nullptr, mode));
    }
    Status IntersectClip(const Rect& r) { return SetClip(r, CombineModeIntersect); }
    Status IntersectClip(const RectF& r) { return SetClip(r, CombineModeIntersect); }
    Status ExcludeClip(const Rect& r) { return SetClip(r, CombineModeExclude); }
    Status ExcludeClip(const RectF& r) { return SetClip(r, CombineModeExclude); }
    Status ResetClip() { return Set(DllExports::GdipResetClip(nativeGraphics)); }

    Status Clear(const Color& color) { return Set(DllExports::GdipGraphicsClear(nativeGraphics, color.GetValue())); }
    Status DrawLine(const Pen* pen, REAL x1, REAL y1, REAL x2, REAL y2) {
        return Set(DllExports::GdipDrawLine(nativeGraphics, Of(pen), x1, y1, x2, y2));
    }
    Status DrawLine(const Pen* pen, const PointF& from, const PointF& to) {
        return DrawLine(pen, from.X, from.Y, to.X, to.Y);
    }
    Status DrawLine(const Pen* pen, INT x1, INT y1, INT x2, INT y2) {
        return Set(DllExports::GdipDrawLineI(nativeGraphics, Of(pen), x1, y1, x2, y2));
    }
    Status DrawLine(const Pen* pen, const Point& from, const Point& to) {
        return DrawLine(pen, from.X, from.Y, to.X, to.Y);
    }
    Status DrawLines(const Pen* pen, const PointF* points, INT count) {
        return Set(DllExports::GdipDrawLines(nativeGraphics, Of(pen), points, count));
    }
    Status DrawRectangle(const Pen* pen, REAL x, REAL y, REAL width, REAL height) {
        return Set(DllExports::GdipDrawRectangle(nativeGraphics, Of(pen), x, y, width, height));
    }
    Status DrawRectangle(const Pen* pen, INT x, INT y, INT width, INT height) {
        return DrawRectangle(pen, Real(x), Real(y), Real(width), Real(height));
    }
    Status DrawRectangle(const Pen* pen, const RectF& r) { return DrawRectangle(pen, r.X, r.Y, r.Width, r.Height); }
    Status DrawRectangle(const Pen* pen, const Rect& r) { return DrawRectangle(pen, r.X, r.Y, r.Width, r.Height); }
    Status DrawEllipse(const Pen* pen, REAL x, REAL y, REAL width, REAL height) {
        return Set(DllExports::GdipDrawEllipse(nativeGraphics, Of(pen), x, y, width, height));
    }
    Status DrawEllipse(const Pen* pen, INT x, INT y, INT width, INT height) {
        return DrawEllipse(pen, Real(x), Real(y), Real(width), Real(height));
    }
    Status DrawEllipse(const Pen* pen, const RectF& r) { return DrawEllipse(pen, r.X, r.Y, r.Width, r.Height); }
    Status DrawEllipse(const Pen* pen, const Rect& r) { return DrawEllipse(pen, r.X, r.Y, r.Width, r.Height); }
    Status DrawArc(const Pen* pen, REAL x, REAL y, REAL width, REAL height, REAL start, REAL sweep) {
        return Set(DllExports::GdipDrawArc(nativeGraphics, Of(pen), x, y, width, height, start, sweep));
    }
    Status DrawPie(const Pen* pen, REAL x, REAL y, REAL width, REAL height, REAL start, REAL sweep) {
        return Set(DllExports::GdipDrawPie(nativeGraphics, Of(pen), x, y, width, height, start, sweep));
    }
    Status DrawBezier(const Pen* pen, const PointF& a, const PointF& b, const PointF& c, const PointF& d) {
        return Set(DllExports::GdipDrawBezier(nativeGraphics, Of(pen), a.X, a.Y, b.X, b.Y, c.X, c.Y, d.X, d.Y));
    }
    Status DrawPolygon(const Pen* pen, const PointF* points, INT count) {
        return Set(DllExports::GdipDrawPolygon(nativeGraphics, Of(pen), points, count));
    }
    Status DrawPath(const Pen* pen, const GraphicsPath* path) {
        return Set(DllExports::GdipDrawPath(nativeGraphics, Of(pen), path ? path->native : nullptr));
    }
    Status FillRectangle(const Brush* brush, REAL x, REAL y, REAL width, REAL height) {
        return Set(DllExports::GdipFillRectangle(nativeGraphics, Of(brush), x, y, width, height));
    }
    Status FillRectangle(const Brush* brush, INT x, INT y, INT width, INT height) {
        return Set(DllExports::GdipFillRectangleI(nativeGraphics, Of(brush), x, y, width, height));
    }
    Status FillRectangle(const Brush* brush, const RectF& r) {
        return FillRectangle(brush, r.X, r.Y, r.Width, r.Height);
    }
    Status FillRectangle(const Brush* brush, const Rect& r) {
        return FillRectangle(brush, r.X, r.Y, r.Width, r.Height);
    }
    Status FillEllipse(const Brush* brush, REAL x, REAL y, REAL width, REAL height) {
        return Set(DllExports::GdipFillEllipse(nativeGraphics, Of(brush), x, y, width, height));
    }
    Status FillEllipse(const Brush* brush, INT x, INT y, INT width, INT height) {
        return FillEllipse(brush, Real(x), Real(y), Real(width), Real(height));
    }
    Status FillEllipse(const Brush* brush, const RectF& r) { return FillEllipse(brush, r.X, r.Y, r.Width, r.Height); }
    Status FillEllipse(const Brush* brush, const Rect& r) { return FillEllipse(brush, r.X, r.Y, r.Width, r.Height); }
    Status FillPie(const Brush* brush, REAL x, REAL y, REAL width, REAL height, REAL start, REAL sweep) {
        return Set(DllExports::GdipFillPie(nativeGraphics, Of(brush), x, y, width, height, start, sweep));
    }
    Status FillPolygon(const Brush* brush, const PointF* points, INT count, FillMode mode = FillModeAlternate) {
        return Set(DllExports::GdipFillPolygon(nativeGraphics, Of(brush), points, count, mode));
    }
    Status FillPath(const Brush* brush, const GraphicsPath* path) {
        return Set(DllExports::GdipFillPath(nativeGraphics, Of(brush), path ? path->native : nullptr));
    }
    Status DrawImage(Image* image, REAL x, REAL y) {
        return Set(DllExports::GdipDrawImage(nativeGraphics, Of(image), x, y));
    }
    Status DrawImage(Image* image, INT x, INT y) { return DrawImage(image, Real(x), Real(y)); }
    Status DrawImage(Image* image, REAL x, REAL y, REAL width, REAL height) {
        return Set(DllExports::GdipDrawImageRect(nativeGraphics, Of(image), x, y, width, height));
    }
    Status DrawImage(Image* image, INT x, INT y, INT width, INT height) {
        return DrawImage(image, Real(x), Real(y), Real(width), Real(height));
    }
    Status DrawImage(Image* image, const RectF& r) { return DrawImage(image, r.X, r.Y, r.Width, r.Height); }
    Status DrawImage(Image* image, const Rect& r) { return DrawImage(image, r.X, r.Y, r.Width, r.Height); }
    Status DrawImage(Image* image, const PointF& corner) { return DrawImage(image, corner.X, corner.Y); }
    Status DrawImage(Image* image, const Point& corner) { return DrawImage(image, corner.X, corner.Y); }
    Status DrawImage(Image* image, const RectF& target, REAL sourceX, REAL sourceY, REAL sourceWidth, REAL sourceHeight,
                     Unit unit) {
        return Set(DllExports::GdipDrawImageRectRect(nativeGraphics, Of(image), target.X, target.Y, target.Width,
                                                     target.Height, sourceX, sourceY, sourceWidth, sourceHeight, unit,
                                                     nullptr, nullptr, nullptr));
    }
    Status DrawString(const WCHAR* text, INT length, const Font* font, const RectF& layout, const StringFormat* format,
                      const Brush* brush) {
        return Set(DllExports::GdipDrawString(nativeGraphics, text, length, font ? font->native : nullptr, &layout,
                                              format ? format->native : nullptr, Of(brush)));
    }
    Status DrawString(const WCHAR* text, INT length, const Font* font, const PointF& origin, const Brush* brush) {
        return DrawString(text, length, font, RectF(origin.X, origin.Y, 0, 0), nullptr, brush);
    }
    Status DrawString(const WCHAR* text, INT length, const Font* font, const PointF& origin, const StringFormat* format,
                      const Brush* brush) {
        return DrawString(text, length, font, RectF(origin.X, origin.Y, 0, 0), format, brush);
    }
    Status MeasureString(const WCHAR* text, INT length, const Font* font, const RectF& layout, RectF* bounds) const {
        return MeasureString(text, length, font, layout, nullptr, bounds);
    }
    Status MeasureString(const WCHAR* text, INT length, const Font* font, const RectF& layout,
                         const StringFormat* format, RectF* bounds, INT* charactersFitted = nullptr,
                         INT* linesFilled = nullptr) const {
        return Set(DllExports::GdipMeasureString(nativeGraphics, text, length, font ? font->native : nullptr, &layout,
                                                 format ? format->native : nullptr, bounds, charactersFitted,
                                                 linesFilled));
    }
    Status MeasureString(const WCHAR* text, INT length, const Font* font, const PointF& origin, RectF* bounds) const {
        return MeasureString(text, length, font, RectF(origin.X, origin.Y, 0, 0), nullptr, bounds);
    }

private:
    Status Set(Status status) const {
        if (status != Ok) {
            lastResult = status;
        }
        return status;
    }
    static REAL Real(INT value) { return static_cast<REAL>(value); }
    static GpPen* Of(const Pen* pen) { return pen ? pen->native : nullptr; }
    static GpBrush* Of(const Brush* brush) { return brush ? brush->native : nullptr; }
    static GpImage* Of(const Image* image) { return image ? image->nativeImage : nullptr; }

    GpGraphics* nativeGraphics = nullptr;
    mutable Status lastResult = Ok;
};

}   // namespace Gdiplus
