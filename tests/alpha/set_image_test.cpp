// Images loaded into a plane.
#include <gtest/gtest.h>

#include "rastel/alpha/dib_alpha_channel.h"
#include "rastel/image/dib.h"

namespace {

class SetImageTest : public ::testing::Test {
protected:
    // An image whose byte at (x, y), seen from the top, is x + 10 * y, with grey colours.
    void MakeImage(int width, int height) {
        ASSERT_EQ(image.Create(width, height, 8), 1);
        for (int i = 0; i < 256; ++i) {
            image.SetColor(i, static_cast<DWORD>(i) * 0x010101);
        }
        for (int y = 0; y < image.GetHeight(); ++y) {
            const int row = image.IsTopDown() ? y : image.GetHeight() - 1 - y;
            for (int x = 0; x < width; ++x) {
                image.GetBits()[row * image.GetPitch() + x] = static_cast<unsigned char>(x + 10 * y);
            }
        }
    }
    int At(int x, int y) {
        const int value = plane.LockData()[y * plane.GetPitch() + x];
        plane.UnlockData();
        return value;
    }

    winext::CDib image;
    CDibAlphaChannel plane;
};

TEST_F(SetImageTest, SamplesByTruncationFromTheTopWhicheverWayTheRowsRun) {
    for (const int height : {7, -7}) {
        MakeImage(9, height);
        for (const auto& [width, rows] : {std::pair{9, 7}, {4, 3}, {18, 14}, {5, 11}, {1, 1}}) {
            plane.Destroy();
            ASSERT_EQ(plane.Initialize(width, rows), 1);
            ASSERT_EQ(plane.SetImage(image), 1);
            for (int y = 0; y < rows; ++y) {
                for (int x = 0; x < width; ++x) {
                    const int sourceX = (x * ((9 << 16) / width)) >> 16, sourceY = (y * ((7 << 16) / rows)) >> 16;
                    ASSERT_EQ(At(x, y), sourceX + 10 * sourceY) << width << ' ' << x << ' ' << y;
                }
            }
        }
    }
}

TEST_F(SetImageTest, APaletteThatIsNoGreyRampGivesItsGreen) {
    MakeImage(4, 1);
    ASSERT_EQ(plane.Initialize(4, 1), 1);
    image.SetColor(2, 0x00FF80FF);
    EXPECT_EQ(plane.SetImage(image), 1);
    EXPECT_EQ(At(1, 0), 1);
    EXPECT_EQ(At(2, 0), 0x80);
}

TEST_F(SetImageTest, RefusesWhatItCantSample) {
    ASSERT_EQ(plane.Initialize(2, 2), 1);
    plane.Fill(nullptr, 7, nullptr);
    EXPECT_EQ(plane.SetImage(image), 0);   // no image at all
    ASSERT_EQ(image.Create(2, 2, 24), 1);
    EXPECT_EQ(plane.SetImage(image), 0);
    ASSERT_EQ(image.Create(32768, 1, 8), 1);
    EXPECT_EQ(plane.SetImage(image), 0);
    MakeImage(2, 2);
    plane.LockData();
    EXPECT_EQ(plane.SetImage(image), 0);
    plane.UnlockData();
    EXPECT_EQ(At(1, 1), 7);

    MakeImage(32767, 1);
    plane.Destroy();
    ASSERT_EQ(plane.Initialize(40000, 1), 1);   // a plane wider than any image
    EXPECT_EQ(plane.SetImage(image), 1);
}

}   // namespace
