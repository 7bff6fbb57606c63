// Presenting on the screen and in windows through GDI.
#include <gtest/gtest.h>

#include <climits>

#include "tests/display/library_on_memory.h"
#include "tests/support/test_store.h"

using rastel::platform::MemoryScreenPixel;
using rastel::test::OnMemory;
using rastel::test::OpenPrimary;
using rastel::test::RecordingManager;
using rastel::test::TestStore;

namespace {

constexpr COLORREF screenColor = 0;

class Presenting : public OnMemory {
protected:
    void SetUp() override {
        OnMemory::SetUp();
        Start(200, 150, 32);
    }
    void TearDown() override {
        Stop();
        OnMemory::TearDown();
    }
    void Start(int width, int height, int bits) {
        Stop();
        UseDisplay(width, height, bits);
        manager = std::make_unique<RecordingManager>();
        manager->StoreUsualTimings();
        primary = new OpenPrimary;
        ASSERT_EQ(primary->Initialize(manager.get()), 1);
    }
    void Stop() {
        if (primary) {
            primary->Release();
            primary = nullptr;
        }
        manager.reset();
    }

    std::unique_ptr<RecordingManager> manager;
    OpenPrimary* primary = nullptr;
};

// A surface whose every pixel is told apart by its red and green.
class Chart : public TestStore {
public:
    Chart(int width, int height, int extraPitch = 0) : TestStore(width, height, extraPitch) {
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                SetPixel(x, y, 0x00000040u | static_cast<DWORD>(x + 1) << 16 | static_cast<DWORD>(y + 1) << 8);
            }
        }
    }
};

COLORREF ChartColor(int x, int y) {
    return RGB(x + 1, y + 1, 0x40);
}

// What the screen must show when `part` of a chart lands with its corner at (x, y), limited to `limit`.
void ExpectShown(const CRect& part, int x, int y, const CRect& limit) {
    for (int row = 0; row < 150; ++row) {
        for (int column = 0; column < 200; ++column) {
            const CPoint source(column - x + part.left, row - y + part.top);
            const bool isShown = part.PtInRect(source) && limit.PtInRect(CPoint(column, row));
            ASSERT_EQ(MemoryScreenPixel(column, row), isShown ? ChartColor(source.x, source.y) : screenColor)
                << column << ' ' << row;
        }
    }
}

TEST_F(Presenting, TheWholeScreenIsTheTargetWithoutAWindow) {
    Chart chart(40, 30);
    EXPECT_EQ(primary->Blt(-10, 140, chart, nullptr), 1);
    ExpectShown(CRect(0, 0, 40, 30), -10, 140, CRect(0, 0, 200, 150));
}

TEST_F(Presenting, APartOfASurfaceOfAnyPitchLandsWithItsCorner) {
    CRect part(5, 6, 25, 100);
    for (const int extraPitch : {0, 20}) {
        Start(200, 150, 32);
        Chart chart(40, 30, extraPitch);
        EXPECT_EQ(primary->Blt(50, 60, chart, &part), 1);
        ExpectShown(CRect(5, 6, 25, 30), 50, 60, CRect(0, 0, 200, 150));
        EXPECT_FALSE(chart.isLocked);
    }
}

TEST_F(Presenting, AWindowIsFollowedAndItsNeighboursAreLeftAlone) {
    const CRect first(20, 30, 60, 55), moved(100, 90, 140, 115);
    const HWND window = rastel::platform::CreateMemoryWindow(first);
    EXPECT_EQ(primary->SetWindow(window), 1);
    Chart chart(60, 60);
    EXPECT_EQ(primary->Blt(-5, -6, chart, nullptr), 1);
    ExpectShown(CRect(0, 0, 60, 60), 15, 24, first);

    Stop();
    Start(200, 150, 32);
    const HWND below = rastel::platform::CreateMemoryWindow(first);
    rastel::platform::CreateMemoryWindow(CRect(110, 80, 300, 100));   // covers a corner
    rastel::platform::MoveMemoryWindow(below, moved);
    primary->SetWindow(below);
    EXPECT_EQ(primary->Blt(0, 0, chart, nullptr), 1);
    EXPECT_EQ(primary->m_ptOrigin.x, 100);
    EXPECT_EQ(MemoryScreenPixel(105, 95), ChartColor(5, 5));
    EXPECT_EQ(MemoryScreenPixel(115, 95), screenColor);
    EXPECT_EQ(MemoryScreenPixel(115, 105), ChartColor(15, 15));
    EXPECT_EQ(MemoryScreenPixel(139, 114), ChartColor(39, 24));
    EXPECT_EQ(MemoryScreenPixel(141, 105), screenColor);

    rastel::platform::DestroyMemoryWindow(below);
    EXPECT_EQ(primary->Blt(0, 0, chart, nullptr), 0);
    EXPECT_FALSE(chart.isLocked);
}

TEST_F(Presenting, WhatLiesOffTheScreenIsASuccessWithNothingDrawn) {
    Chart chart(40, 30);
    CRect none(10, 10, 10, 20), outside(100, 100, 120, 120);
    EXPECT_EQ(primary->Blt(-40, 0, chart, nullptr), 1);
    EXPECT_EQ(primary->Blt(200, 0, chart, nullptr), 1);
    EXPECT_EQ(primary->Blt(0, 0, chart, &none), 1);
    EXPECT_EQ(primary->Blt(0, 0, chart, &outside), 1);
    for (const int x : {INT_MIN, INT_MIN + 1, INT_MAX}) {
        EXPECT_EQ(primary->Blt(x, 0, chart, nullptr), 1);
        EXPECT_EQ(primary->Blt(0, x, chart, nullptr), 1);
    }
    ExpectShown(CRect(0, 0, 0, 0), 0, 0, CRect(0, 0, 0, 0));
    primary->m_ptOrigin = {100, 50};
    struct Recording : OpenPrimary {
        int x = 0;
        CRect rc;
        int BltStretchDIBits(int atX, int, CSurface&, CRect& rcSrc) override {
            x = atX;
            rc = rcSrc;
            return 1;
        }
    } recording;
    ASSERT_EQ(recording.Initialize(manager.get()), 1);
    recording.m_ptOrigin = {100, 50};
    TestStore wide(300, 10);
    EXPECT_EQ(recording.Blt(-150, 0, wide, nullptr), 1);
    EXPECT_EQ(recording.x, -100);
    EXPECT_EQ(recording.rc, CRect(50, 0, 250, 10));
}

TEST_F(Presenting, ASurfaceThatCantBeLockedDrawsNothing) {
    Chart chart(10, 10);
    chart.refuseLock = true;
    EXPECT_EQ(primary->Blt(0, 0, chart, nullptr), 1);
    EXPECT_EQ(primary->m_hDC, nullptr);
    rastel::platform::FailDeviceCalls("CreateDCW", 1);
    chart.refuseLock = false;
    EXPECT_EQ(primary->Blt(0, 0, chart, nullptr), 0);
    EXPECT_FALSE(chart.isLocked);
}

TEST_F(Presenting, TheDisplaysContextIsOneUntilItIsReleased) {
    const HDC dc = primary->GetDisplayDC();
    ASSERT_NE(dc, nullptr);
    EXPECT_EQ(primary->GetDisplayDC(), dc);
    primary->ReleaseDisplayDC(nullptr);   // whatever the argument
    EXPECT_EQ(primary->m_hDC, nullptr);
    EXPECT_EQ(::GetDeviceCaps(dc, HORZRES), 0);
    primary->ReleaseDisplayDC(dc);

    const HDC whole = primary->GetDisplayDC();   // of the screen, though a window is set meanwhile
    primary->SetWindow(rastel::platform::CreateMemoryWindow(CRect(0, 0, 10, 10)));
    primary->ReleaseDisplayDC(whole);
    EXPECT_EQ(::GetDeviceCaps(whole, HORZRES), 0);
}

TEST_F(Presenting, OtherWaysFallBackButNotWhileMeasuring) {
    Chart chart(10, 10);
    CRect rect(0, 0, 10, 10);
    struct Counting : OpenPrimary {
        int stretches = 0;
        int BltStretchDIBits(int, int, CSurface&, CRect&) override { return ++stretches; }
    } counting;
    EXPECT_EQ(counting.BltBuffered(0, 0, chart, rect), 1);
    EXPECT_EQ(counting.BltDirect(0, 0, chart, rect), 2);
    EXPECT_EQ(counting.Blt3Dsurface(0, 0, chart, rect), 3);
    EXPECT_EQ(counting.BltNoConvert(0, 0, chart, rect), 4);
    counting.m_bProfiling = 1;
    EXPECT_EQ(counting.BltBuffered(0, 0, chart, rect), 5);   // without a converter this is no fall-back
    EXPECT_EQ(counting.BltNoConvert(0, 0, chart, rect), 0);
    counting.m_pfnConvert = [](unsigned char*, unsigned char*, int, int, int, int) {};
    EXPECT_EQ(counting.BltBuffered(0, 0, chart, rect), 0);
    EXPECT_EQ(counting.BltDirect(0, 0, chart, rect), 0);
    counting.m_bProfiling = 0;
    EXPECT_EQ(counting.BltBuffered(0, 0, chart, rect), 6);
    EXPECT_EQ(counting.BltDirect(0, 0, chart, rect), 7);
    EXPECT_EQ(counting.stretches, 7);
}

TEST_F(Presenting, EachDepthShowsTheTopBitsOfEachChannel) {
    TestStore chart(4, 1);
    const DWORD pixels[] = {0x00FFFFFF, 0x00FF0000, 0x0000FF00, 0x000000FF};
    for (const int bits : {15, 16, 24, 32}) {
        Start(200, 150, bits);
        EXPECT_EQ(primary->GetBitsPrPixel(), bits);
        for (int x = 0; x < 4; ++x) {
            chart.SetPixel(x, 0, pixels[x]);
        }
        EXPECT_EQ(primary->Blt(3, 3, chart, nullptr), 1);
        EXPECT_EQ(MemoryScreenPixel(3, 3), 0x00FFFFFFu) << bits;
        EXPECT_EQ(MemoryScreenPixel(4, 3), 0x000000FFu) << bits;
        EXPECT_EQ(MemoryScreenPixel(5, 3), 0x0000FF00u) << bits;
        EXPECT_EQ(MemoryScreenPixel(6, 3), 0x00FF0000u) << bits;
    }
}

TEST_F(Presenting, OnEightBitsEachContextBuildsThePaletteAnew) {
    Start(200, 150, 8);
    EXPECT_EQ(primary->m_hPalette, nullptr);
    const HDC dc = primary->GetDisplayDC();
    EXPECT_NE(primary->m_hPalette, nullptr);
    primary->ReleaseDisplayDC(dc);
    EXPECT_EQ(primary->m_hPalette, nullptr);

    const HWND window = rastel::platform::CreateMemoryWindow(CRect(0, 0, 5, 5));
    primary->SetWindow(window);
    rastel::platform::DestroyMemoryWindow(window);
    EXPECT_EQ(primary->GetDisplayDC(), nullptr);   // and no palette is left over from it
    EXPECT_EQ(primary->m_hPalette, nullptr);
    primary->SetWindow(nullptr);

    // With the 3-3-2 palette realised a colour lands close to itself.
    TestStore chart(64, 1);
    for (int x = 0; x < 64; ++x) {
        chart.SetPixel(x, 0, static_cast<DWORD>(x * 4) << 8);
    }
    EXPECT_EQ(primary->Blt(0, 0, chart, nullptr), 1);
    for (int x = 0; x < 64; ++x) {
        EXPECT_NEAR(GetGValue(MemoryScreenPixel(x, 0)), x * 4, 40);
        EXPECT_LE(GetRValue(MemoryScreenPixel(x, 0)), 64);
    }
}

}   // namespace
