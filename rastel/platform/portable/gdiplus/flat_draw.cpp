// The flat functions of Graphics.
#include <vector>

#include "rastel/platform/portable/gdiplus/canvas_graphics.h"

using rastel::platform::gdip::BrushOf;
using rastel::platform::gdip::GraphicsObject;
using rastel::platform::gdip::Guarded;
using rastel::platform::gdip::MatrixObject;
using rastel::platform::gdip::ObjectOf;
using rastel::platform::gdip::Outline;
using rastel::platform::gdip::PathObject;
using rastel::platform::gdip::PenObject;
using rastel::platform::gdip::Picture;
using rastel::platform::gdip::Spot;
using rastel::platform::gdip::TargetOf;

namespace Gdiplus {

namespace {

template <class Use>
Status With(GpGraphics* graphics, Use use) {
    if (!graphics) {
        return InvalidParameter;
    }
    return Guarded([&]() -> Status { return use(*ObjectOf<GraphicsObject>(graphics)); });
}

template <class Use>
Status WithState(GpGraphics* graphics, Use use) {
    return With(graphics, [&](GraphicsObject& object) {
        use(object.state);
        return Ok;
    });
}

template <class Shape>
Status Stroke(GpGraphics* graphics, const GpPen* pen, Shape shape) {
    return With(graphics, [&](GraphicsObject& object) {
        if (!pen) {
            return InvalidParameter;
        }
        Outline outline;
        shape(outline);
        return object.Stroke(outline, *ObjectOf<PenObject>(pen));
    });
}

template <class Shape>
Status Fill(GpGraphics* graphics, const GpBrush* brush, FillMode mode, Shape shape) {
    return With(graphics, [&](GraphicsObject& object) {
        if (!brush) {
            return InvalidParameter;
        }
        Outline outline;
        shape(outline);
        return object.Fill(outline, mode, *BrushOf(brush));
    });
}

std::vector<Spot> SpotsOf(const PointF* points, INT count) {
    std::vector<Spot> spots;
    for (INT i = 0; i < count; ++i) {
        spots.push_back({points[i].X, points[i].Y});
    }
    return spots;
}

REAL Real(INT value) {
    return static_cast<REAL>(value);
}

}   // namespace

namespace DllExports {

GpStatus GdipCreateFromHDC(HDC context, GpGraphics** graphics) {
    if (!graphics) {
        return InvalidParameter;
    }
    *graphics = nullptr;
    return Guarded([&] {
        auto target = TargetOf(context);
        if (!target) {
            return InvalidParameter;
        }
        *graphics = new GraphicsObject(std::move(target));
        return Ok;
    });
}

GpStatus GdipGetImageGraphicsContext(GpImage* image, GpGraphics** graphics) {
    if (!graphics) {
        return InvalidParameter;
    }
    *graphics = nullptr;
    if (!image) {
        return InvalidParameter;
    }
    return Guarded([&] {
        Picture& picture = *Picture::Of(image);
        if (picture.Format() == PixelFormat8bppIndexed) {
            return OutOfMemory;   // what GDI+ says of indexed images
        }
        *graphics = new GraphicsObject(TargetOf(picture));
        return Ok;
    });
}

GpStatus GdipDeleteGraphics(GpGraphics* graphics) {
    delete ObjectOf<GraphicsObject>(graphics);
    return graphics ? Ok : InvalidParameter;
}

GpStatus GdipFlush(GpGraphics* graphics, FlushIntention) {
    return graphics ? Ok : InvalidParameter;
}

GpStatus GdipSaveGraphics(GpGraphics* graphics, GraphicsState* state) {
    return With(graphics, [&](GraphicsObject& object) { return state ? object.Save(state) : InvalidParameter; });
}

GpStatus GdipRestoreGraphics(GpGraphics* graphics, GraphicsState state) {
    return With(graphics, [&](GraphicsObject& object) { return object.Restore(state); });
}

GpStatus GdipSetSmoothingMode(GpGraphics* graphics, SmoothingMode mode) {
    return WithState(graphics, [&](auto& state) { state.smoothing = mode; });
}

GpStatus GdipGetSmoothingMode(GpGraphics* graphics, SmoothingMode* mode) {
    return mode ? WithState(graphics, [&](auto& state) { *mode = state.smoothing; }) : InvalidParameter;
}

GpStatus GdipSetPixelOffsetMode(GpGraphics* graphics, PixelOffsetMode mode) {
    return WithState(graphics, [&](auto& state) { state.offset = mode; });
}

GpStatus GdipSetCompositingMode(GpGraphics* graphics, CompositingMode mode) {
    return WithState(graphics, [&](auto& state) { state.compositing = mode; });
}

GpStatus GdipSetInterpolationMode(GpGraphics* graphics, InterpolationMode mode) {
    return WithState(graphics, [&](auto& state) { state.interpolation = mode; });
}

GpStatus GdipSetTextRenderingHint(GpGraphics* graphics, TextRenderingHint hint) {
    return WithState(graphics, [&](auto& state) { state.text = hint; });
}

GpStatus GdipSetWorldTransform(GpGraphics* graphics, GpMatrix* matrix) {
    return matrix ? WithState(graphics, [&](auto& state) { state.world = ObjectOf<MatrixObject>(matrix)->matrix; })
                  : InvalidParameter;
}

GpStatus GdipGetWorldTransform(GpGraphics* graphics, GpMatrix* matrix) {
    return matrix ? WithState(graphics, [&](auto& state) { ObjectOf<MatrixObject>(matrix)->matrix = state.world; })
                  : InvalidParameter;
}

GpStatus GdipResetWorldTransform(GpGraphics* graphics) {
    return WithState(graphics, [](auto& state) { state.world = {1, 0, 0, 1, 0, 0}; });
}

GpStatus GdipMultiplyWorldTransform(GpGraphics* graphics, GpMatrix* matrix, MatrixOrder order) {
    MatrixObject world;
    Status status = GdipGetWorldTransform(graphics, &world);
    if (status == Ok) {
        status = GdipMultiplyMatrix(&world, matrix, order);
    }
    return status == Ok ? GdipSetWorldTransform(graphics, &world) : status;
}

GpStatus GdipTranslateWorldTransform(GpGraphics* graphics, REAL dx, REAL dy, MatrixOrder order) {
    MatrixObject by;
    GdipTranslateMatrix(&by, dx, dy, order);
    return GdipMultiplyWorldTransform(graphics, &by, order);
}

GpStatus GdipScaleWorldTransform(GpGraphics* graphics, REAL x, REAL y, MatrixOrder order) {
    MatrixObject by;
    GdipScaleMatrix(&by, x, y, order);
    return GdipMultiplyWorldTransform(graphics, &by, order);
}

GpStatus GdipRotateWorldTransform(GpGraphics* graphics, REAL angle, MatrixOrder order) {
    MatrixObject by;
    const Status status = GdipRotateMatrix(&by, angle, order);
    return status == Ok ? GdipMultiplyWorldTransform(graphics, &by, order) : status;
}

GpStatus GdipResetClip(GpGraphics* graphics) {
    return WithState(graphics, [](auto& state) {
        state.isLimited = false;
        state.clipPixels.reset();
    });
}

GpStatus GdipSetClipRect(GpGraphics* graphics, REAL x, REAL y, REAL width, REAL height, CombineMode mode) {
    return With(graphics, [&](GraphicsObject& object) {
        Outline outline;
        outline.AddRectangle({x, y}, width, height);
        return object.SetClip(outline, FillModeWinding, mode);
    });
}

GpStatus GdipSetClipRectI(GpGraphics* graphics, INT x, INT y, INT width, INT height, CombineMode mode) {
    return GdipSetClipRect(graphics, Real(x), Real(y), Real(width), Real(height), mode);
}

GpStatus GdipSetClipPath(GpGraphics* graphics, GpPath* path, CombineMode mode) {
    return With(graphics, [&](GraphicsObject& object) {
        const auto* const shape = ObjectOf<PathObject>(path);
        return shape ? object.SetClip(shape->outline, shape->mode, mode) : InvalidParameter;
    });
}

GpStatus GdipGraphicsClear(GpGraphics* graphics, ARGB color) {
    return With(graphics, [&](GraphicsObject& object) { return object.Clear(color); });
}

GpStatus GdipDrawLine(GpGraphics* graphics, GpPen* pen, REAL x1, REAL y1, REAL x2, REAL y2) {
    const PointF points[] = {PointF(x1, y1), PointF(x2, y2)};
    return GdipDrawLines(graphics, pen, points, 2);
}

GpStatus GdipDrawLineI(GpGraphics* graphics, GpPen* pen, INT x1, INT y1, INT x2, INT y2) {
    return GdipDrawLine(graphics, pen, Real(x1), Real(y1), Real(x2), Real(y2));
}

GpStatus GdipDrawLines(GpGraphics* graphics, GpPen* pen, const PointF* points, INT count) {
    if (!points || count < 2) {
        return InvalidParameter;
    }
    return Stroke(graphics, pen, [&](Outline& outline) { outline.AddLines(SpotsOf(points, count)); });
}

GpStatus GdipDrawRectangle(GpGraphics* graphics, GpPen* pen, REAL x, REAL y, REAL width, REAL height) {
    return Stroke(graphics, pen, [&](Outline& outline) { outline.AddRectangle({x, y}, width, height); });
}

GpStatus GdipDrawEllipse(GpGraphics* graphics, GpPen* pen, REAL x, REAL y, REAL width, REAL height) {
    return Stroke(graphics, pen, [&](Outline& outline) { outline.AddEllipse({x, y}, width, height); });
}

GpStatus GdipDrawArc(GpGraphics* graphics, GpPen* pen, REAL x, REAL y, REAL width, REAL height, REAL start,
                     REAL sweep) {
    return Stroke(graphics, pen, [&](Outline& outline) { outline.AddArc({x, y}, width, height, start, sweep); });
}

GpStatus GdipDrawPie(GpGraphics* graphics, GpPen* pen, REAL x, REAL y, REAL width, REAL height, REAL start,
                     REAL sweep) {
    return Stroke(graphics, pen, [&](Outline& outline) { outline.AddPie({x, y}, width, height, start, sweep); });
}

GpStatus GdipDrawBezier(GpGraphics* graphics, GpPen* pen, REAL x1, REAL y1, REAL x2, REAL y2, REAL x3, REAL y3, REAL x4,
                        REAL y4) {
    const Spot spots[] = {{x1, y1}, {x2, y2}, {x3, y3}, {x4, y4}};
    return Stroke(graphics, pen, [&](Outline& outline) { outline.AddCurves(spots); });
}

GpStatus GdipDrawPolygon(GpGraphics* graphics, GpPen* pen, const PointF* points, INT count) {
    if (!points || count < 2) {
        return InvalidParameter;
    }
    return Stroke(graphics, pen, [&](Outline& outline) { outline.AddPolygon(SpotsOf(points, count)); });
}

GpStatus GdipDrawPath(GpGraphics* graphics, GpPen* pen, GpPath* path) {
    if (!path) {
        return InvalidParameter;
    }
    return Stroke(graphics, pen, [&](Outline& outline) { outline = ObjectOf<PathObject>(path)->outline; });
}

GpStatus GdipFillRectangle(GpGraphics* graphics, GpBrush* brush, REAL x, REAL y, REAL width, REAL height) {
    return Fill(graphics, brush, FillModeWinding, [&](Outline& outline) {
        outline.AddRectangle({x, y}, width, height);
    });
}

GpStatus GdipFillRectangleI(GpGraphics* graphics, GpBrush* brush, INT x, INT y, INT width, INT height) {
    return GdipFillRectangle(graphics, brush, Real(x), Real(y), Real(width), Real(height));
}

GpStatus GdipFillEllipse(GpGraphics* graphics, GpBrush* brush, REAL x, REAL y, REAL width, REAL height) {
    return Fill(graphics, brush, FillModeWinding, [&](Outline& outline) { outline.AddEllipse({x, y}, width, height); });
}

GpStatus GdipFillPie(GpGraphics* graphics, GpBrush* brush, REAL x, REAL y, REAL width, REAL height, REAL start,
                     REAL sweep) {
    return Fill(graphics, brush, FillModeWinding, [&](Outline& outline) {
        outline.AddPie({x, y}, width, height, start, sweep);
    });
}

GpStatus GdipFillPolygon(GpGraphics* graphics, GpBrush* brush, const PointF* points, INT count, FillMode mode) {
    if (!points || count < 2) {
        return InvalidParameter;
    }
    return Fill(graphics, brush, mode, [&](Outline& outline) { outline.AddPolygon(SpotsOf(points, count)); });
}

GpStatus GdipFillPath(GpGraphics* graphics, GpBrush* brush, GpPath* path) {
    if (!path) {
        return InvalidParameter;
    }
    const auto* const shape = ObjectOf<PathObject>(path);
    return Fill(graphics, brush, shape->mode, [&](Outline& outline) { outline = shape->outline; });
}

GpStatus GdipDrawImage(GpGraphics* graphics, GpImage* image, REAL x, REAL y) {
    if (!image) {
        return InvalidParameter;
    }
    const Picture& picture = *Picture::Of(image);
    return GdipDrawImageRect(graphics, image, x, y, Real(picture.Width()), Real(picture.Height()));
}

GpStatus GdipDrawImageRect(GpGraphics* graphics, GpImage* image, REAL x, REAL y, REAL width, REAL height) {
    if (!image) {
        return InvalidParameter;
    }
    const Picture& picture = *Picture::Of(image);
    return GdipDrawImageRectRect(graphics, image, x, y, width, height, 0, 0, Real(picture.Width()),
                                 Real(picture.Height()), UnitPixel, nullptr, nullptr, nullptr);
}

GpStatus GdipDrawImageRectRect(GpGraphics* graphics, GpImage* image, REAL x, REAL y, REAL width, REAL height,
                               REAL sourceX, REAL sourceY, REAL sourceWidth, REAL sourceHeight, Unit unit,
                               const GpImageAttributes*, DrawImageAbort, void*) {
    if (!image || unit != UnitPixel) {
        return InvalidParameter;
    }
    return With(graphics, [&](GraphicsObject& object) {
        return object.DrawPicture(*Picture::Of(image), RectF(x, y, width, height),
                                  RectF(sourceX, sourceY, sourceWidth, sourceHeight));
    });
}

}   // namespace DllExports

}   // namespace Gdiplus
