// Comparing pictures pixel by pixel. A mismatch says where it starts and leaves three PNG files to look at.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "rastel/platform/types.h"

namespace rastel::test {

// Words in memory order, 0xAARRGGBB, rows top-down without padding.
struct Picture {
    int width = 0, height = 0;
    std::vector<DWORD> pixels;
};

// All 32 bits count. On a mismatch writes <name>-expected.png, <name>-got.png and <name>-difference.png, colours only,
// into `folder`: by default the folder "pictures" where the test runs.
::testing::AssertionResult SamePicture(const Picture& expected, const Picture& got, const std::string& name,
                                       const std::filesystem::path& folder = "pictures");

// False: the file could not be written.
bool WritePng(const Picture& picture, const std::filesystem::path& file);

}   // namespace rastel::test
