// What comes out of well-formed picture files.
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>

#include "examples/support/picture_codecs.h"
#include "examples/support/picture_file.h"
#include "examples/tests/bmp_builder.h"

namespace rastel::example {

namespace {

std::vector<DWORD> PixelsOf(const BmpBuilder& bmp) {
    std::string error;
    const std::optional<Picture> picture = DecodeBmp(bmp.Bytes(), error);
    EXPECT_TRUE(picture) << error;
    return picture ? picture->pixels : std::vector<DWORD>{};
}

constexpr DWORD red = 0xFFFF0000, green = 0xFF00FF00, blue = 0xFF0000FF, white = 0xFFFFFFFF, black = 0xFF000000;

TEST(Bmp, RowsRunFromTheBottomUnlessTheHeightIsNegative) {
    BmpBuilder bmp;
    bmp.rows = {0, 0, 255, 0, 255, 0, 9, 9, 255, 0, 0, 255, 255, 255, 9, 9};
    EXPECT_EQ(PixelsOf(bmp), (std::vector<DWORD>{blue, white, red, green}));
    bmp.height = -2;
    EXPECT_EQ(PixelsOf(bmp), (std::vector<DWORD>{red, green, blue, white}));
}

TEST(Bmp, SmallDepthsTakeTheLeftmostPixelFromTheHighestBits) {
    BmpBuilder bmp;
    bmp.width = 3;
    bmp.height = 1;
    bmp.bits = 1;
    bmp.palette = {0x0000FF, 0xFF0000};
    bmp.rows = {0b01000000, 0, 0, 0};
    EXPECT_EQ(PixelsOf(bmp), (std::vector<DWORD>{blue, red, blue}));
    bmp.bits = 4;
    bmp.rows = {0x01, 0x10, 0, 0};
    EXPECT_EQ(PixelsOf(bmp), (std::vector<DWORD>{blue, red, red}));
}

TEST(Bmp, AnIndexPastThePaletteIsBlack) {
    BmpBuilder bmp;
    bmp.height = 1;
    bmp.bits = 8;
    bmp.palette = {0x00FF00};
    bmp.rows = {0, 255, 0, 0};
    EXPECT_EQ(PixelsOf(bmp), (std::vector<DWORD>{green, black}));
}

TEST(Bmp, SixteenBitsFollowTheirMasks) {
    BmpBuilder bmp;
    bmp.height = 1;
    bmp.bits = 16;
    bmp.rows = {0x00, 0x7C, 0x1F, 0x00};   // 5-5-5
    EXPECT_EQ(PixelsOf(bmp), (std::vector<DWORD>{red, blue}));
    bmp.compression = 3;
    bmp.masks = {0xF800, 0x07E0, 0x001F};
    bmp.rows = {0x00, 0xF8, 0xE0, 0x07};
    EXPECT_EQ(PixelsOf(bmp), (std::vector<DWORD>{red, green}));
}

TEST(Bmp, ThirtyTwoBitsWithoutMasksAreOpaque) {
    BmpBuilder bmp;
    bmp.height = 1;
    bmp.bits = 32;
    bmp.rows = {255, 0, 0, 0, 0, 255, 0, 77};
    EXPECT_EQ(PixelsOf(bmp), (std::vector<DWORD>{blue, green}));
}

TEST(Png, KeepsEveryColour) {
    Picture picture = *MakePicture(67, 41);
    for (std::size_t index = 0; index < picture.pixels.size(); ++index) {
        picture.pixels[index] = 0xFF000000u | static_cast<DWORD>(index * 2654435761u) >> 8;
    }
    const std::string path = (std::filesystem::path(::testing::TempDir()) / "rastel-examples-colours.png").string();
    for (const bool hasAlpha : {false, true}) {
        picture.hasAlpha = hasAlpha;
        picture.pixels[5] = hasAlpha ? 0x80123456u : 0xFF123456u;
        std::string error;
        ASSERT_TRUE(WritePng(path, picture, error)) << error;
        const std::optional<Picture> read = ReadPicture(path, error);
        std::filesystem::remove(path);
        ASSERT_TRUE(read) << error;
        EXPECT_EQ(read->pixels, picture.pixels);
        EXPECT_EQ(read->hasAlpha, hasAlpha);
    }
}

TEST(Media, PicturesThatComeAlongAreReadable) {
    for (const char* const name : {"cat.jpg", "coffee.jpg", "launch.jpg", "stars.jpg", "cup.png", "balloon.bmp"}) {
        std::string error;
        const std::optional<Picture> picture = ReadPicture(std::string(RASTEL_MEDIA_FOLDER "/") + name, error);
        ASSERT_TRUE(picture) << error;
        EXPECT_EQ(picture->hasAlpha, std::string(name) == "cup.png") << name;
    }
    std::string error;
    const std::optional<Picture> coffee = ReadPicture(RASTEL_MEDIA_FOLDER "/coffee.jpg", error);
    ASSERT_TRUE(coffee);
    const DWORD saucer = coffee->Row(200)[105];   // red before green before blue: the channels are in order
    EXPECT_GT(saucer >> 16 & 0xFF, (saucer >> 8 & 0xFF) + 40);
}

}   // namespace

}   // namespace rastel::example
