// The page is designed in units of a 1024 x 768 sheet and fits itself to any other size.
#pragma once

#include "rastel/platform/framework.h"

namespace rastel::showcase {

class Layout {
public:
    Layout(int width, int height) : width_(width), height_(height) {}

    int X(int units) const { return static_cast<int>(static_cast<long long>(units) * width_ / sheetWidth); }
    int Y(int units) const { return static_cast<int>(static_cast<long long>(units) * height_ / sheetHeight); }
    CRect Rect(int left, int top, int right, int bottom) const { return CRect(X(left), Y(top), X(right), Y(bottom)); }

    // A length that is the same both ways: text, margins, sprites.
    int Length(int units) const {
        const int scaled = width_ * sheetHeight < height_ * sheetWidth ? X(units) : Y(units);
        return scaled < 1 ? 1 : scaled;
    }

private:
    static constexpr int sheetWidth = 1024, sheetHeight = 768;
    int width_, height_;
};

// The largest part of a source that has the shape of the target, from its middle.
CRect CoverOf(const CSize& source, const CSize& target);

// The largest rectangle of the source's shape in the middle of `bounds`, not larger than the source.
CRect FitInside(const CSize& source, const CRect& bounds);

}   // namespace rastel::showcase
