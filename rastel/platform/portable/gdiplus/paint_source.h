// What is painted where something is covered: straight colours for the pixels of a target.
#pragma once

#include <cairo.h>

#include <memory>

#include "rastel/platform/portable/gdiplus/native.h"
#include "rastel/platform/portable/gdiplus/picture.h"

namespace rastel::platform::gdip {

class PaintSource {
public:
    virtual ~PaintSource() = default;
    virtual void Row(int x, int y, int count, DWORD* argb) = 0;
};

// `matrix` goes from the brush's coordinates to the target's, in which pixel (0, 0) has its centre at (0.5, 0.5).
// Null: the matrix has no inverse, so nothing is seen.
std::unique_ptr<PaintSource> SourceOf(const BrushObject& brush, const cairo_matrix_t& matrix);

// A part of a picture in a rectangle: nearest pixels, mixed ones, or the mean of all that a pixel takes in. Outside of
// the picture it is transparent. The picture may be the target: it is copied.
std::unique_ptr<PaintSource> SourceOf(Picture& picture, const Gdiplus::RectF& source, const Gdiplus::RectF& target,
                                      const cairo_matrix_t& matrix, Gdiplus::InterpolationMode mode);

}   // namespace rastel::platform::gdip
