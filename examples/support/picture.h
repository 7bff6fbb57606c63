// A picture in plain memory, as it comes out of a file and goes into one.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "rastel/platform/types.h"

namespace rastel::example {

struct Picture {
    int width = 0;
    int height = 0;
    bool hasAlpha = false;       // some pixel is not opaque
    std::vector<DWORD> pixels;   // 0xAARRGGBB, straight colours, top row first, no padding

    DWORD* Row(int y) { return pixels.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(width); }
    const DWORD* Row(int y) const {
        return pixels.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(width);
    }
};

// Black and opaque. Nothing for an empty size, or for one that no picture here has a use for: a side past 16384 or
// more than 64 million pixels.
std::optional<Picture> MakePicture(long long width, long long height);

// Red, green, blue and, where the picture has alpha, alpha, a byte each: the order of files.
std::vector<unsigned char> ChannelsOf(const Picture& picture);

// A landscape out of sines, for a host that has no pictures at hand. Each variant looks different.
std::optional<Picture> GeneratePicture(int width, int height, int variant);

}   // namespace rastel::example
