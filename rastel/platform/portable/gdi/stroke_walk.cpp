#include "rastel/platform/portable/gdi/stroke_walk.h"

#include <algorithm>
#include <cstdlib>

namespace rastel::platform {

namespace {

struct Division {
    std::uint64_t quotient;
    std::uint64_t remainder;
};

// (a * b + c) / d where the product may need more than 64 bits; c < d < 2^62 and the quotient fits.
Division MultiplyDivide(std::uint64_t a, std::uint64_t b, std::uint64_t c, std::uint64_t d) {
    Division result{0, 0};
    const std::uint64_t whole = b / d;
    const std::uint64_t part = b % d;
    for (int bit = 63; bit >= 0; --bit) {
        result.quotient *= 2;
        result.remainder *= 2;
        if (((a >> bit) & 1) != 0) {
            result.quotient += whole;
            result.remainder += part;
        }
        while (result.remainder >= d) {
            result.remainder -= d;
            ++result.quotient;
        }
    }
    result.remainder += c;
    if (result.remainder >= d) {
        result.remainder -= d;
        ++result.quotient;
    }
    return result;
}

}   // namespace

LineWalk::LineWalk(const StrokePoint& from, const StrokePoint& to) : from_(from) {
    const std::int64_t dx = to.x - from.x;
    const std::int64_t dy = to.y - from.y;
    steep_ = std::abs(dy) > std::abs(dx);
    const std::int64_t along = steep_ ? dy : dx;
    const std::int64_t across = steep_ ? dx : dy;
    majorSign_ = along < 0 ? -1 : 1;
    minorSign_ = across < 0 ? -1 : 1;
    length_ = std::abs(along);
    rise_ = std::abs(across);
    Seek(0);
}

void LineWalk::StepsInside(const RECT& area, std::int64_t* first, std::int64_t* last) const {
    const std::int64_t low = steep_ ? area.top : area.left;
    const std::int64_t high = steep_ ? area.bottom : area.right;
    const std::int64_t start = steep_ ? from_.y : from_.x;
    const std::int64_t begin = majorSign_ > 0 ? low - start : start - high + 1;
    const std::int64_t end = majorSign_ > 0 ? high - start : start - low + 1;
    *first = std::clamp<std::int64_t>(begin, 0, length_);
    *last = std::clamp<std::int64_t>(end, *first, length_);
}

void LineWalk::Seek(std::int64_t step) {
    std::uint64_t across = 0;
    rest_ = 0;
    if (length_ != 0) {
        // (2 * step * rise + bias) / (2 * length), rounded down; a half always goes to the smaller coordinate, so
        // that both ways along a line meet the same pixels.
        const auto length = static_cast<std::uint64_t>(length_);
        const std::uint64_t bias = minorSign_ < 0 ? length : length - 1;
        const Division division =
            MultiplyDivide(static_cast<std::uint64_t>(step), 2 * static_cast<std::uint64_t>(rise_), bias, 2 * length);
        across = division.quotient;
        rest_ = division.remainder;
    }
    major_ = (steep_ ? from_.y : from_.x) + majorSign_ * step;
    minor_ = (steep_ ? from_.x : from_.y) + minorSign_ * static_cast<std::int64_t>(across);
}

void LineWalk::Next() {
    major_ += majorSign_;
    rest_ += 2 * static_cast<std::uint64_t>(rise_);
    const std::uint64_t whole = 2 * static_cast<std::uint64_t>(length_);
    if (rest_ >= whole) {
        rest_ -= whole;
        minor_ += minorSign_;
    }
}

}   // namespace rastel::platform
