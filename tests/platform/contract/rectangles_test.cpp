#include <gtest/gtest.h>

#include <climits>
#include <random>

#include "rastel/platform/user.h"

namespace {

// A rectangle by its definition: which points are in it.
bool Has(const RECT& rect, LONG x, LONG y) {
    return x >= rect.left && x < rect.right && y >= rect.top && y < rect.bottom;
}

RECT Small(std::mt19937& random) {
    std::uniform_int_distribution<LONG> edge(0, 5);   // inverted and empty ones included
    return {edge(random), edge(random), edge(random), edge(random)};
}

template <typename Check>
void ForEachPoint(const Check& check) {
    for (LONG y = -1; y < 7; ++y) {
        for (LONG x = -1; x < 7; ++x) {
            check(x, y);
        }
    }
}

TEST(Rectangles, IntersectionHoldsThePointsOfBoth) {
    std::mt19937 random(1);
    for (int i = 0; i < 3000; ++i) {
        const RECT a = Small(random), b = Small(random);
        RECT common = {9, 9, 9, 9};
        const BOOL any = IntersectRect(&common, &a, &b);
        bool found = false;
        ForEachPoint([&](LONG x, LONG y) {
            const bool both = Has(a, x, y) && Has(b, x, y);
            found = found || both;
            ASSERT_EQ(Has(common, x, y), both) << "case " << i;
        });
        ASSERT_EQ(any != FALSE, found);
        if (!found) {
            const RECT none = {};
            ASSERT_TRUE(EqualRect(&common, &none)) << "an empty result is all zero";
        }
    }
}

TEST(Rectangles, UnionIsTheSmallestAroundBothAndIgnoresEmptyOnes) {
    std::mt19937 random(2);
    for (int i = 0; i < 3000; ++i) {
        const RECT a = Small(random), b = Small(random);
        RECT whole;
        const BOOL any = UnionRect(&whole, &a, &b);
        ASSERT_EQ(any != FALSE, !IsRectEmpty(&a) || !IsRectEmpty(&b));
        RECT expected = {INT_MAX, INT_MAX, INT_MIN, INT_MIN};
        for (const RECT* one : {&a, &b}) {
            if (!IsRectEmpty(one)) {
                expected = {std::min(expected.left, one->left), std::min(expected.top, one->top),
                            std::max(expected.right, one->right), std::max(expected.bottom, one->bottom)};
            }
        }
        if (any) {
            ASSERT_TRUE(EqualRect(&whole, &expected)) << "case " << i;
        }
    }
}

TEST(Rectangles, SubtractionTakesAwayOnlyWhatLeavesARectangle) {
    std::mt19937 random(3);
    for (int i = 0; i < 3000; ++i) {
        const RECT a = Small(random), b = Small(random);
        RECT rest;
        const BOOL any = SubtractRect(&rest, &a, &b);
        ASSERT_EQ(any != FALSE, !IsRectEmpty(&rest));
        int left = 0, bounds = 0;
        RECT around = {INT_MAX, INT_MAX, INT_MIN, INT_MIN};
        ForEachPoint([&](LONG x, LONG y) {
            if (Has(a, x, y) && !Has(b, x, y)) {
                ++left;
                around = {std::min(around.left, x), std::min(around.top, y), std::max(around.right, x + 1),
                          std::max(around.bottom, y + 1)};
            }
        });
        bounds = left == 0 ? 0 : (around.right - around.left) * (around.bottom - around.top);
        const RECT expected = left == 0 ? RECT{} : bounds == left ? around : a;
        ASSERT_TRUE(EqualRect(&rest, &expected)) << "case " << i;
    }
}

TEST(Rectangles, ResultsMayReplaceTheirSources) {
    RECT a = {0, 0, 10, 10};
    const RECT b = {5, 5, 20, 20};
    EXPECT_TRUE(IntersectRect(&a, &b, &a));
    const RECT common = {5, 5, 10, 10};
    EXPECT_TRUE(EqualRect(&a, &common));
    EXPECT_TRUE(UnionRect(&a, &a, &b));
    EXPECT_TRUE(EqualRect(&a, &b));
    EXPECT_FALSE(SubtractRect(&a, &a, &a));
    EXPECT_TRUE(IsRectEmpty(&a));
}

TEST(Rectangles, FarCoordinatesWrapAndNeverTrap) {
    RECT rect = {INT_MIN, INT_MIN, INT_MAX, INT_MAX};
    EXPECT_TRUE(OffsetRect(&rect, -1, 1));
    const RECT moved = {INT_MAX, INT_MIN + 1, INT_MAX - 1, INT_MIN};
    EXPECT_TRUE(EqualRect(&rect, &moved));
    rect = {INT_MIN, 0, INT_MAX, 0};
    EXPECT_TRUE(InflateRect(&rect, INT_MIN, 3));
    const RECT grown = {0, -3, -1, 3};
    EXPECT_TRUE(EqualRect(&rect, &grown));
    const RECT all = {INT_MIN, INT_MIN, INT_MAX, INT_MAX};
    EXPECT_TRUE(PtInRect(&all, {INT_MIN, INT_MIN}));
    EXPECT_FALSE(PtInRect(&all, {INT_MAX, 0}));
    RECT result;
    EXPECT_TRUE(IntersectRect(&result, &all, &all));
    EXPECT_TRUE(EqualRect(&result, &all));
}

}   // namespace
