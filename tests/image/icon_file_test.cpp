// What the icon tool sees in a file and writes from it.
#include <gtest/gtest.h>

#include <cstring>

#include "tests/image/pe_bytes.h"
#include "tests/image/temporary_file.h"
#include "tools/icons/icon_file.h"

using rastel::icons::IconFile;
using rastel::icons::IconImage;
using rastel::test::ByteVector;
using rastel::test::IconPicture;
using rastel::test::Patch;
using rastel::test::TemporaryFile;

namespace {

constexpr std::size_t firstPixel = 6 + 16 + 40;   // of a file with one image

std::unique_ptr<IconFile> Open(const TemporaryFile& file) {
    std::string error;
    std::unique_ptr<IconFile> icons = IconFile::Open(file.Path().string(), error);
    EXPECT_EQ(icons == nullptr, !error.empty()) << error;
    return icons;
}

TEST(IconFile, ListsEveryImageOfEitherKindOfFile) {
    const std::vector<IconPicture> pictures = {{16, 16, 8}, {256, 256, 32}, {32, 16, 24}};
    const TemporaryFile icon(rastel::test::IconFileBytes(pictures));
    const TemporaryFile module(rastel::test::IconModule(rastel::test::PeWidth::Bits64, u"APP\x01\x00C9", pictures),
                               ".exe");
    for (const TemporaryFile* const file : {&icon, &module}) {
        const auto icons = Open(*file);
        ASSERT_NE(icons, nullptr);
        ASSERT_EQ(icons->Images().size(), 3u);
        for (std::size_t i = 0; i < 3; ++i) {
            const IconImage& image = icons->Images()[i];
            EXPECT_EQ(image.entry.width, pictures[i].width);
            EXPECT_EQ(image.bits, pictures[i].bits);
            EXPECT_EQ(image.form, IconImage::Form::Pixels);
            EXPECT_EQ(image.group, file == &icon ? "" : "APP?\xC3\x89");
            EXPECT_EQ(rastel::icons::PictureOf(image).has_value(), pictures[i].bits == 32);
        }
    }
}

TEST(IconFile, BrokenAndCompressedImagesAreToldApart) {
    ByteVector bytes = rastel::test::IconFileBytes({{16, 16, 32}, {16, 16, 32}, {16, 16, 32}});
    Patch(bytes, 6 + 12, DWORD{0xFFFFFFF0});
    const BYTE png[] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
    DWORD at = 0;
    std::memcpy(&at, bytes.data() + 6 + 16 + 12, sizeof(at));
    std::copy(std::begin(png), std::end(png), bytes.begin() + at);
    const TemporaryFile file(bytes);
    const auto icons = Open(file);
    ASSERT_NE(icons, nullptr);
    EXPECT_EQ(icons->Images()[0].form, IconImage::Form::Broken);
    EXPECT_EQ(icons->Images()[1].form, IconImage::Form::Png);
    EXPECT_EQ(icons->Images()[1].bytes.size(), 40u + 16 * 16 * 4 + 16 * 4);   // no further than the directory says
    EXPECT_EQ(icons->Images()[2].form, IconImage::Form::Pixels);
    for (const ByteVector& none :
         {ByteVector{}, ByteVector{0, 0, 1, 0, 0, 0}, ByteVector{'M', 'Z'}, ByteVector(200, 7)}) {
        EXPECT_EQ(Open(TemporaryFile(none)), nullptr);
    }
}

// Red, green, blue, alpha.
ByteVector Channels(const ByteVector& file) {
    const std::optional<rastel::example::Picture> picture =
        rastel::icons::PictureOf(Open(TemporaryFile(file))->Images()[0]);
    return picture ? rastel::example::ChannelsOf(*picture) : ByteVector();
}

TEST(IconFile, ChannelsRunFromTheTopAndAMaskStandsInForMissingAlpha) {
    ByteVector bytes = rastel::test::IconFileBytes({{2, 2, 32, 1}});
    EXPECT_EQ(Channels(bytes), (ByteVector{11, 10, 9, 12, 15, 14, 13, 16, 3, 2, 1, 4, 7, 6, 5, 8}));

    for (std::size_t pixel = 0; pixel < 4; ++pixel) {
        bytes[firstPixel + pixel * 4 + 3] = 0;
    }
    bytes[firstPixel + 16] = 0x40;   // the mask's lower row: its right pixel is not the icon's
    EXPECT_EQ(Channels(bytes), (ByteVector{11, 10, 9, 255, 15, 14, 13, 255, 3, 2, 1, 255, 7, 6, 5, 0}));
    bytes.resize(firstPixel + 16);
    EXPECT_EQ(Channels(bytes).back(), 255);
}

}   // namespace
