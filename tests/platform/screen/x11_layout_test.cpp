// Servers whose words run the other way round than ours.
#include "rastel/platform/portable/screen/x11_layout.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>

namespace {

using rastel::platform::PixelLayout;

TEST(PixelLayout, ForeignByteOrderTurnsEachPixelAndNothingElse) {
    for (const int bits : {16, 24, 32}) {
        PixelLayout layout;
        layout.format.bitsPerPixel = bits;
        layout.swapsBytes = true;
        const auto pitch = static_cast<std::size_t>(layout.PitchOf(5));
        const std::size_t bytes = static_cast<std::size_t>(bits / 8);
        EXPECT_EQ(pitch % 4, 0u);
        std::vector<unsigned char> ours(pitch * 3 + 4);
        std::iota(ours.begin(), ours.end(), static_cast<unsigned char>(1));
        std::vector<unsigned char> expected = ours;
        for (std::size_t y = 0; y < 3; ++y) {
            for (std::size_t x = 0; x < 5; ++x) {
                const auto pixel = expected.begin() + static_cast<std::ptrdiff_t>(y * pitch + x * bytes);
                std::reverse(pixel, pixel + static_cast<std::ptrdiff_t>(bytes));
            }
        }
        std::vector<unsigned char> there = ours;
        layout.ToServer(there.data(), 5, 3);
        EXPECT_EQ(there, expected) << bits << " bits";
        layout.FromServer(there.data(), 5, 3);
        EXPECT_EQ(there, ours) << bits << " bits";
    }
}

TEST(PixelLayout, RowsEndWhereTheServerWantsThem) {
    PixelLayout layout;
    layout.format.bitsPerPixel = 24;
    EXPECT_EQ(layout.PitchOf(5), 16);
    layout.rowPadBits = 64;
    EXPECT_EQ(layout.PitchOf(5), 16);
    EXPECT_EQ(layout.PitchOf(6), 24);
    layout.rowPadBits = 8;
    EXPECT_EQ(layout.PitchOf(5), 15);
    EXPECT_EQ(layout.PitchOf(65535), 196605);
}

}   // namespace
