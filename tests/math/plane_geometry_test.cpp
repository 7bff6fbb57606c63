// Turned rectangles and vertex lists: what is rounded how, and what wild numbers come to.
#include <gtest/gtest.h>

#include <climits>
#include <limits>
#include <numbers>
#include <vector>

#include "rastel/math/plane_geometry.h"

namespace {

constexpr double pi = std::numbers::pi;
using Numbers = std::vector<int>;

Numbers Of(const CPoint (&corners)[4]) {
    Numbers numbers;
    for (const CPoint& corner : corners) {
        numbers.push_back(corner.x);
        numbers.push_back(corner.y);
    }
    return numbers;
}

TEST(PlaneGeometry, RoundsByAddingAHalfAndCuttingOff) {
    CPoint points[2] = {{10, 0}, {5, 4}}, corners[4];
    Rotate(points, 1, -pi / 2, CPoint(0, 0));
    EXPECT_EQ(points[0], CPoint(0, -9));   // -10 + 0.5, cut off
    Rotate(points, -3, 1, CPoint(0, 0));
    Rotate(nullptr, 4, 1, CPoint(0, 0));
    EXPECT_EQ(points[1], CPoint(5, 4));
    points[0] = CPoint(3, 4);
    Rotate(points, 2, pi, points[0]);   // about a point of the list
    EXPECT_EQ(points[1], CPoint(1, 4));
    RotateRect(corners, CRect(-3, -2, 3, 2), 0, CPoint(0, 0));
    EXPECT_EQ(Of(corners), (Numbers{-2, -1, 3, -1, 3, 2, -2, 2}));   // at angle 0 too
    EXPECT_EQ(ScaleRotatePoint(CPoint(12, 10), CPoint(10, 10), pi / 2, 2.25), CPoint(10, 15));
    BuildScaledRotatedVertexList(CRect(0, 0, 10, 20), CPoint(5, 10), 0, 2, corners);
    EXPECT_EQ(Of(corners), (Numbers{-4, -9, 15, -9, 15, 30, -4, 30}));
    double x = 3, y = 2;
    Rotate(x, y, pi, 1, 2);
    EXPECT_EQ(x, -1);
}

TEST(PlaneGeometry, BoundsAreFoundBetweenTheirStarts) {
    EXPECT_EQ(RotateBoundRect(CRect(20, 9, 3, 1), 0, CPoint(0, 0)), CRect(20, 9, 3, 1));
    EXPECT_EQ(RotateBoundRect(CRect(10, 10, 20, 14), pi / 2, CPoint(10, 10)), CRect(6, 10, 10, 20));
    const CRect away = RotateBoundRect(CRect(20000, -20100, 20100, -20000), 1e-9, CPoint(20000, -20000));
    EXPECT_EQ(away, CRect(8888, -20099, 20100, -8888));
    CPoint four[4] = {{3, -9000}, {9500, 1}, {-2, 7}, {0, 9001}};
    EXPECT_EQ(GetBoundingRectOfVertexList(four), CRect(-2, -9000, 9500, 9001));
}

TEST(PlaneGeometry, InSpaceCoordinatesAreCutOff) {
    CPoint corners[4];
    const auto build = [&](double aboutX, double aboutY, double aboutZ, double scale) {
        BuildScaledRotatedVertexList3d(CRect(0, 0, 10, 10), CPoint(5, 5), aboutX, aboutY, aboutZ, scale, corners);
        return Of(corners);
    };
    EXPECT_EQ(build(0, 0, 0, 0.55), (Numbers{2, 2, 7, 2, 7, 7, 2, 7}));   // 2.25 and 7.75
    EXPECT_EQ(build(0, pi, 0, 1)[0], 10);
    build(pi / 2, 0, pi / 2, 1);   // about x, then z: the other order would leave corner 1 at (10, 5)
    EXPECT_NEAR(corners[1].y, 10, 1);
}

TEST(PlaneGeometry, WildNumbersStayNumbers) {
    CPoint corners[4];
    for (const double angle : {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
        RotateRect(corners, CRect(1, 2, 3, 4), angle, CPoint(0, 0));
        EXPECT_EQ(Of(corners), Numbers(8, 0));
        BuildScaledRotatedVertexList3d(CRect(1, 2, 3, 4), CPoint(0, 0), angle, angle, angle, 1, corners);
        EXPECT_EQ(Of(corners), Numbers(8, 0));
    }
    EXPECT_EQ(ScaleRotatePoint(CPoint(3, -3), CPoint(0, 0), 0, 1e300), CPoint(INT_MAX, INT_MIN));
    RotateRect(corners, CRect(INT_MIN, INT_MIN, INT_MAX, INT_MAX), 0.5, CPoint(INT_MAX, INT_MIN));
}

}   // namespace
