// Fitting a blit to its source and destination.
#include <gtest/gtest.h>

#include <climits>
#include <ostream>
#include <random>

#include "tests/support/test_store.h"

using rastel::test::TestStore;

namespace {

struct Clipped {
    int result;
    CRect target, source;
};

Clipped Clip(int x, int y, const CRect* sourceRect = nullptr, const CRect* clip = nullptr, int sourceSide = 100) {
    TestStore target(640, 480);
    TestStore source(sourceSide, sourceSide);
    Clipped clipped;
    clipped.result = target.ClipRects(clipped.target, clipped.source, x, y, source, sourceRect, clip);
    return clipped;
}

TEST(ClipRects, CutsAtTheEdgesOfTheDestination) {
    const Clipped corner = Clip(630, 470);
    EXPECT_EQ(corner.result, 1);
    EXPECT_EQ(corner.target, CRect(630, 470, 640, 480));
    EXPECT_EQ(corner.source, CRect(0, 0, 10, 10));

    const Clipped before = Clip(-30, -40);
    EXPECT_EQ(before.target, CRect(0, 0, 70, 60));
    EXPECT_EQ(before.source, CRect(30, 40, 100, 100));
}

TEST(ClipRects, TouchingSucceedsWithNothingAndBeyondFails) {
    const Clipped left = Clip(-100, 0);
    EXPECT_EQ(left.result, 1);
    EXPECT_EQ(left.source, CRect(100, 0, 100, 100));
    EXPECT_EQ(Clip(-150, 0).result, 0);

    const Clipped right = Clip(640, 0);
    EXPECT_EQ(right.result, 1);
    EXPECT_EQ(right.source, CRect(0, 0, 0, 100));
    EXPECT_EQ(right.target, CRect(0, 0, 640, 0));
    EXPECT_EQ(Clip(700, 0).result, 0);
}

TEST(ClipRects, CuttingTheSourceRectangleMovesNothing) {
    const CRect outside(-5, -5, 50, 50);
    const Clipped clipped = Clip(10, 10, &outside);
    EXPECT_EQ(clipped.source, CRect(0, 0, 50, 50));
    EXPECT_EQ(clipped.target, CRect(10, 10, 60, 60));

    const CRect turned(50, 0, 40, 10), empty(50, 0, 50, 10);
    EXPECT_EQ(Clip(10, 10, &turned).result, 0);
    EXPECT_EQ(Clip(10, 10, &empty).result, 1);
}

TEST(ClipRects, AClipOutsideLeavesNothing) {
    const CRect outside(700, 0, 800, 100);
    EXPECT_EQ(Clip(10, 10, nullptr, &outside).result, 0);
    const Clipped before = Clip(0, -20, nullptr, &outside);
    EXPECT_EQ(before.result, 1);
    EXPECT_EQ(before.source, CRect(0, 20, 0, 20));
}

TEST(ClipRects, NumbersNearTheLimitsOfIntDontWrap) {
    const CRect huge(INT_MIN, INT_MIN, INT_MAX, INT_MAX), turned(INT_MAX, INT_MAX, INT_MIN, INT_MIN);
    for (const int x : {INT_MIN, INT_MIN + 1, INT_MAX - 1, INT_MAX}) {
        for (const int y : {INT_MIN, 0, INT_MAX}) {
            for (const CRect* rect : {static_cast<const CRect*>(nullptr), &huge, &turned}) {
                for (const CRect* clip : {static_cast<const CRect*>(nullptr), &huge, &turned}) {
                    EXPECT_EQ(Clip(x, y, rect, clip).result, 0) << x << ' ' << y;
                }
            }
        }
    }
    EXPECT_EQ(Clip(5, 6, &huge, &huge).target, CRect(5, 6, 105, 106));
}

// A pixel lands exactly where it would without any clip, and exactly the pixels inside the limits land.
TEST(ClipRects, ClippedIsWholeCropped) {
    std::mt19937 random(7);
    const auto pick = [&](int low, int high) { return std::uniform_int_distribution(low, high)(random); };
    for (int i = 0; i < 20000; ++i) {
        TestStore target(pick(1, 12), pick(1, 12)), source(pick(1, 12), pick(1, 12));
        const int x = pick(-8, 14), y = pick(-8, 14);
        CRect sourceRect(pick(0, 6), pick(0, 6), pick(6, 14), pick(6, 14));
        CRect clip(pick(-4, 6), pick(-4, 6), pick(6, 14), pick(6, 14));
        const bool useSource = pick(0, 1), useClip = pick(0, 1);

        CRect whole = source.GetRect();
        if (useSource) {
            whole.right = std::min(whole.right, sourceRect.right);
            whole.bottom = std::min(whole.bottom, sourceRect.bottom);
            whole.left = sourceRect.left;
            whole.top = sourceRect.top;
        }
        CRect limit = target.GetRect();
        if (useClip) {
            limit.IntersectRect(&limit, &clip);
        }
        int expected = 0;
        for (int row = whole.top; row < whole.bottom; ++row) {
            for (int column = whole.left; column < whole.right; ++column) {
                expected += limit.PtInRect(CPoint(x + column - whole.left, y + row - whole.top)) ? 1 : 0;
            }
        }

        CRect rcDst, rcSrc;
        const int result =
            target.ClipRects(rcDst, rcSrc, x, y, source, useSource ? &sourceRect : nullptr, useClip ? &clip : nullptr);
        const int moved = result && rcSrc.Width() > 0 && rcSrc.Height() > 0 ? rcSrc.Width() * rcSrc.Height() : 0;
        ASSERT_EQ(moved, expected) << "case " << i;
        if (moved) {
            ASSERT_EQ(rcDst.left - x, rcSrc.left - whole.left) << "case " << i;
            ASSERT_EQ(rcDst.top - y, rcSrc.top - whole.top) << "case " << i;
        }
    }
}

}   // namespace
