// Back buffers, and how they reach the window.
#pragma once

#include <vector>

#include "rastel/platform/portable/d3d9/image.h"

namespace rastel::platform::d3d {

// What is shown where. Shared by the device and the interfaces on its chain.
struct Chain : Body {
    D3DPRESENT_PARAMETERS parameters{};
    std::vector<ImagePointer> buffers;   // the first is drawn on

    // Null rectangles: all of it, on all of the window. False: its window is gone, a rectangle is wrong or a buffer is
    // locked.
    bool Show(const RECT* source, const RECT* target, HWND window);
};
using ChainPointer = std::shared_ptr<Chain>;

class SwapChain final : public DeviceObject<IDirect3DSwapChain9, Chain> {
public:
    using DeviceObject::DeviceObject;

    HRESULT QueryInterface(REFIID wanted, void** object) override;
    HRESULT Present(const RECT* source, const RECT* target, HWND window, const RGNDATA* dirty, DWORD flags) override;
    HRESULT GetFrontBufferData(IDirect3DSurface9*) override { return D3DERR_INVALIDCALL; }
    HRESULT GetBackBuffer(UINT index, D3DBACKBUFFER_TYPE type, IDirect3DSurface9** buffer) override;
    HRESULT GetRasterStatus(D3DRASTER_STATUS*) override { return D3DERR_INVALIDCALL; }
    HRESULT GetDisplayMode(D3DDISPLAYMODE* mode) override;
    HRESULT GetPresentParameters(D3DPRESENT_PARAMETERS* parameters) override;

private:
    ~SwapChain() override = default;
};

}   // namespace rastel::platform::d3d
