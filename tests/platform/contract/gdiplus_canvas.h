// A bitmap of 40 by 30 that GDI+ draws on, and what stands in it.
#pragma once

#include <gtest/gtest.h>

#include "rastel/platform/gdiplus.h"

namespace rastel::test {

using Gdiplus::Bitmap;
using Gdiplus::Color;
using Gdiplus::Graphics;
using Gdiplus::SolidBrush;

constexpr DWORD red = 0xFFFF0000, green = 0xFF00FF00, faint = 0x03C86432;

class GdiplusCanvas : public ::testing::Test {
protected:
    DWORD At(int x, int y) {
        Color color;
        EXPECT_EQ(bitmap.GetPixel(x, y, &color), Gdiplus::Ok);
        return color.GetValue();
    }
    int Count(DWORD value) {
        int count = 0;
        for (int i = 0; i < 40 * 30; ++i) {
            count += At(i % 40, i / 40) == value;
        }
        return count;
    }

    Bitmap bitmap{40, 30, PixelFormat32bppARGB};
    Graphics graphics{&bitmap};
    SolidBrush redBrush{Color(red)};
};

}   // namespace rastel::test
