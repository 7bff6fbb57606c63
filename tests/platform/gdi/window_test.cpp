#include "gdi_test_support.h"
#include "rastel/platform/portable/memory_display.h"

namespace rastel::test {
namespace {

struct Depth {
    int bits;
    Format format;
};

const Depth kDepths[] = {
    {8, {"256 colours", 8, {0, 0, 0}}}, {15, kFormats[3]}, {16, kFormats[4]}, {24, kFormats[6]}, {32, kFormats[7]},
};

class OnDisplay : public ::testing::TestWithParam<Depth> {
protected:
    void SetUp() override {
        platform::MemoryDisplayOptions options;
        options.width = 120;
        options.height = 90;
        options.bitsPerPixel = GetParam().bits;
        options.pitchPadding = 12;
        platform::UseMemoryDisplay(options);
    }
    void TearDown() override { platform::UseMemoryDisplay({}); }

    static std::vector<COLORREF> Shot() {
        std::vector<COLORREF> pixels;
        for (int y = 0; y < 90; ++y) {
            for (int x = 0; x < 120; ++x) {
                pixels.push_back(platform::MemoryScreenPixel(x, y));
            }
        }
        return pixels;
    }

    // What the display shows of a colour.
    static COLORREF Shown(COLORREF color) {
        const HDC screen = GetDC(nullptr);
        const COLORREF shown = GetNearestColor(screen, color);
        ReleaseDC(nullptr, screen);
        return shown;
    }
};

INSTANTIATE_TEST_SUITE_P(Depths, OnDisplay, ::testing::ValuesIn(kDepths),
                         [](const auto& depth) { return std::to_string(depth.param.bits) + "bits"; });

TEST_P(OnDisplay, TheDeviceTellsItsDepth) {
    const HDC screen = CreateDCW(L"DISPLAY", nullptr, nullptr, nullptr);
    EXPECT_EQ(GetDeviceCaps(screen, BITSPIXEL), GetParam().bits);
    EXPECT_EQ(GetDeviceCaps(screen, PLANES), 1);
    EXPECT_EQ(GetDeviceCaps(screen, HORZRES), 120);
    EXPECT_EQ(GetDeviceCaps(screen, VERTRES), 90);
    EXPECT_EQ(GetDeviceCaps(screen, VREFRESH), 60);
    EXPECT_EQ(GetDeviceCaps(screen, LOGPIXELSY), 96);
    DeleteDC(screen);
}

TEST_P(OnDisplay, PicturesArriveInTheFormatOfTheDisplay) {
    Section picture(50, 40, Plain32());
    picture.Randomize();
    const HWND window = platform::CreateMemoryWindow({20, 10, 100, 80});
    const HDC dc = GetDC(window);
    SetViewportOrgEx(dc, 3, 2, nullptr);
    ASSERT_TRUE(BitBlt(dc, 5, 6, 50, 40, picture.Dc(), 0, 0, SRCCOPY));
    for (int y = 0; y < 40; ++y) {
        for (int x = 0; x < 50; ++x) {
            ASSERT_EQ(platform::MemoryScreenPixel(20 + 8 + x, 10 + 8 + y), Shown(picture.Color(x, y))) << x << "," << y;
        }
    }
    // And back again, by the bits of a compatible bitmap.
    const HDC memory = CreateCompatibleDC(dc);
    const HBITMAP bitmap = CreateCompatibleBitmap(dc, 50, 40);
    const HGDIOBJ previous = SelectObject(memory, bitmap);
    ASSERT_TRUE(BitBlt(memory, 0, 0, 50, 40, dc, 5, 6, SRCCOPY));
    EXPECT_EQ(GetPixel(memory, 49, 39), Shown(picture.Color(49, 39)));
    EXPECT_EQ(GetPixel(dc, 5, 6), Shown(picture.Color(0, 0)));
    SelectObject(memory, previous);
    DeleteObject(bitmap);
    DeleteDC(memory);
    EXPECT_EQ(ReleaseDC(window, dc), 1);
    EXPECT_EQ(ReleaseDC(window, dc), 0);
}

TEST_P(OnDisplay, DrawingStopsAtOtherWindowsAndAtTheScreen) {
    const HWND below = platform::CreateMemoryWindow({-10, 20, 70, 100});
    const HWND above = platform::CreateMemoryWindow({30, 40, 60, 60});
    const std::vector<COLORREF> before = Shot();
    const HDC dc = GetDC(below);
    EXPECT_EQ(SaveDC(dc), 1);
    EXPECT_EQ(SetMetaRgn(dc), COMPLEXREGION);
    EXPECT_TRUE(RestoreDC(dc, -1));
    const HBRUSH brush = CreateSolidBrush(RGB(255, 0, 0));
    Section picture(200, 200, Plain32());
    const RECT all = {0, 0, 200, 200};
    FillRect(picture.Dc(), &all, brush);
    using Draw = void (*)(HDC, HDC, HBRUSH);
    const Draw draws[] = {
        [](HDC to, HDC, HBRUSH with) {
            const RECT huge = {-500, -500, 500, 500};
            FillRect(to, &huge, with);
        },
        [](HDC to, HDC from, HBRUSH) { BitBlt(to, -20, -20, 200, 200, from, 0, 0, SRCCOPY); },
        [](HDC to, HDC from, HBRUSH) { StretchBlt(to, -20, -20, 300, 300, from, 0, 0, 200, 200, SRCPAINT); },
    };
    const COLORREF red = Shown(RGB(255, 0, 0));
    for (const Draw draw : draws) {
        PatBlt(dc, 0, 0, 200, 200, BLACKNESS);
        draw(dc, picture.Dc(), brush);
        const std::vector<COLORREF> after = Shot();
        for (int y = 0; y < 90; ++y) {
            for (int x = 0; x < 120; ++x) {
                const bool covered = x >= 30 && x < 60 && y >= 40 && y < 60;
                const bool drawn = x < 70 && y >= 20 && !covered;
                const auto at = static_cast<std::size_t>(y * 120 + x);
                ASSERT_EQ(after[at], drawn ? red : before[at]) << x << "," << y;
            }
        }
    }
    platform::MoveMemoryWindow(above, {0, 0, 70, 30});   // the clip is that of the moment
    EXPECT_EQ(SetMetaRgn(dc), SIMPLEREGION);
    platform::DestroyMemoryWindow(below);
    const RECT corner = {0, 0, 9, 9};
    EXPECT_EQ(FillRect(dc, &corner, brush), 0);
    EXPECT_FALSE(BitBlt(dc, 0, 0, 9, 9, picture.Dc(), 0, 0, SRCCOPY));
    EXPECT_EQ(SetMetaRgn(dc), RGN_ERROR);
    EXPECT_EQ(GetPixel(dc, 0, 0), CLR_INVALID);
    EXPECT_EQ(GetDC(below), nullptr);
    EXPECT_EQ(ReleaseDC(below, dc), 1);
    DeleteObject(brush);
}

TEST_P(OnDisplay, TheScreenMovesOntoItself) {
    const HDC screen = GetDC(nullptr);
    Section picture(120, 90, Plain32());
    picture.Randomize();
    InfoBlock info(120, 90, Plain32());
    EXPECT_EQ(StretchDIBits(screen, 0, 0, 120, 90, 0, 0, 120, 90, picture.Bits(), info.Info(), DIB_RGB_COLORS, SRCCOPY),
              90);
    const std::vector<COLORREF> before = Shot();
    EXPECT_EQ(before[120 * 89 + 119], Shown(picture.Color(119, 89)));
    ASSERT_TRUE(BitBlt(screen, 7, 3, 100, 80, screen, 2, 1, SRCCOPY));
    const std::vector<COLORREF> after = Shot();
    for (int y = 0; y < 90; ++y) {
        for (int x = 0; x < 120; ++x) {
            const bool moved = x >= 7 && x < 107 && y >= 3 && y < 83;
            const int from = moved ? (y - 2) * 120 + x - 5 : y * 120 + x;
            ASSERT_EQ(after[static_cast<std::size_t>(y * 120 + x)], before[static_cast<std::size_t>(from)]);
        }
    }
    ReleaseDC(nullptr, screen);
}

TEST_P(OnDisplay, LinesAndPixelsLeaveTheRestAlone) {
    const HWND window = platform::CreateMemoryWindow({10, 10, 110, 80});
    const HDC dc = GetDC(window);
    Section twin(100, 70, Plain32());
    PatBlt(dc, 0, 0, 100, 70, WHITENESS);
    PatBlt(twin.Dc(), 0, 0, 100, 70, WHITENESS);
    for (const HDC target : {dc, twin.Dc()}) {
        SelectObject(target, GetStockObject(BLACK_PEN));
        MoveToEx(target, -40, 3, nullptr);
        LineTo(target, 120, 66);
        SetPixelV(target, 50, 1, 0);
        Rectangle(target, 80, 50, 95, 65);
    }
    for (int y = 0; y < 70; ++y) {
        for (int x = 0; x < 100; ++x) {
            ASSERT_EQ(platform::MemoryScreenPixel(10 + x, 10 + y), twin.Color(x, y)) << x << "," << y;
        }
    }
    ReleaseDC(window, dc);
}

}   // namespace
}   // namespace rastel::test
