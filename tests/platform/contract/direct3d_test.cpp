// Direct3D 9: buffers, surfaces and textures of a device in a window.
#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <vector>

#include "rastel/platform/com_reference.h"
#include "rastel/platform/d3d9.h"
#include "rastel/platform/kernel.h"
#include "tests/platform/contract/screen.h"

namespace rastel::test {
namespace {

using platform::ComReference;

class Direct3DContract : public ::testing::Test {
protected:
    void SetUp() override {
        OpenScreen();
        window_ = std::make_unique<TestWindow>(RECT{20, 20, 84, 84});
        library_ = ::LoadLibraryW(L"D3D9.DLL");
        using Create = IDirect3D9*(WINAPI*)(UINT);
        const auto create =
            library_
                ? reinterpret_cast<Create>(reinterpret_cast<void (*)()>(::GetProcAddress(library_, "Direct3DCreate9")))
                : nullptr;
        direct3D.reset(create ? create(D3D_SDK_VERSION) : nullptr);
        if (!direct3D) {
            GTEST_SKIP() << "no Direct3D here";
        }
        D3DPRESENT_PARAMETERS parameters{};
        parameters.Windowed = TRUE;
        parameters.SwapEffect = D3DSWAPEFFECT_COPY;
        parameters.BackBufferFormat = D3DFMT_X8R8G8B8;
        parameters.BackBufferWidth = parameters.BackBufferHeight = 64;
        parameters.hDeviceWindow = window_->Handle();
        parameters.EnableAutoDepthStencil = TRUE;
        parameters.AutoDepthStencilFormat = D3DFMT_D16;
        IDirect3DDevice9* made = nullptr;
        if (direct3D->CreateDevice(D3DADAPTER_DEFAULT, D3DDEVTYPE_HAL, window_->Handle(),
                                   D3DCREATE_SOFTWARE_VERTEXPROCESSING, &parameters, &made) < 0) {
            GTEST_SKIP() << "no device here";
        }
        device.reset(made);
    }
    void TearDown() override {
        device.reset();
        direct3D.reset();
        if (library_) {
            ::FreeLibrary(library_);
        }
        window_.reset();
    }

    ComReference<IDirect3D9> direct3D;
    ComReference<IDirect3DDevice9> device;

private:
    std::unique_ptr<TestWindow> window_;
    HMODULE library_ = nullptr;
};

TEST_F(Direct3DContract, BuffersKeepWhatIsWrittenToThem) {
    IDirect3DVertexBuffer9* made = nullptr;
    ASSERT_EQ(device->CreateVertexBuffer(96, 0, D3DFVF_XYZ | D3DFVF_DIFFUSE, D3DPOOL_MANAGED, &made, nullptr), D3D_OK);
    const ComReference<IDirect3DVertexBuffer9> vertices(made);
    void* data = nullptr;
    ASSERT_EQ(vertices->Lock(0, 0, &data, 0), D3D_OK);
    for (int i = 0; i < 96; ++i) {
        static_cast<BYTE*>(data)[i] = static_cast<BYTE>(i);
    }
    EXPECT_EQ(vertices->Unlock(), D3D_OK);
    ASSERT_EQ(vertices->Lock(16, 16, &data, 0), D3D_OK);
    EXPECT_EQ(static_cast<BYTE*>(data)[1], 17);
    EXPECT_EQ(vertices->Unlock(), D3D_OK);
    D3DVERTEXBUFFER_DESC description{};
    ASSERT_EQ(vertices->GetDesc(&description), D3D_OK);
    EXPECT_EQ(description.Size, 96u);
    EXPECT_EQ(description.FVF, static_cast<DWORD>(D3DFVF_XYZ | D3DFVF_DIFFUSE));
    IDirect3DIndexBuffer9* indices = nullptr;
    ASSERT_EQ(device->CreateIndexBuffer(12, 0, D3DFMT_INDEX16, D3DPOOL_MANAGED, &indices, nullptr), D3D_OK);
    const ComReference<IDirect3DIndexBuffer9> owned(indices);
    ASSERT_EQ(indices->Lock(0, 0, &data, 0), D3D_OK);
    EXPECT_EQ(indices->Unlock(), D3D_OK);
}

TEST_F(Direct3DContract, TexturesLockTheirLevels) {
    IDirect3DTexture9* made = nullptr;
    ASSERT_EQ(device->CreateTexture(16, 8, 0, 0, D3DFMT_A8R8G8B8, D3DPOOL_MANAGED, &made, nullptr), D3D_OK);
    const ComReference<IDirect3DTexture9> texture(made);
    EXPECT_EQ(texture->GetLevelCount(), 5u);
    D3DSURFACE_DESC description{};
    ASSERT_EQ(texture->GetLevelDesc(2, &description), D3D_OK);
    EXPECT_EQ(description.Width, 4u);
    EXPECT_EQ(description.Height, 2u);
    D3DLOCKED_RECT locked{};
    ASSERT_EQ(texture->LockRect(0, &locked, nullptr, 0), D3D_OK);
    EXPECT_GE(locked.Pitch, 64);
    EXPECT_EQ(texture->UnlockRect(0), D3D_OK);
    EXPECT_EQ(texture->LockRect(5, &locked, nullptr, 0), D3DERR_INVALIDCALL);
}

TEST_F(Direct3DContract, WhatIsDrawnStandsInTheBackBuffer) {
    struct Vertex {
        float x, y, z, rhw;
        DWORD diffuse;
    };
    const Vertex sheet[] = {{9.5f, 9.5f, 0, 1, 0xFF00FF00},
                            {29.5f, 9.5f, 0, 1, 0xFF00FF00},
                            {9.5f, 19.5f, 0, 1, 0xFF00FF00},
                            {29.5f, 19.5f, 0, 1, 0xFF00FF00}};
    device->SetRenderState(D3DRS_LIGHTING, FALSE);
    device->SetRenderState(D3DRS_CULLMODE, D3DCULL_NONE);
    ASSERT_EQ(device->Clear(0, nullptr, D3DCLEAR_TARGET | D3DCLEAR_ZBUFFER, 0xFF000080, 1, 0), D3D_OK);
    EXPECT_EQ(device->DrawPrimitiveUP(D3DPT_TRIANGLESTRIP, 2, sheet, sizeof(Vertex)) >= 0, false) << "no scene";
    ASSERT_EQ(device->BeginScene(), D3D_OK);
    EXPECT_EQ(device->BeginScene(), D3DERR_INVALIDCALL);
    device->SetFVF(D3DFVF_XYZRHW | D3DFVF_DIFFUSE);
    EXPECT_EQ(device->DrawPrimitiveUP(D3DPT_TRIANGLESTRIP, 2, sheet, sizeof(Vertex)), D3D_OK);
    ASSERT_EQ(device->EndScene(), D3D_OK);
    IDirect3DSurface9 *back = nullptr, *plain = nullptr;
    ASSERT_EQ(device->GetBackBuffer(0, 0, D3DBACKBUFFER_TYPE_MONO, &back), D3D_OK);
    const ComReference<IDirect3DSurface9> target(back);
    ASSERT_EQ(device->CreateOffscreenPlainSurface(64, 64, D3DFMT_X8R8G8B8, D3DPOOL_SYSTEMMEM, &plain, nullptr), D3D_OK);
    const ComReference<IDirect3DSurface9> copy(plain);
    ASSERT_EQ(device->GetRenderTargetData(target.get(), copy.get()), D3D_OK);
    D3DLOCKED_RECT locked{};
    ASSERT_EQ(copy->LockRect(&locked, nullptr, D3DLOCK_READONLY), D3D_OK);
    const auto at = [&](int x, int y) {
        return reinterpret_cast<const DWORD*>(static_cast<const BYTE*>(locked.pBits) + y * locked.Pitch)[x] & 0xFFFFFF;
    };
    EXPECT_EQ(at(10, 10), 0x00FF00u);
    EXPECT_EQ(at(29, 19), 0x00FF00u);
    EXPECT_EQ(at(9, 10), 0x000080u);
    EXPECT_EQ(at(30, 19), 0x000080u);
    EXPECT_EQ(at(10, 20), 0x000080u);
    EXPECT_EQ(copy->UnlockRect(), D3D_OK);
    EXPECT_EQ(device->Present(nullptr, nullptr, nullptr, nullptr), D3D_OK);
    IDirect3DSwapChain9* chain = nullptr;
    ASSERT_EQ(device->GetSwapChain(0, &chain), D3D_OK);
    const ComReference<IDirect3DSwapChain9> owned(chain);
    EXPECT_EQ(chain->GetBackBuffer(0, D3DBACKBUFFER_TYPE_MONO, &back), D3D_OK);
    EXPECT_EQ(back, target.get());
    back->Release();
}

}   // namespace
}   // namespace rastel::test
