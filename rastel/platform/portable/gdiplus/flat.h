// The flat functions of GDI+. Null objects and pointers give InvalidParameter; outputs are null or 0 on failure.
//
// An object is used by one thread at a time. A Graphics on an image or a context must end before that does. GdipAlloc
// returns null without memory.
#pragma once

#include "rastel/platform/portable/gdiplus/types.h"

namespace Gdiplus {

class GpImage {};
class GpBitmap : public GpImage {};
class GpBrush {};
class GpSolidFill : public GpBrush {};
class GpLineGradient : public GpBrush {};
class GpPen {};
class GpPath {};
class GpMatrix {};
class GpGraphics {};
class GpFontFamily {};
class GpFont {};
class GpStringFormat {};
class GpImageAttributes {};

using GpStatus = Status;
using DrawImageAbort = BOOL(CALLBACK*)(void*);

RASTEL_API Status GdiplusStartup(ULONG_PTR* token, const GdiplusStartupInput* input, GdiplusStartupOutput* output);
RASTEL_API void GdiplusShutdown(ULONG_PTR token);
RASTEL_API Status GetImageEncodersSize(UINT* numEncoders, UINT* size);
RASTEL_API Status GetImageEncoders(UINT numEncoders, UINT size, ImageCodecInfo* encoders);
RASTEL_API Status GetImageDecodersSize(UINT* numDecoders, UINT* size);
RASTEL_API Status GetImageDecoders(UINT numDecoders, UINT size, ImageCodecInfo* decoders);

namespace DllExports {

RASTEL_API void* GdipAlloc(std::size_t size);
RASTEL_API void GdipFree(void* memory);

// Images. A file is PNG, JPEG or BMP, told by its content, and closed again once it is read.
RASTEL_API GpStatus GdipLoadImageFromFile(const WCHAR* name, GpImage** image);
RASTEL_API GpStatus GdipCreateBitmapFromFile(const WCHAR* name, GpBitmap** bitmap);
RASTEL_API GpStatus GdipSaveImageToFile(GpImage* image, const WCHAR* name, const CLSID* encoder,
                                        const EncoderParameters* parameters);
RASTEL_API GpStatus GdipCloneImage(GpImage* image, GpImage** clone);
RASTEL_API GpStatus GdipDisposeImage(GpImage* image);
RASTEL_API GpStatus GdipGetImageType(GpImage* image, ImageType* type);
RASTEL_API GpStatus GdipGetImageWidth(GpImage* image, UINT* width);
RASTEL_API GpStatus GdipGetImageHeight(GpImage* image, UINT* height);
RASTEL_API GpStatus GdipGetImageDimension(GpImage* image, REAL* width, REAL* height);
RASTEL_API GpStatus GdipGetImagePixelFormat(GpImage* image, PixelFormat* format);
RASTEL_API GpStatus GdipGetImagePaletteSize(GpImage* image, INT* size);
RASTEL_API GpStatus GdipGetImagePalette(GpImage* image, ColorPalette* palette, INT size);
RASTEL_API GpStatus GdipSetImagePalette(GpImage* image, const ColorPalette* palette);
RASTEL_API GpStatus GdipGetImageGraphicsContext(GpImage* image, GpGraphics** graphics);

// With null pixels the bitmap owns them, all zero; its stride is then ours to choose. Others stay the caller's.
// A lock of the whole of a fresh bitmap, for writing only and in its own format, shows memory that is not cleared.
RASTEL_API GpStatus GdipCreateBitmapFromScan0(INT width, INT height, INT stride, PixelFormat format, BYTE* scan0,
                                              GpBitmap** bitmap);
RASTEL_API GpStatus GdipCreateBitmapFromHBITMAP(HBITMAP source, HPALETTE palette, GpBitmap** bitmap);
RASTEL_API GpStatus GdipCreateHBITMAPFromBitmap(GpBitmap* bitmap, HBITMAP* target, ARGB background);
RASTEL_API GpStatus GdipCloneBitmapAreaI(INT x, INT y, INT width, INT height, PixelFormat format, GpBitmap* source,
                                         GpBitmap** clone);
RASTEL_API GpStatus GdipBitmapLockBits(GpBitmap* bitmap, const Rect* rect, UINT flags, PixelFormat format,
                                       BitmapData* data);
RASTEL_API GpStatus GdipBitmapUnlockBits(GpBitmap* bitmap, BitmapData* data);
RASTEL_API GpStatus GdipBitmapGetPixel(GpBitmap* bitmap, INT x, INT y, ARGB* color);
RASTEL_API GpStatus GdipBitmapSetPixel(GpBitmap* bitmap, INT x, INT y, ARGB color);

// Matrices: x' = m11 x + m21 y + dx, y' = m12 x + m22 y + dy. Angles are degrees, clockwise on the screen.
RASTEL_API GpStatus GdipCreateMatrix(GpMatrix** matrix);
RASTEL_API GpStatus GdipCreateMatrix2(REAL m11, REAL m12, REAL m21, REAL m22, REAL dx, REAL dy, GpMatrix** matrix);
RASTEL_API GpStatus GdipCloneMatrix(GpMatrix* matrix, GpMatrix** clone);
RASTEL_API GpStatus GdipDeleteMatrix(GpMatrix* matrix);
RASTEL_API GpStatus GdipSetMatrixElements(GpMatrix* matrix, REAL m11, REAL m12, REAL m21, REAL m22, REAL dx, REAL dy);
RASTEL_API GpStatus GdipGetMatrixElements(const GpMatrix* matrix, REAL* elements);
RASTEL_API GpStatus GdipMultiplyMatrix(GpMatrix* matrix, GpMatrix* other, MatrixOrder order);
RASTEL_API GpStatus GdipTranslateMatrix(GpMatrix* matrix, REAL dx, REAL dy, MatrixOrder order);
RASTEL_API GpStatus GdipScaleMatrix(GpMatrix* matrix, REAL x, REAL y, MatrixOrder order);
RASTEL_API GpStatus GdipRotateMatrix(GpMatrix* matrix, REAL angle, MatrixOrder order);
RASTEL_API GpStatus GdipInvertMatrix(GpMatrix* matrix);
RASTEL_API GpStatus GdipTransformMatrixPoints(GpMatrix* matrix, PointF* points, INT count);

// Brushes and pens.
RASTEL_API GpStatus GdipDeleteBrush(GpBrush* brush);
RASTEL_API GpStatus GdipCreateSolidFill(ARGB color, GpSolidFill** brush);
RASTEL_API GpStatus GdipSetSolidFillColor(GpSolidFill* brush, ARGB color);
RASTEL_API GpStatus GdipGetSolidFillColor(GpSolidFill* brush, ARGB* color);
RASTEL_API GpStatus GdipCreateLineBrush(const PointF* first, const PointF* second, ARGB color1, ARGB color2,
                                        WrapMode mode, GpLineGradient** brush);
RASTEL_API GpStatus GdipCreateLineBrushFromRect(const RectF* rect, ARGB color1, ARGB color2, LinearGradientMode mode,
                                                WrapMode wrap, GpLineGradient** brush);
RASTEL_API GpStatus GdipCreatePen1(ARGB color, REAL width, Unit unit, GpPen** pen);
RASTEL_API GpStatus GdipCreatePen2(GpBrush* brush, REAL width, Unit unit, GpPen** pen);
RASTEL_API GpStatus GdipDeletePen(GpPen* pen);
RASTEL_API GpStatus GdipSetPenWidth(GpPen* pen, REAL width);
RASTEL_API GpStatus GdipGetPenWidth(GpPen* pen, REAL* width);
RASTEL_API GpStatus GdipSetPenColor(GpPen* pen, ARGB color);
RASTEL_API GpStatus GdipSetPenDashStyle(GpPen* pen, DashStyle style);
RASTEL_API GpStatus GdipSetPenStartCap(GpPen* pen, LineCap cap);
RASTEL_API GpStatus GdipSetPenEndCap(GpPen* pen, LineCap cap);
RASTEL_API GpStatus GdipSetPenLineJoin(GpPen* pen, LineJoin join);
RASTEL_API GpStatus GdipSetPenMiterLimit(GpPen* pen, REAL limit);

// Paths.
RASTEL_API GpStatus GdipCreatePath(FillMode mode, GpPath** path);
RASTEL_API GpStatus GdipClonePath(GpPath* path, GpPath** clone);
RASTEL_API GpStatus GdipDeletePath(GpPath* path);
RASTEL_API GpStatus GdipResetPath(GpPath* path);
RASTEL_API GpStatus GdipSetPathFillMode(GpPath* path, FillMode mode);
RASTEL_API GpStatus GdipStartPathFigure(GpPath* path);
RASTEL_API GpStatus GdipClosePathFigure(GpPath* path);
RASTEL_API GpStatus GdipAddPathLine(GpPath* path, REAL x1, REAL y1, REAL x2, REAL y2);
RASTEL_API GpStatus GdipAddPathLine2(GpPath* path, const PointF* points, INT count);
RASTEL_API GpStatus GdipAddPathArc(GpPath* path, REAL x, REAL y, REAL width, REAL height, REAL start, REAL sweep);
RASTEL_API GpStatus GdipAddPathBezier(GpPath* path, REAL x1, REAL y1, REAL x2, REAL y2, REAL x3, REAL y3, REAL x4,
                                      REAL y4);
RASTEL_API GpStatus GdipAddPathBeziers(GpPath* path, const PointF* points, INT count);
RASTEL_API GpStatus GdipAddPathRectangle(GpPath* path, REAL x, REAL y, REAL width, REAL height);
RASTEL_API GpStatus GdipAddPathEllipse(GpPath* path, REAL x, REAL y, REAL width, REAL height);
RASTEL_API GpStatus GdipAddPathPie(GpPath* path, REAL x, REAL y, REAL width, REAL height, REAL start, REAL sweep);
RASTEL_API GpStatus GdipAddPathPolygon(GpPath* path, const PointF* points, INT count);
RASTEL_API GpStatus GdipTransformPath(GpPath* path, GpMatrix* matrix);

// Fonts. A family that the machine lacks is replaced by the nearest one.
RASTEL_API GpStatus GdipCreateFontFamilyFromName(const WCHAR* name, void* collection, GpFontFamily** family);
RASTEL_API GpStatus GdipDeleteFontFamily(GpFontFamily* family);
RASTEL_API GpStatus GdipCreateFont(const GpFontFamily* family, REAL size, INT style, Unit unit, GpFont** font);
RASTEL_API GpStatus GdipDeleteFont(GpFont* font);
RASTEL_API GpStatus GdipCreateStringFormat(INT flags, WORD language, GpStringFormat** format);
RASTEL_API GpStatus GdipDeleteStringFormat(GpStringFormat* format);
RASTEL_API GpStatus GdipSetStringFormatFlags(GpStringFormat* format, INT flags);
RASTEL_API GpStatus GdipSetStringFormatAlign(GpStringFormat* format, StringAlignment align);
RASTEL_API GpStatus GdipSetStringFormatLineAlign(GpStringFormat* format, StringAlignment align);

// Graphics: its state.
RASTEL_API GpStatus GdipCreateFromHDC(HDC context, GpGraphics** graphics);
RASTEL_API GpStatus GdipDeleteGraphics(GpGraphics* graphics);
RASTEL_API GpStatus GdipFlush(GpGraphics* graphics, FlushIntention intention);
RASTEL_API GpStatus GdipSaveGraphics(GpGraphics* graphics, GraphicsState* state);
RASTEL_API GpStatus GdipRestoreGraphics(GpGraphics* graphics, GraphicsState state);
RASTEL_API GpStatus GdipSetSmoothingMode(GpGraphics* graphics, SmoothingMode mode);
RASTEL_API GpStatus GdipGetSmoothingMode(GpGraphics* graphics, SmoothingMode* mode);
RASTEL_API GpStatus GdipSetPixelOffsetMode(GpGraphics* graphics, PixelOffsetMode mode);
RASTEL_API GpStatus GdipSetCompositingMode(GpGraphics* graphics, CompositingMode mode);
RASTEL_API GpStatus GdipSetInterpolationMode(GpGraphics* graphics, InterpolationMode mode);
RASTEL_API GpStatus GdipSetTextRenderingHint(GpGraphics* graphics, TextRenderingHint hint);
RASTEL_API GpStatus GdipSetWorldTransform(GpGraphics* graphics, GpMatrix* matrix);
RASTEL_API GpStatus GdipGetWorldTransform(GpGraphics* graphics, GpMatrix* matrix);
RASTEL_API GpStatus GdipResetWorldTransform(GpGraphics* graphics);
RASTEL_API GpStatus GdipMultiplyWorldTransform(GpGraphics* graphics, GpMatrix* matrix, MatrixOrder order);
RASTEL_API GpStatus GdipTranslateWorldTransform(GpGraphics* graphics, REAL dx, REAL dy, MatrixOrder order);
RASTEL_API GpStatus GdipScaleWorldTransform(GpGraphics* graphics, REAL x, REAL y, MatrixOrder order);
RASTEL_API GpStatus GdipRotateWorldTransform(GpGraphics* graphics, REAL angle, MatrixOrder order);
RASTEL_API GpStatus GdipResetClip(GpGraphics* graphics);
RASTEL_API GpStatus GdipSetClipRect(GpGraphics* graphics, REAL x, REAL y, REAL width, REAL height, CombineMode mode);
RASTEL_API GpStatus GdipSetClipRectI(GpGraphics* graphics, INT x, INT y, INT width, INT height, CombineMode mode);
RASTEL_API GpStatus GdipSetClipPath(GpGraphics* graphics, GpPath* path, CombineMode mode);

// Graphics: what it draws.
RASTEL_API GpStatus GdipGraphicsClear(GpGraphics* graphics, ARGB color);
RASTEL_API GpStatus GdipDrawLine(GpGraphics* graphics, GpPen* pen, REAL x1, REAL y1, REAL x2, REAL y2);
RASTEL_API GpStatus GdipDrawLineI(GpGraphics* graphics, GpPen* pen, INT x1, INT y1, INT x2, INT y2);
RASTEL_API GpStatus GdipDrawLines(GpGraphics* graphics, GpPen* pen, const PointF* points, INT count);
RASTEL_API GpStatus GdipDrawRectangle(GpGraphics* graphics, GpPen* pen, REAL x, REAL y, REAL width, REAL height);
RASTEL_API GpStatus GdipDrawEllipse(GpGraphics* graphics, GpPen* pen, REAL x, REAL y, REAL width, REAL height);
RASTEL_API GpStatus GdipDrawArc(GpGraphics* graphics, GpPen* pen, REAL x, REAL y, REAL width, REAL height, REAL start,
                                REAL sweep);
RASTEL_API GpStatus GdipDrawPie(GpGraphics* graphics, GpPen* pen, REAL x, REAL y, REAL width, REAL height, REAL start,
                                REAL sweep);
RASTEL_API GpStatus GdipDrawBezier(GpGraphics* graphics, GpPen* pen, REAL x1, REAL y1, REAL x2, REAL y2, REAL x3,
                                   REAL y3, REAL x4, REAL y4);
RASTEL_API GpStatus GdipDrawPolygon(GpGraphics* graphics, GpPen* pen, const PointF* points, INT count);
RASTEL_API GpStatus GdipDrawPath(GpGraphics* graphics, GpPen* pen, GpPath* path);
RASTEL_API GpStatus GdipFillRectangle(GpGraphics* graphics, GpBrush* brush, REAL x, REAL y, REAL width, REAL height);
RASTEL_API GpStatus GdipFillRectangleI(GpGraphics* graphics, GpBrush* brush, INT x, INT y, INT width, INT height);
RASTEL_API GpStatus GdipFillEllipse(GpGraphics* graphics, GpBrush* brush, REAL x, REAL y, REAL width, REAL height);
RASTEL_API GpStatus GdipFillPie(GpGraphics* graphics, GpBrush* brush, REAL x, REAL y, REAL width, REAL height,
                                REAL start, REAL sweep);
RASTEL_API GpStatus GdipFillPolygon(GpGraphics* graphics, GpBrush* brush, const PointF* points, INT count,
                                    FillMode mode);
RASTEL_API GpStatus GdipFillPath(GpGraphics* graphics, GpBrush* brush, GpPath* path);
RASTEL_API GpStatus GdipDrawImage(GpGraphics* graphics, GpImage* image, REAL x, REAL y);
RASTEL_API GpStatus GdipDrawImageRect(GpGraphics* graphics, GpImage* image, REAL x, REAL y, REAL width, REAL height);
// Attributes and the callback are not looked at; the source is given in pixels.
RASTEL_API GpStatus GdipDrawImageRectRect(GpGraphics* graphics, GpImage* image, REAL x, REAL y, REAL width, REAL height,
                                          REAL sourceX, REAL sourceY, REAL sourceWidth, REAL sourceHeight, Unit unit,
                                          const GpImageAttributes* attributes, DrawImageAbort callback, void* data);
RASTEL_API GpStatus GdipDrawString(GpGraphics* graphics, const WCHAR* text, INT length, const GpFont* font,
                                   const RectF* layout, const GpStringFormat* format, const GpBrush* brush);
RASTEL_API GpStatus GdipMeasureString(GpGraphics* graphics, const WCHAR* text, INT length, const GpFont* font,
                                      const RectF* layout, const GpStringFormat* format, RectF* bounds,
                                      INT* charactersFitted, INT* linesFilled);

}   // namespace DllExports

}   // namespace Gdiplus
