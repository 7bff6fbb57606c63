// Every table against literal transcriptions of what its kernels mean.
#include "rastel/surface/kernels.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "tests/support/rect_case.h"

using rastel::kernels::AllTables;
using rastel::kernels::ForceTable;
using rastel::kernels::Rows;
using rastel::kernels::RowTable;
using rastel::test::ForEachRectCase;
using rastel::test::Operand;
using rastel::test::RectCase;

namespace {

// Runs a kernel that changes a target in place, and checks each byte of it against `formula(old byte)`.
template <class Run, class Formula>
void CheckInPlace(int bytesPerPixel, Run run, Formula formula) {
    ForEachRectCase([&](RectCase& c) {
        Operand target = c.Target(bytesPerPixel);
        target.Fill(c.random);
        const Operand expected = target;
        run(c, target);
        for (int y = 0; y < c.height; ++y) {
            for (int i = 0; i < c.width * bytesPerPixel; ++i) {
                *expected.At(i, y) = static_cast<BYTE>(formula(*expected.At(i, y), i % bytesPerPixel));
            }
        }
        c.ExpectSame(target, expected);
    });
}

// Runs a kernel from a source of `sourceBytes` a pixel to a target of `targetBytes`, and checks each pixel against
// `formula(target bytes, source bytes)`, which changes the former.
template <class Run, class Formula>
void CheckPair(int targetBytes, int sourceBytes, DWORD likely, Run run, Formula formula) {
    ForEachRectCase([&](RectCase& c) {
        Operand target = c.Target(targetBytes), source = c.Source(sourceBytes);
        target.Fill(c.random);
        source.Fill(c.random, likely);
        const Operand expected = target, sourceBefore = source;
        run(c, target, source);
        for (int y = 0; y < c.height; ++y) {
            for (int x = 0; x < c.width; ++x) {
                formula(expected.At(x * targetBytes, y), source.At(x * sourceBytes, y));
            }
        }
        c.ExpectSame(target, expected);
        c.ExpectSame(source, sourceBefore);
    });
}

DWORD Word(const BYTE* at) {
    return at[0] | static_cast<DWORD>(at[1]) << 8 | static_cast<DWORD>(at[2]) << 16 | static_cast<DWORD>(at[3]) << 24;
}

constexpr DWORD key = 0x00332211;

TEST(Kernels, TheForcedTableIsTheOneThatRuns) {
    std::set<std::string> names;
    for (const RowTable* const table : AllTables()) {
        names.insert(table->name);
        if (table->runsHere()) {
            EXPECT_TRUE(ForceTable(table->name));
            EXPECT_EQ(&Rows(), table);
        } else {
            EXPECT_FALSE(ForceTable(table->name));
        }
    }
    EXPECT_EQ(names.size(), AllTables().size());
    EXPECT_STREQ(AllTables().back()->name, "plain");
    EXPECT_FALSE(ForceTable("avx1"));
    EXPECT_TRUE(ForceTable(nullptr));
    const auto best = std::find_if(AllTables().begin(), AllTables().end(), [](auto* t) { return t->runsHere(); });
    EXPECT_EQ(&Rows(), *best);
}

TEST(Kernels, CopiesMoveEveryByte) {
    CheckPair(
        4, 4, 0,
        [](RectCase& c, Operand& t, Operand& s) {
            c.table.copyRect(t.First(), t.Pitch(), s.First(), s.Pitch(), c.width, c.height);
        },
        [](BYTE* t, const BYTE* s) { std::copy(s, s + 4, t); });
    CheckPair(
        1, 1, 0,
        [](RectCase& c, Operand& t, Operand& s) {
            c.table.copyBytesRect(t.First(), t.Pitch(), s.First(), s.Pitch(), c.width, c.height);
        },
        [](BYTE* t, const BYTE* s) { *t = *s; });
}

TEST(Kernels, CopiesThatShareMemoryMoveRowByRowFromTheTop) {
    for (const RowTable* const table : AllTables()) {
        if (!table->runsHere()) {
            continue;
        }
        for (const auto& [width, padding] : {std::pair{1, 8}, {3, 8}, {9, 8}, {40, 8}, {2000, 8}, {9, 0}, {2000, 0}}) {
            const int pitch = width * 4 + padding, size = pitch * 14;
            for (const int shift : {-pitch, -8, -4, 4, 8, pitch, pitch + 4, 2 * pitch, 5 * pitch}) {
                std::vector<BYTE> block(static_cast<std::size_t>(size));
                for (std::size_t i = 0; i < block.size(); ++i) {
                    block[i] = static_cast<BYTE>(i * 7 + i / 256);
                }
                std::vector<BYTE> expected = block;
                const int from = 3 * pitch;
                for (int y = 0; y < 5; ++y) {
                    const auto row = expected.begin() + from + y * pitch;
                    const std::vector<BYTE> copy(row, row + width * 4);
                    std::copy(copy.begin(), copy.end(), row + shift);
                }
                table->copyRect(block.data() + from + shift, pitch, block.data() + from, pitch, width, 5);
                EXPECT_EQ(block, expected)
                    << table->name << " width " << width << " padding " << padding << " shift " << shift;
            }
        }
    }
}

TEST(Kernels, FillsWriteTheirPixel) {
    CheckInPlace(
        4, [](RectCase& c, Operand& t) { c.table.fillRect(t.First(), t.Pitch(), c.width, c.height, 0x04030201); },
        [](int, int lane) { return lane + 1; });
    CheckInPlace(
        1, [](RectCase& c, Operand& t) { c.table.fillBytesRect(t.First(), t.Pitch(), c.width, c.height, 77); },
        [](int, int) { return 77; });
}

TEST(Kernels, KeyCopyComparesColoursOnly) {
    for (const DWORD given : {key, key | 0xFF000000}) {
        CheckPair(
            4, 4, key,
            [=](RectCase& c, Operand& t, Operand& s) {
                c.table.keyCopyRect(t.First(), t.Pitch(), s.First(), s.Pitch(), c.width, c.height, given);
            },
            [](BYTE* t, const BYTE* s) {
                if ((Word(s) & 0xFFFFFF) != key) {
                    std::copy(s, s + 3, t);
                    t[3] = 0;
                }
            });
    }
}

TEST(Kernels, ScalingKeepsTheLowByteOfAnyProduct) {
    for (const int factor : {0, 1, 127, 128, 255, 256, 257, 511, 65535, 65536, -1, -128, 0x7FFFFFFF, -0x7FFFFFFF - 1}) {
        const auto formula = [=](int byte, int) {
            return static_cast<BYTE>(static_cast<DWORD>(byte) * static_cast<DWORD>(factor) >> 8);
        };
        CheckInPlace(
            4,
            [=](RectCase& c, Operand& t) {
                c.table.shadowRect(t.First(), t.Pitch(), c.width, c.height, static_cast<DWORD>(factor));
            },
            formula);
        CheckInPlace(
            1, [=](RectCase& c, Operand& t) { c.table.multiplyRect(t.First(), t.Pitch(), c.width, c.height, factor); },
            formula);
    }
}

TEST(Kernels, PlaneAlgebraIsRightForEveryPairOfBytes) {
    std::vector<BYTE> all(65536), other(65536);
    for (std::size_t i = 0; i < all.size(); ++i) {
        all[i] = static_cast<BYTE>(i);
        other[i] = static_cast<BYTE>(i >> 8);
    }
    for (const RowTable* const table : AllTables()) {
        if (!table->runsHere()) {
            continue;
        }
        std::vector<BYTE> merged = all, larger = all, inverted = all;
        table->mergeRect(merged.data(), 0, other.data(), 0, 65536, 1);
        table->maxRect(larger.data(), 0, other.data(), 0, 65536, 1);
        table->invertRect(inverted.data(), 0, 65536, 1);
        for (std::size_t i = 0; i < all.size(); ++i) {
            ASSERT_EQ(merged[i], all[i] * other[i] >> 8) << table->name;
            ASSERT_EQ(larger[i], std::max(all[i], other[i])) << table->name;
            ASSERT_EQ(inverted[i], 255 - all[i]) << table->name;
        }
    }
}

TEST(Kernels, PlaneAlgebraKeepsToItsRows) {
    CheckPair(
        1, 1, 0,
        [](RectCase& c, Operand& t, Operand& s) {
            c.table.mergeRect(t.First(), t.Pitch(), s.First(), s.Pitch(), c.width, c.height);
        },
        [](BYTE* t, const BYTE* s) { *t = static_cast<BYTE>(*t * *s >> 8); });
    CheckPair(
        1, 1, 0,
        [](RectCase& c, Operand& t, Operand& s) {
            c.table.maxRect(t.First(), t.Pitch(), s.First(), s.Pitch(), c.width, c.height);
        },
        [](BYTE* t, const BYTE* s) { *t = std::max(*t, *s); });
    CheckInPlace(
        1, [](RectCase& c, Operand& t) { c.table.invertRect(t.First(), t.Pitch(), c.width, c.height); },
        [](int byte, int) { return 255 - byte; });
}

TEST(Kernels, MasksCompareTheirBits) {
    CheckPair(
        1, 4, key,
        [](RectCase& c, Operand& t, Operand& s) {
            c.table.transparentMaskRect(t.First(), t.Pitch(), s.First(), s.Pitch(), c.width, c.height, key);
        },
        [](BYTE* t, const BYTE* s) { *t = Word(s) == key ? 0 : *t; });
    CheckPair(
        1, 4, key,
        [](RectCase& c, Operand& t, Operand& s) {
            c.table.opaqueMaskRect(t.First(), t.Pitch(), s.First(), s.Pitch(), c.width, c.height, key);
        },
        [](BYTE* t, const BYTE* s) { *t = Word(s) != key ? 255 : *t; });
    CheckPair(
        1, 4, key,
        [](RectCase& c, Operand& t, Operand& s) {
            Operand pixels(c.width * 4, c.height, 0, c.width * 4 + 8);
            c.table.splitAlphaRect(pixels.First(), pixels.Pitch(), t.First(), t.Pitch(), s.First(), s.Pitch(), c.width,
                                   c.height);
            for (int y = 0; y < c.height; ++y) {
                ASSERT_EQ(std::memcmp(pixels.At(0, y), s.At(0, y), static_cast<std::size_t>(c.width) * 4), 0);
            }
        },
        [](BYTE* t, const BYTE* s) { *t = s[3]; });
    for (const DWORD given : {key, key | 0xFF000000}) {
        CheckPair(
            1, 4, key,
            [=](RectCase& c, Operand& t, Operand& s) {
                c.table.keyMaskRect(t.First(), t.Pitch(), s.First(), s.Pitch(), c.width, c.height, given, 3, 200);
            },
            [](BYTE* t, const BYTE* s) { *t = (Word(s) & 0xFFFFFF) == key ? 3 : 200; });
    }
}

TEST(Kernels, EmptyRectanglesTouchNothing) {
    for (const RowTable* const table : AllTables()) {
        if (!table->runsHere()) {
            continue;
        }
        for (const auto& [width, height] : {std::pair{0, 5}, {5, 0}, {-3, 5}, {5, -3}}) {
            // Null pointers: any access would end the test.
            table->copyRect(nullptr, 0, nullptr, 0, width, height);
            table->fillRect(nullptr, 0, width, height, 1);
            table->keyCopyRect(nullptr, 0, nullptr, 0, width, height, 1);
            table->shadowRect(nullptr, 0, width, height, 1);
            table->copyBytesRect(nullptr, 0, nullptr, 0, width, height);
            table->fillBytesRect(nullptr, 0, width, height, 1);
            table->mergeRect(nullptr, 0, nullptr, 0, width, height);
            table->maxRect(nullptr, 0, nullptr, 0, width, height);
            table->multiplyRect(nullptr, 0, width, height, 1);
            table->invertRect(nullptr, 0, width, height);
            table->transparentMaskRect(nullptr, 0, nullptr, 0, width, height, 1);
            table->opaqueMaskRect(nullptr, 0, nullptr, 0, width, height, 1);
            table->splitAlphaRect(nullptr, 0, nullptr, 0, nullptr, 0, width, height);
            table->keyMaskRect(nullptr, 0, nullptr, 0, width, height, 1, 2, 3);
        }
    }
}

}   // namespace
