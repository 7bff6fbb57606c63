// Which source pixel a stretched target pixel takes, by exact integers.
//
// Along one axis target pixel i of T takes source pixel floor(i * S / T) of S: first to first, no drift, and what a
// clip shows is cut from the same whole. A mirrored axis is the mirror image of the plain one.
#pragma once

#include <cstdint>
#include <vector>

#include "rastel/platform/portable/types.h"

namespace rastel::platform {

// The least position of a signed size. A negative one runs backwards, and the place where it starts is part of it.
inline std::int64_t LowOf(std::int64_t start, std::int64_t size) {
    return size < 0 ? start + size + 1 : start;
}

class StretchAxis {
public:
    // Sizes may be negative: that end is the first then, and the range reaches back from the position. `limit`: source
    // pixels that exist, from 0 on.
    StretchAxis(std::int64_t target, std::int64_t targetSize, std::int64_t source, std::int64_t sourceSize, int limit);

    bool IsEmpty() const { return first_ >= last_; }
    bool IsPlain() const { return targetSize_ == sourceSize_ && !mirrored_; }
    bool Shrinks() const { return sourceSize_ > targetSize_; }

    // Target positions whose source exists: [First, Last).
    std::int64_t First() const { return first_; }
    std::int64_t Last() const { return last_; }

    // For positions in [First, Last): a source pixel that exists.
    int SourceOf(std::int64_t target) const;

    // The source pixels that fall on a target pixel, at least one: [*first, *last).
    void BoxOf(std::int64_t target, int* first, int* last) const;

    // SourceOf for `count` positions from `target` on.
    void Fill(std::int64_t target, int count, int* sources) const;

    // The source range as given, put in order: [SourceFirst, SourceLast), cut to what exists.
    int SourceFirst() const;
    int SourceLast() const;

private:
    std::uint64_t StepOf(std::int64_t target) const;   // i, counted from the end when mirrored

    std::int64_t target_;
    std::int64_t targetSize_;
    std::int64_t source_;
    std::int64_t sourceSize_;
    int limit_;
    bool mirrored_;
    std::int64_t first_ = 0;
    std::int64_t last_ = 0;
};

// Picks pixels of 8, 16, 24 or 32 bits: target pixel i is source pixel columns[i]. Columns rise or fall steadily.
void PickPixels(const unsigned char* source, int bitsPerPixel, const int* columns, int count, unsigned char* target);

}   // namespace rastel::platform
