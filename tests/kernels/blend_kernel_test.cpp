// The blending kernels of every table against literal transcriptions of their arithmetic.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

#include "rastel/surface/kernels.h"
#include "tests/support/rect_case.h"

using rastel::kernels::AllTables;
using rastel::kernels::RowTable;
using rastel::test::ForEachRectCase;
using rastel::test::Operand;
using rastel::test::RectCase;

namespace {

constexpr DWORD key = 0x00332211;
constexpr DWORD color = 0x9A563412;   // bytes 12 34 56 9A

BYTE Blend(int back, int source, int weight) {
    return static_cast<BYTE>(back + ((source - back) * weight >> 7));
}

int PairWeight(int alpha) {
    return (alpha << 2) * 0x4041 >> 16 >> 1;
}

// One row of pixels blended in pairs; `pairWeight` and `oddWeight` give a pixel's weight by its column.
template <class PairWeightOf, class OddWeightOf>
void BlendRowByPairs(BYTE* target, const BYTE* source, const BYTE* back, int width, PairWeightOf pairWeight,
                     OddWeightOf oddWeight) {
    for (int x = 0; x < width; ++x) {
        const bool isOddLast = x == width - 1 && width % 2 == 1;
        for (int lane = 0; lane < (isOddLast ? 3 : 4); ++lane) {
            const int i = x * 4 + lane;
            target[i] = Blend(back[i], source[i], isOddLast ? oddWeight(x) : pairWeight(x));
        }
        if (!isOddLast && x % 2 == 0) {
            target[x * 4 + 3] = 0;
        }
    }
}

// "Over" on one pixel with a plane byte of its own.
void OverPixel(BYTE* target, BYTE* plane, const BYTE* source, int alpha) {
    const int product = alpha * *plane;
    const int covered = (product * 257 >> 16) - (product >= 32768 ? 1 : 0);
    const int left = *plane - covered;
    const int coverage = std::min(left + alpha, 255);
    const int reciprocal = coverage < 2 ? 65535 : 65536 / coverage;
    for (int lane = 0; lane < 4; ++lane) {
        const long long sum = (left * target[lane] >> 1) + (alpha * source[lane] >> 1);
        target[lane] = static_cast<BYTE>(std::min((sum * reciprocal >> 16) * 2, 255LL));
    }
    *plane = static_cast<BYTE>(coverage);
}

std::vector<BYTE> ColorRow(int width) {
    std::vector<BYTE> row;
    for (int x = 0; x < width; ++x) {
        row.insert(row.end(), {0x12, 0x34, 0x56, 0x9A});
    }
    return row;
}

TEST(BlendKernels, APlaneWeighsPixelsInPairs) {
    ForEachRectCase([](RectCase& c) {
        Operand target = c.Target(4), source = c.Source(4), alpha = c.Source(1);
        target.Fill(c.random);
        source.Fill(c.random);
        alpha.Fill(c.random);
        const Operand expected = target, sourceBefore = source, alphaBefore = alpha, expectedColor = target;
        Operand colored = target;
        c.table.alphaRect(target.First(), target.Pitch(), source.First(), source.Pitch(), alpha.First(), alpha.Pitch(),
                          c.width, c.height);
        c.table.alphaColorRect(colored.First(), colored.Pitch(), color, alpha.First(), alpha.Pitch(), c.width,
                               c.height);
        const std::vector<BYTE> colors = ColorRow(c.width);
        for (int y = 0; y < c.height; ++y) {
            const BYTE* const weights = alpha.At(0, y);
            const auto pair = [=](int x) { return PairWeight(weights[x]); };
            const auto odd = [=](int x) { return weights[x] >> 1; };
            BlendRowByPairs(expected.At(0, y), source.At(0, y), expected.At(0, y), c.width, pair, odd);
            BlendRowByPairs(expectedColor.At(0, y), colors.data(), expectedColor.At(0, y), c.width, pair, odd);
        }
        c.ExpectSame(target, expected);
        c.ExpectSame(colored, expectedColor);
        c.ExpectSame(source, sourceBefore);
        c.ExpectSame(alpha, alphaBefore);
    });
}

TEST(BlendKernels, AConstantWeighsEveryPixelAlike) {
    ForEachRectCase([](RectCase& c) {
        const int alphas[] = {0, 1, 127, 128, 254, 255, 256 + 77};   // the low byte counts
        const int alpha = alphas[c.seed % 7], weight = (alpha & 255) >> 1;
        Operand target = c.Target(4), source = c.Source(4), back = c.Source(4);
        target.Fill(c.random);
        source.Fill(c.random);
        back.Fill(c.random);
        const Operand expected = target, expectedInPlace = target, backBefore = back;
        Operand inPlace = target;
        c.table.alphaConstRect(target.First(), target.Pitch(), source.First(), source.Pitch(), back.First(),
                               back.Pitch(), c.width, c.height, alpha);
        c.table.alphaConstRect(inPlace.First(), inPlace.Pitch(), source.First(), source.Pitch(), inPlace.First(),
                               inPlace.Pitch(), c.width, c.height, alpha);
        const auto weigh = [=](int) { return weight; };
        for (int y = 0; y < c.height; ++y) {
            BlendRowByPairs(expected.At(0, y), source.At(0, y), back.At(0, y), c.width, weigh, weigh);
            BlendRowByPairs(expectedInPlace.At(0, y), source.At(0, y), expectedInPlace.At(0, y), c.width, weigh, weigh);
        }
        c.ExpectSame(target, expected);
        c.ExpectSame(inPlace, expectedInPlace);
        c.ExpectSame(back, backBefore);
    });
}

TEST(BlendKernels, AKeyPixelWeighsNothingAndAllAlphaBytesAreCleared) {
    ForEachRectCase([](RectCase& c) {
        const int alpha = static_cast<int>(c.seed % 3) * 127 + 1, weight = (alpha & 255) >> 1;
        Operand target = c.Target(4), source = c.Source(4), back = c.Source(4);
        target.Fill(c.random);
        source.Fill(c.random, key);
        back.Fill(c.random);
        const Operand expected = target, expectedInPlace = target;
        Operand inPlace = target;
        c.table.alphaConstTransRect(target.First(), target.Pitch(), source.First(), source.Pitch(), back.First(),
                                    back.Pitch(), c.width, c.height, alpha, key);
        c.table.alphaConstTransRect(inPlace.First(), inPlace.Pitch(), source.First(), source.Pitch(), inPlace.First(),
                                    inPlace.Pitch(), c.width, c.height, alpha, key | 0xFF000000);
        for (int y = 0; y < c.height; ++y) {
            for (int x = 0; x < c.width; ++x) {
                const int pixelWeight = (source.Pixel(x, y) & 0xFFFFFF) == key ? 0 : weight;
                for (int i = x * 4; i < x * 4 + 3; ++i) {
                    *expected.At(i, y) = Blend(*back.At(i, y), *source.At(i, y), pixelWeight);
                    *expectedInPlace.At(i, y) = Blend(*expectedInPlace.At(i, y), *source.At(i, y), pixelWeight);
                }
                *expected.At(x * 4 + 3, y) = *expectedInPlace.At(x * 4 + 3, y) = 0;
            }
        }
        c.ExpectSame(target, expected);
        c.ExpectSame(inPlace, expectedInPlace);
    });
}

TEST(BlendKernels, OverChangesThePixelsAndTheirPlane) {
    ForEachRectCase([](RectCase& c) {
        Operand target = c.Target(4), plane = c.Target(1), source = c.Source(4), alpha = c.Source(1);
        target.Fill(c.random);
        plane.Fill(c.random);
        source.Fill(c.random);
        alpha.Fill(c.random);
        const Operand expected = target, expectedPlane = plane, expectedColor = target, expectedColorPlane = plane;
        Operand colored = target, coloredPlane = plane;
        c.table.alphaAdvRect(target.First(), target.Pitch(), plane.First(), plane.Pitch(), source.First(),
                             source.Pitch(), alpha.First(), alpha.Pitch(), c.width, c.height);
        c.table.alphaColorAdvRect(colored.First(), colored.Pitch(), coloredPlane.First(), coloredPlane.Pitch(), color,
                                  alpha.First(), alpha.Pitch(), c.width, c.height);
        const std::vector<BYTE> colors = ColorRow(1);
        for (int y = 0; y < c.height; ++y) {
            for (int x = 0; x < c.width; ++x) {
                const int a = *alpha.At(x, y);
                OverPixel(expected.At(x * 4, y), expectedPlane.At(x, y), source.At(x * 4, y), a);
                OverPixel(expectedColor.At(x * 4, y), expectedColorPlane.At(x, y), colors.data(), a);
            }
        }
        c.ExpectSame(target, expected);
        c.ExpectSame(plane, expectedPlane);
        c.ExpectSame(colored, expectedColor);
        c.ExpectSame(coloredPlane, expectedColorPlane);
    });
}

TEST(BlendKernels, OverIsExactForEveryPairOfCoverages) {
    constexpr std::size_t pairs = 65536;
    for (const RowTable* const table : AllTables()) {
        if (!table->runsHere()) {
            continue;
        }
        std::mt19937 random(5);
        const auto byte = [&] {
            const auto word = random();
            return static_cast<BYTE>(word % 4 == 0 ? 0 : word % 4 == 1 ? 255 : word >> 8);
        };
        for (int round = 0; round < 8; ++round) {
            std::vector<BYTE> target(pairs * 4), source(pairs * 4), plane(pairs), alpha(pairs);
            std::generate(target.begin(), target.end(), byte);
            std::generate(source.begin(), source.end(), byte);
            for (std::size_t i = 0; i < pairs; ++i) {
                plane[i] = static_cast<BYTE>(i);
                alpha[i] = static_cast<BYTE>(i >> 8);
            }
            std::vector<BYTE> expected = target, expectedPlane = plane;
            table->alphaAdvRect(target.data(), 0, plane.data(), 0, source.data(), 0, alpha.data(), 0, pairs, 1);
            for (std::size_t i = 0; i < pairs; ++i) {
                OverPixel(&expected[i * 4], &expectedPlane[i], &source[i * 4], alpha[i]);
                ASSERT_TRUE(plane[i] == expectedPlane[i] &&
                            std::equal(&expected[i * 4], &expected[i * 4] + 4, &target[i * 4]))
                    << table->name << " alpha " << (i >> 8) << " plane " << (i & 255);
            }
        }
    }
}

}   // namespace
