// A device of 64 by 64 pixels on a memory display, and what stands in its back buffer.
#pragma once

#include <gtest/gtest.h>

#include <vector>

#include "rastel/platform/com_reference.h"
#include "rastel/platform/d3d9.h"
#include "rastel/platform/kernel.h"
#include "rastel/platform/portable/memory_display.h"

namespace rastel::test {

using platform::ComReference;

constexpr int deviceSide = 64;

struct FlatVertex {
    float x, y, z, rhw;
    DWORD diffuse;
    float u, v;
};
constexpr DWORD flatFormat = D3DFVF_XYZRHW | D3DFVF_DIFFUSE | D3DFVF_TEX1;

class OnDevice : public ::testing::Test {
protected:
    void SetUp() override { Start(32, D3DSWAPEFFECT_COPY, 1); }
    void TearDown() override {
        device.reset();
        direct3D.reset();
        platform::UseMemoryDisplay({});
    }

    void Start(int bits, D3DSWAPEFFECT effect, UINT buffers) {
        device.reset();
        direct3D.reset();
        platform::MemoryDisplayOptions options;
        options.width = options.height = 100;
        options.bitsPerPixel = bits;
        platform::UseMemoryDisplay(options);
        window = platform::CreateMemoryWindow({10, 20, 10 + deviceSide, 20 + deviceSide});
        const HMODULE library = ::LoadLibraryW(L"D3D9.DLL");
        ASSERT_NE(library, nullptr);
        using Create = IDirect3D9* WINAPI(UINT);
        direct3D.reset(reinterpret_cast<Create*>(
            reinterpret_cast<void (*)()>(::GetProcAddress(library, "Direct3DCreate9")))(D3D_SDK_VERSION));
        ::FreeLibrary(library);
        ASSERT_TRUE(direct3D);
        D3DPRESENT_PARAMETERS parameters = Parameters(effect, buffers);
        IDirect3DDevice9* made = nullptr;
        ASSERT_EQ(direct3D->CreateDevice(0, D3DDEVTYPE_HAL, window, D3DCREATE_MULTITHREADED, &parameters, &made),
                  D3D_OK);
        device.reset(made);
        device->SetRenderState(D3DRS_LIGHTING, FALSE);
        device->SetRenderState(D3DRS_CULLMODE, D3DCULL_NONE);
        device->SetFVF(flatFormat);
        device->Clear(0, nullptr, D3DCLEAR_TARGET | D3DCLEAR_ZBUFFER, 0xFF000000, 1, 0);
    }
    static D3DPRESENT_PARAMETERS Parameters(D3DSWAPEFFECT effect, UINT buffers) {
        D3DPRESENT_PARAMETERS parameters{};
        parameters.BackBufferWidth = parameters.BackBufferHeight = deviceSide;
        parameters.BackBufferFormat = D3DFMT_X8R8G8B8;
        parameters.BackBufferCount = buffers;
        parameters.SwapEffect = effect;
        parameters.Windowed = TRUE;
        parameters.EnableAutoDepthStencil = TRUE;
        parameters.AutoDepthStencilFormat = D3DFMT_D16;
        return parameters;
    }
    ComReference<IDirect3DSurface9> Back(UINT index = 0) {
        IDirect3DSurface9* back = nullptr;
        EXPECT_EQ(device->GetBackBuffer(0, index, D3DBACKBUFFER_TYPE_MONO, &back), D3D_OK);
        return ComReference<IDirect3DSurface9>(back);
    }
    ComReference<IDirect3DTexture9> MakeTexture(UINT width, UINT height, const std::vector<DWORD>& texels) {
        IDirect3DTexture9* texture = nullptr;
        EXPECT_EQ(device->CreateTexture(width, height, 1, 0, D3DFMT_A8R8G8B8, D3DPOOL_MANAGED, &texture, nullptr),
                  D3D_OK);
        D3DLOCKED_RECT locked{};
        EXPECT_EQ(texture->LockRect(0, &locked, nullptr, 0), D3D_OK);
        for (UINT i = 0; i < width * height; ++i) {
            auto* const row = static_cast<BYTE*>(locked.pBits) + static_cast<INT>(i / width) * locked.Pitch;
            reinterpret_cast<DWORD*>(row)[i % width] = texels[i];
        }
        texture->UnlockRect(0);
        return ComReference<IDirect3DTexture9>(texture);
    }

    static std::vector<DWORD> Pixels(IDirect3DSurface9& surface) {
        D3DLOCKED_RECT locked{};
        EXPECT_EQ(surface.LockRect(&locked, nullptr, D3DLOCK_READONLY), D3D_OK);
        std::vector<DWORD> pixels;
        for (int i = 0; i < deviceSide * deviceSide && locked.pBits; ++i) {
            const auto* const row = static_cast<const BYTE*>(locked.pBits) + i / deviceSide * locked.Pitch;
            pixels.push_back(reinterpret_cast<const DWORD*>(row)[i % deviceSide] & 0xFFFFFF);
        }
        surface.UnlockRect();
        return pixels;
    }
    DWORD PixelAt(int x, int y) { return Pixels(*Back())[static_cast<std::size_t>(y * deviceSide + x)]; }
    void DrawFlat(D3DPRIMITIVETYPE type, UINT count, const std::vector<FlatVertex>& vertices) {
        device->BeginScene();
        EXPECT_EQ(device->DrawPrimitiveUP(type, count, vertices.data(), sizeof(FlatVertex)), D3D_OK);
        device->EndScene();
    }
    // All of the target, at one depth; the texture once across it.
    void DrawSheet(DWORD diffuse, float z = 0.5f, float repeats = 1) {
        const float side = deviceSide;
        DrawFlat(D3DPT_TRIANGLESTRIP, 2,
                 {{0, 0, z, 1, diffuse, 0, 0},
                  {side, 0, z, 1, diffuse, repeats, 0},
                  {0, side, z, 1, diffuse, 0, repeats},
                  {side, side, z, 1, diffuse, repeats, repeats}});
    }

    HWND window = nullptr;
    ComReference<IDirect3D9> direct3D;
    ComReference<IDirect3DDevice9> device;
};

}   // namespace rastel::test
