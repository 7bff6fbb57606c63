#include "gdi_test_support.h"
#include "rastel/platform/portable/gdi/device_context.h"

namespace rastel::test {
namespace {

constexpr COLORREF kInk = RGB(250, 20, 130);

int Mixed(int below, int ink, int coverage) {
    return (ink * coverage + below * (255 - coverage) + 127) / 255;
}

TEST(Coverage, MixesByItsShareInsideTheClipOnly) {
    for (const Format& format : kFormats) {
        Section section(40, 20, format);
        section.Randomize();
        Section before(40, 20, format);
        before.Load(section.Copy());
        std::vector<unsigned char> coverage(33 * 18);
        for (unsigned char& byte : coverage) {
            const int dice = RandomIn(0, 3);
            byte = static_cast<unsigned char>(dice == 0 ? 0 : dice == 1 ? 255 : RandomIn(0, 255));
        }
        SetViewportOrgEx(section.Dc(), 5, 2, nullptr);
        IntersectClipRect(section.Dc(), 0, 1, 30, 14);
        const auto context = platform::FindContext(section.Dc());
        ASSERT_TRUE(platform::BlendCoverage(*context, -3, -4, coverage.data(), 31, 18, 33, kInk));
        for (int y = 0; y < 20; ++y) {
            for (int x = 0; x < 40; ++x) {
                const int column = x - 5 + 3;
                const int row = y - 2 + 4;
                const bool clipped = x < 5 || x >= 35 || y < 3 || y >= 16;
                const bool inside = column >= 0 && column < 31 && row >= 0 && row < 18 && !clipped;
                const int share = inside ? coverage[static_cast<std::size_t>(row * 33 + column)] : 0;
                const COLORREF below = before.Color(x, y);
                const COLORREF color = RGB(Mixed(GetRValue(below), GetRValue(kInk), share),
                                           Mixed(GetGValue(below), GetGValue(kInk), share),
                                           Mixed(GetBValue(below), GetBValue(kInk), share));
                // What nothing covers keeps every bit, the fourth byte too.
                ASSERT_EQ(section.Raw(x, y), share == 0 ? before.Raw(x, y) : section.RawOf(color))
                    << format.name << " at " << x << "," << y << ", share " << share;
            }
        }
    }
}

TEST(Coverage, NonsenseIsRefusedAndFarAwayIsHarmless) {
    Section section(8, 8, Plain32());
    const auto context = platform::FindContext(section.Dc());
    const unsigned char full[4] = {255, 255, 255, 255};
    EXPECT_FALSE(platform::BlendCoverage(*context, 0, 0, nullptr, 2, 2, 2, kInk));
    EXPECT_FALSE(platform::BlendCoverage(*context, 0, 0, full, -1, 2, 2, kInk));
    EXPECT_FALSE(platform::BlendCoverage(*context, 0, 0, full, 2, 2, 1, kInk));
    SetViewportOrgEx(section.Dc(), INT32_MIN, INT32_MAX, nullptr);
    for (const int far : {INT32_MIN, -1, 7, INT32_MAX}) {
        EXPECT_TRUE(platform::BlendCoverage(*context, far, far, full, 2, 2, 2, kInk));
    }
}

}   // namespace
}   // namespace rastel::test
