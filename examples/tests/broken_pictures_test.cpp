// What comes out of files that are cut short, bent, wild or no pictures. The bytes lie in heap blocks of exactly their
// size, so that a sanitizer sees the first byte that is read too far.
#include <gtest/gtest.h>

#include <climits>
#include <fstream>
#include <iterator>
#include <memory>
#include <random>

#include "examples/support/picture_codecs.h"
#include "examples/support/picture_file.h"
#include "examples/tests/bmp_builder.h"

namespace rastel::example {

namespace {

using Decoder = std::optional<Picture> (*)(Bytes bytes, std::string& error);

std::optional<Picture> DecodeExactly(Decoder decode, const std::vector<unsigned char>& bytes, std::size_t count) {
    const auto block = std::make_unique<unsigned char[]>(count);
    std::copy_n(bytes.begin(), count, block.get());
    std::string error;
    std::optional<Picture> picture = decode({block.get(), count}, error);
    EXPECT_TRUE(picture || !error.empty());
    return picture;
}

std::vector<unsigned char> MediaBytes(const char* name) {
    std::ifstream file(std::string(RASTEL_MEDIA_FOLDER "/") + name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

struct Format {
    const char* file;
    Decoder decode;
};
constexpr Format formats[] = {{"cup.png", DecodePng}, {"cat.jpg", DecodeJpeg}, {"balloon.bmp", DecodeBmp}};

TEST(BrokenPictures, AFileThatIsCutShortIsRefused) {
    for (const Format& format : formats) {
        const std::vector<unsigned char> bytes = MediaBytes(format.file);
        ASSERT_GT(bytes.size(), 1000u) << format.file;
        for (std::size_t count = 0; count + 64 < bytes.size(); count += count < 700 ? 1 : 997) {
            EXPECT_FALSE(DecodeExactly(format.decode, bytes, count)) << format.file << " cut to " << count;
        }
    }
}

TEST(BrokenPictures, BentBytesAreNeverFollowedOutside) {
    for (const Format& format : formats) {
        const std::vector<unsigned char> bytes = MediaBytes(format.file);
        for (unsigned seed = 0; seed < 60; ++seed) {
            std::mt19937 random(seed);
            std::vector<unsigned char> bent = bytes;
            for (int change = 0; change < 6; ++change) {
                // Headers matter most.
                const std::size_t reach = change % 2 ? bent.size() : 200;
                bent[random() % reach] = static_cast<unsigned char>(random());
            }
            DecodeExactly(format.decode, bent, bent.size());
        }
    }
}

TEST(BrokenPictures, WildSizesOfABmpAreRefused) {
    BmpBuilder bmp;
    bmp.rows.assign(64, 0);
    for (const std::int32_t wild : {0, -1, INT_MIN, INT_MAX, 16385}) {
        bmp.width = wild;
        bmp.height = 2;
        EXPECT_FALSE(DecodeExactly(DecodeBmp, bmp.Bytes(), bmp.Bytes().size())) << wild;
    }
    for (const std::int32_t wild : {0, INT_MIN, INT_MAX, 16384}) {
        bmp.width = 16384;
        bmp.height = wild;
        EXPECT_FALSE(DecodeExactly(DecodeBmp, bmp.Bytes(), bmp.Bytes().size())) << wild;
    }
}

TEST(BrokenPictures, ABmpOfAnotherKindIsRefusedInWords) {
    BmpBuilder bmp;
    bmp.rows.assign(64, 0);
    for (const int bits : {0, 2, 5, 64}) {
        bmp.bits = bits;
        EXPECT_FALSE(DecodeExactly(DecodeBmp, bmp.Bytes(), bmp.Bytes().size())) << bits;
    }
    bmp.bits = 8;
    bmp.compression = 1;   // run lengths
    std::string error;
    EXPECT_FALSE(DecodeBmp(bmp.Bytes(), error));
    EXPECT_NE(error.find("compression"), std::string::npos);
}

TEST(BrokenPictures, AnEnormousPngIsRefusedBeforeItTakesMemory) {
    // The header of a picture of 2147483647 by 2147483647 pixels.
    const std::vector<unsigned char> bytes = {0x89, 'P',  'N', 'G', '\r', '\n', 0x1A, '\n', 0,    0,    0,
                                              13,   'I',  'H', 'D', 'R',  0x7F, 0xFF, 0xFF, 0xFF, 0x7F, 0xFF,
                                              0xFF, 0xFF, 8,   2,   0,    0,    0,    0,    0,    0,    0};
    EXPECT_FALSE(DecodeExactly(DecodePng, bytes, bytes.size()));
}

TEST(BrokenPictures, TheErrorNamesTheFile) {
    std::string error;
    EXPECT_FALSE(ReadPicture("/no/such/picture.png", error));
    EXPECT_NE(error.find("/no/such/picture.png"), std::string::npos);
}

}   // namespace

}   // namespace rastel::example
