// Stretches whose pixels don't depend on how a system samples.
#include "tests/platform/gdi/gdi_test_support.h"

namespace rastel::test {
namespace {

class Stretches : public ::testing::Test {
protected:
    // A row of 12 that is 0 where nothing was drawn; the source's pixels are 1 to 4.
    std::vector<DWORD> Row(int x, int width, int sourceX, int sourceWidth) {
        Section source(4, 1, Plain32()), target(12, 1, Plain32());
        for (int i = 0; i < 4; ++i) {
            SetPixelV(source.Dc(), i, 0, RGB(0, 0, i + 1));
        }
        StretchBlt(target.Dc(), x, 0, width, 1, source.Dc(), sourceX, 0, sourceWidth, 1, SRCCOPY);
        return Pixels(target);
    }
    static std::vector<DWORD> Pixels(const Section& section) {
        std::vector<DWORD> row;
        for (int i = 0; i < section.Width(); ++i) {
            row.push_back(section.Raw(i, 0) & 0xFFFFFF);
        }
        return row;
    }
    using Words = std::vector<DWORD>;
};

TEST_F(Stretches, WholeFactorsRepeatEachPixel) {
    EXPECT_EQ(Row(2, 8, 0, 4), (Words{0, 0, 1, 1, 2, 2, 3, 3, 4, 4, 0, 0}));
    EXPECT_EQ(Row(0, 12, 0, 4), (Words{1, 1, 1, 2, 2, 2, 3, 3, 3, 4, 4, 4}));
    EXPECT_EQ(Row(-1, 6, 1, 3), (Words{2, 3, 3, 4, 4, 0, 0, 0, 0, 0, 0, 0}));
}

TEST_F(Stretches, NegativeSizesMirrorBackwardsFromTheirCorner) {
    EXPECT_EQ(Row(8, -4, 0, 4), (Words{0, 0, 0, 0, 0, 4, 3, 2, 1, 0, 0, 0}));
    EXPECT_EQ(Row(4, 4, 3, -4), (Words{0, 0, 0, 0, 4, 3, 2, 1, 0, 0, 0, 0}));
    EXPECT_EQ(Row(8, -8, 0, 4), (Words{0, 4, 4, 3, 3, 2, 2, 1, 1, 0, 0, 0}));
    EXPECT_EQ(Row(8, -4, 4, -4), (Words{0, 0, 0, 0, 0, 2, 3, 4, 0, 0, 0, 0}));   // one beyond the source
    Section target(12, 1, Plain32());
    PatBlt(target.Dc(), 8, 0, -4, 1, WHITENESS);
    constexpr DWORD white = 0xFFFFFF;
    EXPECT_EQ(Pixels(target), (Words{0, 0, 0, 0, 0, white, white, white, white, 0, 0, 0}));
    const RECT reversed{4, 0, 1, 1};
    FillRect(target.Dc(), &reversed, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    EXPECT_EQ(Pixels(target), (Words{0, 0, white, white, white, white, white, white, white, 0, 0, 0}));
}

TEST_F(Stretches, EqualSizesMirrorBothWays) {
    Section source(9, 7, Plain32()), target(9, 7, Plain32());
    source.Randomize();
    SetStretchBltMode(target.Dc(), COLORONCOLOR);
    ASSERT_TRUE(StretchBlt(target.Dc(), 8, 6, -9, -7, source.Dc(), 0, 0, 9, 7, SRCCOPY));
    for (int y = 0; y < 7; ++y) {
        for (int x = 0; x < 9; ++x) {
            ASSERT_EQ(target.Raw(x, y), source.Raw(8 - x, 6 - y)) << x << ' ' << y;
        }
    }
}

}   // namespace
}   // namespace rastel::test
