// Back buffers, and how they reach the window.
#pragma once

#include <vector>

#include "rastel/platform/portable/com_object.h"
#include "rastel/platform/portable/d3d9/image.h"

namespace rastel::platform::d3d {

// What is shown where. Shared by the device and the interfaces on its chain.
struct Chain {
    D3DPRESENT_PARAMETERS parameters{};
    std::vector<ImagePointer> buffers;   // the first is drawn on

    // Null rectangles: all of it, on all of the window. False: its window is gone, or a rectangle is wrong.
    bool Show(const RECT* source, const RECT* target, HWND window);
};
using ChainPointer = std::shared_ptr<Chain>;

class SwapChain final : public IDirect3DSwapChain9 {
public:
    SwapChain(IDirect3DDevice9& device, ChainPointer chain);

    HRESULT QueryInterface(REFIID wanted, void** object) override;
    ULONG AddRef() override { return references_.Add(); }
    ULONG Release() override;
    HRESULT Present(const RECT* source, const RECT* target, HWND window, const RGNDATA* dirty, DWORD flags) override;
    HRESULT GetFrontBufferData(IDirect3DSurface9*) override { return D3DERR_INVALIDCALL; }
    HRESULT GetBackBuffer(UINT index, D3DBACKBUFFER_TYPE type, IDirect3DSurface9** buffer) override;
    HRESULT GetRasterStatus(D3DRASTER_STATUS*) override { return D3DERR_INVALIDCALL; }
    HRESULT GetDisplayMode(D3DDISPLAYMODE* mode) override;
    HRESULT GetDevice(IDirect3DDevice9** device) override;
    HRESULT GetPresentParameters(D3DPRESENT_PARAMETERS* parameters) override;

private:
    ~SwapChain();
    ReferenceCount references_;
    IDirect3DDevice9& device_;   // held
    ChainPointer chain_;
};

}   // namespace rastel::platform::d3d
