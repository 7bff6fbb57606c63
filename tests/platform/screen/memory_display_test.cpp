#include "rastel/platform/portable/memory_display.h"

#include <gtest/gtest.h>

#include <climits>
#include <thread>

#include "rastel/platform/gdi.h"
#include "rastel/platform/portable/display_kind.h"
#include "rastel/platform/portable/screen/device_faults.h"
#include "tests/platform/screen/access_support.h"

namespace {

using namespace rastel::platform;
using rastel::test::Draw;
using rastel::test::Look;
using rastel::test::NoisePicture;
using rastel::test::Picture;
using rastel::test::SamePicture;
using rastel::test::UsedBits;

MemoryDisplayOptions Options(int width, int height, int bits) {
    MemoryDisplayOptions options;
    options.width = width;
    options.height = height;
    options.bitsPerPixel = bits;
    return options;
}

DWORD RawOnScreen(int x, int y) {
    const ScreenView screen = MemoryScreen();
    const int bytes = (screen.bitsPerPixel + 1) / 8;
    return rastel::test::RawPixel(screen.bits + y * screen.pitch + x * bytes, bytes);
}

TEST(MemoryDisplay, EveryDepthKeepsPixelsInItsOwnFormat) {
    struct Case {
        int bits;
        DWORD red, green, blue;   // given
        DWORD raw;
        COLORREF widened;
    };
    for (const Case& one :
         {Case{15, 0, 0, 0, 0x7C1F, RGB(255, 0, 255)}, Case{16, 0, 0, 0, 0x07E0, RGB(0, 255, 0)},
          Case{16, 0x7C00, 0x03E0, 0x001F, 0x03E0, RGB(0, 255, 0)}, Case{24, 0, 0, 0, 0x123456, RGB(0x12, 0x34, 0x56)},
          Case{32, 0, 0, 0, 0x00123456, RGB(0x12, 0x34, 0x56)},
          Case{32, 0x3FF00000, 0x000FFC00, 0x3FF, 0x3FF00200, RGB(255, 0, 128)},
          Case{8, 0xE0, 0x1C, 0x03, 0xE3, RGB(255, 0, 255)}, Case{8, 0, 0, 0, 249, RGB(255, 0, 0)}}) {
        SCOPED_TRACE(testing::Message() << one.bits << " bits, red " << std::hex << one.red);
        MemoryDisplayOptions options = Options(33, 9, one.bits);
        options.redMask = one.red;
        options.greenMask = one.green;
        options.blueMask = one.blue;
        UseMemoryDisplay(options);
        EXPECT_EQ(Display()->Mode().bitsPerPixel, one.bits);
        EXPECT_EQ(Display()->SystemPalette().size(), one.bits == 8 && one.red == 0 ? 256u : 0u);
        EXPECT_TRUE(Draw(*Display(), nullptr, 32, 8, {1, 1, {one.raw}}));
        EXPECT_EQ(RawOnScreen(32, 8), one.raw);
        EXPECT_EQ(MemoryScreenPixel(32, 8), one.widened);
        EXPECT_EQ(RawOnScreen(31, 8), 0u);
    }
    EXPECT_EQ(MemoryScreenPixel(33, 0), CLR_INVALID);
    EXPECT_EQ(MemoryScreenPixel(0, -1), CLR_INVALID);
}

TEST(MemoryDisplay, PaddingBehindRowsIsNeverTouched) {
    for (const int bits : {8, 15, 16, 24, 32}) {
        MemoryDisplayOptions options = Options(21, 7, bits);
        options.pitchPadding = 12;
        UseMemoryDisplay(options);
        const ScreenView screen = MemoryScreen();
        const int used = 21 * ((bits + 1) / 8);
        ASSERT_GE(screen.pitch, used + 12);
        for (int y = 0; y < 7; ++y) {
            std::fill(screen.bits + y * screen.pitch + used, screen.bits + (y + 1) * screen.pitch, 0xA5);
        }
        // Straight on, and by the way round that a window over the edge takes.
        EXPECT_TRUE(Draw(*Display(), nullptr, 0, 0, NoisePicture(21, 7, ~0u, 1)));
        const HWND window = CreateMemoryWindow({-3, -3, 30, 20});
        EXPECT_TRUE(Draw(*Display(), window, 0, 0, NoisePicture(33, 23, ~0u, 2)));
        for (int y = 0; y < 7; ++y) {
            for (int i = used; i < screen.pitch; ++i) {
                ASSERT_EQ(screen.bits[y * screen.pitch + i], 0xA5) << bits << " bits, row " << y;
            }
        }
    }
}

TEST(MemoryDisplay, WindowsDrawOnlyWhereTheyAreSeen) {
    for (const int bits : {8, 16, 24, 32}) {
        UseMemoryDisplay(Options(40, 30, bits));
        const DWORD mask = UsedBits(Display()->Format());
        const Picture background = NoisePicture(40, 30, mask, 3);
        const Picture drawn = NoisePicture(20, 20, mask, 4);
        ASSERT_TRUE(Draw(*Display(), nullptr, 0, 0, background));
        const RECT client = {30, -5, 50, 15};   // over the top and the right edge
        const HWND window = CreateMemoryWindow(client);
        CreateMemoryWindow({35, 5, 60, 60});
        ASSERT_TRUE(Draw(*Display(), window, 0, 0, drawn));
        const Picture screen = Look(*Display(), nullptr, {0, 0, 40, 30});
        for (int y = 0; y < 30; ++y) {
            for (int x = 0; x < 40; ++x) {
                const bool mine = x >= 30 && y < 15 && !(x >= 35 && y >= 5);
                ASSERT_EQ(screen.At(x, y), mine ? drawn.At(x - 30, y + 5) : background.At(x, y)) << x << ", " << y;
            }
        }
        // What is off the screen reads as 0.
        const Picture seen = Look(*Display(), window, {0, 0, 20, 20});
        EXPECT_EQ(seen.At(0, 0), 0u);
        EXPECT_EQ(seen.At(19, 10), 0u);
        EXPECT_EQ(seen.At(0, 5), screen.At(30, 0));
    }
}

TEST(MemoryDisplay, LaterWindowsLieAboveAndNothingIsPaintedByMoving) {
    UseMemoryDisplay(Options(100, 80, 32));
    ASSERT_TRUE(Draw(*Display(), nullptr, 0, 0, NoisePicture(100, 80, 0xFFFFFF, 5)));
    const Picture before = Look(*Display(), nullptr, {0, 0, 100, 80});
    const HWND low = CreateMemoryWindow({0, 0, 40, 40});
    const HWND high = CreateMemoryWindow({20, 20, 60, 60});
    Region visible;
    ASSERT_TRUE(Display()->VisibleArea(low, &visible));
    EXPECT_EQ(visible.Complexity(), COMPLEXREGION);
    EXPECT_FALSE(visible.Contains({20, 20, 21, 21}));
    ASSERT_TRUE(Display()->VisibleArea(high, &visible));
    EXPECT_EQ(visible.Complexity(), SIMPLEREGION);

    MoveMemoryWindow(high, {40, 0, 80, 40});
    ASSERT_TRUE(Display()->VisibleArea(low, &visible));
    EXPECT_EQ(visible.Complexity(), SIMPLEREGION);
    MoveMemoryWindow(high, {0, 0, 100, 80});
    ASSERT_TRUE(Display()->VisibleArea(low, &visible));
    EXPECT_EQ(visible.Complexity(), NULLREGION);
    DestroyMemoryWindow(high);
    ASSERT_TRUE(Display()->VisibleArea(low, &visible));
    EXPECT_TRUE(visible.Contains({0, 0, 40, 40}));
    EXPECT_FALSE(Display()->VisibleArea(high, &visible));
    EXPECT_TRUE(SamePicture(before, Look(*Display(), nullptr, {0, 0, 100, 80})));
}

TEST(MemoryDisplay, AccessesTakeTurns) {
    UseMemoryDisplay(Options(16, 16, 32));
    PixelBuffer pixels;
    ASSERT_TRUE(Display()->BeginAccess(nullptr, {0, 0, 16, 16}, Access::ReadWrite, &pixels));
    PixelBuffer second;
    EXPECT_FALSE(Display()->BeginAccess(nullptr, {0, 0, 1, 1}, Access::Read, &second));
    EXPECT_FALSE(Display()->SetMode({640, 480, 32, 0})) << "the pixels are in use";
    std::thread other([&] {
        Display()->EndAccess();   // not its own: ignored
        EXPECT_TRUE(Draw(*Display(), nullptr, 0, 0, {1, 1, {7}}));
    });
    std::fill(pixels.bits, pixels.bits + 4, 0x11);
    EXPECT_EQ(MemoryScreenPixel(0, 0), RGB(0x11, 0x11, 0x11));
    Display()->EndAccess();
    other.join();
    EXPECT_EQ(RawOnScreen(0, 0), 7u);
    Display()->EndAccess();
    EXPECT_TRUE(Draw(*Display(), nullptr, 0, 0, {1, 1, {8}}));
}

TEST(MemoryDisplay, AreasOutsideOrInsideOutAreRefused) {
    UseMemoryDisplay(Options(16, 16, 32));
    const HWND window = CreateMemoryWindow({4, 4, 8, 8});
    PixelBuffer pixels;
    for (const RECT& area : {RECT{0, 0, 5, 4}, RECT{-1, 0, 4, 4}, RECT{2, 2, 2, 3}, RECT{3, 0, 1, 4},
                             RECT{INT_MIN, INT_MIN, INT_MAX, INT_MAX}, RECT{0, 0, INT_MAX, INT_MAX}}) {
        EXPECT_FALSE(Display()->BeginAccess(window, area, Access::Write, &pixels));
    }
    EXPECT_FALSE(Display()->BeginAccess(window, {0, 0, 4, 4}, Access::Write, nullptr));
    DestroyMemoryWindow(window);
    EXPECT_FALSE(Display()->BeginAccess(window, {0, 0, 4, 4}, Access::Write, &pixels));
    EXPECT_TRUE(Display()->BeginAccess(nullptr, {0, 0, 16, 16}, Access::Write, &pixels)) << "no turn was left taken";
    Display()->EndAccess();
}

TEST(MemoryDisplay, SenselessOptionsFallBack) {
    for (const int size : {0, -1, INT_MIN, INT_MAX, 32767}) {   // the last: sensible, but both are too much memory
        MemoryDisplayOptions options = Options(size, size, 32);
        UseMemoryDisplay(options);
        EXPECT_EQ(Display()->Mode().width, 1024) << size;
        EXPECT_EQ(Display()->Mode().height, 768) << size;
        EXPECT_NE(MemoryScreen().bits, nullptr);
    }
    MemoryDisplayOptions options = Options(64, 64, -5);
    options.redMask = 0xFF00FF;   // with a hole
    options.greenMask = options.blueMask = 0xFF;
    options.pitchPadding = INT_MIN;
    options.refreshHz = INT_MIN;
    options.modes = {{INT_MAX, 1, 32}, {640, 480, 7}, {320, 200, 8}};
    UseMemoryDisplay(options);
    EXPECT_EQ(Display()->Mode().bitsPerPixel, 32);
    EXPECT_EQ(Display()->Format(), FormatOfDepth(32));
    EXPECT_EQ(MemoryScreen().pitch, 64 * 4);
    EXPECT_EQ(Display()->Mode().refreshHz, 0);
    ASSERT_EQ(Display()->Modes().size(), 1u);
    EXPECT_EQ(Display()->Modes()[0].width, 320);
}

TEST(MemoryDisplay, WildWindowsAreHarmless) {
    UseMemoryDisplay(Options(64, 48, 16));
    const HWND whole = CreateMemoryWindow({INT_MIN, INT_MIN, INT_MAX, INT_MAX});
    const HWND inverted = CreateMemoryWindow({50, 40, 10, 5});
    Region visible;
    ASSERT_TRUE(Display()->VisibleArea(whole, &visible));
    EXPECT_TRUE(visible.Contains({0, 0, 64, 48}));
    ASSERT_TRUE(Display()->VisibleArea(inverted, &visible));
    EXPECT_TRUE(visible.IsEmpty());
    MoveMemoryWindow(nullptr, {0, 0, 1, 1});
    DestroyMemoryWindow(nullptr);
    DestroyMemoryWindow(reinterpret_cast<HWND>(~std::uintptr_t{0}));
    PixelBuffer pixels;
    EXPECT_FALSE(Display()->BeginAccess(whole, {0, 0, 1 << 20, 1 << 20}, Access::Read, &pixels));
}

TEST(MemoryDisplay, ModesChangeTheScreenAndComeBack) {
    MemoryDisplayOptions options = Options(700, 500, 16);
    options.redMask = 0x7C00;
    options.greenMask = 0x03E0;
    options.blueMask = 0x001F;
    UseMemoryDisplay(options);
    ASSERT_TRUE(Draw(*Display(), nullptr, 0, 0, {1, 1, {0x7FFF}}));
    EXPECT_FALSE(Display()->SetMode({641, 480, 32, 0}));
    EXPECT_FALSE(Display()->SetMode({640, 480, 32, 75}));
    ASSERT_TRUE(Display()->SetMode({640, 480, 8, 60}));
    EXPECT_EQ(MemoryScreen().width, 640);
    EXPECT_EQ(MemoryScreen().bitsPerPixel, 8);
    EXPECT_EQ(RawOnScreen(0, 0), 0u);
    EXPECT_TRUE(Display()->Format().IsIndexed());
    ASSERT_TRUE(Display()->SetMode({640, 480, 16, 0}));
    EXPECT_EQ(Display()->Format().redMask, 0x7C00u) << "the display's own kind of 16 bits";
    ASSERT_TRUE(Display()->RestoreMode());
    EXPECT_EQ(MemoryScreen().width, 700);
    EXPECT_EQ(MemoryScreen().height, 500);
    EXPECT_EQ(MemoryScreen().bitsPerPixel, 16);
}

TEST(MemoryDisplay, RealisedColorsReachTheSystemPaletteButForTheFixedOnes) {
    UseMemoryDisplay(Options(16, 16, 8));
    const std::vector<RGBQUAD> before = Display()->SystemPalette();
    ASSERT_EQ(before.size(), 256u);
    EXPECT_EQ(before[255].rgbRed, 255);
    EXPECT_EQ(before[0].rgbRed, 0);
    ASSERT_TRUE(Display()->SetSystemPalette(0, std::vector<RGBQUAD>(256, RGBQUAD{1, 2, 3, 0})));
    const std::vector<RGBQUAD> after = Display()->SystemPalette();
    for (std::size_t i = 0; i < 256; ++i) {
        const bool fixed = i < 10 || i >= 246;
        EXPECT_EQ(after[i].rgbRed, fixed ? before[i].rgbRed : 3) << i;
        EXPECT_EQ(after[i].rgbBlue, fixed ? before[i].rgbBlue : 1) << i;
    }
    ASSERT_TRUE(Draw(*Display(), nullptr, 0, 0, {1, 1, {100}}));
    EXPECT_EQ(MemoryScreenPixel(0, 0), RGB(3, 2, 1));
    EXPECT_FALSE(Display()->SetSystemPalette(-1, {RGBQUAD{}}));
    EXPECT_FALSE(Display()->SetSystemPalette(255, {RGBQUAD{}, RGBQUAD{}}));
    EXPECT_FALSE(Display()->SetSystemPalette(INT_MAX, {RGBQUAD{}}));
    UseMemoryDisplay(Options(16, 16, 32));
    EXPECT_FALSE(Display()->SetSystemPalette(20, {RGBQUAD{}}));
}

TEST(MemoryDisplay, ANewDisplayEndsAllWindows) {
    UseMemoryDisplay(Options(16, 16, 32));
    const HWND window = CreateMemoryWindow({0, 0, 4, 4});
    UseMemoryDisplay(Options(16, 16, 32));
    const HWND other = CreateMemoryWindow({0, 0, 8, 8});
    EXPECT_NE(window, other);
    RECT client;
    EXPECT_FALSE(Display()->ClientArea(window, &client));
    EXPECT_TRUE(Display()->ClientArea(other, &client));
    EXPECT_EQ(DisplayKind(), L"memory");
    EXPECT_EQ(DisplayDeclined(), L"");
}

TEST(DeviceFaults, CallsFailAsOftenAsAskedFor) {
    FailDeviceCalls("Lock", 2);
    FailDeviceCalls("Blt", 1);
    EXPECT_FALSE(ShouldFail("Unlock"));
    EXPECT_TRUE(ShouldFail("Lock"));
    EXPECT_TRUE(ShouldFail("Blt"));
    EXPECT_TRUE(ShouldFail("Lock"));
    EXPECT_FALSE(ShouldFail("Lock"));
    FailDeviceCalls("Lock", 5);
    FailDeviceCalls("Lock", 0);
    EXPECT_FALSE(ShouldFail("Lock"));
    FailDeviceCalls("Lock", -1);
    FailDeviceCalls(nullptr, 1);
    EXPECT_FALSE(ShouldFail("Lock"));
    EXPECT_FALSE(ShouldFail(nullptr));
}

TEST(DeviceFaults, LosingSurfacesIsNoticedByEveryOneMadeBefore) {
    const std::uint64_t made = DeviceSurfaceGeneration();
    EXPECT_EQ(DeviceSurfaceGeneration(), made);
    LoseDeviceSurfaces();
    EXPECT_GT(DeviceSurfaceGeneration(), made);
}

}   // namespace
