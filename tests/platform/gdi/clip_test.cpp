#include "gdi_test_support.h"
#include "rastel/platform/portable/gdi/region.h"

namespace rastel::test {
namespace {

using platform::Region;

constexpr int kSide = 24;
using Grid = std::vector<bool>;

Grid GridOf(const Region& region) {
    Grid grid(kSide * kSide);
    for (const RECT& rect : region.Rects()) {
        for (int y = rect.top; y < rect.bottom; ++y) {
            for (int x = rect.left; x < rect.right; ++x) {
                const auto at = static_cast<std::size_t>(y * kSide + x);
                EXPECT_FALSE(grid[at]) << "rectangles overlap";
                grid[at] = true;
            }
        }
    }
    return grid;
}

RECT RandomRect() {
    const int left = RandomIn(0, kSide);
    const int top = RandomIn(0, kSide);
    return {left, top, RandomIn(left, kSide), RandomIn(top, kSide)};
}

TEST(RegionAlgebra, EqualsSetsOfPixels) {
    for (int round = 0; round < 300; ++round) {
        Region region;
        Grid grid(kSide * kSide);
        for (int step = 0; step < 8; ++step) {
            Region other(RandomRect());
            other.Unite(RandomRect());
            const Grid operand = GridOf(other);
            const int operation = RandomIn(0, 2);
            if (operation == 0) {
                region.Unite(other);
            } else if (operation == 1) {
                region.Subtract(other);
            } else if (step > 4) {
                region.Intersect(other);
            } else {
                continue;
            }
            for (std::size_t i = 0; i < grid.size(); ++i) {
                grid[i] = operation == 0   ? grid[i] || operand[i]
                          : operation == 1 ? grid[i] && !operand[i]
                                           : grid[i] && operand[i];
            }
            ASSERT_EQ(GridOf(region), grid);
            // The same set has the same rectangles, whatever way it came about.
            Region rebuilt;
            for (int y = kSide - 1; y >= 0; --y) {
                for (int x = kSide - 1; x >= 0; --x) {
                    if (grid[static_cast<std::size_t>(y * kSide + x)]) {
                        rebuilt.Unite(RECT{x, y, x + 1, y + 1});
                    }
                }
            }
            ASSERT_EQ(region, rebuilt);
            const RECT probe = RandomRect();
            Region inside(probe);
            inside.Intersect(region);
            ASSERT_EQ(region.Contains(probe), inside == Region(probe));
        }
    }
}

TEST(RegionAlgebra, OffsetsStopAtTheEndOfTheNumbers) {
    Region region(RECT{0, 0, 10, 10});
    region.Unite(RECT{20, 0, 30, 10});
    region.Offset(INT32_MAX - 15, 0);
    ASSERT_EQ(region.Rects().size(), 1u);
    EXPECT_EQ(region.Bounds().left, INT32_MAX - 15);
    EXPECT_EQ(region.Bounds().right, INT32_MAX - 5);
}

TEST(Clip, MetaRegionHoldsWhenTheClipIsReplaced) {
    Section section(20, 20, Plain32());
    const HDC dc = section.Dc();
    EXPECT_EQ(SetMetaRgn(dc), SIMPLEREGION);
    EXPECT_EQ(IntersectClipRect(dc, 2, 2, 12, 12), SIMPLEREGION);
    ASSERT_EQ(SaveDC(dc), 1);
    EXPECT_EQ(ExcludeClipRect(dc, 4, 4, 6, 6), COMPLEXREGION);
    EXPECT_EQ(SetMetaRgn(dc), COMPLEXREGION);
    EXPECT_EQ(SelectClipRgn(dc, nullptr), COMPLEXREGION);
    EXPECT_EQ(IntersectClipRect(dc, 1, 1, 10, 19), COMPLEXREGION);
    EXPECT_EQ(SetMetaRgn(dc), COMPLEXREGION);   // a second one only narrows the first
    EXPECT_EQ(GetPixel(dc, 3, 15), CLR_INVALID);
    EXPECT_EQ(GetPixel(dc, 5, 5), CLR_INVALID);
    EXPECT_EQ(GetPixel(dc, 12, 3), CLR_INVALID);
    EXPECT_EQ(GetPixel(dc, 3, 3), 0u);
    ASSERT_TRUE(RestoreDC(dc, -1));
    EXPECT_EQ(GetPixel(dc, 5, 5), 0u);
    EXPECT_EQ(GetPixel(dc, 12, 3), CLR_INVALID);
    EXPECT_EQ(IntersectClipRect(dc, 15, 15, 18, 18), NULLREGION);
}

}   // namespace
}   // namespace rastel::test
