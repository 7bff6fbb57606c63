// From the back buffer to the window.
#include "tests/platform/d3d9/device_support.h"

namespace {

using rastel::platform::MemoryScreenPixel;
using rastel::test::OnDevice;

using Presenting = OnDevice;

TEST_F(Presenting, PartsLandWhereTheyAreSent) {
    const RECT quarter{0, 0, 32, 32}, inner{8, 8, 24, 24}, landing{0, 0, 64, 64};
    device->ColorFill(Back().get(), nullptr, 0xFF0000FF);
    device->ColorFill(Back().get(), &inner, 0xFF00FF00);
    ASSERT_EQ(device->Present(&quarter, &landing, nullptr, nullptr), D3D_OK);   // twice as large
    for (const auto& [x, y, expected] :
         {std::tuple{15, 15, 0xFF0000u}, {16, 16, 0x00FF00u}, {47, 47, 0x00FF00u}, {48, 48, 0xFF0000u}}) {
        EXPECT_EQ(MemoryScreenPixel(10 + x, 20 + y), expected) << x << ' ' << y;   // COLORREF
    }
    const RECT beyond{0, 0, 65, 64};
    EXPECT_EQ(device->Present(&beyond, nullptr, nullptr, nullptr), D3DERR_INVALIDCALL);
    const HWND other = rastel::platform::CreateMemoryWindow({80, 0, 90, 10});
    ASSERT_EQ(device->Present(&inner, nullptr, other, nullptr), D3D_OK);
    EXPECT_EQ(MemoryScreenPixel(89, 9), 0x00FF00u);
    EXPECT_EQ(MemoryScreenPixel(90, 9), 0u);
    device->BeginScene();
    EXPECT_EQ(device->Present(nullptr, nullptr, nullptr, nullptr), D3DERR_INVALIDCALL);
    device->EndScene();
}

TEST_F(Presenting, AHeldBackBufferStaysTheBackBufferOfAFlippingChain) {
    Start(32, D3DSWAPEFFECT_FLIP, 2);
    const auto back = Back();
    ASSERT_EQ(device->SetRenderTarget(0, back.get()), D3D_OK);
    for (const DWORD color : {0x0000FFu, 0x00FF00u, 0xFF0000u}) {
        device->Clear(0, nullptr, D3DCLEAR_TARGET, 0xFF000000 | color, 1, 0);
        ASSERT_EQ(device->Present(nullptr, nullptr, nullptr, nullptr), D3D_OK);
        const DWORD shown = MemoryScreenPixel(20, 30);
        EXPECT_EQ((shown & 0xFF) << 16 | (shown & 0xFF00) | shown >> 16, color);
    }
    EXPECT_EQ(back.get(), Back().get());
}

TEST_F(Presenting, AResetChainHasTheNewSize) {
    IDirect3DSwapChain9* chain = nullptr;
    ASSERT_EQ(device->GetSwapChain(0, &chain), D3D_OK);
    const rastel::test::ComReference<IDirect3DSwapChain9> owned(chain);
    const auto old = Back();
    auto parameters = Parameters(D3DSWAPEFFECT_COPY, 1);
    parameters.BackBufferWidth = 20;
    ASSERT_EQ(device->Reset(&parameters), D3D_OK);
    IDirect3DSurface9* now = nullptr;
    ASSERT_EQ(chain->GetBackBuffer(0, D3DBACKBUFFER_TYPE_MONO, &now), D3D_OK);
    D3DSURFACE_DESC description{};
    now->GetDesc(&description);
    now->Release();
    EXPECT_EQ(description.Width, 20u);
    EXPECT_EQ(Pixels(*old).size(), 64u * 64);   // what is held stays whole
    parameters.AutoDepthStencilFormat = D3DFMT_A8R8G8B8;
    EXPECT_EQ(device->Reset(&parameters), D3DERR_INVALIDCALL);
    EXPECT_EQ(device->Present(nullptr, nullptr, nullptr, nullptr), D3D_OK);   // the old chain goes on
}

}   // namespace
