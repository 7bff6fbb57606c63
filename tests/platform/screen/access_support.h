// Pixels in and out of a display through its one access, as raw values.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <random>
#include <vector>

#include "rastel/platform/portable/screen/display_device.h"

namespace rastel::test {

using rastel::platform::Access;
using rastel::platform::DisplayDevice;
using rastel::platform::PixelBuffer;
using rastel::platform::PixelFormat;

inline DWORD RawPixel(const unsigned char* at, int bytes) {
    DWORD raw = 0;
    for (int i = 0; i < bytes; ++i) {
        raw |= DWORD{at[i]} << (8 * i);
    }
    return raw;
}

inline void SetRawPixel(unsigned char* at, int bytes, DWORD raw) {
    for (int i = 0; i < bytes; ++i) {
        at[i] = static_cast<unsigned char>(raw >> (8 * i));
    }
}

inline DWORD UsedBits(const PixelFormat& format) {
    return format.IsIndexed() ? 0xFF : format.redMask | format.greenMask | format.blueMask;
}

struct Picture {
    int width = 0;
    int height = 0;
    std::vector<DWORD> pixels;

    DWORD At(int x, int y) const {
        return pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x)];
    }
};

inline Picture NoisePicture(int width, int height, DWORD mask, unsigned seed) {
    std::mt19937 random(seed);
    Picture picture = {width, height, {}};
    for (int i = 0; i < width * height; ++i) {
        picture.pixels.push_back(static_cast<DWORD>(random()) & mask);
    }
    return picture;
}

inline bool Draw(DisplayDevice& display, HWND window, int left, int top, const Picture& picture,
                 Access access = Access::Write) {
    PixelBuffer pixels;
    if (!display.BeginAccess(window, {left, top, left + picture.width, top + picture.height}, access, &pixels)) {
        return false;
    }
    const int bytes = pixels.format.bitsPerPixel / 8;
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x) {
            SetRawPixel(pixels.Row(y) + x * bytes, bytes, picture.At(x, y));
        }
    }
    display.EndAccess();
    return true;
}

inline Picture Look(DisplayDevice& display, HWND window, const RECT& area) {
    Picture picture;
    PixelBuffer pixels;
    if (!display.BeginAccess(window, area, Access::Read, &pixels)) {
        return picture;
    }
    picture.width = pixels.width;
    picture.height = pixels.height;
    const int bytes = pixels.format.bitsPerPixel / 8;
    for (int y = 0; y < pixels.height; ++y) {
        for (int x = 0; x < pixels.width; ++x) {
            picture.pixels.push_back(RawPixel(pixels.Row(y) + x * bytes, bytes) & UsedBits(pixels.format));
        }
    }
    display.EndAccess();
    return picture;
}

// Tells the first pixel that differs.
inline ::testing::AssertionResult SamePicture(const Picture& expected, const Picture& got) {
    if (expected.width != got.width || expected.height != got.height) {
        return ::testing::AssertionFailure()
               << "sizes " << expected.width << "x" << expected.height << " and " << got.width << "x" << got.height;
    }
    for (int y = 0; y < expected.height; ++y) {
        for (int x = 0; x < expected.width; ++x) {
            if (expected.At(x, y) != got.At(x, y)) {
                return ::testing::AssertionFailure() << "pixel " << x << ", " << y << ": expected " << std::hex
                                                     << expected.At(x, y) << ", got " << got.At(x, y);
            }
        }
    }
    return ::testing::AssertionSuccess();
}

}   // namespace rastel::test
