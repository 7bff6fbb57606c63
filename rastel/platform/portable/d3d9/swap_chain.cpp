#include "rastel/platform/portable/d3d9/swap_chain.h"

#include <algorithm>

#include "rastel/platform/portable/d3d9/surface.h"
#include "rastel/platform/portable/gdi/blit.h"

namespace rastel::platform::d3d {

bool Chain::Show(const RECT* source, const RECT* target, HWND window) {
    const Image& back = *buffers.front();
    const RECT from = source ? *source : back.Whole();
    DeviceContext context(ContextKind::Window);
    context.window = window ? window : parameters.hDeviceWindow;
    SIZE size{};
    const bool isLocked = std::ranges::any_of(buffers, [](const ImagePointer& buffer) { return buffer->isLocked; });
    if (isLocked || !IsPart(from, back) || !TargetSize(context, &size)) {
        return false;
    }
    const RECT to = target ? *target : RECT{0, 0, size.cx, size.cy};
    if (to.left >= to.right || to.top >= to.bottom) {
        return target == nullptr;   // a window without an inside shows nothing
    }
    if (parameters.PresentationInterval != D3DPRESENT_INTERVAL_IMMEDIATE) {
        Display()->WaitForBlank();
    }
    BlitSource opened;
    opened.pixels = PixelsOf(*back.bitmap);
    const auto rect = [](const RECT& r) {
        return BlitRect{r.left, r.top, std::int64_t{r.right} - r.left, std::int64_t{r.bottom} - r.top};
    };
    if (!Blit(context, rect(to), opened, rect(from), kSourceCopy)) {
        return false;
    }
    if (parameters.SwapEffect == D3DSWAPEFFECT_FLIP) {
        for (std::size_t i = 1; i < buffers.size(); ++i) {   // the buffers stay, what they hold moves on
            std::swap(buffers[i - 1]->bitmap, buffers[i]->bitmap);
        }
    }
    return true;
}

HRESULT SwapChain::QueryInterface(REFIID wanted, void** object) {
    if (!object) {
        return E_POINTER;
    }
    if (Fails("QueryInterface", object)) {
        return E_FAIL;
    }
    return HandOut(wanted == IID_IUnknown || wanted == IID_IDirect3DSwapChain9 ? this : nullptr, object);
}

HRESULT SwapChain::Present(const RECT* source, const RECT* target, HWND window, const RGNDATA* dirty, DWORD) {
    return device_.Present(source, target, window, dirty);
}

HRESULT SwapChain::GetBackBuffer(UINT index, D3DBACKBUFFER_TYPE type, IDirect3DSurface9** buffer) {
    if (!buffer) {
        return D3DERR_INVALIDCALL;
    }
    const Turn turn = TakeTurn(device_);
    if (Fails("GetBackBuffer", buffer) || index >= body_->buffers.size() || type != D3DBACKBUFFER_TYPE_MONO) {
        return D3DERR_INVALIDCALL;
    }
    *buffer = Show<Surface>(device_, body_->buffers[index]);
    return *buffer ? D3D_OK : E_OUTOFMEMORY;
}

HRESULT SwapChain::GetDisplayMode(D3DDISPLAYMODE* mode) {
    return device_.GetDisplayMode(0, mode);
}

HRESULT SwapChain::GetPresentParameters(D3DPRESENT_PARAMETERS* parameters) {
    if (!parameters) {
        return D3DERR_INVALIDCALL;
    }
    const Turn turn = TakeTurn(device_);
    *parameters = body_->parameters;
    return D3D_OK;
}

}   // namespace rastel::platform::d3d
