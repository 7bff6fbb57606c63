// The pixels of a thin line, from any of its steps on.
#pragma once

#include <cstdint>

#include "rastel/platform/portable/gdi/stroke.h"

namespace rastel::platform {

// Step i of a line is its i-th pixel along the longer axis; across it the pixel nearest to the true line is taken.
// What a clip shows of a line are pixels of the whole line, however far away it begins.
class LineWalk {
public:
    LineWalk(const StrokePoint& from, const StrokePoint& to);

    std::int64_t Steps() const { return length_; }   // the last point is not among them

    // Steps that may lie in the rectangle: [*first, *last).
    void StepsInside(const RECT& area, std::int64_t* first, std::int64_t* last) const;

    // Stands on step i.
    void Seek(std::int64_t step);
    void Next();
    std::int64_t X() const { return steep_ ? minor_ : major_; }
    std::int64_t Y() const { return steep_ ? major_ : minor_; }

private:
    StrokePoint from_;
    bool steep_;   // longer in y
    std::int64_t majorSign_;
    std::int64_t minorSign_;
    std::int64_t length_;   // along the longer axis
    std::int64_t rise_;     // along the shorter
    std::int64_t major_ = 0;
    std::int64_t minor_ = 0;
    std::uint64_t rest_ = 0;   // of twice the length, until the next step across
};

}   // namespace rastel::platform
