// Logical palettes.
#include "tests/platform/gdi/gdi_test_support.h"

namespace rastel::test {
namespace {

struct FourColors {
    LOGPALETTE head{0x300, 4, {{255, 0, 0, 0}}};
    PALETTEENTRY rest[3] = {{0, 255, 0, 0}, {0, 0, 255, PC_NOCOLLAPSE}, {250, 250, 250, 0}};
};

TEST(Palettes, HoldTheirEntriesAndFindTheNearest) {
    const FourColors colors;
    const HPALETTE palette = ::CreatePalette(&colors.head);
    ASSERT_NE(palette, nullptr);
    PALETTEENTRY entries[4] = {};
    EXPECT_EQ(::GetPaletteEntries(palette, 0, 0, nullptr), 4u);
    EXPECT_EQ(::GetPaletteEntries(palette, 1, 2, entries), 2u);
    EXPECT_EQ(entries[0].peGreen, 255);
    EXPECT_EQ(entries[1].peBlue, 255);
    EXPECT_EQ(::GetPaletteEntries(palette, 4, 1, entries), 0u);
    EXPECT_EQ(::GetNearestPaletteIndex(palette, RGB(10, 240, 10)), 1u);
    EXPECT_EQ(::GetNearestPaletteIndex(palette, RGB(255, 255, 255)), 3u);
    EXPECT_EQ(::GetObjectType(palette), static_cast<DWORD>(OBJ_PAL));
    EXPECT_TRUE(::DeleteObject(palette));
    EXPECT_EQ(::GetPaletteEntries(palette, 0, 1, entries), 0u);
}

TEST(Palettes, AreSelectedApartFromOtherObjects) {
    const FourColors colors;
    const HPALETTE palette = ::CreatePalette(&colors.head);
    Section section(2, 2, Plain32());
    const HPALETTE before = ::SelectPalette(section.Dc(), palette, FALSE);
    EXPECT_EQ(before, ::GetStockObject(DEFAULT_PALETTE));
    EXPECT_EQ(::GetCurrentObject(section.Dc(), OBJ_PAL), palette);
    EXPECT_EQ(::SelectObject(section.Dc(), palette), nullptr);
    EXPECT_EQ(::SelectPalette(section.Dc(), before, FALSE), palette);
    EXPECT_TRUE(::DeleteObject(palette));
    EXPECT_EQ(::CreatePalette(nullptr), nullptr);
}

}   // namespace
}   // namespace rastel::test
