// Stretching by averages: each target pixel is the mean of the source pixels that fall on it.
#pragma once

#include <cstdint>
#include <vector>

#include "rastel/platform/portable/gdi/pixel_convert.h"
#include "rastel/platform/portable/gdi/stretch.h"

namespace rastel::platform {

class BoxAverager {
public:
    // Target columns from `left` on.
    BoxAverager(const PixelBuffer& source, const MonoColors& mono, const StretchAxis& columns, const StretchAxis& rows,
                int left, int width);

    // Means of the boxes of one target row as usual 32-bit pixels. The fourth byte is averaged where the source has the
    // same format, and 0 elsewhere.
    void Row(int y, DWORD* values);

private:
    struct Box {
        int first;
        int last;
    };
    void Add(const unsigned char* sourceRow);

    PixelBuffer source_;
    const StretchAxis& rows_;
    PixelConverter converter_;
    std::vector<Box> boxes_;
    int firstColumn_ = 0;
    std::vector<DWORD> converted_;      // the source columns that matter
    std::vector<std::uint64_t> sums_;   // four a target pixel
};

}   // namespace rastel::platform
