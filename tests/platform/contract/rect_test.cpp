// Rectangle arithmetic: against sets of pixels, and at the limits of 32 bits.
#include <gtest/gtest.h>

#include <climits>
#include <random>
#include <sstream>
#include <string>

#include "rastel/platform/framework.h"

namespace {

std::string Shown(const RECT& r) {
    std::ostringstream text;
    text << "(" << r.left << "," << r.top << "," << r.right << "," << r.bottom << ")";
    return text.str();
}

TEST(Rect, IntersectionUnionAndDifferenceAgreeWithTheirPixels) {
    std::mt19937 random(11);
    const auto edge = [&] { return static_cast<int>(random() % 9); };
    for (int round = 0; round < 20000; ++round) {
        const CRect a(edge(), edge(), edge(), edge()), b(edge(), edge(), edge(), edge());
        const std::string what = Shown(a) + Shown(b);
        CRect common, both, rest;
        const bool isCommon = common.IntersectRect(&a, &b), isAny = both.UnionRect(&a, &b),
                   isRest = rest.SubtractRect(&a, &b);
        int inCommon = 0, inRest = 0, inA = 0;
        for (int y = -1; y < 10; ++y) {
            for (int x = -1; x < 10; ++x) {
                const bool isInA = a.PtInRect(CPoint(x, y)), isInB = b.PtInRect(CPoint(x, y));
                ASSERT_EQ(static_cast<bool>(common.PtInRect(CPoint(x, y))), isInA && isInB) << what;
                ASSERT_TRUE(!(isInA || isInB) || both.PtInRect(CPoint(x, y))) << what;
                // What is left of a lies in a, and misses only pixels that b has.
                const bool isInRest = rest.PtInRect(CPoint(x, y));
                ASSERT_TRUE(isInRest ? isInA : !isInA || isInB) << what;
                inA += isInA;
                inCommon += isInA && isInB;
                inRest += isInRest;
            }
        }
        ASSERT_EQ(isCommon, inCommon > 0) << what;
        ASSERT_EQ(isAny, !a.IsRectEmpty() || !b.IsRectEmpty()) << what;
        ASSERT_EQ(isRest, inRest > 0) << what;
        ASSERT_TRUE(inRest == inA || inRest == inA - inCommon) << what;
        const bool isStripe = (common.Width() == a.Width() && (common.top == a.top || common.bottom == a.bottom)) ||
                              (common.Height() == a.Height() && (common.left == a.left || common.right == a.right));
        if (isCommon && isStripe) {
            ASSERT_EQ(inRest, inA - inCommon) << what;   // a rectangle was left, so it had to be cut
        }
        ASSERT_TRUE(isCommon || common.IsRectNull()) << what;
        ASSERT_EQ(a & b, common);
        ASSERT_EQ(a | b, both);
        CRect own(a);
        own.IntersectRect(own, &b);   // the result may be an operand
        ASSERT_EQ(own, common);
    }
}

TEST(Rect, NullRectanglesCountAsEmpty) {
    const CRect some(1, 2, 3, 4);
    CRect rect(9, 9, 9, 9);
    EXPECT_FALSE(rect.IntersectRect(&some, nullptr));
    EXPECT_TRUE(rect.UnionRect(nullptr, &some));
    EXPECT_EQ(rect, some);
    EXPECT_FALSE(rect.SubtractRect(nullptr, &some));
    EXPECT_FALSE(rect.EqualRect(nullptr));
    rect.CopyRect(nullptr);
    EXPECT_TRUE(rect.IsRectNull());
}

TEST(Rect, OperatorsMoveByPointsAndGrowByRectangles) {
    const CRect rect(10, 20, 30, 50);
    const CRect edges(1, 2, 3, 4);
    EXPECT_EQ(rect + CPoint(5, -5), CRect(15, 15, 35, 45));
    EXPECT_EQ(rect - CSize(10, 20), CRect(0, 0, 20, 30));
    EXPECT_EQ(rect + &edges, CRect(9, 18, 33, 54));
    EXPECT_EQ(rect - &edges, CRect(11, 22, 27, 46));
    CRect moved(rect);
    moved.MoveToXY(-1, -2);
    EXPECT_EQ(moved, CRect(CPoint(-1, -2), CSize(20, 30)));
    moved = CRect(30, 50, 10, 20);
    moved.NormalizeRect();
    EXPECT_EQ(moved, rect);
    EXPECT_EQ(rect.CenterPoint(), CPoint(20, 35));
    EXPECT_EQ(CPoint(3, 4) - CPoint(1, 1), CSize(2, 3));
    const RECT plain = rect;
    EXPECT_TRUE(plain == rect && rect == plain);
    EXPECT_FALSE(rect != plain);
}

TEST(Rect, WildRectanglesWrapAndDoNothingWorse) {
    const int limits[] = {INT_MIN, INT_MIN + 1, -1, 0, 1, INT_MAX - 1, INT_MAX};
    for (const int a : limits) {
        for (const int b : limits) {
            CRect rect(a, b, b, a);
            const auto wrapped = static_cast<int>(static_cast<unsigned>(b) - static_cast<unsigned>(a));
            ASSERT_EQ(rect.Width(), wrapped);
            ASSERT_EQ(rect.CenterPoint().x, static_cast<LONG>((static_cast<LONGLONG>(a) + b) / 2));
            const CRect before(rect);
            rect.OffsetRect(a, b);
            rect.OffsetRect(CPoint() - CSize(a, b));
            ASSERT_EQ(rect, before);
            rect.InflateRect(a, b);
            rect.DeflateRect(CSize(a, b));
            ASSERT_EQ(rect, before);
            rect.MoveToXY(b, a);
            ASSERT_EQ(rect.Size(), before.Size());
            rect.NormalizeRect();
            ASSERT_LE(rect.left, rect.right);
        }
    }
}

}   // namespace
