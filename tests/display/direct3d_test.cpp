// The manager's Direct3D device, the libraries that are looked for, and planes drawn by it.
#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <map>
#include <tuple>

#include "rastel/display/vertex_buffer.h"
#include "rastel/platform/com_reference.h"
#include "tests/display/library_on_memory.h"

using rastel::platform::ComReference;
using rastel::platform::FailDeviceCalls;
using rastel::platform::HideModule;
using rastel::platform::MemoryScreenPixel;
using rastel::test::OnMemory;

namespace {

constexpr int side = 64;

class Direct3d : public OnMemory {
protected:
    void SetUp() override {
        OnMemory::SetUp();
        Start(32);
    }
    void TearDown() override {
        manager.reset();
        for (const char* const call : {"CreateDevice", "CreateIndexBuffer", "Lock", "CheckDeviceFormat"}) {
            FailDeviceCalls(call, 0);
        }
        HideModule(L"D3D9.DLL", false);
        for (int i = 24; i <= 34; ++i) {
            HideModule(L"D3DX9_" + std::to_wstring(i) + L".DLL", false);
        }
        OnMemory::TearDown();
    }
    void Start(int bits) {
        manager.reset();
        UseDisplay(200, 150, bits);
        window = rastel::platform::CreateMemoryWindow(CRect(10, 20, 10 + side, 20 + side));
        manager = std::make_unique<CDisplayManager>();
    }
    IDirect3DDevice9& Device() {
        EXPECT_EQ(manager->Initialize3D(window, side, side), 1);
        IDirect3DDevice9* const device = manager->GetDirect3DDevice();
        device->SetRenderState(D3DRS_LIGHTING, FALSE);
        device->Clear(0, nullptr, D3DCLEAR_TARGET | D3DCLEAR_ZBUFFER, 0xFF000000, 1, 0);
        return *device;
    }
    // What the back buffer holds, without alpha.
    static std::vector<DWORD> Pixels(IDirect3DDevice9& device) {
        IDirect3DSurface9* back = nullptr;
        EXPECT_EQ(device.GetBackBuffer(0, 0, D3DBACKBUFFER_TYPE_MONO, &back), D3D_OK);
        const ComReference<IDirect3DSurface9> owned(back);
        D3DLOCKED_RECT locked{};
        EXPECT_EQ(back->LockRect(&locked, nullptr, D3DLOCK_READONLY), D3D_OK);
        std::vector<DWORD> pixels;
        for (int y = 0; y < side; ++y) {
            const auto* const row =
                reinterpret_cast<const DWORD*>(static_cast<const BYTE*>(locked.pBits) + y * locked.Pitch);
            for (int x = 0; x < side; ++x) {
                pixels.push_back(row[x] & 0xFFFFFF);
            }
        }
        back->UnlockRect();
        return pixels;
    }

    HWND window = nullptr;
    std::unique_ptr<CDisplayManager> manager;
};

TEST_F(Direct3d, TheNewestD3dxLibraryIsTaken) {
    D3DXMATRIX identity{}, product;
    for (int i = 0; i < 4; ++i) {
        identity.m[i][i] = 2;
    }
    CDirect3DWrapper wrapper;
    EXPECT_NE(wrapper.GetHInstance(), nullptr);
    EXPECT_EQ(wrapper.D3DXMatrixMultiply(&product, &identity, &identity), &product);
    EXPECT_EQ(product._33, 4);
    ID3DXEffect* effect = nullptr;
    EXPECT_LT(wrapper.D3DXCreateEffectFromFileW(nullptr, L"x", nullptr, nullptr, 0, nullptr, &effect, nullptr), 0);

    for (int i = 24; i <= 34; ++i) {
        HideModule(L"D3DX9_" + std::to_wstring(i) + L".DLL", true);
    }
    CDirect3DWrapper without;
    IDirect3DTexture9* texture = nullptr;
    EXPECT_EQ(without.D3DXCreateTexture(nullptr, 1, 1, 1, 0, D3DFMT_UNKNOWN, D3DPOOL_DEFAULT, &texture), E_FAIL);
    EXPECT_EQ(without.D3DXMatrixMultiply(&product, &identity, &identity), nullptr);
    EXPECT_EQ(without.D3DXMatrixLookAtLH(&product, nullptr, nullptr, nullptr), nullptr);
    EXPECT_EQ(without.D3DXMatrixPerspectiveFovLH(&product, 1, 1, 1, 2), nullptr);
    effect = reinterpret_cast<ID3DXEffect*>(&product);
    EXPECT_EQ(without.D3DXCreateEffectFromFileW(nullptr, L"x", nullptr, nullptr, 0, nullptr, &effect, nullptr), 0);
    EXPECT_EQ(static_cast<void*>(effect), &product);   // nothing was written
    const ComReference<IDirect3D9> direct3D(without.Direct3DCreate9(32));
    EXPECT_TRUE(direct3D);

    HideModule(L"D3DX9_24.DLL", false);
    EXPECT_EQ(CDirect3DWrapper().D3DXMatrixMultiply(&product, &identity, &identity), &product);
    HideModule(L"D3D9.DLL", true);
    CDirect3DWrapper none;
    EXPECT_EQ(none.GetHInstance(), nullptr);
    EXPECT_EQ(none.Direct3DCreate9(32), nullptr);
    EXPECT_EQ(none.D3DXMatrixMultiply(&product, &identity, &identity), nullptr);
    manager.reset();
    CDisplayManager bare;
    EXPECT_EQ(bare.Initialize3D(window, 10, 10), 0);
    EXPECT_EQ(bare.GetDirect3D(), nullptr);
}

TEST_F(Direct3d, DevicesAreTriedDepthByDepth) {
    EXPECT_EQ(manager->IsDepthFormatExisting(D3DFMT_D16, D3DFMT_X8R8G8B8), 0);   // nobody to ask yet
    EXPECT_EQ(manager->GetAutoDepthStencilFormat(D3DFMT_X8R8G8B8), D3DFMT_UNKNOWN);
    EXPECT_EQ(manager->Create3dDevice(window, 8, 8, D3DSWAPEFFECT_COPY), nullptr);
    ASSERT_EQ(manager->Initialize3D(window, 8, 8), 1);
    EXPECT_EQ(manager->GetAutoDepthStencilFormat(D3DFMT_X8R8G8B8), D3DFMT_D32);
    FailDeviceCalls("CheckDeviceFormat", 2);
    EXPECT_EQ(manager->GetAutoDepthStencilFormat(D3DFMT_X8R8G8B8), D3DFMT_D24S8);
    EXPECT_EQ(manager->GetAutoDepthStencilFormat(D3DFMT_UNKNOWN), D3DFMT_UNKNOWN);
    struct Try {
        int failures;
        D3DFORMAT depth;
        D3DSWAPEFFECT effect;
        UINT buffers;
    };
    for (const Try& t : {Try{0, D3DFMT_D32, D3DSWAPEFFECT_FLIP, 2}, Try{1, D3DFMT_D24S8, D3DSWAPEFFECT_FLIP, 2},
                         Try{2, D3DFMT_D24X8, D3DSWAPEFFECT_FLIP, 2}, Try{3, D3DFMT_D16, D3DSWAPEFFECT_FLIP, 2},
                         Try{4, D3DFMT_D32, D3DSWAPEFFECT_COPY, 1}, Try{7, D3DFMT_D16, D3DSWAPEFFECT_COPY, 1}}) {
        FailDeviceCalls("CreateDevice", t.failures);
        const ComReference<IDirect3DDevice9> device(manager->Create3dDevice(window, 8, 8, D3DSWAPEFFECT_FLIP));
        ASSERT_TRUE(device);
        IDirect3DSwapChain9* chain = nullptr;
        ASSERT_EQ(device->GetSwapChain(0, &chain), D3D_OK);
        D3DPRESENT_PARAMETERS parameters{};
        chain->GetPresentParameters(&parameters);
        chain->Release();
        EXPECT_EQ(parameters.AutoDepthStencilFormat, t.depth);
        EXPECT_EQ(parameters.SwapEffect, t.effect);
        EXPECT_EQ(parameters.BackBufferCount, t.buffers);
    }
    FailDeviceCalls("CreateDevice", 8);
    EXPECT_EQ(manager->Initialize3D(window, 8, 8), 0);
    EXPECT_NE(manager->GetDirect3D(), nullptr);
    EXPECT_EQ(manager->GetDirect3DDevice(), nullptr);
    EXPECT_EQ(manager->Create3dDevice(nullptr, 8, 8, D3DSWAPEFFECT_COPY), nullptr);   // no window
    EXPECT_EQ(manager->Create3dDevice(window, -1, 8, D3DSWAPEFFECT_COPY), nullptr);
}

TEST_F(Direct3d, APlaneIsAGridOfQuads) {
    CVertexBuffer plane;
    ASSERT_EQ(plane.CreatePlane(&Device(), {0, 0, 0}, {2, 0, 0}, {0, 1, 0}, 1, 2, 1, 1, 0xFF8040C0), 1);
    ASSERT_EQ(plane.GetVerticesCount(), 6);
    ASSERT_EQ(plane.GetIndeciesCount(), 12);
    struct Vertex {
        float x, y, z;
        DWORD diffuse;
        float tu, tv;
    };
    Vertex* vertices = nullptr;
    WORD* indices = nullptr;
    ASSERT_EQ(plane.GetVertexBuffer()->Lock(0, 0, reinterpret_cast<void**>(&vertices), 0), D3D_OK);
    ASSERT_EQ(plane.GetIndexBuffer()->Lock(0, 0, reinterpret_cast<void**>(&indices), 0), D3D_OK);
    for (int i = 0; i < 6; ++i) {
        EXPECT_EQ(vertices[i].x, static_cast<float>(i % 3));
        EXPECT_EQ(vertices[i].y, static_cast<float>(i / 3));
        EXPECT_EQ(vertices[i].tu, static_cast<float>(i % 3) / 2);
        EXPECT_EQ(vertices[i].tv, static_cast<float>(i / 3));
        EXPECT_EQ(vertices[i].diffuse, 0xFF8040C0u);
    }
    const WORD wanted[] = {0, 1, 3, 3, 1, 4, 1, 2, 4, 4, 2, 5};
    EXPECT_TRUE(std::equal(wanted, wanted + 12, indices));
    plane.CleanUp();
    plane.CleanUp();
    EXPECT_EQ(plane.GetVertexBuffer(), nullptr);

    IDirect3DDevice9& device = *manager->GetDirect3DDevice();
    const D3DXVECTOR3 o(0, 0, 0), u(1, 0, 0), v(0, 1, 0);
    for (const auto& [call, count] : {std::pair{"CreateVertexBuffer", 1}, {"CreateIndexBuffer", 1}, {"Lock", 1}}) {
        FailDeviceCalls(call, count);
        EXPECT_EQ(plane.CreatePlane(&device, o, u, v, 2, 2, 1, 1, 0), 0) << call;
        EXPECT_EQ(plane.GetVerticesCount(), 0);
        EXPECT_EQ(plane.GetIndeciesCount(), 0);
    }
    for (const auto& [rows, columns] : {std::pair{0, 3}, {-1, -1}, {-5, 3}, {INT_MAX, INT_MAX}, {65535, 65535}}) {
        plane.CreatePlane(&device, o, u, v, rows, columns, 1, 1, 0);
        plane.CleanUp();
    }
    plane.CreatePlane(&device, o, o, o, 2, 2, 1, 1, 0);
    plane.Draw(nullptr);
    plane.CleanUp();
    plane.Draw(&device);
    EXPECT_EQ(plane.CreatePlane(nullptr, o, u, v, 1, 1, 1, 1, 0), 0);
}

TEST_F(Direct3d, ATessellatedPlaneCoversEachPixelOnce) {
    IDirect3DDevice9& device = Device();
    device.SetRenderState(D3DRS_ALPHABLENDENABLE, TRUE);   // adds, so that a pixel drawn twice shows
    device.SetRenderState(D3DRS_SRCBLEND, D3DBLEND_ONE);
    device.SetRenderState(D3DRS_DESTBLEND, D3DBLEND_ONE);
    device.SetRenderState(D3DRS_CULLMODE, D3DCULL_NONE);
    device.SetRenderState(D3DRS_ZENABLE, FALSE);
    CVertexBuffer plane;
    ASSERT_EQ(plane.CreatePlane(&device, {-1, 1, 0.5f}, {1, 1, 0.5f}, {-1, -1, 0.5f}, 7, 5, 1, 1, 0xFF204060), 1);
    plane.Draw(&device);   // outside a scene nothing is drawn
    EXPECT_EQ(Pixels(device), std::vector<DWORD>(side * side, 0));
    ASSERT_EQ(device.BeginScene(), D3D_OK);
    plane.Draw(&device);
    EXPECT_EQ(device.EndScene(), D3D_OK);
    EXPECT_EQ(Pixels(device), std::vector<DWORD>(side * side, 0x204060));
}

TEST_F(Direct3d, PerspectiveTextureAndDepthAreRight) {
    IDirect3DTexture9* texture = nullptr;
    IDirect3DDevice9& d = Device();
    ASSERT_EQ(
        CDirect3DWrapper::GetThis()->D3DXCreateTexture(&d, 2, 1, 1, 0, D3DFMT_A8R8G8B8, D3DPOOL_MANAGED, &texture),
        D3D_OK);
    const ComReference<IDirect3DTexture9> owned(texture);
    D3DLOCKED_RECT locked{};
    ASSERT_EQ(texture->LockRect(0, &locked, nullptr, 0), D3D_OK);
    static_cast<DWORD*>(locked.pBits)[0] = 0xFFFF0000;
    static_cast<DWORD*>(locked.pBits)[1] = 0xFF0000FF;
    EXPECT_EQ(texture->LockRect(0, &locked, nullptr, 0), D3DERR_INVALIDCALL);   // one at a time
    texture->UnlockRect(0);

    // A floor that runs away from the eye: by perspective its middle, where the texture changes, lies in the farther
    // part.
    struct Vertex {
        float x, y, z;
        DWORD diffuse;
        float u, v;
    };
    const Vertex floor[] = {{-1, -1, 1, 0xFFFFFFFF, 0, 0},
                            {-1, -1, 9, 0xFFFFFFFF, 1, 0},
                            {1, -1, 1, 0xFFFFFFFF, 0, 1},
                            {1, -1, 9, 0xFFFFFFFF, 1, 1}};
    D3DXMATRIX projection;
    CDirect3DWrapper::GetThis()->D3DXMatrixPerspectiveFovLH(&projection, 3.14159265f / 2, 1, 0.5f, 20);
    d.SetTransform(D3DTS_PROJECTION, &projection);
    d.SetRenderState(D3DRS_LIGHTING, FALSE);
    d.SetRenderState(D3DRS_CULLMODE, D3DCULL_NONE);
    d.SetTexture(0, texture);
    d.SetFVF(D3DFVF_XYZ | D3DFVF_DIFFUSE | D3DFVF_TEX1);
    d.Clear(0, nullptr, D3DCLEAR_TARGET | D3DCLEAR_ZBUFFER, 0xFF00FF00, 1, 0);
    d.BeginScene();
    EXPECT_EQ(d.DrawPrimitiveUP(D3DPT_TRIANGLESTRIP, 2, floor, sizeof(Vertex)), D3D_OK);
    // In front of it at the bottom, and behind it: only the first shows.
    const Vertex quad[] = {
        {-0.3f, -1, 0.9f, 0xFFFFFF00, 0, 0}, {0.3f, -1, 0.9f, 0xFFFFFF00, 0, 0}, {0, 0, 0.9f, 0xFFFFFF00, 0, 0}};
    d.SetTexture(0, nullptr);
    d.DrawPrimitiveUP(D3DPT_TRIANGLELIST, 1, quad, sizeof(Vertex));
    const Vertex behind[] = {
        {-20, -10, 15, 0xFF00FFFF, 0, 0}, {20, -10, 15, 0xFF00FFFF, 0, 0}, {0, 10, 15, 0xFF00FFFF, 0, 0}};
    d.DrawPrimitiveUP(D3DPT_TRIANGLELIST, 1, behind, sizeof(Vertex));
    d.EndScene();
    const std::vector<DWORD> pixels = Pixels(d);
    const auto at = [&](int x, int y) { return pixels[static_cast<std::size_t>(y * side + x)]; };
    // At depth z the floor lies 32 / z below the middle and reaches as far to both sides; z = 5 is in row 38.4.
    EXPECT_EQ(at(32, 40), 0xFFFF00u);   // the triangle in front
    EXPECT_EQ(at(26, 41), 0xFF0000u);
    EXPECT_EQ(at(29, 37), 0x0000FFu);
    EXPECT_EQ(at(32, 20), 0x00FFFFu);   // behind, where there is no floor
}

TEST_F(Direct3d, PresentsToTheWindowsVisiblePart) {
    for (const int bits : {32, 16}) {
        Start(bits);
        rastel::platform::CreateMemoryWindow(CRect(50, 60, 120, 120));
        IDirect3DDevice9& device = Device();
        device.Clear(0, nullptr, D3DCLEAR_TARGET, 0xFFFFFFFF, 1, 0);
        EXPECT_EQ(device.Present(nullptr, nullptr, nullptr, nullptr), D3D_OK);
        for (int y = 0; y < 150; ++y) {
            for (int x = 0; x < 200; ++x) {
                const bool isIn = x >= 10 && x < 10 + side && y >= 20 && y < 20 + side && !(x >= 50 && y >= 60);
                ASSERT_EQ(MemoryScreenPixel(x, y), isIn ? 0xFFFFFFu : 0u) << bits << ' ' << x << ' ' << y;
            }
        }
        rastel::platform::DestroyMemoryWindow(window);
        EXPECT_LT(device.Present(nullptr, nullptr, nullptr, nullptr), 0);
    }
}

TEST_F(Direct3d, WhatLiesBeyondTheBuffersIsRefused) {
    IDirect3DDevice9& device = Device();
    CVertexBuffer plane;
    ASSERT_EQ(plane.CreatePlane(&device, {-1, 1, 0}, {1, 1, 0}, {-1, -1, 0}, 2, 2, 1, 1, 0xFFFFFFFF), 1);
    device.BeginScene();
    plane.Draw(&device);
    const UINT vertices = static_cast<UINT>(plane.GetVerticesCount());
    const UINT triangles = static_cast<UINT>(plane.GetIndeciesCount() / 3);
    EXPECT_EQ(device.DrawIndexedPrimitive(D3DPT_TRIANGLELIST, 0, 0, vertices, 0, triangles), D3D_OK);
    for (const auto& [base, first, count] : {std::tuple{1, 0u, triangles},
                                             {-1, 0u, triangles},
                                             {0, 1u, triangles},
                                             {0, UINT_MAX, 1u},
                                             {0, 0u, UINT_MAX},
                                             {INT_MAX, 0u, 1u},
                                             {0, 0u, 0u}}) {
        EXPECT_EQ(device.DrawIndexedPrimitive(D3DPT_TRIANGLELIST, base, 0, vertices, first, count), D3DERR_INVALIDCALL);
    }
    EXPECT_EQ(device.DrawPrimitive(D3DPT_TRIANGLELIST, vertices, 1), D3DERR_INVALIDCALL);
    EXPECT_EQ(device.DrawPrimitive(D3DPT_LINELIST, 0, 1), D3DERR_INVALIDCALL);
    struct Vertex {
        float x, y, z, w;
    };
    const float wild[] = {INFINITY, NAN, 1e30f, -1e30f, 0};
    device.SetFVF(D3DFVF_XYZRHW);
    for (const float a : wild) {
        for (const float b : wild) {
            const Vertex corners[] = {{a, b, a, 1}, {b, a, 0.5f, b}, {3, a, b, a}};
            device.DrawPrimitiveUP(D3DPT_TRIANGLELIST, 1, corners, sizeof(Vertex));
        }
    }
    device.EndScene();
    IDirect3DTexture9* texture = nullptr;
    for (const auto& [width, height] : {std::pair{0u, 5u}, {UINT_MAX, 1u}, {5u, 100000u}}) {
        EXPECT_LT(device.CreateTexture(width, height, 1, 0, D3DFMT_A8R8G8B8, D3DPOOL_DEFAULT, &texture, nullptr), 0);
        EXPECT_EQ(texture, nullptr);
    }
}

}   // namespace
