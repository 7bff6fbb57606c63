// Smooth lines, pixel by pixel.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <map>
#include <tuple>
#include <utility>

#include "rastel/text/aa_line.h"

namespace rastel::test {
namespace {

constexpr COLORREF kWhite = RGB(255, 255, 255);
constexpr COLORREF kInk = RGB(100, 40, 8);

class SmoothLine : public ::testing::Test {
protected:
    SmoothLine() {
        BITMAPINFO info = {};
        info.bmiHeader.biSize = sizeof(info.bmiHeader);
        info.bmiHeader.biWidth = kSide;
        info.bmiHeader.biHeight = -kSide;
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        void* bits = nullptr;
        bitmap_ = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
        dc = CreateCompatibleDC(nullptr);
        before_ = SelectObject(dc, bitmap_);
    }
    ~SmoothLine() override {
        SelectObject(dc, before_);
        DeleteDC(dc);
        DeleteObject(bitmap_);
    }

    using Changes = std::map<std::pair<int, int>, COLORREF>;
    // What a line changes on one colour, inside the clip.
    Changes Draw(double x1, double y1, double x2, double y2, COLORREF color = kInk, COLORREF ground = kWhite) {
        for (int i = 0; i < kSide * kSide; ++i) {
            SetPixelV(dc, i % kSide, i / kSide, ground);
        }
        AALine(dc, x1, y1, x2, y2, color);
        Changes changes;
        for (int i = 0; i < kSide * kSide; ++i) {
            const COLORREF pixel = GetPixel(dc, i % kSide, i / kSide);
            if (pixel != ground && pixel != CLR_INVALID) {
                changes[{i % kSide, i / kSide}] = pixel;
            }
        }
        return changes;
    }
    static COLORREF Mix(double share) {
        const auto channel = [&](int ink) { return static_cast<int>(ink * share + 255 * (1 - share)); };
        return RGB(channel(100), channel(40), channel(8));
    }

    static constexpr int kSide = 24;
    HDC dc = nullptr;

private:
    HBITMAP bitmap_ = nullptr;
    HGDIOBJ before_ = nullptr;
};

TEST_F(SmoothLine, WholeNumbersGiveCrispLinesWithoutTheirEnd) {
    EXPECT_EQ(Draw(0, 5, 4, 5), (Changes{{{0, 5}, kInk}, {{1, 5}, kInk}, {{2, 5}, kInk}, {{3, 5}, kInk}}));
    EXPECT_EQ(Draw(4, 0, 0, 0), (Changes{{{4, 0}, kInk}, {{3, 0}, kInk}, {{2, 0}, kInk}, {{1, 0}, kInk}}));
    EXPECT_EQ(Draw(5, 3, 5, 1), (Changes{{{5, 3}, kInk}, {{5, 2}, kInk}}));
    EXPECT_EQ(Draw(0, 0, 3, 3), (Changes{{{0, 0}, kInk}, {{1, 1}, kInk}, {{2, 2}, kInk}}));
    EXPECT_EQ(Draw(6, 3, 4, 5), (Changes{{{6, 3}, kInk}, {{5, 4}, kInk}}));
}

TEST_F(SmoothLine, FractionsAreSharedByTheTwoPixelsBeside) {
    for (const auto& [y, nearest, beside, share] :
         {std::tuple{2.25, 2, 3, 0.75}, std::tuple{2.75, 3, 2, 0.75}, std::tuple{2.5, 3, 2, 0.5}}) {
        const Changes row = Draw(1, y, 3, y);
        EXPECT_EQ(row, (Changes{{{1, nearest}, Mix(share)},
                                {{1, beside}, Mix(1 - share)},
                                {{2, nearest}, Mix(share)},
                                {{2, beside}, Mix(1 - share)}}))
            << y;
        Changes column;
        for (const auto& [place, color] : row) {
            column[{place.second, place.first}] = color;
        }
        EXPECT_EQ(Draw(y, 1, y, 3), column) << y;
    }
}

TEST_F(SmoothLine, RoundedExtentsSetTheSlope) {
    const Changes line = Draw(0, 4, 10, 5.4);
    for (int x = 1; x < 5; ++x) {
        // The sum of tenths is the line's own, rounding included.
        double y = 4;
        for (int i = 0; i < x; ++i) {
            y += 0.1;
        }
        EXPECT_EQ(line.at({x, 4}), Mix(1 - (y - 4))) << x;
        EXPECT_EQ(line.at({x, 5}), Mix(1 - std::fabs(y - 5))) << x;
    }
    EXPECT_EQ(line.count({10, 5}), 0u);
    EXPECT_TRUE(Draw(1.2, 1.2, 1.4, 1.4).empty());
    EXPECT_TRUE(Draw(7, 7, 7, 7).empty());
}

TEST_F(SmoothLine, OneColorStaysOrFallsByOneStep) {
    for (const auto& [place, color] : Draw(1, 1.3, 20, 14.7, kInk, kInk)) {
        for (const int shift : {0, 8, 16}) {
            const int step = static_cast<int>((kInk >> shift) & 0xFF) - static_cast<int>((color >> shift) & 0xFF);
            EXPECT_TRUE(step == 0 || step == 1) << place.first << ' ' << place.second;
        }
    }
}

// What lies outside is not walked pixel by pixel, and what shows is the same as ever.
TEST_F(SmoothLine, LongLinesShowTheirPart) {
    EXPECT_EQ(Draw(-500000, 5, 500000, 5).size(), static_cast<std::size_t>(kSide));
    EXPECT_EQ(Draw(5, 500000, 5, -500000).size(), static_cast<std::size_t>(kSide));
    EXPECT_EQ(Draw(0, 0, 400000, 400000).size(), static_cast<std::size_t>(kSide));
    EXPECT_TRUE(Draw(-10, 500, 400000, 500).empty());
    Changes expected = Draw(2, 3, 20, 9);
    std::erase_if(expected, [](const auto& change) { return change.first.first < 6 || change.first.first >= 12; });
    ASSERT_FALSE(expected.empty());
    EXPECT_EQ(Draw(2, 3, 20, 9, kWhite), Changes());
    SaveDC(dc);
    IntersectClipRect(dc, 6, 0, 12, kSide);
    EXPECT_EQ(Draw(2, 3, 20, 9), expected);
    RestoreDC(dc, -1);
}

TEST_F(SmoothLine, WhatIsNoLineDrawsNothing) {
    const double infinite = std::numeric_limits<double>::infinity();
    for (const double bad : {std::nan(""), infinite, -infinite, 1e300, -1e300}) {
        EXPECT_TRUE(Draw(bad, 1, 5, 5).empty());
        EXPECT_TRUE(Draw(1, bad, 5, 5).empty());
        EXPECT_TRUE(Draw(1, 1, bad, 5).empty());
        EXPECT_TRUE(Draw(1, 1, 5, bad).empty());
    }
    AALine(nullptr, 0, 0, 10, 10, kInk);
}

}   // namespace
}   // namespace rastel::test
