// How much of each pixel a drawing covers. Cairo counts only that; colours never pass through it, so that none is
// rounded to a premultiplied one.
#pragma once

#include <cairo.h>

#include <functional>
#include <vector>

#include "rastel/platform/portable/gdiplus/native.h"
#include "rastel/platform/portable/gdiplus/outline.h"

namespace rastel::platform::gdip {

struct CoverageMask {
    RECT area{};      // on the target; empty: nothing is covered
    int stride = 0;   // bytes a row
    std::vector<unsigned char> bytes;

    bool IsEmpty() const { return bytes.empty(); }
    unsigned char* Row(int y) {
        return bytes.data() + static_cast<std::size_t>(y - area.top) * static_cast<std::size_t>(stride);
    }
};

// How shapes meet the pixels of a target.
struct Raster {
    cairo_matrix_t matrix{1, 0, 0, 1, 0, 0};   // from the host's coordinates to the target's
    bool isSmooth = false;
    RECT limit{};   // nothing outside is looked at
};

CoverageMask FillMask(const Raster& raster, const Outline& outline, Gdiplus::FillMode mode);
CoverageMask StrokeMask(const Raster& raster, const Outline& outline, const PenObject& pen);

// What `draw` covers inside the limit: it paints with an opaque source, its coordinates are the target's.
CoverageMask DrawnMask(const Raster& raster, const std::function<void(cairo_t*)>& draw);

}   // namespace rastel::platform::gdip
