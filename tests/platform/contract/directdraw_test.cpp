// DirectDraw, in the normal level: surfaces in memory, their locks, keys and clippers, and the primary surface.
#include <gtest/gtest.h>

#include <cstring>
#include <set>
#include <vector>

#include "rastel/platform/com_reference.h"
#include "rastel/platform/gdi.h"
#include "tests/platform/contract/screen.h"

namespace rastel::test {
namespace {

using platform::ComReference;
using SurfaceReference = ComReference<IDirectDrawSurface2>;

template <class Structure>
Structure Sized() {
    Structure structure{};
    structure.dwSize = sizeof(structure);
    return structure;
}

class DirectDrawContract : public ::testing::Test {
protected:
    void SetUp() override {
        OpenScreen();
        ::CoInitialize(nullptr);
        void* made = nullptr;
        ASSERT_GE(::CoCreateInstance(CLSID_DirectDraw, nullptr, CLSCTX_INPROC_SERVER, IID_IDirectDraw2, &made), 0);
        directDraw.reset(static_cast<IDirectDraw2*>(made));
        ASSERT_GE(directDraw->Initialize(nullptr), 0);
        ASSERT_GE(directDraw->SetCooperativeLevel(nullptr, DDSCL_NORMAL), 0);
    }
    void TearDown() override {
        directDraw.reset();
        ::CoUninitialize();
    }

    SurfaceReference Made(DDSURFACEDESC description) {
        IDirectDrawSurface* made = nullptr;
        directDraw->CreateSurface(&description, &made, nullptr);
        return SurfaceReference(platform::ExchangeInterface<IDirectDrawSurface2>(made, IID_IDirectDrawSurface2));
    }
    SurfaceReference Memory(DWORD width, DWORD height) {
        auto description = Sized<DDSURFACEDESC>();
        description.dwFlags = DDSD_CAPS | DDSD_WIDTH | DDSD_HEIGHT | DDSD_PIXELFORMAT;
        description.dwWidth = width;
        description.dwHeight = height;
        description.ddsCaps.dwCaps = DDSCAPS_OFFSCREENPLAIN | DDSCAPS_SYSTEMMEMORY;
        description.ddpfPixelFormat.dwSize = sizeof(DDPIXELFORMAT);
        description.ddpfPixelFormat.dwFlags = DDPF_RGB;
        description.ddpfPixelFormat.dwRGBBitCount = 32;
        description.ddpfPixelFormat.dwRBitMask = 0xFF0000;
        description.ddpfPixelFormat.dwGBitMask = 0xFF00;
        description.ddpfPixelFormat.dwBBitMask = 0xFF;
        return Made(description);
    }
    static HRESULT Fill(IDirectDrawSurface2& surface, RECT area, DWORD pixel) {
        auto effects = Sized<DDBLTFX>();
        effects.dwFillColor = pixel;
        return surface.Blt(&area, nullptr, nullptr, DDBLT_COLORFILL | DDBLT_WAIT, &effects);
    }
    static std::vector<DWORD> Row(IDirectDrawSurface2& surface, int y, int width) {
        auto locked = Sized<DDSURFACEDESC>();
        EXPECT_EQ(surface.Lock(nullptr, &locked, DDLOCK_WAIT, nullptr), DD_OK);
        std::vector<DWORD> row(static_cast<std::size_t>(width));
        std::memcpy(row.data(), static_cast<const BYTE*>(locked.lpSurface) + y * locked.lPitch, row.size() * 4);
        surface.Unlock(nullptr);
        for (DWORD& pixel : row) {
            pixel &= 0xFFFFFF;
        }
        return row;
    }
    using Words = std::vector<DWORD>;

    ComReference<IDirectDraw2> directDraw;
};

TEST_F(DirectDrawContract, SurfacesInMemoryTellTheirFormatAndLockOnce) {
    const SurfaceReference surface = Memory(50, 20);
    ASSERT_TRUE(surface);
    auto description = Sized<DDSURFACEDESC>();
    ASSERT_EQ(surface->GetSurfaceDesc(&description), DD_OK);
    EXPECT_EQ(description.dwWidth, 50u);
    EXPECT_EQ(description.dwHeight, 20u);
    EXPECT_GE(description.lPitch, 200);
    EXPECT_EQ(description.ddpfPixelFormat.dwRGBBitCount, 32u);
    EXPECT_EQ(description.ddpfPixelFormat.dwGBitMask, 0xFF00u);

    auto whole = Sized<DDSURFACEDESC>(), part = Sized<DDSURFACEDESC>();
    ASSERT_EQ(surface->Lock(nullptr, &whole, DDLOCK_WAIT, nullptr), DD_OK);
    ASSERT_NE(whole.lpSurface, nullptr);
    EXPECT_EQ(whole.lPitch, description.lPitch);
    auto again = Sized<DDSURFACEDESC>();
    EXPECT_EQ(surface->Lock(nullptr, &again, DDLOCK_WAIT, nullptr), DDERR_SURFACEBUSY);
    EXPECT_EQ(surface->Unlock(nullptr), DD_OK);
    EXPECT_EQ(surface->Unlock(nullptr), DDERR_NOTLOCKED);
    RECT area{10, 3, 20, 9};
    ASSERT_EQ(surface->Lock(&area, &part, DDLOCK_WAIT, nullptr), DD_OK);
    EXPECT_EQ(static_cast<BYTE*>(part.lpSurface), static_cast<BYTE*>(whole.lpSurface) + 3 * whole.lPitch + 10 * 4);
    EXPECT_EQ(surface->Unlock(nullptr), DD_OK);
    EXPECT_EQ(surface->IsLost(), DD_OK);
    EXPECT_EQ(surface->Restore(), DD_OK);
    auto unsized = DDSURFACEDESC{};
    EXPECT_EQ(surface->Lock(nullptr, &unsized, DDLOCK_WAIT, nullptr), DDERR_INVALIDPARAMS);
}

TEST_F(DirectDrawContract, FillsCopiesStretchesAndKeys) {
    const SurfaceReference source = Memory(4, 1), target = Memory(12, 1);
    for (int i = 0; i < 4; ++i) {
        ASSERT_EQ(Fill(*source, {i, 0, i + 1, 1}, static_cast<DWORD>(i + 1)), DD_OK);
    }
    ASSERT_EQ(Fill(*target, {0, 0, 12, 1}, 9), DD_OK);
    RECT to{2, 0, 6, 1}, from{0, 0, 4, 1}, wide{0, 0, 8, 1}, outside{10, 0, 14, 1};
    ASSERT_EQ(target->Blt(&to, source.get(), &from, DDBLT_WAIT, nullptr), DD_OK);
    EXPECT_EQ(Row(*target, 0, 12), (Words{9, 9, 1, 2, 3, 4, 9, 9, 9, 9, 9, 9}));
    ASSERT_EQ(target->Blt(&wide, source.get(), &from, DDBLT_WAIT, nullptr), DD_OK);
    EXPECT_EQ(Row(*target, 0, 12), (Words{1, 1, 2, 2, 3, 3, 4, 4, 9, 9, 9, 9}));
    EXPECT_EQ(target->Blt(&outside, source.get(), &from, DDBLT_WAIT, nullptr), DDERR_INVALIDRECT);
    ASSERT_EQ(Fill(*target, {0, 0, 12, 1}, 9), DD_OK);
    auto effects = Sized<DDBLTFX>();
    effects.ddckSrcColorkey = {2, 2};
    ASSERT_EQ(target->Blt(&to, source.get(), &from, DDBLT_KEYSRCOVERRIDE | DDBLT_WAIT, &effects), DD_OK);
    EXPECT_EQ(Row(*target, 0, 12), (Words{9, 9, 1, 9, 3, 4, 9, 9, 9, 9, 9, 9}));
}

TEST_F(DirectDrawContract, AClipListLimitsWhatABlitReaches) {
    const SurfaceReference source = Memory(12, 1), target = Memory(12, 1);
    ASSERT_EQ(Fill(*source, {0, 0, 12, 1}, 5), DD_OK);
    ASSERT_EQ(Fill(*target, {0, 0, 12, 1}, 9), DD_OK);
    IDirectDrawClipper* made = nullptr;
    ASSERT_EQ(directDraw->CreateClipper(0, &made, nullptr), DD_OK);
    const ComReference<IDirectDrawClipper> clipper(made);
    // As the library makes its lists: the data of a region.
    const HRGN region = ::CreateRectRgn(1, 0, 3, 1), more = ::CreateRectRgn(6, 0, 8, 1);
    ::CombineRgn(region, region, more, RGN_OR);
    std::vector<BYTE> data(::GetRegionData(region, 0, nullptr));
    auto* const list = reinterpret_cast<RGNDATA*>(data.data());
    ASSERT_NE(::GetRegionData(region, static_cast<DWORD>(data.size()), list), 0u);
    ::DeleteObject(region);
    ::DeleteObject(more);
    ASSERT_EQ(clipper->SetClipList(list, 0), DD_OK);
    ASSERT_EQ(target->SetClipper(clipper.get()), DD_OK);
    RECT beyond{0, 0, 12, 1}, all{0, 0, 12, 1};
    ASSERT_EQ(target->Blt(&beyond, source.get(), &all, DDBLT_WAIT, nullptr), DD_OK);
    EXPECT_EQ(target->SetClipper(nullptr), DD_OK);
    EXPECT_EQ(Row(*target, 0, 12), (Words{9, 5, 5, 9, 9, 9, 5, 5, 9, 9, 9, 9}));
}

TEST_F(DirectDrawContract, AContextDrawsOnTheSurfaceAndKeepsOthersOut) {
    const SurfaceReference surface = Memory(8, 2);
    ASSERT_EQ(Fill(*surface, {0, 0, 8, 2}, 7), DD_OK);
    HDC context = nullptr;
    ASSERT_EQ(surface->GetDC(&context), DD_OK);
    auto locked = Sized<DDSURFACEDESC>();
    EXPECT_LT(surface->Lock(nullptr, &locked, 0, nullptr), 0);
    EXPECT_EQ(::GetPixel(context, 3, 1), RGB(0, 0, 7));
    ::SetPixelV(context, 2, 1, RGB(1, 2, 3));
    EXPECT_EQ(surface->ReleaseDC(context), DD_OK);
    EXPECT_EQ(Row(*surface, 1, 4), (Words{7, 7, 0x010203, 7}));
}

TEST_F(DirectDrawContract, ThePrimarySurfaceHasTheScreensSizeAndFormat) {
    auto description = Sized<DDSURFACEDESC>();
    description.dwFlags = DDSD_CAPS;
    description.ddsCaps.dwCaps = DDSCAPS_PRIMARYSURFACE;
    const SurfaceReference primary = Made(description);
    ASSERT_TRUE(primary);
    ASSERT_EQ(primary->GetSurfaceDesc(&description), DD_OK);
    EXPECT_EQ(description.dwWidth, static_cast<DWORD>(::GetSystemMetrics(SM_CXSCREEN)));
    EXPECT_EQ(description.dwHeight, static_cast<DWORD>(::GetSystemMetrics(SM_CYSCREEN)));
    const DWORD bits = description.ddpfPixelFormat.dwRGBBitCount;
    EXPECT_GE(bits, 8u);

    // A buffer that names no format has the display's, and reaches a window through the primary surface.
    description.dwFlags = DDSD_CAPS | DDSD_WIDTH | DDSD_HEIGHT;
    description.ddsCaps.dwCaps = DDSCAPS_OFFSCREENPLAIN | DDSCAPS_SYSTEMMEMORY;
    const SurfaceReference buffer = Made(description);
    ASSERT_TRUE(buffer);
    auto own = Sized<DDSURFACEDESC>();
    ASSERT_EQ(buffer->GetSurfaceDesc(&own), DD_OK);
    EXPECT_EQ(own.ddpfPixelFormat.dwRGBBitCount, bits);
    EXPECT_EQ(own.dwWidth, description.dwWidth);

    const TestWindow window({30, 40, 80, 90});
    IDirectDrawClipper* made = nullptr;
    ASSERT_EQ(directDraw->CreateClipper(0, &made, nullptr), DD_OK);
    const ComReference<IDirectDrawClipper> clipper(made);
    ASSERT_EQ(clipper->SetHWnd(0, window.Handle()), DD_OK);
    HWND told = nullptr;
    EXPECT_EQ(clipper->GetHWnd(&told), DD_OK);
    EXPECT_EQ(told, window.Handle());
    ASSERT_EQ(primary->SetClipper(clipper.get()), DD_OK);
    RECT area{30, 40, 200, 90};   // more than the window
    EXPECT_EQ(primary->Blt(&area, buffer.get(), &area, DDBLT_WAIT, nullptr), DD_OK);
    EXPECT_EQ(primary->SetClipper(nullptr), DD_OK);
}

HRESULT WINAPI Note(LPDDSURFACEDESC mode, LPVOID into) {
    static_cast<std::set<DWORD>*>(into)->insert(mode->ddpfPixelFormat.dwRGBBitCount);
    return mode->dwWidth > 0 && mode->dwHeight > 0 ? DDENUMRET_OK : DDENUMRET_CANCEL;
}

TEST_F(DirectDrawContract, ModesAreListedAndTheBlankComes) {
    std::set<DWORD> depths;
    EXPECT_EQ(directDraw->EnumDisplayModes(0, nullptr, &depths, Note), DD_OK);
    EXPECT_EQ(depths.count(0), 0u);
    EXPECT_GE(directDraw->WaitForVerticalBlank(DDWAITVB_BLOCKBEGIN, nullptr), 0);
}

}   // namespace
}   // namespace rastel::test
