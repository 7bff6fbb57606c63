// What differs between lines of Windows, on the layer that can pose as any of them.
#include "rastel/platform/kernel.h"
#include "rastel/platform/portable/memory_display.h"
#include "tests/text/text_fixture.h"

namespace rastel::test {
namespace {

class TextVersions : public TextTest {
protected:
    void TearDown() override { platform::SetWindowsVersion(VER_PLATFORM_WIN32_NT, 10, 0); }

    // Whether the second of two equal letters comes out of the mask that the first left two-valued.
    bool IsSecondHard(DWORD kind, DWORD major, DWORD minor) {
        platform::SetWindowsVersion(kind, major, minor);
        const Reference<SpyComposite> target(new SpyComposite);
        EXPECT_EQ(target->InitializeSurface(200, 80, 1), 1);
        render.Draw(*target, 10, 60, L"S S", -1);
        EXPECT_EQ(target->shown.size(), 2u);
        const auto isSoft = [](unsigned char byte) { return byte != 0 && byte != 255; };
        EXPECT_TRUE(std::any_of(target->shown[0].alphas.begin(), target->shown[0].alphas.end(), isSoft));
        return std::none_of(target->shown[1].alphas.begin(), target->shown[1].alphas.end(), isSoft);
    }
};

TEST_F(TextVersions, OneLineOfSystemsReusesTheLastLetter) {
    EXPECT_TRUE(IsSecondHard(VER_PLATFORM_WIN32_WINDOWS, 4, 10));
    EXPECT_TRUE(IsSecondHard(VER_PLATFORM_WIN32_WINDOWS, 5, 0));
    EXPECT_TRUE(IsSecondHard(VER_PLATFORM_WIN32_WINDOWS, 3, 10));
    EXPECT_FALSE(IsSecondHard(VER_PLATFORM_WIN32_WINDOWS, 4, 0));
    EXPECT_FALSE(IsSecondHard(VER_PLATFORM_WIN32_NT, 4, 10));
    EXPECT_FALSE(IsSecondHard(VER_PLATFORM_WIN32_NT, 10, 0));
}

}   // namespace
}   // namespace rastel::test
