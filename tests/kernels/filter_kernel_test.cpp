// The kernels of the mask filters, in every table.
#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <random>
#include <vector>

#include "rastel/surface/kernels.h"
#include "tests/support/rect_case.h"

using rastel::kernels::BoxSums;
using rastel::kernels::filterPadding;
using rastel::test::ForEachRectCase;
using rastel::test::Operand;
using rastel::test::RectCase;

namespace {

// `count` elements behind `window` zeros and before the room that a row kernel may read or change.
template <class Element>
struct PaddedRow {
    PaddedRow(int count, int window)
        : before(window), elements(static_cast<std::size_t>(window + count + filterPadding)) {}
    Element* First() { return elements.data() + before; }
    int before;
    std::vector<Element> elements;
};

TEST(FilterKernels, ThresholdAndSubtractJudgeEachByte) {
    ForEachRectCase([](RectCase& c) {
        const auto level = static_cast<BYTE>(c.seed % 4 == 0 ? 0 : c.seed % 4 == 1 ? 255 : c.seed % 251);
        Operand plane = c.Target(1), target = c.Target(1), source = c.Source(1);
        plane.Fill(c.random);
        target.Fill(c.random);
        source.Fill(c.random);
        const Operand expected = plane, expectedTarget = target, sourceBefore = source;
        c.table.thresholdRect(plane.First(), plane.Pitch(), c.width, c.height, level, 7, 201);
        c.table.subtractRect(target.First(), target.Pitch(), source.First(), source.Pitch(), c.width, c.height);
        for (int y = 0; y < c.height; ++y) {
            for (int x = 0; x < c.width; ++x) {
                *expected.At(x, y) = *expected.At(x, y) >= level ? 201 : 7;
                if (*source.At(x, y) != 0) {
                    *expectedTarget.At(x, y) = 0;
                }
            }
        }
        c.ExpectSame(plane, expected);
        c.ExpectSame(target, expectedTarget);
        c.ExpectSame(source, sourceBefore);
    });
}

TEST(FilterKernels, CountsAddWhatEntersAndDropWhatLeaves) {
    ForEachRectCase([](RectCase& c) {
        Operand counts = c.Target(1), entering = c.Source(1), leaving = c.Source(1);
        counts.Fill(c.random);
        entering.Fill(c.random);
        leaving.Fill(c.random);
        const Operand expected = counts;
        for (int x = 0; x < c.width; ++x) {
            const int in = *entering.At(x, 0), out = *leaving.At(x, 0);
            *expected.At(x, 0) = static_cast<BYTE>(*expected.At(x, 0) + (in != 0) - (out != 0));
        }
        c.table.countColumns(counts.First(), entering.First(), leaving.First(), c.width);
        c.ExpectSame(counts, expected);
    });
}

TEST(FilterKernels, ABoxRowMovesItsWindowDownAndAveragesIt) {
    ForEachRectCase([](RectCase& c) {
        const int window = 1 + 2 * static_cast<int>(c.seed % 31);   // 1 to 61
        const int count = c.width + window - 1;
        Operand entering = c.Source(1), leaving = c.Source(1);
        entering.Fill(c.random);
        leaving.Fill(c.random);
        PaddedRow<WORD> even(count, window), odd(count, window);
        const BoxSums sums{even.First(), odd.First()};
        std::vector<int> after(static_cast<std::size_t>(window + count));   // behind zeros
        for (int x = 0; x < c.width; ++x) {
            const auto word = c.random();
            const auto most = 255u * static_cast<unsigned>(window - 1);
            const int staying = static_cast<int>(word % 4 == 0 ? 0 : word % 4 == 1 ? most : word % (most + 1));
            sums.At(x) = static_cast<WORD>(staying + *leaving.At(x, 0));
            after[static_cast<std::size_t>(window + x)] = staying + *entering.At(x, 0);
        }
        std::vector<BYTE> row(static_cast<std::size_t>(count)), expected;
        for (int x = 0; x < count; ++x) {
            const auto last = after.begin() + window + x + 1;
            expected.push_back(static_cast<BYTE>(std::accumulate(last - window, last, 0) / (window * window)));
        }
        c.table.boxRow(row.data(), sums, entering.First(), leaving.First(), c.width, window);
        ASSERT_EQ(row, expected) << c.table.name << ", width " << c.width << ", window " << window << ", seed "
                                 << c.seed;
        for (int x = -window; x < count; ++x) {
            ASSERT_EQ(sums.At(x), after[static_cast<std::size_t>(window + x)])
                << c.table.name << ", width " << c.width << ", column " << x;
        }
    });
}

TEST(FilterKernels, ADilatedRowCoversItsWindow) {
    ForEachRectCase([](RectCase& c) {
        const int window = 3 + 2 * static_cast<int>(c.seed % 20);   // 3 to 41
        const int count = c.width + window - 1;
        PaddedRow<BYTE> counts(count, window);
        for (int x = 0; x < c.width; ++x) {
            counts.First()[x] = static_cast<BYTE>(c.random() % 24 == 0 ? 1 + c.random() % 41 : 0);
        }
        std::vector<BYTE> row(static_cast<std::size_t>(count)), expected;
        for (int x = 0; x < count; ++x) {
            const BYTE* const last = counts.First() + x + 1;
            expected.push_back(std::any_of(last - window, last, [](BYTE byte) { return byte != 0; }) ? 99 : 0);
        }
        c.table.dilateRow(row.data(), counts.First(), c.width, window, 99);
        ASSERT_EQ(row, expected) << c.table.name << ", width " << c.width << ", window " << window << ", seed "
                                 << c.seed;
    });
}

}   // namespace
