// Presenting through DirectDraw: every way shows the same picture, on every depth, and gets it there when a device
// refuses.
#include <gtest/gtest.h>

#include <climits>

#include "rastel/display/dx_surface.h"
#include "rastel/display/line_converters.h"
#include "rastel/surface/mmx.h"
#include "rastel/surface/reference.h"
#include "tests/display/library_on_memory.h"
#include "tests/support/pixels.h"
#include "tests/support/test_store.h"

using rastel::Reference;
using rastel::platform::CreateMemoryWindow;
using rastel::platform::FailDeviceCalls;
using rastel::platform::LoseDeviceSurfaces;
using rastel::platform::MemoryScreenPixel;
using rastel::test::OnMemory;
using rastel::test::OpenPrimary;
using rastel::test::RecordingManager;
using rastel::test::TestStore;

namespace {

using Way = int (OpenPrimary::*)(int, int, CSurface&, CRect&);

constexpr int screenWidth = 200, screenHeight = 150;

class DevicePresenting : public OnMemory {
protected:
    void SetUp() override {
        OnMemory::SetUp();
        Start(32);
    }
    void TearDown() override {
        Stop();
        for (const char* const call : {"Lock", "Blt", "CreateSurface", "CreateClipper", "SetHWnd", "SetClipper"}) {
            FailDeviceCalls(call, 0);
        }
        OnMemory::TearDown();
    }
    void Start(int bits, DWORD red = 0, DWORD green = 0, DWORD blue = 0) {
        Stop();
        rastel::platform::MemoryDisplayOptions options;
        options.width = screenWidth;
        options.height = screenHeight;
        options.bitsPerPixel = bits;
        options.redMask = red;
        options.greenMask = green;
        options.blueMask = blue;
        options.pitchPadding = 20;
        rastel::platform::UseMemoryDisplay(options);
        manager = std::make_unique<RecordingManager>();
        manager->StoreUsualTimings();
        manager->Initialize(nullptr);
        primary.reset(new OpenPrimary);
        ASSERT_EQ(primary->Initialize(manager.get()), 1);
    }
    void Stop() {
        primary.reset();
        manager.reset();
    }
    static void Paint(CSurface& surface) {
        std::vector<DWORD> words;
        for (int y = 0; y < surface.GetHeight(); ++y) {
            for (int x = 0; x < surface.GetWidth(); ++x) {
                words.push_back(static_cast<DWORD>(x * 6) << 16 | static_cast<DWORD>(y * 8) << 8 |
                                static_cast<DWORD>(255 - x * 5));
            }
        }
        rastel::test::SetPixels(surface, words);
    }
    static std::vector<COLORREF> Screen() {
        std::vector<COLORREF> colors;
        for (int y = 0; y < screenHeight; ++y) {
            for (int x = 0; x < screenWidth; ++x) {
                colors.push_back(MemoryScreenPixel(x, y));
            }
        }
        return colors;
    }

    std::unique_ptr<RecordingManager> manager;
    Reference<OpenPrimary> primary;
};

TEST_F(DevicePresenting, TheConverterFollowsDepthMasksAndProcessor) {
    struct Case {
        int bits;
        DWORD red, green, blue;
        CPrimarySurface::ConvertFunction vector, plain;
    };
    const Case cases[] = {{8, 0, 0, 0, Blt8, Blt8},
                          {15, 0, 0, 0, Blt555MMX, Blt555},
                          {16, 0xF800, 0x07E0, 0x001F, Blt565MMX, Blt565},
                          {16, 0x7C00, 0x03E0, 0x001F, Blt555MMX, Blt555},
                          {24, 0, 0, 0, Blt24, Blt24},
                          {32, 0, 0, 0, Blt32, Blt32}};
    for (const Case& c : cases) {
        EnableMMX(1);
        Start(c.bits, c.red, c.green, c.blue);
        EXPECT_EQ(primary->m_pfnConvert, UseMMX() ? c.vector : c.plain) << c.bits;
        EXPECT_NE(primary->GetDirectDrawSurface(), nullptr);
        EnableMMX(0);
        EXPECT_EQ(primary->Initialize(manager.get()), 1);
        EXPECT_EQ(primary->m_pfnConvert, c.plain) << c.bits;
        EnableMMX(1);
    }
}

TEST_F(DevicePresenting, EveryWayShowsTheSamePicture) {
    for (const int bits : {15, 16, 24, 32}) {
        Start(bits);
        const Reference<CSurface> surface(manager->CreateSurface(40, 30));
        Paint(*surface);
        const HWND window = CreateMemoryWindow(CRect(20, 30, 90, 80));
        for (const bool inWindow : {false, true}) {
            ASSERT_EQ(primary->SetWindow(inWindow ? window : nullptr), 1);
            primary->m_ptOrigin = inWindow ? POINT{20, 30} : POINT{0, 0};
            CRect rect(3, 4, 37, 29);
            EXPECT_EQ(primary->BltStretchDIBits(5, 6, *surface, rect), 1);
            const std::vector<COLORREF> wanted = Screen();
            for (const Way way : {&OpenPrimary::BltBuffered, &OpenPrimary::BltDirect, &OpenPrimary::BltNoConvert}) {
                TestStore blank(screenWidth, screenHeight);
                CRect whole(0, 0, screenWidth, screenHeight);
                const POINT origin = primary->m_ptOrigin;
                primary->SetWindow(nullptr);
                primary->m_ptOrigin = {0, 0};
                primary->BltStretchDIBits(0, 0, blank, whole);
                primary->SetWindow(inWindow ? window : nullptr);
                primary->m_ptOrigin = origin;
                rect = CRect(3, 4, 37, 29);
                EXPECT_EQ((*primary.*way)(5, 6, *surface, rect), 1);
                const std::vector<COLORREF> shown = Screen();
                for (int y = 0; y < 25; ++y) {
                    for (int x = 0; x < 34; ++x) {
                        const auto at = static_cast<std::size_t>((origin.y + 6 + y) * screenWidth + origin.x + 5 + x);
                        ASSERT_EQ(shown[at], wanted[at]) << bits << ' ' << x << ' ' << y;
                    }
                }
                EXPECT_EQ(shown[static_cast<std::size_t>((origin.y + 6) * screenWidth + origin.x + 39)], 0u);
            }
            if (inWindow) {
                rastel::platform::DestroyMemoryWindow(window);
            }
        }
    }
}

TEST_F(DevicePresenting, OtherWindowsAndTheClientAreaLimitWhatIsDrawn) {
    const HWND window = CreateMemoryWindow(CRect(20, 30, 60, 60));
    CreateMemoryWindow(CRect(50, 50, 120, 120));
    ASSERT_EQ(primary->SetWindow(window), 1);
    TestStore white(100, 100);
    for (int y = 0; y < 100; ++y) {
        for (int x = 0; x < 100; ++x) {
            white.SetPixel(x, y, 0x00FFFFFF);
        }
    }
    for (const CPrimarySurface::BltFunction way :
         {static_cast<CPrimarySurface::BltFunction>(&OpenPrimary::BltBuffered),
          static_cast<CPrimarySurface::BltFunction>(&OpenPrimary::BltDirect)}) {
        primary->m_pfnBlt = way;
        EXPECT_EQ(primary->Blt(-4, -4, white, nullptr), 1);
        for (int y = 0; y < screenHeight; ++y) {
            for (int x = 0; x < screenWidth; ++x) {
                const bool isIn = x >= 20 && x < 60 && y >= 30 && y < 60 && !(x >= 50 && y >= 50);
                ASSERT_EQ(MemoryScreenPixel(x, y), isIn ? 0x00FFFFFFu : 0u) << x << ' ' << y;
            }
        }
    }
}

TEST_F(DevicePresenting, ARefusalFallsBackOnGdiButNotWhileMeasuring) {
    struct Counting : OpenPrimary {
        int stretches = 0;
        int BltStretchDIBits(int, int, CSurface&, CRect&) override {
            ++stretches;
            return 1;
        }
    };
    const Reference<Counting> counting(new Counting);
    ASSERT_EQ(counting->Initialize(manager.get()), 1);
    TestStore store(10, 10);
    CRect rect(0, 0, 10, 10);
    for (const Way way : {&OpenPrimary::BltBuffered, &OpenPrimary::BltDirect}) {
        counting->stretches = 0;
        FailDeviceCalls("Lock", 2);
        EXPECT_EQ((*counting.*way)(0, 0, store, rect), 1);
        counting->m_bProfiling = 1;
        EXPECT_EQ((*counting.*way)(0, 0, store, rect), 0);
        counting->m_bProfiling = 0;
        store.refuseLock = true;
        EXPECT_EQ((*counting.*way)(0, 0, store, rect), 1);
        store.refuseLock = false;
        EXPECT_EQ(counting->stretches, 2);
        LoseDeviceSurfaces();
        EXPECT_EQ((*counting.*way)(0, 0, store, rect), 1);   // by GDI
        EXPECT_EQ(counting->stretches, 3);
        EXPECT_EQ((*counting.*way)(0, 0, store, rect), 1);   // restored meanwhile
        EXPECT_EQ(counting->stretches, 3);
        rect = CRect(0, 0, 10, 10);
    }
    counting->BltBuffered(0, 0, store, rect);   // restores its buffer, too
    counting->stretches = 3;
    FailDeviceCalls("Blt", 1);
    EXPECT_EQ(counting->BltBuffered(0, 0, store, rect), 0);
    EXPECT_EQ(counting->BltNoConvert(0, 0, store, rect), 0);   // no device surface
    EXPECT_FALSE(store.isLocked);
    EXPECT_EQ(counting->stretches, 3);
    EXPECT_EQ(counting->Blt3Dsurface(0, 0, store, rect), 1);
    EXPECT_EQ(counting->stretches, 4);

    // After Destroy a picture still arrives.
    counting->Destroy();
    EXPECT_EQ(counting->BltBuffered(0, 0, store, rect), 1);
    EXPECT_EQ(counting->stretches, 5);
}

TEST_F(DevicePresenting, WindowsThatCantBeClippedToAreSaidSo) {
    const HWND window = CreateMemoryWindow(CRect(0, 0, 10, 10));
    for (const char* const call : {"CreateClipper", "SetHWnd", "SetClipper"}) {
        FailDeviceCalls(call, 1);
        EXPECT_EQ(primary->SetWindow(window), 0) << call;
    }
    EXPECT_EQ(primary->SetWindow(window), 1);
    primary->m_ptOrigin = {7, 8};
    EXPECT_EQ(primary->SetWindow(nullptr), 1);
    EXPECT_EQ(primary->m_ptOrigin.x, 7);   // until the next blit into a window
}

TEST_F(DevicePresenting, AModeThatChangedBehindItHarmsNothing) {
    ASSERT_EQ(manager->SetMode(640, 480, 16), 1);
    TestStore store(100, 100);
    CRect rect(0, 0, 100, 100);
    for (const Way way : {&OpenPrimary::BltBuffered, &OpenPrimary::BltDirect}) {
        (*primary.*way)(100, 50, store, rect);
        rect = CRect(0, 0, 100, 100);
    }
    EXPECT_EQ(primary->Initialize(manager.get()), 1);
    EXPECT_EQ(primary->m_nWidth, 640);
    EXPECT_EQ(primary->GetBitsPrPixel(), 16);
    EXPECT_EQ(primary->BltBuffered(100, 50, store, rect), 1);
    EXPECT_EQ(manager->RestoreMode(), 1);
    EXPECT_EQ(::GetSystemMetrics(SM_CXSCREEN), screenWidth);
}

TEST_F(DevicePresenting, TheModesAreThoseThatWereEnumerated) {
    EXPECT_EQ(manager->CanDoMode(640, 480, 16), 1);
    EXPECT_EQ(manager->CanDoMode(641, 480, 16), 0);
    EXPECT_EQ(manager->SetMode(641, 480, 16), 0);
    manager->WaitForVerticalBlank();
    primary.reset();
    manager->Destroy();
    EXPECT_EQ(manager->CanDoMode(640, 480, 16), 0);
    EXPECT_EQ(manager->SetMode(640, 480, 16), 0);
    EXPECT_EQ(manager->RestoreMode(), 0);
    manager->EnableDirectX(0);
    manager->Initialize(nullptr);
    EXPECT_EQ(manager->GetDirectDraw(), nullptr);
    EXPECT_EQ(manager->CanDoMode(640, 480, 16), 0);
}

}   // namespace
