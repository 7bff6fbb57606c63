// A set of pixels as disjoint rectangles.
#pragma once

#include <vector>

#include "rastel/platform/portable/types.h"

namespace rastel::platform {

class Region {
public:
    Region() = default;
    explicit Region(const RECT& rect);

    bool IsEmpty() const { return rects_.empty(); }
    const std::vector<RECT>& Rects() const { return rects_; }
    RECT Bounds() const;      // all zero when empty
    int Complexity() const;   // NULLREGION, SIMPLEREGION or COMPLEXREGION

    void Intersect(const RECT& rect);
    void Intersect(const Region& other);
    void Subtract(const RECT& rect);
    void Subtract(const Region& other);
    void Unite(const RECT& rect);
    void Unite(const Region& other);
    void Offset(int dx, int dy);
    bool Contains(const RECT& rect) const;   // all of it
    bool operator==(const Region& other) const;

private:
    std::vector<RECT> rects_;   // disjoint, in rows from the top and from the left within a row
};

}   // namespace rastel::platform
