// The PNG writer of the builds without a PNG library, read back by the library.
#include <gtest/gtest.h>

#define EncodePng EncodeStoredPng
#define DecodePng RefusePng
#include "examples/support/png_stored.cpp"
#undef EncodePng
#undef DecodePng

namespace rastel::example {

std::optional<Picture> DecodePng(Bytes bytes, std::string& error);

namespace {

TEST(StoredPng, IsReadBackTheSame) {
    // The sizes lie on both sides of one stored block of 65535 bytes, and one fills it to the last byte.
    const std::pair<int, int> sizes[] = {{1, 1}, {2, 3}, {1365, 16}, {1456, 15}, {4368, 5}, {333, 444}};
    for (const auto& [width, height] : sizes) {
        Picture picture = *MakePicture(width, height);
        for (std::size_t index = 0; index < picture.pixels.size(); ++index) {
            picture.pixels[index] = 0xFF000000u | static_cast<DWORD>(index * 2246822519u) >> 8;
        }
        picture.hasAlpha = width % 2 == 0;
        picture.pixels[0] &= picture.hasAlpha ? 0x7FFFFFFFu : ~0u;
        std::vector<unsigned char> bytes;
        ASSERT_TRUE(EncodeStoredPng(picture, bytes));
        std::string error;
        const std::optional<Picture> read = DecodePng(bytes, error);
        ASSERT_TRUE(read) << width << " x " << height << ": " << error;
        EXPECT_EQ(read->width, width);
        EXPECT_EQ(read->pixels, picture.pixels) << width << " x " << height;
    }
}

}   // namespace

}   // namespace rastel::example
