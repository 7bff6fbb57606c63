#include "examples/support/options.h"

#include <gtest/gtest.h>

#include <vector>

#include "examples/support/display.h"

namespace rastel::example {

namespace {

OptionReader ReaderOf(std::vector<const char*>& arguments) {
    return OptionReader(static_cast<int>(arguments.size()), const_cast<char**>(arguments.data()));
}

TEST(OptionReader, TakesAValueBehindTheEqualsSignOrFromTheNextArgument) {
    std::vector<const char*> arguments = {"program", "--out=a=b", "--out", "c", "file", "--out"};
    OptionReader reader = ReaderOf(arguments);
    ASSERT_TRUE(reader.Next());
    EXPECT_EQ(reader.Text(), "--out");
    EXPECT_EQ(reader.Value(), "a=b");
    ASSERT_TRUE(reader.Next());
    EXPECT_EQ(reader.Value(), "c");
    ASSERT_TRUE(reader.Next());
    EXPECT_FALSE(reader.IsOption());
    EXPECT_EQ(reader.Text(), "file");
    ASSERT_TRUE(reader.Next());
    EXPECT_EQ(reader.Value(), std::nullopt);
    EXPECT_FALSE(reader.Next());
}

TEST(OptionReader, KnowsNoOptionsBehindTwoDashes) {
    std::vector<const char*> arguments = {"program", "-", "--", "--out=a"};
    OptionReader reader = ReaderOf(arguments);
    ASSERT_TRUE(reader.Next());
    EXPECT_FALSE(reader.IsOption());
    ASSERT_TRUE(reader.Next());
    EXPECT_FALSE(reader.IsOption());
    EXPECT_EQ(reader.Text(), "--out=a");
    EXPECT_FALSE(reader.Next());
}

TEST(OptionReader, SurvivesAnEmptyCommandLine) {
    OptionReader reader(0, nullptr);
    EXPECT_FALSE(reader.Next());
}

TEST(ParseDisplay, TakesTheWholeFormAndNothingElse) {
    const auto size = ParseDisplay("memory:64x8192x15");
    ASSERT_TRUE(size);
    EXPECT_EQ(size->width, 64);
    EXPECT_EQ(size->height, 8192);
    EXPECT_EQ(size->bitsPerPixel, 15);
    for (const char* const wrong : {"", "memory", "memory:x", "memory:xx", "memory:63x64x32", "memory:64x8193x32",
                                    "memory:64x64x4", "memory:64x64x+32", "memory: 64x64x32", "Memory:64x64x32"}) {
        EXPECT_FALSE(ParseDisplay(wrong)) << wrong;
    }
}

}   // namespace

}   // namespace rastel::example
