// The mask filters against their definition by window sums.
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <memory>

#include "rastel/display/display_manager.h"
#include "rastel/surface/kernels.h"
#include "rastel/surface/reference.h"
#include "tests/support/plane.h"

using rastel::Reference;
using rastel::test::Bytes;
using rastel::test::Plane;

namespace {

class Filters : public ::testing::Test {
protected:
    void TearDown() override { rastel::kernels::ForceTable(nullptr); }

    // The sum of the window that ends at result pixel (x, y).
    static int WindowSum(const Bytes& bytes, int width, int height, int x, int y, int radius) {
        int sum = 0;
        for (int sy = std::max(y - 2 * radius, 0); sy <= std::min(y, height - 1); ++sy) {
            for (int sx = std::max(x - 2 * radius, 0); sx <= std::min(x, width - 1); ++sx) {
                sum += bytes[static_cast<std::size_t>(sy * width + sx)];
            }
        }
        return sum;
    }

    CDisplayManager manager;
};

TEST_F(Filters, AreTheWindowSumsForPlanesOfAnySize) {
    const int sizes[][2] = {{1, 1}, {3, 2}, {7, 9}, {33, 5}, {5, 40}, {70, 31}, {64, 8}};
    for (const auto* const table : rastel::kernels::AllTables()) {
        if (!rastel::kernels::ForceTable(table->name)) {
            continue;
        }
        for (const auto& [width, height] : sizes) {
            Plane source(width, height, 3);
            const Bytes bytes = source.Get();
            for (const int radius : {0, 1, 2, 5, 13, 20, 30}) {
                const Reference<CAlphaChannel> blurred(source.Blur(radius));
                const Reference<CAlphaChannel> grown(radius > 0 && radius <= 20 ? source.Expand(radius, 0x1C8)
                                                                                : nullptr);
                ASSERT_TRUE(blurred);
                const Bytes soft = rastel::test::BytesOf(*blurred);
                const Bytes hard = grown ? rastel::test::BytesOf(*grown) : Bytes();
                const int resultWidth = width + 2 * radius, area = (2 * radius + 1) * (2 * radius + 1);
                ASSERT_EQ(blurred->GetWidth(), resultWidth);
                ASSERT_EQ(blurred->GetHeight(), height + 2 * radius);
                for (int y = 0; y < height + 2 * radius; ++y) {
                    for (int x = 0; x < resultWidth; ++x) {
                        const int sum = WindowSum(bytes, width, height, x, y, radius);
                        const auto at = static_cast<std::size_t>(y * resultWidth + x);
                        ASSERT_EQ(soft[at], sum / area) << table->name << ' ' << width << ' ' << radius << ' ' << x;
                        if (grown) {
                            ASSERT_EQ(hard[at], sum > 0 ? 0xC8 : 0) << table->name << ' ' << width << ' ' << radius;
                        }
                    }
                }
            }
        }
    }
}

TEST_F(Filters, EveryWindowAverageIsTruncatedExactly) {
    // All sums of a full window, at radii where the division is the hardest.
    for (const auto* const table : rastel::kernels::AllTables()) {
        if (!table->runsHere()) {
            continue;
        }
        for (const int window : {1, 3, 5, 7, 13, 15, 17, 19, 41, 59, 61}) {
            const int area = window * window, lanes = 64, width = window + lanes, ahead = window;
            const std::vector<BYTE> nothing(static_cast<std::size_t>(width));
            std::vector<BYTE> row(static_cast<std::size_t>(width + window - 1));
            for (int first = 0; first <= 255 * area; first += lanes) {
                // Column sums that make each window's sum one more than the last one's.
                std::vector<WORD> even(static_cast<std::size_t>(ahead + width + rastel::kernels::filterPadding));
                std::vector<WORD> odd(even.size());
                const rastel::kernels::BoxSums sums{even.data() + ahead, odd.data() + ahead};
                int rest = first;
                for (int x = 0; x < window; ++x) {
                    sums.At(x) = static_cast<WORD>(std::min(rest, 255 * window));
                    rest -= sums.At(x);
                }
                for (int x = window; x < width; ++x) {
                    sums.At(x) = static_cast<WORD>(sums.At(x - window) + 1);
                }
                table->boxRow(row.data(), sums, nothing.data(), nothing.data(), width, window);
                for (int i = 0; i <= lanes && first + i <= 255 * area; ++i) {
                    ASSERT_EQ(row[static_cast<std::size_t>(window - 1 + i)], (first + i) / area)
                        << table->name << ' ' << window << ' ' << first + i;
                }
            }
        }
    }
}

TEST_F(Filters, RadiiAreClamped) {
    Plane source(10, 10, 1);
    const auto widthOf = [](CAlphaChannel* plane) {
        const Reference<CAlphaChannel> owned(plane);
        return owned ? owned->GetWidth() : 0;
    };
    EXPECT_EQ(widthOf(source.Expand(25, 1)), 50);
    EXPECT_EQ(widthOf(source.Expand(INT_MIN, 1)), 10);
    EXPECT_EQ(widthOf(source.Blur(INT_MAX)), 70);
    EXPECT_EQ(widthOf(source.Blur(-3)), 10);
    const Reference<CAlphaChannel> copy(source.Expand(0, 128));
    EXPECT_EQ(rastel::test::BytesOf(*copy), source.Get());
}

TEST_F(Filters, ALockedPlaneGivesNullAndNothingLeaks) {
    const LONG planes = CSurfaceBase::GetSurfacesAllocated();
    Plane source(10, 10, 1);
    source.LockData();
    EXPECT_EQ(source.Blur(2), nullptr);
    EXPECT_EQ(source.Expand(2, 1), nullptr);
    EXPECT_EQ(source.Expand(0, 1), nullptr);
    EXPECT_EQ(source.TressHold(1, 2, 3), 0);
    source.UnlockData();
    EXPECT_EQ(CSurfaceBase::GetSurfacesAllocated(), planes + 1);
}

TEST_F(Filters, SubtractCutsTheShapeOutAndIsClipped) {
    Plane shape(3, 3, 1);
    shape.Set({0, 1, 0, 255, 0, 1, 0, 9, 0});
    for (int x = -4; x <= 7; ++x) {
        for (int y = -4; y <= 7; ++y) {
            Plane plane(6, 6);
            plane.Fill(nullptr, 77, nullptr);
            Bytes expected = plane.Get();
            for (int sy = 0; sy < 3; ++sy) {
                for (int sx = 0; sx < 3; ++sx) {
                    if ((sx + sy) % 2 == 1 && x + sx >= 0 && x + sx < 6 && y + sy >= 0 && y + sy < 6) {
                        expected[static_cast<std::size_t>((y + sy) * 6 + x + sx)] = 0;
                    }
                }
            }
            EXPECT_EQ(plane.Subtract(shape, x, y), 1);
            ASSERT_EQ(plane.Get(), expected) << x << ' ' << y;
        }
    }
    Plane plane(6, 6, 2);
    const Bytes before = plane.Get();
    EXPECT_EQ(plane.Subtract(shape, INT_MAX, INT_MIN), 1);
    EXPECT_EQ(plane.Subtract(plane, 0, 0), 0);
    EXPECT_EQ(plane.Get(), before);
}

TEST_F(Filters, TressHoldComparesTheWidenedByte) {
    Plane plane(256, 2);
    for (const int level : {INT_MIN, -1, 0, 1, 127, 128, 255, 256, INT_MAX}) {
        Bytes ramp(512);
        for (std::size_t i = 0; i < ramp.size(); ++i) {
            ramp[i] = static_cast<unsigned char>(i);
        }
        plane.Set(ramp);
        EXPECT_EQ(plane.TressHold(level, 10, 20), 1);
        const Bytes result = plane.Get();
        for (int i = 0; i < 512; ++i) {
            ASSERT_EQ(result[static_cast<std::size_t>(i)], (i & 255) >= level ? 20 : 10) << level;
        }
    }
}

}   // namespace
