// Surfaces as memory: formats, locks, contexts, palettes, and memory that is lost.
#include <climits>
#include <thread>

#include "rastel/platform/portable/screen/display_device.h"
#include "tests/platform/ddraw/ddraw_test_support.h"

namespace rastel::test {
namespace {

class Surfaces : public OnDirectDraw {};

TEST_F(Surfaces, TheScreenIsOneOnEveryDepth) {
    for (const Format& format : kFormats) {
        Start(format);
        const Surface primary = Make(Primary()), same = Make(OffScreen(5, 5));
        auto locked = Sized<DDSURFACEDESC>(), told = Sized<DDSURFACEDESC>();
        ASSERT_EQ(primary->Lock(nullptr, &locked, DDLOCK_WAIT, nullptr), DD_OK) << format.bits;
        ASSERT_EQ(same->GetSurfaceDesc(&told), DD_OK);
        const rastel::platform::ScreenView screen = rastel::platform::MemoryScreen();
        EXPECT_EQ(locked.lpSurface, screen.bits);
        EXPECT_EQ(locked.lPitch, screen.pitch);
        EXPECT_EQ(locked.dwWidth, static_cast<DWORD>(kWidth));
        for (const DDPIXELFORMAT& pixels : {locked.ddpfPixelFormat, told.ddpfPixelFormat}) {
            EXPECT_EQ(pixels.dwRGBBitCount, static_cast<DWORD>(format.bits));
            EXPECT_EQ(pixels.dwRBitMask, format.red);
            EXPECT_EQ(pixels.dwBBitMask, format.blue);
        }
        EXPECT_EQ(primary->Unlock(nullptr), DD_OK);
        RECT part = {3, 2, 9, 9};
        ASSERT_EQ(primary->Lock(&part, &locked, 0, nullptr), DD_OK);
        EXPECT_EQ(locked.lpSurface, screen.bits + 2 * screen.pitch + 3 * StoredBits(locked) / 8);
        EXPECT_EQ(primary->Unlock(nullptr), DD_OK);
    }
}

TEST_F(Surfaces, OnesInMemoryHaveTheirOwnFormatAndPitch) {
    for (const Format& format : kFormats) {
        const Surface surface = Make(OffScreen(7, 5, format));
        auto locked = Sized<DDSURFACEDESC>();
        RECT part = {2, 3, 7, 5};
        ASSERT_EQ(surface->Lock(nullptr, &locked, 0, nullptr), DD_OK) << format.bits;
        auto* const first = static_cast<unsigned char*>(locked.lpSurface);
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(first) % 16, 0u);
        EXPECT_GE(locked.lPitch, 7 * StoredBits(locked) / 8 + kPadding);
        EXPECT_EQ(locked.ddpfPixelFormat.dwRGBBitCount, static_cast<DWORD>(format.bits));
        std::memset(first, 0x5A,
                    static_cast<std::size_t>(locked.lPitch) * 5);   // all of it is ours
        ASSERT_EQ(surface->Unlock(nullptr), DD_OK);
        ASSERT_EQ(surface->Lock(&part, &locked, 0, nullptr), DD_OK);
        EXPECT_EQ(locked.lpSurface, first + 3 * locked.lPitch + 2 * StoredBits(locked) / 8);
        ASSERT_EQ(surface->Unlock(nullptr), DD_OK);
    }
}

TEST_F(Surfaces, SenselessDescriptionsMakeNone) {
    const DDSURFACEDESC good = OffScreen(4, 4, kFormats[2]);
    std::vector<DDSURFACEDESC> bad(11, good);
    bad[0].dwSize = 0;
    bad[1].dwFlags &= ~static_cast<DWORD>(DDSD_WIDTH);
    bad[2].dwHeight = 0;
    bad[3].dwWidth = bad[3].dwHeight = UINT_MAX;
    bad[4].dwWidth = bad[4].dwHeight = 40000;
    bad[5].ddpfPixelFormat.dwRGBBitCount = 12;
    bad[6].ddpfPixelFormat.dwRBitMask = 0x07E0;   // twice the same bits
    bad[7].ddpfPixelFormat.dwGBitMask = 0x1000000;
    bad[8].ddpfPixelFormat.dwSize = 4;
    bad[9].ddsCaps.dwCaps = DDSCAPS_OFFSCREENPLAIN | DDSCAPS_VIDEOMEMORY;
    bad[10] = Primary();
    bad[10].ddsCaps.dwCaps |= DDSCAPS_FLIP | DDSCAPS_COMPLEX;
    for (std::size_t i = 0; i < bad.size(); ++i) {
        IDirectDrawSurface* made = reinterpret_cast<IDirectDrawSurface*>(&bad);
        EXPECT_LT(device->CreateSurface(&bad[i], &made, nullptr), 0) << i;
        EXPECT_EQ(made, nullptr) << i;
    }
    IDirectDrawSurface* made = nullptr;
    EXPECT_LT(device->CreateSurface(nullptr, &made, nullptr), 0);
    EXPECT_LT(device->CreateSurface(&bad[0], nullptr, nullptr), 0);
    EXPECT_EQ(CountOf(*device), 1u);
}

TEST_F(Surfaces, OneHolderAtATime) {
    const Surface surface = Make(OffScreen(4, 4)), other = Make(OffScreen(4, 4));
    auto locked = Sized<DDSURFACEDESC>(), again = locked;
    HDC context = nullptr;
    const RECT whole = {0, 0, 4, 4};
    EXPECT_EQ(surface->Unlock(nullptr), DDERR_NOTLOCKED);
    for (RECT bad : {RECT{0, 0, 5, 4}, {-1, 0, 4, 4}, {2, 2, 2, 4}, {INT_MIN, INT_MIN, INT_MAX, INT_MAX}}) {
        EXPECT_EQ(surface->Lock(&bad, &locked, 0, nullptr), DDERR_INVALIDRECT);
    }
    ASSERT_EQ(surface->Lock(nullptr, &locked, DDLOCK_WAIT, nullptr), DD_OK);
    EXPECT_EQ(surface->Lock(nullptr, &again, DDLOCK_WAIT, nullptr), DDERR_SURFACEBUSY);
    EXPECT_EQ(again.lpSurface, nullptr);
    EXPECT_LT(surface->GetDC(&context), 0);
    EXPECT_EQ(context, nullptr);
    EXPECT_EQ(Fill(*surface, nullptr, 1), DDERR_SURFACEBUSY);
    EXPECT_EQ(Blt(*other, whole, *surface, whole), DDERR_SURFACEBUSY);
    // Refused, never waited for: whoever has it may be waiting for the one that asks.
    std::thread neighbour([&] {
        auto mine = Sized<DDSURFACEDESC>();
        HDC refused = nullptr;
        EXPECT_EQ(surface->Lock(nullptr, &mine, DDLOCK_WAIT, nullptr), DDERR_SURFACEBUSY);
        EXPECT_EQ(Fill(*surface, nullptr, 1), DDERR_SURFACEBUSY);
        EXPECT_EQ(surface->GetDC(&refused), DDERR_SURFACEBUSY);
        EXPECT_EQ(surface->Unlock(nullptr), DDERR_NOTLOCKED);
    });
    neighbour.join();
    EXPECT_EQ(surface->Unlock(nullptr), DD_OK);
    EXPECT_EQ(Fill(*surface, nullptr, 1), DD_OK);
}

TEST_F(Surfaces, WhatIsAttachedMayChangeDuringABlit) {
    const Surface surface = Make(OffScreen(32, 32));
    std::thread drawing([&] {
        for (int i = 0; i < 300; ++i) {
            EXPECT_EQ(Fill(*surface, nullptr, 1), DD_OK);
        }
    });
    for (int i = 0; i < 300; ++i) {
        const Com<IDirectDrawClipper> clipper = NewClipper();
        struct {
            RGNDATAHEADER header;
            RECT rect;
        } list = {{sizeof(RGNDATAHEADER), RDH_RECTANGLES, 1, sizeof(RECT), {0, 0, 8, 8}}, {0, 0, 8, 8}};
        clipper->SetClipList(reinterpret_cast<LPRGNDATA>(&list), 0);
        surface->SetClipper(clipper.get());
        DDCOLORKEY key{0, 5};
        surface->SetColorKey(DDCKEY_SRCBLT, &key);
    }
    drawing.join();
}

TEST_F(Surfaces, BlitsInOppositeDirectionsDontWaitForEver) {
    const Surface one = Make(OffScreen(64, 64)), two = Make(OffScreen(64, 64));
    const RECT whole = {0, 0, 64, 64};
    const auto copy = [&](IDirectDrawSurface2& to, IDirectDrawSurface2& from) {
        for (int i = 0; i < 200; ++i) {
            EXPECT_EQ(Blt(to, whole, from, whole), DD_OK);
        }
    };
    std::thread there([&] { copy(*one, *two); });
    copy(*two, *one);
    there.join();
}

TEST_F(Surfaces, AContextDrawsOnTheSameBytes) {
    for (const Format& format : kFormats) {
        Start(format);
        for (const bool isScreen : {true, false}) {
            const Surface surface = Make(isScreen ? Primary() : OffScreen(8, 8));
            ASSERT_EQ(Fill(*surface, nullptr, 0), DD_OK);
            HDC context = nullptr, second = nullptr;
            ASSERT_EQ(surface->GetDC(&context), DD_OK);
            EXPECT_EQ(SetPixel(context, 3, 2, RGB(255, 255, 255)), RGB(255, 255, 255));
            auto locked = Sized<DDSURFACEDESC>();
            EXPECT_LT(surface->Lock(nullptr, &locked, DDLOCK_WAIT, nullptr), 0);
            EXPECT_EQ(surface->GetDC(&second), DDERR_DCALREADYCREATED);
            EXPECT_LT(surface->ReleaseDC(nullptr), 0);
            EXPECT_EQ(surface->ReleaseDC(context), DD_OK);
            EXPECT_LT(surface->ReleaseDC(context), 0);
            EXPECT_EQ(SetPixel(context, 0, 0, 0), CLR_INVALID);   // stale
            const std::size_t width = isScreen ? kWidth : 8;
            const Words pixels = Read(*surface);
            const DWORD drawn = pixels[2 * width + 3];
            if (format.red == 0) {   // more than one entry is white
                EXPECT_EQ(rastel::platform::Display()->SystemPalette()[drawn].rgbGreen, 255);
            } else {
                EXPECT_EQ(drawn, format.red | format.green | format.blue) << format.bits;
            }
            EXPECT_EQ(pixels[2 * width + 2], 0u);
        }
    }
    Surface dying = Make(OffScreen(2, 2));
    HDC context = nullptr;
    ASSERT_EQ(dying->GetDC(&context), DD_OK);
    dying.reset();
    EXPECT_EQ(SetPixel(context, 0, 0, 0), CLR_INVALID);
}

TEST_F(Surfaces, LostMemoryAnswersSoUntilItIsRestored) {
    const Surface primary = Make(Primary()), shown = Make(OffScreen(4, 4)), own = Make(OffScreen(4, 4, kFormats[2]));
    const RECT whole = {0, 0, 4, 4};
    LoseDeviceSurfaces();
    for (const Surface* const surface : {&primary, &shown, &own}) {
        auto locked = Sized<DDSURFACEDESC>();
        HDC context = nullptr;
        EXPECT_EQ((*surface)->IsLost(), DDERR_SURFACELOST);
        EXPECT_EQ((*surface)->Lock(nullptr, &locked, DDLOCK_WAIT, nullptr), DDERR_SURFACELOST);
        EXPECT_EQ((*surface)->GetDC(&context), DDERR_SURFACELOST);
        EXPECT_EQ(Fill(**surface, nullptr, 1), DDERR_SURFACELOST);
        EXPECT_EQ((*surface)->Restore(), DD_OK);
        EXPECT_EQ(Fill(**surface, nullptr, 1), DD_OK);
    }
    LoseDeviceSurfaces();
    ASSERT_EQ(primary->Restore(), DD_OK);
    EXPECT_EQ(Blt(*primary, whole, *shown, whole),
              DDERR_SURFACELOST);   // the source counts, too

    ASSERT_EQ(device->SetCooperativeLevel(nullptr, DDSCL_EXCLUSIVE | DDSCL_FULLSCREEN), DD_OK);
    ASSERT_EQ(device->SetDisplayMode(320, 200, 16, 0, 0), DD_OK);
    EXPECT_EQ(primary->Restore(), DD_OK);
    auto told = Sized<DDSURFACEDESC>();
    ASSERT_EQ(primary->GetSurfaceDesc(&told), DD_OK);
    EXPECT_EQ(told.dwWidth, 320u);
    EXPECT_EQ(told.ddpfPixelFormat.dwRGBBitCount, 16u);
    EXPECT_EQ(own->Restore(), DD_OK);
    EXPECT_EQ(shown->Restore(), DDERR_WRONGMODE);
    EXPECT_EQ(shown->IsLost(), DDERR_SURFACELOST);
    EXPECT_EQ(Blt(*primary, whole, *own, whole), DD_OK);
    ASSERT_EQ(device->RestoreDisplayMode(), DD_OK);
    EXPECT_EQ(shown->Restore(), DD_OK);
}

TEST_F(Surfaces, AScreenThatChangedBehindThemIsNotWrittenInTheOldFormat) {
    const Surface primary = Make(Primary());
    ASSERT_TRUE(rastel::platform::Display()->SetMode({640, 400, 32, 0}));
    ASSERT_TRUE(rastel::platform::Display()->SetMode({320, 200, 8, 0}));
    auto locked = Sized<DDSURFACEDESC>();
    EXPECT_LT(primary->Lock(nullptr, &locked, DDLOCK_WAIT, nullptr), 0);
    EXPECT_EQ(locked.lpSurface, nullptr);
    EXPECT_TRUE(rastel::platform::Display()->RestoreMode());   // nobody holds the screen
}

TEST_F(Surfaces, AKeyedReadOfAScreenThatShrankStaysInside) {
    ASSERT_EQ(device->SetCooperativeLevel(nullptr, DDSCL_EXCLUSIVE | DDSCL_FULLSCREEN), DD_OK);
    ASSERT_EQ(device->SetDisplayMode(640, 400, 32, 0, 0), DD_OK);
    const Surface primary = Make(Primary()), memory = Make(OffScreen(640, 400, kWords));
    ASSERT_EQ(Fill(*memory, nullptr, 0x123456), DD_OK);
    ASSERT_TRUE(rastel::platform::Display()->SetMode({320, 200, 32, 0}));
    const RECT whole = {0, 0, 640, 400}, corner = {630, 390, 640, 400};
    DDCOLORKEY key{1, 1};
    ASSERT_EQ(primary->SetColorKey(DDCKEY_SRCBLT, &key), DD_OK);
    Blt(*memory, corner, *primary, corner, DDBLT_KEYSRC | DDBLT_WAIT);
    Blt(*memory, whole, *primary, whole, DDBLT_KEYSRC | DDBLT_WAIT);
    const Words pixels = Read(*memory);
    EXPECT_EQ(pixels[0], 0u);
    EXPECT_EQ(pixels.back(), 0x123456u);
}

TEST_F(Surfaces, APaletteShowsWhileTheScreenHasIt) {
    Start(kFormats[0]);
    const auto shown = [](std::size_t entry) { return rastel::platform::Display()->SystemPalette()[entry].rgbGreen; };
    std::vector<PALETTEENTRY> entries(256, {0, 77, 0, 0});
    IDirectDrawPalette* made = nullptr;
    ASSERT_EQ(device->CreatePalette(DDPCAPS_8BIT, entries.data(), &made, nullptr), DD_OK);
    const Com<IDirectDrawPalette> palette(made);
    Surface primary = Make(Primary()), memory = Make(OffScreen(2, 2));
    ASSERT_EQ(memory->SetPalette(palette.get()), DD_OK);
    EXPECT_NE(shown(100), 77);
    ASSERT_EQ(primary->SetPalette(palette.get()), DD_OK);
    EXPECT_EQ(shown(100), 77);
    EXPECT_EQ(CountOf(*palette), 3u);
    memory.reset();   // the screen keeps it
    entries[0].peGreen = 99;
    ASSERT_EQ(palette->SetEntries(0, 100, 1, entries.data()), DD_OK);
    EXPECT_EQ(shown(100), 99);
    PALETTEENTRY read[2] = {};
    EXPECT_EQ(palette->GetEntries(0, 99, 2, read), DD_OK);
    EXPECT_EQ(read[1].peGreen, 99);
    for (const auto& [first, count] : {std::pair{255u, 2u}, {257u, 0u}, {~0u, 2u}, {0u, ~0u}}) {
        EXPECT_LT(palette->SetEntries(0, first, count, entries.data()), 0);
        EXPECT_LT(palette->GetEntries(0, first, count, read), 0);
    }
    primary.reset();
    EXPECT_EQ(CountOf(*palette), 1u);
    entries[0].peGreen = 11;
    ASSERT_EQ(palette->SetEntries(0, 100, 1, entries.data()), DD_OK);
    EXPECT_EQ(shown(100), 99);
    const Surface words = Make(OffScreen(2, 2, kWords));
    EXPECT_LT(words->SetPalette(palette.get()), 0);
}

}   // namespace
}   // namespace rastel::test
