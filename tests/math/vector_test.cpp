// Vectors and the matrix: exact comparisons, and where a value is rounded.
#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <limits>
#include <random>

#include "rastel/math/matrix.h"
#include "rastel/math/vector.h"

namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

TEST(Vector, LengthsAndProducts) {
    MVector2 zero(0, 0), v(3, 4), back(2, 0);
    EXPECT_EQ(zero.Normalize(), 0);
    zero.ForceLength(5);
    EXPECT_TRUE(zero == MVector2(0, 0));
    EXPECT_EQ(v.Normalize(), 1);
    EXPECT_TRUE(v == MVector2(0.6, 0.8));
    back.ForceLength(-1);
    EXPECT_TRUE(back == MVector2(-1, 0));
    MVector3 space(2, 3, 6), unknown(nan, 0, 0);
    EXPECT_EQ(space.Normalize(), 1);
    EXPECT_TRUE(space == MVector3(2 / 7.0, 3 / 7.0, 6 / 7.0));
    EXPECT_EQ(unknown.Normalize(), 1);
    EXPECT_FALSE(unknown == unknown);
    space *= space;   // the cross product in place
    EXPECT_TRUE(space == MVector3(0, 0, 0) && MVector3(1, 2, 3) * MVector3(-4, 5, 7) == MVector3(-1, -19, 13));
}

TEST(Vector, TurnsAreToldApartAlsoOnOneLine) {
    const auto turn = [](MVector2 a, MVector2 b) { return MVector2(0, 0).CCW(a, b); };
    EXPECT_EQ(turn({1, 0}, {1, 1}), 1);
    EXPECT_EQ(turn({1, 1}, {1, 0}), -1);
    EXPECT_EQ(turn({0, 1}, {0, -1}), -1);
    EXPECT_EQ(turn({1, 0}, {2, 0}), 1);
    EXPECT_EQ(turn({2, 0}, {1, 0}), 0);
    EXPECT_EQ(turn({0, 0}, {0, 0}), 0);
}

TEST(Vector, PointsAreCutOffTowardZeroAndStayInRange) {
    const auto point = [](double x, double y) {
        const tagPOINT at = MVector2(x, y).GetPOINT();
        return std::pair<int, int>(at.x, at.y);
    };
    EXPECT_EQ(point(-0.9, 1.9), std::pair(0, 1));
    EXPECT_EQ(point(1e300, -2.999), std::pair(INT_MAX, -2));
    EXPECT_EQ(point(nan, -1e10), std::pair(0, INT_MIN));
}

TEST(Matrix, SumsOfProductsAreRoundedOnce) {
    std::mt19937 random(1);
    for (int i = 0; i < 1000; ++i) {
        MMatrix44 a, b;
        for (int e = 0; e < 16; ++e) {
            a.m[e] = static_cast<float>(random()) / 7;
            b.m[e] = static_cast<float>(random()) / -3;
        }
        const MVector3 v(a.m[5] / 3.0, b.m[2] / 7.0, a.m[9] / 11.0);
        MMatrix44 square = a;
        square *= square;
        const MMatrix44 product = a * b, difference = a - b, sameSquare = a * a;
        for (int e = 0; e < 16; ++e) {
            double expected = 0;
            for (int k = 0; k < 4; ++k) {
                expected += static_cast<double>(a.m[e / 4 * 4 + k]) * static_cast<double>(b.m[k * 4 + e % 4]);
            }
            ASSERT_EQ(product.m[e], static_cast<float>(expected));
            ASSERT_EQ(square.m[e], sameSquare.m[e]);
            ASSERT_EQ(difference.m[e], static_cast<float>(static_cast<double>(a.m[e]) - b.m[e]));
        }
        MVector3 turned = v;
        turned *= a;
        const double results[3] = {turned.x, turned.y, turned.z};
        for (int c = 0; c < 3; ++c) {   // volatile, so that no compiler leaves the rounding out
            const volatile float rounded = static_cast<float>(a.m[c] * v.x + a.m[c + 4] * v.y + a.m[c + 8] * v.z);
            ASSERT_EQ(results[c], static_cast<double>(rounded));
        }
    }
}

TEST(Matrix, TurnsAboutXThenYThenZAndSkipsZero) {
    MMatrix44 matrix, all, about[3];
    matrix.Identity();
    matrix.m[3] = -0.0f;   // a multiplication by the identity would make it 0
    EXPECT_TRUE(std::signbit(matrix.Rotate(0, 0, 0).m[3]));

    const float angles[3] = {0.3f, -1.1f, 2.5f};
    for (int i = 0; i < 3; ++i) {
        about[i].Identity();
        about[i].Rotate(i == 0 ? angles[0] : 0, i == 1 ? angles[1] : 0, i == 2 ? angles[2] : 0);
        const int plus[3] = {6, 8, 1}, minus[3] = {9, 2, 4};
        const auto sine = static_cast<float>(std::sin(static_cast<double>(angles[i])));
        EXPECT_EQ(about[i].m[plus[i]], sine);
        EXPECT_EQ(about[i].m[minus[i]], -sine);
    }
    all.Identity();
    all.Rotate(angles[0], angles[1], angles[2]);
    const MMatrix44 expected = about[0] * about[1] * about[2];
    EXPECT_TRUE(std::equal(all.m, all.m + 16, expected.m));
}

TEST(Matrix, TranslateReplacesAndScaleMultiplies) {
    MMatrix44 matrix;
    matrix.Translate(1, 2, 3).Scale(2, 2, 2);
    const float moved[16] = {2, 0, 0, 0, 0, 2, 0, 0, 0, 0, 2, 0, 2, 4, 6, 1};
    EXPECT_TRUE(std::equal(moved, moved + 16, matrix.m));
    MVector3 direction(5, 6, 7);
    direction *= matrix.Translate(1, 2, 3);
    EXPECT_TRUE(direction == MVector3(5, 6, 7));
}

}   // namespace
