// The converters against a literal transcription, with every table, at all widths and alignments.
#include "rastel/display/line_converters.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <functional>
#include <utility>

#include "rastel/display/palette_map.h"
#include "rastel/platform/gdi.h"
#include "rastel/platform/portable/memory_display.h"
#include "tests/support/rect_case.h"

using rastel::test::ForEachRectCase;
using rastel::test::Operand;
using rastel::test::RectCase;

namespace {

using Line = void (*)(unsigned char*, unsigned char*, int);
using Rect = void (*)(unsigned char*, unsigned char*, int, int, int, int);
using Formula = std::function<DWORD(DWORD)>;   // of a source word, in the target's bytes

DWORD Word555(DWORD p) {
    return ((p >> 3) & 0x1F) | ((p >> 6) & 0x3E0) | ((p >> 9) & 0x7C00);
}
DWORD Word565(DWORD p) {
    return ((p >> 3) & 0x1F) | ((p >> 5) & 0x7E0) | ((p >> 8) & 0xF800);
}
DWORD Bytes24(DWORD p) {
    return p & 0xFFFFFF;
}
DWORD Index8(DWORD p) {
    return rastel::PaletteMap()[((p >> 21) & 7) | ((p >> 10) & 0x38) | ((p << 1) & 0x1C0)];
}

// `written(width)` pixels of a row are converted; nothing else of the target changes.
void Check(int bytes, const Formula& formula, const std::function<int(int)>& written,
           const std::function<void(RectCase&, Operand&, Operand&)>& run) {
    ForEachRectCase([&](RectCase& c) {
        Operand target = c.Target(bytes), source = c.Source(4);
        target.Fill(c.random);
        source.Fill(c.random);
        const Operand expected = target;
        for (int y = 0; y < c.height; ++y) {
            for (int x = 0; x < written(c.width); ++x) {
                DWORD word;
                std::memcpy(&word, source.At(x * 4, y), 4);
                const DWORD packed = formula(word);
                std::memcpy(expected.At(x * bytes, y), &packed, static_cast<std::size_t>(bytes));
            }
        }
        ASSERT_TRUE(rastel::kernels::ForceTable(c.table.name));
        run(c, target, source);
        rastel::kernels::ForceTable(nullptr);
        c.ExpectSame(target, expected);
    });
}

void CheckLine(int bytes, const Formula& formula, int group, Line line) {
    Check(
        bytes, formula, [=](int width) { return width / group * group; },
        [=](RectCase& c, Operand& target, Operand& source) {
            for (int y = 0; y < c.height; ++y) {
                line(target.At(0, y), source.At(0, y), c.width);
            }
        });
}

void CheckRect(int bytes, const Formula& formula, Rect rect) {
    Check(
        bytes, formula, [](int width) { return width; },
        [=](RectCase& c, Operand& target, Operand& source) {
            rect(target.First(), source.First(), c.width, c.height, target.Pitch(), source.Pitch());
        });
}

// A map on which every index shows.
void BuildMap() {
    rastel::platform::MemoryDisplayOptions options;
    options.bitsPerPixel = 8;
    rastel::platform::UseMemoryDisplay(options);
    const HDC screen = ::CreateDCW(L"DISPLAY", nullptr, nullptr, nullptr);
    SetPaletteMap(screen);
    ::DeleteDC(screen);
}

TEST(LineConverters, LinesConvertTheirWholeGroups) {
    CheckLine(2, Word555, 1, Blt555Line);
    CheckLine(2, Word555, 2, Blt555LineMMX);
    CheckLine(2, Word555, 4, Blt555LineMMX2);
    CheckLine(2, Word565, 1, Blt565Line);
    CheckLine(2, Word565, 4, Blt565LineMMX4);
}

TEST(LineConverters, RectanglesConvertEveryPixel) {
    for (const Rect rect : {Blt555, Blt555MMX}) {
        CheckRect(2, Word555, rect);
    }
    for (const Rect rect : {Blt565, Blt565MMX}) {
        CheckRect(2, Word565, rect);
    }
    CheckRect(3, Bytes24, Blt24);
    CheckRect(
        4, [](DWORD p) { return p; }, Blt32);
    BuildMap();
    CheckRect(1, Index8, Blt8);
}

TEST(LineConverters, KnownWords) {
    unsigned char source[8] = {0xFF, 0xFF, 0xFF, 0x00, 0x56, 0x34, 0x12, 0xFF}, target[4] = {};
    Blt555MMX(target, source, 2, 1, 4, 8);
    EXPECT_EQ(target[0] | target[1] << 8, 0x7FFF);
    EXPECT_EQ(target[2] | target[3] << 8, 0x08CA);
    Blt565MMX(target, source, 2, 1, 4, 8);
    EXPECT_EQ(target[0] | target[1] << 8, 0xFFFF);
    EXPECT_EQ(target[2] | target[3] << 8, 0x11AA);
}

// Any access would end the test, and so would a walk over rows without pixels.
TEST(LineConverters, NothingToConvertTouchesNothing) {
    for (const Rect rect : {Blt555, Blt555MMX, Blt565, Blt565MMX, Blt24, Blt32, Blt8}) {
        for (const auto& [width, height] : {std::pair{0, INT_MAX}, {-5, 3}, {INT_MIN, INT_MAX}, {3, 0}, {3, INT_MIN}}) {
            rect(nullptr, nullptr, width, height, -12, INT_MIN);
        }
    }
    for (const Line line :
         {Blt555Line, Blt555LineMMX, Blt555LineMMX2, Blt565Line, Blt565LineMMX4, Blt24Line, Blt32Line, Blt8Line}) {
        for (const int width : {0, -1, INT_MIN}) {
            line(nullptr, nullptr, width);
        }
    }
}

TEST(LineConverters, WordsAreCopiedFromTheLastToTheFirst) {
    constexpr int width = 9, room = 64;
    for (int targetAt = 0; targetAt + width * 4 <= room; ++targetAt) {
        unsigned char got[room], expected[room];
        for (int i = 0; i < room; ++i) {
            got[i] = expected[i] = static_cast<unsigned char>(i);
        }
        constexpr int sourceAt = 14;
        for (int x = width - 1; x >= 0; --x) {
            DWORD word;
            std::memcpy(&word, expected + sourceAt + x * 4, 4);
            std::memcpy(expected + targetAt + x * 4, &word, 4);
        }
        Blt32Line(got + targetAt, got + sourceAt, width);
        EXPECT_EQ(std::memcmp(got, expected, room), 0) << targetAt;
    }
}

TEST(LineConverters, TheMapHasTheNearestEntryOfThePalette) {
    BuildMap();
    const HDC screen = ::CreateDCW(L"DISPLAY", nullptr, nullptr, nullptr);
    PALETTEENTRY entries[256];
    ASSERT_EQ(::GetSystemPaletteEntries(screen, 0, 256, entries), 256u);
    ::DeleteDC(screen);
    const auto distance = [&](int index, int red, int green, int blue) {
        const auto square = [](int difference) { return difference * difference; };
        return square(entries[index].peRed - red) + square(entries[index].peGreen - green) +
               square(entries[index].peBlue - blue);
    };
    for (int i = 0; i < 512; ++i) {
        const int red = (i & 7) << 5, green = (i >> 3 & 7) << 5, blue = (i >> 6 & 7) << 5;
        int least = INT_MAX;
        for (int entry = 0; entry < 256; ++entry) {
            least = std::min(least, distance(entry, red, green, blue));
        }
        EXPECT_EQ(distance(rastel::PaletteMap()[i], red, green, blue), least) << i;
    }
}

}   // namespace
