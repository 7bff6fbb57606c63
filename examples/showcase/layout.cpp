#include "examples/showcase/layout.h"

#include <algorithm>

namespace rastel::showcase {

namespace {

// The larger of the two sizes that have the shape of `shape` and touch the sides of `limit`, or the smaller.
CSize Touching(const CSize& shape, const CSize& limit) {
    const long long byWidth = static_cast<long long>(limit.cx) * shape.cy;
    const long long byHeight = static_cast<long long>(limit.cy) * shape.cx;
    const long long width = byWidth <= byHeight ? limit.cx : byHeight / shape.cy;
    const long long height = byWidth <= byHeight ? byWidth / shape.cx : limit.cy;
    return CSize(static_cast<int>(std::max(width, 1LL)), static_cast<int>(std::max(height, 1LL)));
}

CRect Centred(const CSize& size, const CRect& bounds) {
    const int left = bounds.left + (bounds.Width() - size.cx) / 2;
    const int top = bounds.top + (bounds.Height() - size.cy) / 2;
    return CRect(left, top, left + size.cx, top + size.cy);
}

}   // namespace

CRect CoverOf(const CSize& source, const CSize& target) {
    if (source.cx < 1 || source.cy < 1 || target.cx < 1 || target.cy < 1) {
        return CRect(0, 0, source.cx, source.cy);
    }
    return Centred(Touching(target, source), CRect(0, 0, source.cx, source.cy));
}

CRect FitInside(const CSize& source, const CRect& bounds) {
    if (source.cx < 1 || source.cy < 1 || bounds.Width() < 1 || bounds.Height() < 1) {
        return bounds;
    }
    const CSize room(std::min(bounds.Width(), static_cast<int>(source.cx)),
                     std::min(bounds.Height(), static_cast<int>(source.cy)));
    return Centred(Touching(source, room), bounds);
}

}   // namespace rastel::showcase
