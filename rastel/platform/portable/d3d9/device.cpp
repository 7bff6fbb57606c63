// Making a device and what belongs to it.
#include "rastel/platform/portable/d3d9/device.h"

#include <algorithm>
#include <new>

#include "rastel/platform/portable/d3d9/surface.h"
#include "rastel/platform/portable/gdi/device_context.h"

namespace rastel::platform::d3d {

HRESULT Device::Make(IDirect3D9& maker, const D3DDEVICE_CREATION_PARAMETERS& creation,
                     D3DPRESENT_PARAMETERS* parameters, IDirect3DDevice9** device) try {
    auto* const made = new (std::nothrow) Device(maker, creation);
    if (!made) {
        return E_OUTOFMEMORY;
    }
    const HRESULT result = made->MakeChain(parameters);
    if (result == D3D_OK) {
        *device = made;
    } else {
        made->Release();
    }
    return result;
} catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
}

Device::Device(IDirect3D9& maker, const D3DDEVICE_CREATION_PARAMETERS& creation) : maker_(maker), creation_(creation) {
    maker_.AddRef();
}

Device::~Device() {
    maker_.Release();
}

Turn TakeTurn(IDirect3DDevice9& device) {
    return Turn(static_cast<Device&>(device).Mutex());
}

HRESULT Device::QueryInterface(REFIID wanted, void** object) {
    if (!object) {
        return E_POINTER;
    }
    if (Fails("QueryInterface", object)) {
        return E_FAIL;
    }
    return HandOut(wanted == IID_IUnknown || wanted == IID_IDirect3DDevice9 ? this : nullptr, object);
}

ULONG Device::Release() {
    const ULONG left = references_.Take();
    if (left == 0) {
        delete this;
    }
    return left;
}

HRESULT Device::MakeChain(D3DPRESENT_PARAMETERS* parameters) {
    D3DPRESENT_PARAMETERS p = *parameters;
    p.hDeviceWindow = p.hDeviceWindow ? p.hDeviceWindow : creation_.hFocusWindow;
    DeviceContext window(ContextKind::Window);
    window.window = p.hDeviceWindow;
    SIZE client{};
    const bool isCopy = p.SwapEffect == D3DSWAPEFFECT_COPY;
    const bool isKnown = isCopy || p.SwapEffect == D3DSWAPEFFECT_FLIP || p.SwapEffect == D3DSWAPEFFECT_DISCARD;
    constexpr UINT mostBuffers = 3;
    if (!p.hDeviceWindow || !TargetSize(window, &client) || !p.Windowed || !isKnown ||
        p.BackBufferCount > mostBuffers || (isCopy && p.BackBufferCount > 1) ||
        p.MultiSampleType != D3DMULTISAMPLE_NONE ||
        (p.EnableAutoDepthStencil && !IsDepthFormat(p.AutoDepthStencilFormat))) {
        return D3DERR_INVALIDCALL;
    }
    p.BackBufferCount = std::max(p.BackBufferCount, 1u);
    p.BackBufferWidth = p.BackBufferWidth ? p.BackBufferWidth : static_cast<UINT>(std::max<LONG>(client.cx, 1));
    p.BackBufferHeight = p.BackBufferHeight ? p.BackBufferHeight : static_cast<UINT>(std::max<LONG>(client.cy, 1));
    p.BackBufferFormat = p.BackBufferFormat == D3DFMT_UNKNOWN ? DisplayFormat() : p.BackBufferFormat;
    if (!IsColorFormat(p.BackBufferFormat) || p.BackBufferWidth > longestSide || p.BackBufferHeight > longestSide) {
        return D3DERR_INVALIDCALL;
    }
    std::vector<ImagePointer> buffers;
    for (UINT i = 0; i < p.BackBufferCount; ++i) {
        buffers.push_back(MakeImage(p.BackBufferWidth, p.BackBufferHeight, p.BackBufferFormat, D3DUSAGE_RENDERTARGET,
                                    D3DPOOL_DEFAULT));
    }
    ImagePointer depth;
    if (p.EnableAutoDepthStencil) {
        depth = MakeImage(p.BackBufferWidth, p.BackBufferHeight, p.AutoDepthStencilFormat, D3DUSAGE_DEPTHSTENCIL,
                          D3DPOOL_DEFAULT);
    }
    if (std::ranges::find(buffers, nullptr) != buffers.end() || (p.EnableAutoDepthStencil && !depth)) {
        return D3DERR_OUTOFVIDEOMEMORY;
    }
    if (!chain_) {
        chain_ = std::make_shared<Chain>();
    }
    chain_->parameters = p;
    chain_->buffers = std::move(buffers);
    depth_ = std::move(depth);
    *parameters = p;
    ResetStates();
    return D3D_OK;
}

HRESULT Device::GetDirect3D(IDirect3D9** direct3D) {
    if (!direct3D) {
        return D3DERR_INVALIDCALL;
    }
    maker_.AddRef();
    *direct3D = &maker_;
    return D3D_OK;
}

HRESULT Device::GetDeviceCaps(D3DCAPS9* caps) {
    return maker_.GetDeviceCaps(creation_.AdapterOrdinal, creation_.DeviceType, caps);
}

HRESULT Device::GetDisplayMode(UINT chain, D3DDISPLAYMODE* mode) {
    return chain == 0 ? maker_.GetAdapterDisplayMode(D3DADAPTER_DEFAULT, mode) : D3DERR_INVALIDCALL;
}

HRESULT Device::GetCreationParameters(D3DDEVICE_CREATION_PARAMETERS* parameters) {
    if (!parameters) {
        return D3DERR_INVALIDCALL;
    }
    *parameters = creation_;
    return D3D_OK;
}

HRESULT Device::GetSwapChain(UINT index, IDirect3DSwapChain9** chain) {
    const std::lock_guard lock(mutex_);
    if (!chain) {
        return D3DERR_INVALIDCALL;
    }
    if (Fails("GetSwapChain", chain) || index != 0) {
        return D3DERR_INVALIDCALL;
    }
    *chain = Show<SwapChain>(*this, chain_);
    return *chain ? D3D_OK : E_OUTOFMEMORY;
}

HRESULT Device::Reset(D3DPRESENT_PARAMETERS* parameters) try {
    const std::lock_guard lock(mutex_);
    if (!parameters || ShouldFail("Reset")) {
        return D3DERR_INVALIDCALL;
    }
    return MakeChain(parameters);
} catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
}

HRESULT Device::Present(const RECT* source, const RECT* target, HWND window, const RGNDATA*) {
    const std::lock_guard lock(mutex_);
    if (ShouldFail("Present") || isInScene_) {
        return D3DERR_INVALIDCALL;
    }
    return chain_->Show(source, target, window) ? D3D_OK : D3DERR_INVALIDCALL;
}

HRESULT Device::GetBackBuffer(UINT chain, UINT index, D3DBACKBUFFER_TYPE type, IDirect3DSurface9** buffer) {
    const std::lock_guard lock(mutex_);
    if (!buffer) {
        return D3DERR_INVALIDCALL;
    }
    if (Fails("GetBackBuffer", buffer) || chain != 0 || index >= chain_->buffers.size() ||
        type != D3DBACKBUFFER_TYPE_MONO) {
        return D3DERR_INVALIDCALL;
    }
    *buffer = Show<Surface>(*this, chain_->buffers[index]);
    return *buffer ? D3D_OK : E_OUTOFMEMORY;
}

HRESULT Device::CreateTexture(UINT width, UINT height, UINT levels, DWORD usage, D3DFORMAT format, D3DPOOL pool,
                              IDirect3DTexture9** texture, HANDLE* shared) {
    if (!texture) {
        return D3DERR_INVALIDCALL;
    }
    if (Fails("CreateTexture", texture) || shared) {
        return D3DERR_INVALIDCALL;
    }
    const LevelsPointer made = MakeLevels(width, height, levels, usage, format, pool);
    if (!made) {
        return D3DERR_INVALIDCALL;
    }
    *texture = Show<Texture>(*this, made);
    return *texture ? D3D_OK : E_OUTOFMEMORY;
}

HRESULT Device::CreateVertexBuffer(UINT bytes, DWORD usage, DWORD fvf, D3DPOOL pool, IDirect3DVertexBuffer9** buffer,
                                   HANDLE* shared) {
    if (!buffer) {
        return D3DERR_INVALIDCALL;
    }
    if (Fails("CreateVertexBuffer", buffer) || shared || bytes == 0) {
        return D3DERR_INVALIDCALL;
    }
    const BytesPointer made = MakeBytes(bytes);
    if (!made) {
        return E_OUTOFMEMORY;
    }
    made->usage = usage;
    made->pool = pool;
    made->fvf = fvf;
    *buffer = Show<VertexBuffer>(*this, made);
    return *buffer ? D3D_OK : E_OUTOFMEMORY;
}

HRESULT Device::CreateIndexBuffer(UINT bytes, DWORD usage, D3DFORMAT format, D3DPOOL pool,
                                  IDirect3DIndexBuffer9** buffer, HANDLE* shared) {
    if (!buffer) {
        return D3DERR_INVALIDCALL;
    }
    if (Fails("CreateIndexBuffer", buffer) || shared || bytes == 0 ||
        (format != D3DFMT_INDEX16 && format != D3DFMT_INDEX32)) {
        return D3DERR_INVALIDCALL;
    }
    const BytesPointer made = MakeBytes(bytes);
    if (!made) {
        return E_OUTOFMEMORY;
    }
    made->usage = usage;
    made->pool = pool;
    made->format = format;
    *buffer = Show<IndexBuffer>(*this, made);
    return *buffer ? D3D_OK : E_OUTOFMEMORY;
}

HRESULT Device::MakeSurface(const char* call, const ImagePointer& image, IDirect3DSurface9** surface) {
    if (!surface) {
        return D3DERR_INVALIDCALL;
    }
    if (Fails(call, surface) || !image) {
        return D3DERR_INVALIDCALL;
    }
    *surface = Show<Surface>(*this, image);
    return *surface ? D3D_OK : E_OUTOFMEMORY;
}

HRESULT Device::CreateRenderTarget(UINT width, UINT height, D3DFORMAT format, D3DMULTISAMPLE_TYPE, DWORD, BOOL,
                                   IDirect3DSurface9** surface, HANDLE*) {
    return MakeSurface(
        "CreateRenderTarget",
        IsColorFormat(format) ? MakeImage(width, height, format, D3DUSAGE_RENDERTARGET, D3DPOOL_DEFAULT) : nullptr,
        surface);
}

HRESULT Device::CreateDepthStencilSurface(UINT width, UINT height, D3DFORMAT format, D3DMULTISAMPLE_TYPE, DWORD, BOOL,
                                          IDirect3DSurface9** surface, HANDLE*) {
    return MakeSurface(
        "CreateDepthStencilSurface",
        IsDepthFormat(format) ? MakeImage(width, height, format, D3DUSAGE_DEPTHSTENCIL, D3DPOOL_DEFAULT) : nullptr,
        surface);
}

HRESULT Device::CreateOffscreenPlainSurface(UINT width, UINT height, D3DFORMAT format, D3DPOOL pool,
                                            IDirect3DSurface9** surface, HANDLE*) {
    return MakeSurface("CreateOffscreenPlainSurface",
                       IsColorFormat(format) ? MakeImage(width, height, format, 0, pool) : nullptr, surface);
}

HRESULT Device::SetRenderTarget(DWORD index, IDirect3DSurface9* surface) {
    const std::lock_guard lock(mutex_);
    if (index != 0 || !surface || !(Surface::Of(surface)->description.Usage & D3DUSAGE_RENDERTARGET)) {
        return D3DERR_INVALIDCALL;
    }
    target_ = Surface::Of(surface);
    viewport_ = {0, 0, target_->description.Width, target_->description.Height, 0, 1};
    scissor_ = target_->Whole();
    return D3D_OK;
}

HRESULT Device::GetRenderTarget(DWORD index, IDirect3DSurface9** surface) {
    const std::lock_guard lock(mutex_);
    return MakeSurface("GetRenderTarget", index != 0 ? nullptr : target_ ? target_ : chain_->buffers.front(), surface);
}

HRESULT Device::SetDepthStencilSurface(IDirect3DSurface9* surface) {
    const std::lock_guard lock(mutex_);
    if (surface && !(Surface::Of(surface)->description.Usage & D3DUSAGE_DEPTHSTENCIL)) {
        return D3DERR_INVALIDCALL;
    }
    depth_ = surface ? Surface::Of(surface) : nullptr;
    return D3D_OK;
}

HRESULT Device::GetDepthStencilSurface(IDirect3DSurface9** surface) {
    const std::lock_guard lock(mutex_);
    const HRESULT result = MakeSurface("GetDepthStencilSurface", depth_, surface);
    return surface && !depth_ ? D3DERR_NOTFOUND : result;
}

HRESULT Device::BeginScene() {
    const std::lock_guard lock(mutex_);
    if (ShouldFail("BeginScene") || isInScene_) {
        return D3DERR_INVALIDCALL;
    }
    isInScene_ = true;
    return D3D_OK;
}

HRESULT Device::EndScene() {
    const std::lock_guard lock(mutex_);
    if (ShouldFail("EndScene") || !isInScene_) {
        return D3DERR_INVALIDCALL;
    }
    isInScene_ = false;
    return D3D_OK;
}

}   // namespace rastel::platform::d3d
