// Copies between formats.
#include "tests/platform/gdi/gdi_test_support.h"

namespace rastel::test {
namespace {

bool SameFormat(const Format& a, const Format& b) {
    return std::memcmp(a.masks, b.masks, sizeof(a.masks)) == 0;
}

// What SRCCOPY makes of one pixel.
DWORD Converted(const Section& source, DWORD raw, const Section& target) {
    const bool same =
        source.GetFormat().depth == target.GetFormat().depth && SameFormat(source.GetFormat(), target.GetFormat());
    return same ? raw : target.RawOf(source.ColorOf(raw));
}

TEST(Conversion, EveryPairOfFormatsFollowsTheColours) {
    for (const Format& from : kFormats) {
        for (const Format& to : kFormats) {
            if (to.depth <= 8 && to.depth != from.depth) {
                continue;   // which of a few colours is taken is the system's choice
            }
            for (const Rows rows : {Rows::TopDown, Rows::BottomUp}) {
                Section source(67, 5, from, rows);
                Section target(71, 9, to);
                source.Randomize();
                target.Randomize();
                const std::vector<unsigned char> before = target.Copy();
                Section expected(71, 9, to);
                expected.Load(before);
                const int x = RandomIn(0, 9);
                ASSERT_TRUE(BitBlt(target.Dc(), x, 2, 61, 4, source.Dc(), 3, 1, SRCCOPY));
                for (int row = 0; row < 9; ++row) {
                    for (int column = 0; column < 71; ++column) {
                        const bool moved = column >= x && column < x + 61 && row >= 2 && row < 6;
                        const DWORD want = moved ? Converted(source, source.Raw(column - x + 3, row - 2 + 1), target)
                                                 : expected.Raw(column, row);
                        ASSERT_EQ(target.Raw(column, row), want)
                            << from.name << " to " << to.name << " at " << column << "," << row;
                    }
                }
            }
        }
    }
}

TEST(Conversion, AllColoursOf16BitsSurviveTheWayThrough32) {
    for (const Format& narrow : {kFormats[3], kFormats[4]}) {
        Section source(256, 256, narrow);
        Section wide(256, 256, Plain32());
        Section back(256, 256, narrow);
        for (int i = 0; i < 0x10000; ++i) {
            const auto value = static_cast<std::uint16_t>(narrow.masks[0] == 0x7C00 ? i & 0x7FFF : i);
            std::memcpy(source.Bits() + i * 2, &value, 2);
        }
        BitBlt(wide.Dc(), 0, 0, 256, 256, source.Dc(), 0, 0, SRCCOPY);
        BitBlt(back.Dc(), 0, 0, 256, 256, wide.Dc(), 0, 0, SRCCOPY);
        EXPECT_EQ(source.Copy(), back.Copy()) << narrow.name;
    }
}

// A monochrome bitmap, not a section, in a context of its own.
struct Mono {
    explicit Mono(int width, int height)
        : dc(CreateCompatibleDC(nullptr)),
          bitmap(CreateBitmap(width, height, 1, 1, nullptr)),
          previous(SelectObject(dc, bitmap)) {}
    ~Mono() {
        SelectObject(dc, previous);
        DeleteObject(bitmap);
        DeleteDC(dc);
    }
    HDC dc;
    HBITMAP bitmap;
    HGDIOBJ previous;
};

TEST(Conversion, MonochromeTakesTheColoursOfTheContexts) {
    for (const Format& format : {kFormats[4], kFormats[6], kFormats[7]}) {
        Section picture(40, 3, format);
        Mono mask(40, 3);
        for (int x = 0; x < 40; ++x) {
            SetPixelV(picture.Dc(), x, 1, x % 3 == 0 ? RGB(255, 0, 255) : RGB(255, 0, 240));
        }
        SetBkColor(picture.Dc(), RGB(255, 0, 255));
        ASSERT_TRUE(BitBlt(mask.dc, 0, 0, 40, 3, picture.Dc(), 0, 0, SRCCOPY));
        Section shown(40, 3, Plain32());
        SetTextColor(shown.Dc(), RGB(1, 2, 3));
        SetBkColor(shown.Dc(), RGB(9, 8, 7));
        ASSERT_TRUE(BitBlt(shown.Dc(), 0, 0, 40, 3, mask.dc, 0, 0, SRCCOPY));
        for (int x = 0; x < 40; ++x) {
            EXPECT_EQ(shown.Raw(x, 1), x % 3 == 0 ? 0x090807u : 0x010203u) << format.name << " " << x;
        }
    }
}

TEST(Conversion, AlphaIsMovedBetween32BitsAndClearedFrom24) {
    Section from32(8, 1, Plain32());
    Section from24(8, 1, kFormats[6]);
    Section target(8, 1, Plain32());
    std::memset(from32.Bits(), 0xAB, from32.Bytes());
    std::memset(from24.Bits(), 0xCD, from24.Bytes());
    BitBlt(target.Dc(), 0, 0, 8, 1, from32.Dc(), 0, 0, SRCCOPY);
    EXPECT_EQ(target.Raw(7, 0), 0xABABABABu);
    BitBlt(target.Dc(), 0, 0, 8, 1, from24.Dc(), 0, 0, SRCCOPY);
    EXPECT_EQ(target.Raw(0, 0), 0x00CDCDCDu);
}

}   // namespace
}   // namespace rastel::test
