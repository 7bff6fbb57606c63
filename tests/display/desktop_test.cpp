// The display classes on whatever desktop there is: devices, each way of presenting, surfaces and modes.
#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "rastel/display/display_manager.h"
#include "rastel/display/dx_surface.h"
#include "rastel/display/primary_surface.h"
#include "rastel/display/vertex_buffer.h"
#include "rastel/surface/reference.h"
#include "tests/platform/contract/screen.h"
#include "tests/support/pixels.h"

namespace {

using rastel::Reference;
using rastel::test::IsClose;
using rastel::test::ScreenColor;
using rastel::test::TestWindow;

class Ways : public CPrimarySurface {
public:
    using CPrimarySurface::BltBuffered;
    using CPrimarySurface::BltDirect;
    using CPrimarySurface::BltNoConvert;
    using CPrimarySurface::BltStretchDIBits;
    using CPrimarySurface::m_pfnBlt;
    using CPrimarySurface::m_pfnConvert;
};

class Desktop : public ::testing::Test {
protected:
    void SetUp() override {
        rastel::test::OpenScreen();
        ::CoInitialize(nullptr);
        manager = std::make_unique<CDisplayManager>();
        manager->Initialize(nullptr);
    }
    void TearDown() override {
        manager.reset();
        CSurface::s_pCopyBlt = nullptr;
        CSurface::s_pFillColor = nullptr;
        ::CoUninitialize();
    }

    Reference<CSurface> Chart(int width, int height) {
        Reference<CSurface> surface(manager->CreateSurface(width, height));
        std::vector<DWORD> words;
        for (int i = 0; i < width * height; ++i) {
            words.push_back(static_cast<DWORD>(i % width) * 0x080000 | static_cast<DWORD>(i / width) * 0x0800 | 0x80);
        }
        rastel::test::SetPixels(*surface, words);
        return surface;
    }

    std::unique_ptr<CDisplayManager> manager;
};

TEST_F(Desktop, TheManagerKnowsTheDisplay) {
    EXPECT_GE(manager->GetBitsPrPixel(), 8);
    EXPECT_NE(manager->GetDirectDraw(), nullptr);
    EXPECT_FALSE(manager->GetDisplayIdString().IsEmpty());
    manager->SetProfile(L"Contract", 0x123456789ALL);
    EXPECT_EQ(manager->GetProfile(L"Contract"), 0x123456789ALL);
    EXPECT_EQ(manager->GetProfile(L"No such timing"), -1);
    EXPECT_GT(CDisplayManager::GetPerformanceTimer(), 0);
    manager->WaitForVerticalBlank();
}

TEST_F(Desktop, MeasuringChoosesAWayAndKeepsItsTimings) {
    const Reference<CPrimarySurface> primary(manager->CreatePrimarySurface());
    ASSERT_TRUE(primary);
    CPrimarySurface::CPerformanceData data{};
    primary->GetPerformanceData(data);
    EXPECT_GT(data.nStretchDIBits, 0);
    EXPECT_GT(data.nFillColorOwn, 0);
    EXPECT_GT(data.nCopyBltOwn, 0);
    EXPECT_GT(manager->GetProfile(L"StretchDIBits"), 0);
}

TEST_F(Desktop, EveryWayReachesTheWindow) {
    Ways primary;
    ASSERT_EQ(primary.Initialize(manager.get()), 1);
    const Reference<CSurface> chart = Chart(24, 20);
    const std::pair<const char*, CPrimarySurface::BltFunction> ways[] = {{"chosen", primary.m_pfnBlt},
                                                                         {"StretchDIBits", &Ways::BltStretchDIBits},
                                                                         {"buffered", &Ways::BltBuffered},
                                                                         {"direct", &Ways::BltDirect}};
    for (const auto& [name, way] : ways) {
        SCOPED_TRACE(name);
        const TestWindow window({50, 60, 90, 90});
        ASSERT_EQ(primary.SetWindow(window.Handle()), 1);
        primary.m_pfnBlt = way;
        for (int frame = 0; frame < 2; ++frame) {   // the first on a device may come before its window shows
            ASSERT_EQ(primary.Blt(3, 4, *chart, nullptr), 1);
            ASSERT_EQ(primary.Blt(30, 25, *chart, nullptr), 1);   // beyond the window's corner
            ASSERT_EQ(primary.Blt(-100, 0, *chart, nullptr), 1);
            rastel::test::LetScreenShow();
        }
        for (const POINT& at : {POINT{0, 0}, POINT{23, 19}, POINT{7, 11}}) {
            const COLORREF shown = ScreenColor(50 + 3 + at.x, 60 + 4 + at.y);
            EXPECT_TRUE(IsClose(shown, RGB(at.x * 8, at.y * 8, 0x80))) << at.x << ' ' << at.y << ": " << shown;
        }
        EXPECT_TRUE(IsClose(ScreenColor(50 + 39, 60 + 29), RGB(9 * 8, 4 * 8, 0x80)));
        EXPECT_EQ(primary.SetWindow(nullptr), 1);
    }
}

TEST_F(Desktop, DeviceSurfacesFillCopyKeyAndStretch) {
    const Reference<CPrimarySurface> primary(
        manager->CreatePrimarySurface());   // chooses the ways of filling and copying
    CDxSurface source, target;
    ASSERT_EQ(source.InitializeSurface(8, 4), 1);
    ASSERT_EQ(target.InitializeSurface(30, 20), 1);
    EXPECT_GE(target.GetPitch(), 120);
    std::vector<DWORD> words;
    for (DWORD i = 0; i < 32; ++i) {
        words.push_back(i % 3 == 0 ? 0xFF00FF : 0x010203 * i);
    }
    rastel::test::SetPixels(source, words);
    const auto at = [&](int x, int y) {
        return rastel::test::PixelsOf(target)[static_cast<std::size_t>(y * 30 + x)] & 0xFFFFFF;
    };
    EXPECT_EQ(target.FillColor(nullptr, 0x00112233, nullptr), 1);
    EXPECT_EQ(at(29, 19), 0x332211u);   // colours of hosts are red first
    EXPECT_EQ(target.CopyBlt(5, 6, source, nullptr, nullptr), 1);
    EXPECT_EQ(at(5 + 7, 6 + 3), words[31]);
    EXPECT_EQ(at(5, 6), 0xFF00FFu);
    EXPECT_EQ(target.FillColor(nullptr, 0, nullptr), 1);
    EXPECT_EQ(target.TransparentBlt(5, 6, source, 0x00FF00FF, nullptr, nullptr), 1);
    EXPECT_EQ(at(5, 6), 0u);
    EXPECT_EQ(at(6, 6), words[1]);
    CRect twice(2, 2, 18, 10);
    EXPECT_EQ(target.StretchBlt(&twice, source, nullptr, nullptr), 1);
    EXPECT_EQ(at(2 + 2, 2), words[1]);
    EXPECT_EQ(at(2 + 3, 3), words[1]);
    EXPECT_EQ(at(17, 9), words[31]);
    const HDC context = target.GetDC();
    ASSERT_NE(context, nullptr);
    EXPECT_EQ(target.LockData(), nullptr);
    ::SetPixelV(context, 0, 0, RGB(1, 2, 3));
    target.ReleaseDC(context);
    EXPECT_EQ(at(0, 0), 0x010203u);
}

TEST_F(Desktop, ADeviceDrawsAPlaneOfVertices) {
    const TestWindow window({20, 20, 84, 84});
    if (!manager->Initialize3D(window.Handle(), 64, 64)) {
        GTEST_SKIP() << "no Direct3D device here";
    }
    IDirect3DDevice9* const device = manager->GetDirect3DDevice();
    ASSERT_NE(device, nullptr);
    CVertexBuffer plane;
    // All of the view, without any transform, in 3 by 2 quads.
    ASSERT_EQ(plane.CreatePlane(device, D3DXVECTOR3(-1, -1, 0.5f), D3DXVECTOR3(1, -1, 0.5f), D3DXVECTOR3(-1, 1, 0.5f),
                                2, 3, 1, 1, 0xFF204060),
              1);
    EXPECT_EQ(plane.GetVerticesCount(), 12);
    EXPECT_EQ(plane.GetIndeciesCount(), 36);
    device->SetRenderState(D3DRS_LIGHTING, FALSE);
    device->SetRenderState(D3DRS_CULLMODE, D3DCULL_NONE);
    EXPECT_EQ(device->Clear(0, nullptr, D3DCLEAR_TARGET | D3DCLEAR_ZBUFFER, 0, 1, 0), D3D_OK);
    ASSERT_EQ(device->BeginScene(), D3D_OK);
    plane.Draw(device);
    ASSERT_EQ(device->EndScene(), D3D_OK);
    IDirect3DSurface9 *back = nullptr, *copy = nullptr;
    ASSERT_EQ(device->GetBackBuffer(0, 0, D3DBACKBUFFER_TYPE_MONO, &back), D3D_OK);
    D3DSURFACE_DESC description{};
    back->GetDesc(&description);
    ASSERT_EQ(device->CreateOffscreenPlainSurface(description.Width, description.Height, description.Format,
                                                  D3DPOOL_SYSTEMMEM, &copy, nullptr),
              D3D_OK);
    EXPECT_EQ(device->GetRenderTargetData(back, copy), D3D_OK);
    D3DLOCKED_RECT locked{};
    ASSERT_EQ(copy->LockRect(&locked, nullptr, D3DLOCK_READONLY), D3D_OK);
    if (description.Format == D3DFMT_X8R8G8B8) {
        for (const int y : {1, 30, 62}) {
            const auto* const row =
                reinterpret_cast<const DWORD*>(static_cast<const BYTE*>(locked.pBits) + y * locked.Pitch);
            EXPECT_EQ(row[1] & 0xFFFFFF, 0x204060u) << y;
            EXPECT_EQ(row[62] & 0xFFFFFF, 0x204060u) << y;
        }
    }
    copy->UnlockRect();
    copy->Release();
    back->Release();
    EXPECT_EQ(device->Present(nullptr, nullptr, nullptr, nullptr), D3D_OK);
    plane.CleanUp();
    EXPECT_EQ(plane.GetVertexBuffer(), nullptr);
}

TEST_F(Desktop, ListedModesCanBeSetAndGivenBack) {
    const int width = ::GetSystemMetrics(SM_CXSCREEN), height = ::GetSystemMetrics(SM_CYSCREEN);
    EXPECT_EQ(manager->CanDoMode(12345, 6, 32), 0);
    EXPECT_EQ(manager->SetMode(12345, 6, 32), 0);
    if (!manager->CanDoMode(640, 480, manager->GetBitsPrPixel())) {
        GTEST_SKIP() << "this desktop has no such mode";
    }
    const TestWindow window({0, 0, 50, 50});
    manager->Destroy();
    manager->Initialize(window.Handle());
    ASSERT_EQ(manager->SetMode(640, 480, manager->GetBitsPrPixel()), 1);
    EXPECT_EQ(::GetSystemMetrics(SM_CXSCREEN), 640);
    EXPECT_EQ(::GetSystemMetrics(SM_CYSCREEN), 480);
    EXPECT_EQ(manager->RestoreMode(), 1);
    EXPECT_EQ(::GetSystemMetrics(SM_CXSCREEN), width);
    EXPECT_EQ(::GetSystemMetrics(SM_CYSCREEN), height);
}

}   // namespace
