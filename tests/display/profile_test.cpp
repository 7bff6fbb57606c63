// Measuring the display once, and choosing by what was measured.
#include <gtest/gtest.h>

#include "tests/display/library_on_memory.h"
#include "tests/support/test_store.h"

using rastel::platform::MemoryScreenPixel;
using rastel::test::OnMemory;
using rastel::test::OpenPrimary;
using rastel::test::OpenSurface;
using rastel::test::RecordingManager;

namespace {

using Names = std::vector<std::wstring>;

const Names pathNames = {L"StretchDIBits", L"BltBuffered", L"BltDirect", L"BltNoConvert"};
const Names surfaceNames = {L"FillColor", L"FillColorGDI", L"FillColorOwn", L"CopyBlt", L"CopyBltOwn", L"CopyBltGDI"};
const CSurface::CopyBltFunction byGdi = &OpenSurface::InternalCopyBltGDI;

class Profiling : public OnMemory {
protected:
    // Fills the screen with colours of its own, as other programs' pictures.
    static void PaintScreen(int width, int height) {
        const HDC dc = ::CreateDCW(L"DISPLAY", nullptr, nullptr, nullptr);
        for (int x = 0; x < width; x += 8) {
            const HBRUSH brush = ::CreateSolidBrush(RGB(x, 255 - x, x / 2));
            const CRect stripe(x, 0, x + 8, height);
            ::FillRect(dc, &stripe, brush);
            ::DeleteObject(brush);
        }
        ::DeleteDC(dc);
    }
    static std::vector<unsigned char> ScreenBytes() {
        const rastel::platform::ScreenView view = rastel::platform::MemoryScreen();
        return {view.bits, view.bits + static_cast<std::ptrdiff_t>(view.pitch) * view.height};
    }
};

TEST_F(Profiling, AFirstStartMeasuresWritesAllTenAndPutsTheScreenBack) {
    UseDisplay(800, 600, 32);
    PaintScreen(800, 600);
    const std::vector<unsigned char> before = ScreenBytes();
    const LONG stores = CSurfaceBase::GetSurfacesAllocated();
    RecordingManager manager;
    {
        OpenPrimary primary;
        ASSERT_EQ(primary.Initialize(&manager), 1);
        Names writes = pathNames;
        writes.insert(writes.end(), surfaceNames.begin(), surfaceNames.end());
        EXPECT_EQ(manager.writes, writes);
        EXPECT_EQ(manager.reads, (Names{L"StretchDIBits", L"BltBuffered", L"BltNoConvert", L"FillColor",
                                        L"FillColorOwn", L"FillColorGDI", L"CopyBlt", L"CopyBltOwn", L"CopyBltGDI"}));
        EXPECT_EQ(manager.values[L"BltDirect"], 0);
        EXPECT_EQ(manager.values[L"BltNoConvert"], 0);
        for (const wchar_t* name : {L"StretchDIBits", L"FillColor", L"FillColorGDI", L"FillColorOwn", L"CopyBlt",
                                    L"CopyBltOwn", L"CopyBltGDI"}) {
            EXPECT_GT(manager.values[name], 0) << name;
        }
        EXPECT_NE(primary.m_pfnBlt, nullptr);
        EXPECT_EQ(primary.m_bProfiling, 0);
        CPrimarySurface::CPerformanceData data;
        primary.GetPerformanceData(data);
        EXPECT_EQ(data.nStretchDIBits, static_cast<int>(1000000000 / manager.values[L"StretchDIBits"]));
        EXPECT_EQ(data.nBltDirect, 0);
    }
    EXPECT_NE(CSurface::s_pCopyBlt, nullptr);
    EXPECT_NE(CSurface::s_pFillColor, nullptr);
    EXPECT_EQ(CSurfaceBase::GetSurfacesAllocated(), stores);
    EXPECT_EQ(ScreenBytes(), before);
}

TEST_F(Profiling, ASecondStartReadsBackAndMeasuresNothing) {
    class Unmeasured : public OpenPrimary {
    public:
        int BltStretchDIBits(int, int, CSurface&, CRect&) override {
            ADD_FAILURE() << "measured";
            return 0;
        }
    };
    {
        CDisplayManager manager;
        CPrimarySurface* const primary = manager.CreatePrimarySurface();
        ASSERT_NE(primary, nullptr);
        primary->Release();
    }
    const CSurface::CopyBltFunction copy = CSurface::s_pCopyBlt;
    CDisplayManager manager;
    Unmeasured primary;
    EXPECT_EQ(primary.Initialize(&manager), 1);
    EXPECT_EQ(CSurface::s_pCopyBlt, copy);
}

TEST_F(Profiling, StoredTimingsDecide) {
    RecordingManager manager;
    manager.StoreUsualTimings();
    OpenPrimary primary;
    const CPrimarySurface::BltFunction stretch = &OpenPrimary::BltStretchDIBits, buffered = &OpenPrimary::BltBuffered,
                                       noConvert = &OpenPrimary::BltNoConvert;
    primary.Initialize(&manager);
    EXPECT_EQ(primary.m_pfnBlt, stretch);   // a stored 0 keeps the others out
    manager.values[L"BltBuffered"] = 1000;
    primary.Initialize(&manager);
    EXPECT_EQ(primary.m_pfnBlt, stretch);   // a tie keeps the earlier
    manager.values[L"BltBuffered"] = 999;
    primary.Initialize(&manager);
    EXPECT_EQ(primary.m_pfnBlt, buffered);
    manager.values[L"BltNoConvert"] = 998;
    primary.Initialize(&manager);
    EXPECT_EQ(primary.m_pfnBlt, noConvert);
    manager.values[L"StretchDIBits"] = 0;
    primary.Initialize(&manager);
    EXPECT_EQ(primary.m_pfnBlt, stretch);   // nothing is below 0
    EXPECT_EQ(primary.m_perfBltBuffered, 999);

    manager.values.erase(L"CopyBltGDI");   // "FillColor" speaks for all six
    primary.Initialize(&manager);
    EXPECT_EQ(CSurface::s_perfCopyBltGDI, -1);
    EXPECT_EQ(CSurface::s_pCopyBlt, byGdi);
    manager.values[L"FillColor"] = 0;
    manager.writes.clear();
    primary.Initialize(&manager);
    EXPECT_GT(CSurface::s_perfCopyBltGDI, 0);
    EXPECT_EQ(Names(manager.writes.end() - 6, manager.writes.end()), surfaceNames);
}

TEST_F(Profiling, OneSystemNeverTriesTheBufferedWay) {
    rastel::platform::SetWindowsVersion(VER_PLATFORM_WIN32_NT, 6, 0);
    RecordingManager manager;
    OpenPrimary primary;
    primary.Initialize(&manager);
    EXPECT_EQ(std::count(manager.reads.begin(), manager.reads.end(), L"BltBuffered"), 0);
    EXPECT_EQ(manager.values[L"BltBuffered"], 0);
}

TEST_F(Profiling, AFailingWayIsGivenUp) {
    class Failing : public OpenPrimary {
    public:
        int calls = 0;
        int BltBuffered(int, int, CSurface&, CRect&) override { return ++calls < 4; }
    };
    RecordingManager manager;
    Failing primary;
    primary.Initialize(&manager);
    EXPECT_EQ(primary.calls, 4);   // one ahead of the clock, two good ones, and the failure ends it
    EXPECT_EQ(manager.values[L"BltBuffered"], 0);
}

TEST_F(Profiling, WithoutADisplayContextNothingIsChosen) {
    RecordingManager manager;
    OpenPrimary primary;
    rastel::platform::FailDeviceCalls("CreateDCW", 1000);
    EXPECT_EQ(primary.Initialize(&manager), 1);
    rastel::platform::FailDeviceCalls("CreateDCW", 0);
    rastel::test::TestStore source(4, 4);
    EXPECT_EQ(primary.Blt(0, 0, source, nullptr), 0);
    EXPECT_TRUE(manager.writes.empty());
    EXPECT_EQ(primary.Initialize(nullptr), 0);
}

TEST_F(Profiling, AScreenThatCantBeSavedIsNotOverwritten) {
    UseDisplay(800, 600, 32);
    PaintScreen(800, 600);
    const std::vector<unsigned char> before = ScreenBytes();
    RecordingManager manager;
    manager.StoreUsualTimings();
    OpenPrimary primary;
    rastel::platform::FailDeviceCalls("CreateCompatibleDC", 1);
    EXPECT_EQ(primary.Initialize(&manager), 1);
    EXPECT_EQ(ScreenBytes(), before);
}

TEST_F(Profiling, WithoutATestSurfaceTheChoicesAreStillMade) {
    class NoSurfaces : public RecordingManager {
    public:
        CSurface* CreateSurface(int, int) override { return nullptr; }
    };
    NoSurfaces manager;
    manager.Initialize(nullptr);
    OpenPrimary primary;
    EXPECT_EQ(primary.Initialize(&manager), 1);
    EXPECT_NE(primary.m_pfnBlt, nullptr);
    EXPECT_NE(CSurface::s_pCopyBlt, nullptr);
    EXPECT_NE(CSurface::s_pFillColor, nullptr);
    for (const auto& [name, value] : manager.values) {
        // Not tried, so that the next start tries it; only what nothing ever measures is 0.
        EXPECT_EQ(value, name == L"BltDirect" ? 0 : -1) << std::string(name.begin(), name.end());
    }
}

// A screen smaller than the test picture, and a window that is already set: whatever is drawn stays on the screen,
// and the screen is put back.
TEST_F(Profiling, SmallScreensAndWindowsInPlaceAreLeftAsTheyWere) {
    for (const auto& [width, height] : {std::pair{320, 200}, {800, 100}, {100, 600}, {1, 1}}) {
        UseDisplay(width, height, 32);
        PaintScreen(width, height);
        const std::vector<unsigned char> before = ScreenBytes();
        RecordingManager manager;
        class Checking : public OpenPrimary {
        public:
            int BltBuffered(int x, int y, CSurface& src, CRect& rc) override {
                EXPECT_GE(m_ptOrigin.x + x, 0);
                EXPECT_GE(m_ptOrigin.y + y, 0);
                EXPECT_LE(m_ptOrigin.x + x + rc.Width(), m_nWidth);
                EXPECT_LE(m_ptOrigin.y + y + rc.Height(), m_nHeight);
                EXPECT_TRUE(rc.left >= 0 && rc.top >= 0 && rc.right <= src.GetWidth() && rc.bottom <= src.GetHeight());
                return OpenPrimary::BltBuffered(x, y, src, rc);
            }
        } primary;
        primary.SetWindow(rastel::platform::CreateMemoryWindow(CRect(width / 2, height / 2, width + 50, height + 50)));
        rastel::test::TestStore source(4, 4);
        ASSERT_EQ(primary.Initialize(&manager), 1);
        EXPECT_EQ(ScreenBytes(), before);
        EXPECT_EQ(primary.Blt(width, 0, source, nullptr), 1);   // follows the window
        manager.values.clear();
        ASSERT_EQ(primary.Initialize(&manager), 1);
        EXPECT_EQ(ScreenBytes(), before);
        EXPECT_EQ(primary.m_ptOrigin.x, width / 2);
    }
}

}   // namespace
