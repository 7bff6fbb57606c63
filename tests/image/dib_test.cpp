// The image classes: creation, orientation, colour tables.
#include <gtest/gtest.h>

#include <climits>

#include "rastel/image/dib.h"
#include "rastel/image/dib_section.h"
#include "rastel/platform/gdi.h"

using winext::CDib;
using winext::CDibSection;

namespace {

template <class Image>
class DibTest : public ::testing::Test {
protected:
    Image image;
};
using Images = ::testing::Types<CDib, CDibSection>;
TYPED_TEST_SUITE(DibTest, Images);

TYPED_TEST(DibTest, RowsArePaddedToFourBytes) {
    const struct {
        int width, bits, pitch;
    } cases[] = {{3, 8, 4}, {3, 24, 12}, {3, 1, 4}, {33, 1, 8}, {3, 16, 8}, {9, 4, 8}, {100, 32, 400}};
    for (const auto& c : cases) {
        ASSERT_EQ(this->image.Create(c.width, 2, c.bits), 1) << c.bits;
        EXPECT_EQ(this->image.GetPitch(), c.pitch) << c.width << ' ' << c.bits;
        EXPECT_EQ(this->image.GetBitsPrPixel(), c.bits);
        EXPECT_NE(this->image.GetBits(), nullptr);
    }
}

TYPED_TEST(DibTest, TheSameSizeKeepsTheImageWhicheverWayItRuns) {
    ASSERT_EQ(this->image.Create(10, -10, 32), 1);
    EXPECT_EQ(this->image.IsTopDown(), 1);
    EXPECT_EQ(this->image.GetHeight(), 10);
    this->image.GetBits()[0] = 7;
    EXPECT_EQ(this->image.Create(10, 10, 32), 1);
    EXPECT_EQ(this->image.IsTopDown(), 1);
    EXPECT_EQ(this->image.GetBits()[0], 7);

    ASSERT_EQ(this->image.Create(11, 10, 32), 1);
    EXPECT_EQ(this->image.IsTopDown(), 0);
    EXPECT_EQ(this->image.Create(11, -10, 32), 1);
    EXPECT_EQ(this->image.IsTopDown(), 1);
}

TYPED_TEST(DibTest, BadDepthsKeepTheImageAndImpossibleSizesEndIt) {
    ASSERT_EQ(this->image.Create(4, 4, 8), 1);
    for (const int bits : {0, 2, 12, 15, 64, -8, INT_MAX}) {
        EXPECT_EQ(this->image.Create(5, 5, bits), 0);
    }
    EXPECT_EQ(this->image.GetWidth(), 4);
    for (const int height : {INT_MAX, -INT_MAX, INT_MIN, 0x10000000}) {
        EXPECT_EQ(this->image.Create(INT_MAX, height, 32), 0);
        EXPECT_EQ(this->image.Create(16, height, 32), 0);
    }
    EXPECT_EQ(this->image.Create(-5, 5, 32), 0);
    EXPECT_EQ(this->image.GetBits(), nullptr);
    EXPECT_EQ(this->image.GetWidth(), 0);
}

TYPED_TEST(DibTest, ColoursSwapOnTheWayIntoTheTable) {
    EXPECT_EQ(this->image.GetColorTable(), nullptr);
    EXPECT_NE(this->image.HasColorTable(), 0);   // true of no image too
    ASSERT_EQ(this->image.Create(4, 4, 8), 1);
    this->image.GetColorTable()[200].rgbReserved = 9;
    EXPECT_EQ(this->image.SetColor(200, 0xEE332211), 1);
    EXPECT_EQ(this->image.GetColor(200), 0x00332211u);
    const RGBQUAD entry = this->image.GetColorTable()[200];
    EXPECT_EQ(entry.rgbBlue, 0x33);
    EXPECT_EQ(entry.rgbGreen, 0x22);
    EXPECT_EQ(entry.rgbRed, 0x11);
    EXPECT_EQ(entry.rgbReserved, 9);
    EXPECT_EQ(this->image.SetColor(256, 1), 0);
    EXPECT_EQ(this->image.SetColor(-1, 1), 0);
    EXPECT_EQ(this->image.GetColor(INT_MIN), 0u);
    ASSERT_EQ(this->image.Create(4, 4, 4), 1);
    EXPECT_EQ(this->image.SetColor(16, 1), 0);
    EXPECT_EQ(this->image.SetColor(15, 1), 1);
    ASSERT_EQ(this->image.Create(4, 4, 32), 1);
    EXPECT_EQ(this->image.SetColor(0, 1), 0);
    EXPECT_EQ(this->image.GetColorTable(), nullptr);
}

TEST(DibSection, AddressAndBitmapShowTheSamePixels) {
    for (const int height : {-4, 4}) {
        CDibSection image;
        ASSERT_EQ(image.Create(4, height, 32), 1);
        const HDC dc = ::CreateCompatibleDC(nullptr);
        const HGDIOBJ old = ::SelectObject(dc, image.m_hBitmap);
        ASSERT_NE(old, nullptr);
        ::SetPixelV(dc, 1, 0, 0x00030201);
        const unsigned char* const top = image.GetBits() + (height < 0 ? 0 : 3 * image.GetPitch());
        EXPECT_EQ(top[4], 3);
        EXPECT_EQ(top[5], 2);
        EXPECT_EQ(top[6], 1);
        image.GetBits()[0] = 0xFF;
        EXPECT_EQ(::GetPixel(dc, 0, height < 0 ? 0 : 3), 0x00FF0000u);
        ::SelectObject(dc, old);
        ::DeleteDC(dc);
    }
}

}   // namespace
