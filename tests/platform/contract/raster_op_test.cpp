// Raster operations and patterns.
#include "tests/platform/gdi/gdi_test_support.h"

namespace rastel::test {
namespace {

// The definition: each bit of the result is the bit of the operation that pattern, source and target bits select.
DWORD ByTheBook(DWORD operation, DWORD pattern, DWORD source, DWORD target, int depth) {
    DWORD result = 0;
    for (int bit = 0; bit < depth; ++bit) {
        const DWORD index = ((pattern >> bit) & 1) * 4 + ((source >> bit) & 1) * 2 + ((target >> bit) & 1);
        result |= ((operation >> index) & 1) << bit;
    }
    return result;
}

TEST(RasterOperation, All256EqualTheirDefinition) {
    constexpr COLORREF kBrush = RGB(0x35, 0xC9, 0x5A);
    const HBRUSH brush = CreateSolidBrush(kBrush);
    for (const Format& format : kFormats) {
        if (format.depth <= 8) {
            continue;
        }
        const DWORD colors = format.masks[0] | format.masks[1] | format.masks[2];
        Section source(19, 4, format);
        Section target(23, 5, format);
        const HGDIOBJ previous = SelectObject(target.Dc(), brush);
        const DWORD pattern = target.RawOf(kBrush);
        source.Randomize();
        for (DWORD operation = 0; operation < 256; ++operation) {
            target.Randomize();
            Section before(23, 5, format);
            before.Load(target.Copy());
            ASSERT_TRUE(BitBlt(target.Dc(), 2, 1, 17, 3, source.Dc(), 1, 0, operation << 16));
            for (int y = 0; y < 5; ++y) {
                for (int x = 0; x < 23; ++x) {
                    const bool inside = x >= 2 && x < 19 && y >= 1 && y < 4;
                    DWORD want = before.Raw(x, y);
                    if (inside) {
                        want = ByTheBook(operation, pattern, source.Raw(x - 1, y - 1), want, format.depth);
                    }
                    ASSERT_EQ(target.Raw(x, y) & colors, want & colors)
                        << format.name << ", operation " << operation << " at " << x << "," << y;
                }
            }
        }
        SelectObject(target.Dc(), previous);
    }
    DeleteObject(brush);
}

TEST(RasterOperation, OperationsWithoutASourceNeedNone) {
    Section target(4, 4, Plain32());
    target.Randomize();
    EXPECT_FALSE(BitBlt(target.Dc(), 0, 0, 4, 4, nullptr, 0, 0, SRCCOPY));
    EXPECT_TRUE(BitBlt(target.Dc(), 0, 0, 4, 4, nullptr, 0, 0, WHITENESS));
    EXPECT_EQ(target.Color(3, 3), 0xFFFFFFu);
    EXPECT_TRUE(PatBlt(target.Dc(), 2, 2, 2, 2, BLACKNESS));
    EXPECT_EQ(target.Color(1, 1), 0xFFFFFFu);
    EXPECT_EQ(target.Raw(2, 2), 0u);
    EXPECT_FALSE(PatBlt(target.Dc(), 0, 0, 4, 4, SRCCOPY));
}

TEST(RasterOperation, PatternsRepeatFromTheCornerOfTheDevice) {
    Section tile(3, 2, Plain32());
    tile.Randomize();
    const HBRUSH brush = CreatePatternBrush(tile.Bitmap());
    Section target(17, 9, Plain32());
    SetViewportOrgEx(target.Dc(), 1, 1, nullptr);
    const RECT all = {1, 2, 14, 7};
    ASSERT_TRUE(FillRect(target.Dc(), &all, brush));
    EXPECT_TRUE(DeleteObject(brush));
    for (int y = 3; y < 8; ++y) {
        for (int x = 2; x < 15; ++x) {
            ASSERT_EQ(target.Color(x, y), tile.Color(x % 3, y % 2)) << x << "," << y;
        }
    }
    EXPECT_EQ(target.Raw(1, 3), 0u);
    EXPECT_EQ(target.Raw(15, 7), 0u);
}

}   // namespace
}   // namespace rastel::test
