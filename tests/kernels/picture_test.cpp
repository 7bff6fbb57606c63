// The comparison of pictures that other tests rely on.
#include "tests/support/picture.h"

#include <gtest/gtest.h>

#include <filesystem>

using rastel::test::Picture;
using rastel::test::SamePicture;

namespace {

TEST(SamePicture, NamesTheFirstDifferenceAndLeavesThePictures) {
    const std::filesystem::path folder = std::filesystem::path(::testing::TempDir()) / "rastel-same-picture";
    std::filesystem::remove_all(folder);
    Picture expected = {3, 2, {1, 2, 3, 4, 5, 6}}, got = expected;
    EXPECT_TRUE(SamePicture(expected, got, "same", folder));
    EXPECT_FALSE(std::filesystem::exists(folder));

    got.pixels[4] |= 0xFF000000;   // the alpha byte alone
    got.pixels[5] = 0x00123456;
    const ::testing::AssertionResult result = SamePicture(expected, got, "other", folder);
    EXPECT_FALSE(result);
    const std::string message = result.message();
    EXPECT_NE(message.find("2 pixels differ, first (1, 1): expected 00000005, got FF000005"), std::string::npos)
        << message;
    for (const char* const file : {"other-expected.png", "other-got.png", "other-difference.png"}) {
        EXPECT_TRUE(std::filesystem::exists(folder / file)) << file;
    }
    std::filesystem::remove_all(folder);

    got = {2, 3, {1, 2, 3, 4, 5, 6}};
    EXPECT_FALSE(SamePicture(expected, got, "shape", folder));
}

}   // namespace
