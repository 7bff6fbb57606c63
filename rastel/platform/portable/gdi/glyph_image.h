// The coverage of one glyph, ready to be blended.
#pragma once

#include <cstddef>
#include <vector>

namespace rastel::platform {

struct GlyphImage {
    int left = 0;   // from the pen to the left column
    int top = 0;    // from the baseline up to the upper edge of the top row
    int width = 0;
    int height = 0;
    std::vector<unsigned char> coverage;   // one byte a pixel, `width` bytes a row, 0 to 255

    bool IsEmpty() const { return coverage.empty(); }
    std::size_t Bytes() const { return sizeof(*this) + coverage.size(); }
};

}   // namespace rastel::platform
