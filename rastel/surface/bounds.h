// Questions about rectangles that operations ask before they touch pixels.
#pragma once

#include "rastel/surface/surface_base.h"

namespace rastel {

inline bool IsEmpty(const CRect& rect) {
    return rect.Width() < 1 || rect.Height() < 1;
}

// Not for empty rectangles, which may lie anywhere.
inline bool Covers(const CSurfaceBase& store, const CRect& rect) {
    return rect.left >= 0 && rect.top >= 0 && rect.right <= store.GetWidth() && rect.bottom <= store.GetHeight();
}

}   // namespace rastel
