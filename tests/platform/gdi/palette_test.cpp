#include "gdi_test_support.h"
#include "rastel/platform/portable/memory_display.h"

namespace rastel::test {
namespace {

class PaletteDisplay : public ::testing::Test {
protected:
    void SetUp() override {
        platform::MemoryDisplayOptions options;
        options.width = 64;
        options.height = 48;
        options.bitsPerPixel = 8;
        platform::UseMemoryDisplay(options);
        screen_ = CreateDCW(L"DISPLAY", nullptr, nullptr, nullptr);
        ASSERT_NE(screen_, nullptr);
    }
    void TearDown() override {
        DeleteDC(screen_);
        platform::UseMemoryDisplay({});
    }

    std::vector<PALETTEENTRY> System() const {
        std::vector<PALETTEENTRY> entries(256);
        EXPECT_EQ(GetSystemPaletteEntries(screen_, 0, 256, entries.data()), 256u);
        return entries;
    }

    HDC screen_ = nullptr;
};

HPALETTE MakePalette(const std::vector<PALETTEENTRY>& entries) {
    std::vector<unsigned char> bytes(sizeof(LOGPALETTE) + entries.size() * sizeof(PALETTEENTRY));
    auto* const palette = reinterpret_cast<LOGPALETTE*>(bytes.data());
    palette->palVersion = 0x300;
    palette->palNumEntries = static_cast<WORD>(entries.size());
    if (!entries.empty()) {
        std::memcpy(bytes.data() + 4, entries.data(), entries.size() * sizeof(PALETTEENTRY));
    }
    return CreatePalette(palette);
}

std::vector<PALETTEENTRY> Cube() {
    std::vector<PALETTEENTRY> entries;
    for (int i = 0; i < 256; ++i) {
        entries.push_back({static_cast<BYTE>(i << 6), static_cast<BYTE>((i >> 2) << 5),
                           static_cast<BYTE>((i >> 5) << 5), PC_NOCOLLAPSE});
    }
    return entries;
}

bool Same(const PALETTEENTRY& a, const PALETTEENTRY& b) {
    return a.peRed == b.peRed && a.peGreen == b.peGreen && a.peBlue == b.peBlue;
}

TEST_F(PaletteDisplay, RealizingReachesAllButTheFixedEntries) {
    EXPECT_EQ(GetDeviceCaps(screen_, RASTERCAPS) & RC_PALETTE, RC_PALETTE);
    EXPECT_EQ(GetDeviceCaps(screen_, SIZEPALETTE), 256);
    EXPECT_EQ(GetDeviceCaps(screen_, NUMRESERVED), 20);
    const std::vector<PALETTEENTRY> before = System();
    const HPALETTE palette = MakePalette(Cube());
    const HPALETTE previous = SelectPalette(screen_, palette, FALSE);
    EXPECT_EQ(previous, GetStockObject(DEFAULT_PALETTE));
    EXPECT_GT(RealizePalette(screen_), 0u);
    const std::vector<PALETTEENTRY> after = System();
    for (std::size_t i = 0; i < 256; ++i) {
        const bool fixed = i < 10 || i >= 246;
        ASSERT_TRUE(Same(after[i], fixed ? before[i] : Cube()[i - 10])) << i;
    }
    EXPECT_EQ(RealizePalette(screen_), 0u);   // nothing is left to do
    SelectPalette(screen_, previous, FALSE);
    EXPECT_TRUE(DeleteObject(palette));
}

TEST_F(PaletteDisplay, CollapsingEntriesShareFixedColours) {
    const std::vector<PALETTEENTRY> before = System();
    std::vector<PALETTEENTRY> entries = {before[0], {1, 77, 3, 0}, before[255], {1, 77, 3, 0}, {9, 9, 99, 0}};
    const HPALETTE palette = MakePalette(entries);
    SelectPalette(screen_, palette, FALSE);
    RealizePalette(screen_);
    const std::vector<PALETTEENTRY> after = System();
    EXPECT_TRUE(Same(after[10], entries[1]));
    EXPECT_TRUE(Same(after[11], entries[4]));
    EXPECT_TRUE(Same(after[12], before[12]));
    // What is drawn in such a colour shows it.
    EXPECT_TRUE(SetPixelV(screen_, 3, 3, RGB(9, 9, 99)));
    EXPECT_EQ(platform::MemoryScreenPixel(3, 3), RGB(9, 9, 99));
    EXPECT_TRUE(SetPixelV(screen_, 3, 4, 0x01000001));   // by its index in the palette
    EXPECT_EQ(platform::MemoryScreenPixel(3, 4), RGB(1, 77, 3));
    DeleteObject(palette);
}

TEST(Palette, NearestIndexIsTheFirstOfTheClosest) {
    std::vector<PALETTEENTRY> entries(200);
    for (PALETTEENTRY& entry : entries) {
        entry = {static_cast<BYTE>(RandomIn(0, 7) * 36), static_cast<BYTE>(RandomIn(0, 7) * 36),
                 static_cast<BYTE>(RandomIn(0, 7) * 36), 0};
    }
    const HPALETTE palette = MakePalette(entries);
    for (int round = 0; round < 2000; ++round) {
        const COLORREF color = RGB(RandomIn(0, 255), RandomIn(0, 255), RandomIn(0, 255));
        UINT best = 0;
        int least = INT32_MAX;
        for (UINT i = 0; i < entries.size(); ++i) {
            const int red = entries[i].peRed - GetRValue(color);
            const int green = entries[i].peGreen - GetGValue(color);
            const int blue = entries[i].peBlue - GetBValue(color);
            const int distance = red * red + green * green + blue * blue;
            if (distance < least) {
                best = i;
                least = distance;
            }
        }
        ASSERT_EQ(GetNearestPaletteIndex(palette, color), best);
    }
    PALETTEENTRY some[4] = {};
    EXPECT_EQ(GetPaletteEntries(palette, 198, 4, some), 2u);
    EXPECT_TRUE(Same(some[1], entries[199]));
    EXPECT_EQ(GetPaletteEntries(palette, 200, 1, some), 0u);
    EXPECT_EQ(GetPaletteEntries(palette, 0, 0, nullptr), 200u);
    DeleteObject(palette);
    EXPECT_EQ(GetNearestPaletteIndex(palette, 0), CLR_INVALID);
    EXPECT_EQ(MakePalette({}), nullptr);
    EXPECT_EQ(CreatePalette(nullptr), nullptr);
}

TEST(Palette, DirectColourDisplaysHaveNone) {
    platform::UseMemoryDisplay({});
    const HDC screen = GetDC(nullptr);
    EXPECT_EQ(GetDeviceCaps(screen, RASTERCAPS) & RC_PALETTE, 0);
    EXPECT_EQ(GetSystemPaletteEntries(screen, 0, 256, nullptr), 0u);
    const HPALETTE palette = MakePalette(Cube());
    SelectPalette(screen, palette, FALSE);
    EXPECT_EQ(RealizePalette(screen), 0u);
    EXPECT_EQ(GetNearestColor(screen, RGB(1, 2, 3)), RGB(1, 2, 3));
    EXPECT_EQ(ReleaseDC(nullptr, screen), 1);
    DeleteObject(palette);
}

}   // namespace
}   // namespace rastel::test
