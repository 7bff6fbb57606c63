// Who holds whom, what is refused, and what a device says of itself.
#include <thread>

#include "tests/platform/d3d9/device_support.h"

namespace {

using rastel::test::ComReference;
using rastel::test::OnDevice;

using Objects = OnDevice;

TEST_F(Objects, OneThingHasOneInterface) {
    const auto first = Back(), second = Back();
    EXPECT_EQ(first.get(), second.get());
    IDirect3DSurface9* target = nullptr;
    ASSERT_EQ(device->GetRenderTarget(0, &target), D3D_OK);
    EXPECT_EQ(target, first.get());
    target->Release();
    HDC context = nullptr;
    ASSERT_EQ(first->GetDC(&context), D3D_OK);
    EXPECT_EQ(Back()->ReleaseDC(context), D3D_OK);

    auto texture = MakeTexture(1, 1, {0xFF00FF00});
    device->SetTexture(0, texture.get());
    IDirect3DBaseTexture9* bound = nullptr;
    ASSERT_EQ(device->GetTexture(0, &bound), D3D_OK);
    EXPECT_EQ(bound, texture.get());
    EXPECT_EQ(bound->Release(), 1u);
    texture.reset();   // the device draws with it all the same
    DrawSheet(0xFFFFFFFF);
    EXPECT_EQ(PixelAt(1, 1), 0x00FF00u);
    ASSERT_EQ(device->GetTexture(0, &bound), D3D_OK);
    EXPECT_EQ(bound->GetType(), D3DRTYPE_TEXTURE);
    bound->Release();
}

TEST_F(Objects, WhatADeviceMadeKeepsItAlive) {
    IDirect3DVertexBuffer9* buffer = nullptr;
    ASSERT_EQ(device->CreateVertexBuffer(64, 0, 0, D3DPOOL_DEFAULT, &buffer, nullptr), D3D_OK);
    device->SetStreamSource(0, buffer, 0, 16);
    direct3D.reset();
    EXPECT_EQ(device.release()->Release(), 1u);
    IDirect3DDevice9* again = nullptr;
    ASSERT_EQ(buffer->GetDevice(&again), D3D_OK);
    EXPECT_EQ(again->TestCooperativeLevel(), D3D_OK);
    again->Release();
    EXPECT_EQ(buffer->Release(), 0u);   // and the device with it: a leak would show at the end of the run
}

TEST_F(Objects, OneLockAtATimeAndNoneWithAContext) {
    const auto back = Back();
    D3DLOCKED_RECT locked{};
    HDC context = nullptr;
    ASSERT_EQ(back->LockRect(&locked, nullptr, 0), D3D_OK);
    EXPECT_EQ(back->GetDC(&context), D3DERR_INVALIDCALL);
    EXPECT_EQ(context, nullptr);
    EXPECT_EQ(device->Present(nullptr, nullptr, nullptr, nullptr), D3DERR_INVALIDCALL);
    EXPECT_EQ(back->UnlockRect(), D3D_OK);
    EXPECT_EQ(back->UnlockRect(), D3DERR_INVALIDCALL);
    for (const RECT& wrong :
         {RECT{0, 0, 65, 1}, {-1, 0, 5, 5}, {5, 5, 5, 9}, {9, 9, 2, 20}, {0, 0, INT32_MAX, INT32_MAX}}) {
        EXPECT_EQ(back->LockRect(&locked, &wrong, 0), D3DERR_INVALIDCALL) << wrong.left << ' ' << wrong.right;
        EXPECT_EQ(locked.pBits, nullptr);
        EXPECT_EQ(device->ColorFill(back.get(), &wrong, 0), D3DERR_INVALIDCALL);
    }
    const RECT area{2, 3, 4, 5};
    ASSERT_EQ(back->GetDC(&context), D3D_OK);
    EXPECT_EQ(back->LockRect(&locked, nullptr, 0), D3DERR_INVALIDCALL);
    EXPECT_EQ(back->ReleaseDC(context), D3D_OK);
    EXPECT_EQ(device->ColorFill(back.get(), &area, 0xFF123456), D3D_OK);
    EXPECT_EQ(PixelAt(3, 4), 0x123456u);
    EXPECT_EQ(PixelAt(4, 4), 0u);
}

TEST_F(Objects, AFailedCallLeavesNullBehind) {
    const auto refuses = [&](const char* call, auto attempt) {
        rastel::platform::FailDeviceCalls(call, 1);
        auto* object = attempt();
        EXPECT_EQ(object, nullptr) << call;
        rastel::platform::FailDeviceCalls(call, 0);
    };
    const auto stale = [](auto* wrong) { return reinterpret_cast<decltype(wrong)>(16); };
    refuses("GetBackBuffer", [&] {
        auto* p = stale(static_cast<IDirect3DSurface9*>(nullptr));
        EXPECT_LT(device->GetBackBuffer(0, 0, D3DBACKBUFFER_TYPE_MONO, &p), 0);
        return p;
    });
    refuses("GetSwapChain", [&] {
        auto* p = stale(static_cast<IDirect3DSwapChain9*>(nullptr));
        EXPECT_LT(device->GetSwapChain(0, &p), 0);
        return p;
    });
    refuses("CreateTexture", [&] {
        auto* p = stale(static_cast<IDirect3DTexture9*>(nullptr));
        EXPECT_LT(device->CreateTexture(1, 1, 1, 0, D3DFMT_A8R8G8B8, D3DPOOL_DEFAULT, &p, nullptr), 0);
        return p;
    });
    refuses("CreateOffscreenPlainSurface", [&] {
        auto* p = stale(static_cast<IDirect3DSurface9*>(nullptr));
        EXPECT_LT(device->CreateOffscreenPlainSurface(1, 1, D3DFMT_A8R8G8B8, D3DPOOL_DEFAULT, &p, nullptr), 0);
        return p;
    });
}

TEST_F(Objects, TheDeviceSaysWhatItCan) {
    D3DCAPS9 caps{};
    ASSERT_EQ(device->GetDeviceCaps(&caps), D3D_OK);
    EXPECT_EQ(device->GetDeviceCaps(nullptr), D3DERR_INVALIDCALL);
    IDirect3DTexture9* texture = nullptr;
    ASSERT_EQ(device->CreateTexture(caps.MaxTextureWidth, 1, 1, 0, D3DFMT_R5G6B5, D3DPOOL_DEFAULT, &texture, nullptr),
              D3D_OK);
    texture->Release();
    EXPECT_LT(
        device->CreateTexture(caps.MaxTextureWidth + 1, 1, 1, 0, D3DFMT_R5G6B5, D3DPOOL_DEFAULT, &texture, nullptr), 0);
    D3DADAPTER_IDENTIFIER9 identifier{};
    EXPECT_EQ(direct3D->GetAdapterIdentifier(0, 0, &identifier), D3D_OK);
    EXPECT_NE(identifier.Description[0], 0);
    EXPECT_EQ(direct3D->GetAdapterIdentifier(1, 0, &identifier), D3DERR_INVALIDCALL);
}

TEST_F(Objects, ThreadsTakeTurns) {
    const auto work = [&] {
        for (int i = 0; i < 50; ++i) {
            const auto back = Back();
            device->ColorFill(back.get(), nullptr, 0xFF123456);
            auto parameters = Parameters(D3DSWAPEFFECT_COPY, 1);
            EXPECT_EQ(device->Reset(&parameters), D3D_OK);
            const auto texture = MakeTexture(1, 1, {0});
            device->SetTexture(0, texture.get());
            IDirect3DBaseTexture9* bound = nullptr;
            device->GetTexture(0, &bound);
            const ComReference<IDirect3DBaseTexture9> owned(bound);
        }
    };
    std::thread first(work), second(work);
    first.join();
    second.join();
}

}   // namespace
