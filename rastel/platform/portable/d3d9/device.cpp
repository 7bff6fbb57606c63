// Making a device and what belongs to it, and its states.
#include "rastel/platform/portable/d3d9/device.h"

#include <algorithm>
#include <bit>
#include <new>

#include "rastel/platform/portable/d3d9/surface.h"
#include "rastel/platform/portable/gdi/device_context.h"

namespace rastel::platform::d3d {

namespace {

// The value at a place of a table; false: there is no such place.
template <class Table, class Index>
bool Get(const Table& table, Index index, DWORD* value) {
    if (!value || index >= table.size()) {
        return false;
    }
    *value = table[index];
    return true;
}

template <class Table, class Index>
bool Set(Table& table, Index index, DWORD value) {
    if (index >= table.size()) {
        return false;
    }
    table[index] = value;
    return true;
}

HRESULT Answer(bool isDone) {
    return isDone ? D3D_OK : D3DERR_INVALIDCALL;
}

}   // namespace

D3DMATRIX Identity() {
    D3DMATRIX matrix{};
    for (int i = 0; i < 4; ++i) {
        matrix.m[i][i] = 1;
    }
    return matrix;
}

D3DMATRIX Product(const D3DMATRIX& first, const D3DMATRIX& second) {
    D3DMATRIX product{};
    for (int row = 0; row < 4; ++row) {
        for (int column = 0; column < 4; ++column) {
            for (int i = 0; i < 4; ++i) {
                product.m[row][column] += first.m[row][i] * second.m[i][column];
            }
        }
    }
    return product;
}

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
    auto chain = std::make_shared<Chain>();
    chain->parameters = p;
    for (UINT i = 0; i < p.BackBufferCount; ++i) {
        chain->buffers.push_back(MakeImage(p.BackBufferWidth, p.BackBufferHeight, p.BackBufferFormat,
                                           D3DUSAGE_RENDERTARGET, D3DPOOL_DEFAULT));
    }
    ImagePointer depth;
    if (p.EnableAutoDepthStencil) {
        depth = MakeImage(p.BackBufferWidth, p.BackBufferHeight, p.AutoDepthStencilFormat, D3DUSAGE_DEPTHSTENCIL,
                          D3DPOOL_DEFAULT);
    }
    if (std::ranges::find(chain->buffers, nullptr) != chain->buffers.end() || (p.EnableAutoDepthStencil && !depth)) {
        return D3DERR_OUTOFVIDEOMEMORY;
    }
    chain_ = std::move(chain);
    depth_ = std::move(depth);
    *parameters = p;
    ResetStates();
    return D3D_OK;
}

void Device::ResetStates() {
    target_.reset();
    isInScene_ = false;
    const auto& p = chain_->parameters;
    viewport_ = {0, 0, p.BackBufferWidth, p.BackBufferHeight, 0, 1};
    scissor_ = {0, 0, static_cast<LONG>(p.BackBufferWidth), static_cast<LONG>(p.BackBufferHeight)};
    transforms_.clear();
    renderStates_ = {};
    RenderState(D3DRS_ZENABLE) = depth_ ? 1 : 0;
    RenderState(D3DRS_FILLMODE) = 3;
    RenderState(D3DRS_SHADEMODE) = 2;
    RenderState(D3DRS_ZWRITEENABLE) = TRUE;
    RenderState(D3DRS_SRCBLEND) = D3DBLEND_ONE;
    RenderState(D3DRS_DESTBLEND) = D3DBLEND_ZERO;
    RenderState(D3DRS_CULLMODE) = D3DCULL_CCW;
    RenderState(D3DRS_ZFUNC) = D3DCMP_LESSEQUAL;
    RenderState(D3DRS_ALPHAFUNC) = D3DCMP_ALWAYS;
    RenderState(D3DRS_TEXTUREFACTOR) = 0xFFFFFFFF;
    RenderState(D3DRS_CLIPPING) = TRUE;
    RenderState(D3DRS_LIGHTING) = TRUE;
    for (DWORD stage = 0; stage < stages; ++stage) {
        auto& states = stageStates_[stage] = {};
        states[D3DTSS_COLOROP] = stage == 0 ? D3DTOP_MODULATE : D3DTOP_DISABLE;
        states[D3DTSS_ALPHAOP] = stage == 0 ? D3DTOP_SELECTARG1 : D3DTOP_DISABLE;
        states[D3DTSS_COLORARG1] = states[D3DTSS_ALPHAARG1] = D3DTA_TEXTURE;
        states[D3DTSS_COLORARG2] = states[D3DTSS_ALPHAARG2] = D3DTA_CURRENT;
    }
    for (auto& states : samplerStates_) {
        states = {};
        states[D3DSAMP_ADDRESSU] = states[D3DSAMP_ADDRESSV] = D3DTADDRESS_WRAP;
        states[D3DSAMP_MAGFILTER] = states[D3DSAMP_MINFILTER] = D3DTEXF_POINT;
    }
    textures_ = {};
    vertices_.reset();
    indices_.reset();
    fvf_ = vertexOffset_ = vertexStride_ = 0;
}

HRESULT Device::GetDirect3D(IDirect3D9** direct3D) {
    if (!direct3D) {
        return D3DERR_INVALIDCALL;
    }
    maker_.AddRef();
    *direct3D = &maker_;
    return D3D_OK;
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
    if (!chain) {
        return D3DERR_INVALIDCALL;
    }
    if (Fails("GetSwapChain", chain) || index != 0) {
        return D3DERR_INVALIDCALL;
    }
    *chain = new (std::nothrow) SwapChain(*this, chain_);
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
    return Answer(chain_->Show(source, target, window));
}

HRESULT Device::GetBackBuffer(UINT chain, UINT index, D3DBACKBUFFER_TYPE type, IDirect3DSurface9** buffer) {
    if (!buffer) {
        return D3DERR_INVALIDCALL;
    }
    if (Fails("GetBackBuffer", buffer) || chain != 0 || index >= chain_->buffers.size() ||
        type != D3DBACKBUFFER_TYPE_MONO) {
        return D3DERR_INVALIDCALL;
    }
    *buffer = Surface::On(*this, chain_->buffers[index]);
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
    LevelsPointer made = MakeLevels(width, height, levels, usage, format, pool);
    if (!made) {
        return D3DERR_INVALIDCALL;
    }
    *texture = new (std::nothrow) Texture(*this, std::move(made));
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
    BytesPointer made = MakeBytes(bytes);
    if (!made) {
        return E_OUTOFMEMORY;
    }
    made->usage = usage;
    made->pool = pool;
    made->fvf = fvf;
    *buffer = new (std::nothrow) VertexBuffer(*this, std::move(made));
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
    BytesPointer made = MakeBytes(bytes);
    if (!made) {
        return E_OUTOFMEMORY;
    }
    made->usage = usage;
    made->pool = pool;
    made->format = format;
    *buffer = new (std::nothrow) IndexBuffer(*this, std::move(made));
    return *buffer ? D3D_OK : E_OUTOFMEMORY;
}

HRESULT Device::MakeSurface(const char* call, const ImagePointer& image, IDirect3DSurface9** surface) {
    if (!surface) {
        return D3DERR_INVALIDCALL;
    }
    if (Fails(call, surface) || !image) {
        return D3DERR_INVALIDCALL;
    }
    *surface = Surface::On(*this, image);
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

HRESULT Device::SetTransform(D3DTRANSFORMSTATETYPE state, const D3DMATRIX* matrix) try {
    const std::lock_guard lock(mutex_);
    constexpr DWORD most = D3DTS_WORLD + 255;
    if (!matrix || state > most) {
        return D3DERR_INVALIDCALL;
    }
    transforms_[state] = *matrix;
    return D3D_OK;
} catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
}

HRESULT Device::GetTransform(D3DTRANSFORMSTATETYPE state, D3DMATRIX* matrix) {
    const std::lock_guard lock(mutex_);
    if (!matrix) {
        return D3DERR_INVALIDCALL;
    }
    const auto found = transforms_.find(state);
    *matrix = found == transforms_.end() ? Identity() : found->second;
    return D3D_OK;
}

HRESULT Device::MultiplyTransform(D3DTRANSFORMSTATETYPE state, const D3DMATRIX* matrix) {
    D3DMATRIX current;
    if (!matrix || GetTransform(state, &current) != D3D_OK) {
        return D3DERR_INVALIDCALL;
    }
    current = Product(*matrix, current);
    return SetTransform(state, &current);
}

HRESULT Device::SetViewport(const D3DVIEWPORT9* viewport) {
    const std::lock_guard lock(mutex_);
    const Image& target = target_ ? *target_ : *chain_->buffers.front();
    const auto fits = [](DWORD first, DWORD length, UINT limit) { return first <= limit && length <= limit - first; };
    if (!viewport || !fits(viewport->X, viewport->Width, target.description.Width) ||
        !fits(viewport->Y, viewport->Height, target.description.Height)) {
        return D3DERR_INVALIDCALL;
    }
    viewport_ = *viewport;
    return D3D_OK;
}

HRESULT Device::GetViewport(D3DVIEWPORT9* viewport) {
    if (!viewport) {
        return D3DERR_INVALIDCALL;
    }
    *viewport = viewport_;
    return D3D_OK;
}

HRESULT Device::SetScissorRect(const RECT* rect) {
    const std::lock_guard lock(mutex_);
    if (!rect) {
        return D3DERR_INVALIDCALL;
    }
    scissor_ = *rect;
    return D3D_OK;
}

HRESULT Device::GetScissorRect(RECT* rect) {
    if (!rect) {
        return D3DERR_INVALIDCALL;
    }
    *rect = scissor_;
    return D3D_OK;
}

HRESULT Device::SetRenderState(D3DRENDERSTATETYPE state, DWORD value) {
    const std::lock_guard lock(mutex_);
    return Answer(Set(renderStates_, static_cast<DWORD>(state), value));
}

HRESULT Device::GetRenderState(D3DRENDERSTATETYPE state, DWORD* value) {
    return Answer(Get(renderStates_, static_cast<DWORD>(state), value));
}

HRESULT Device::SetTextureStageState(DWORD stage, D3DTEXTURESTAGESTATETYPE state, DWORD value) {
    const std::lock_guard lock(mutex_);
    return Answer(stage < stages && Set(stageStates_[stage], static_cast<DWORD>(state), value));
}

HRESULT Device::GetTextureStageState(DWORD stage, D3DTEXTURESTAGESTATETYPE state, DWORD* value) {
    return Answer(stage < stages && Get(stageStates_[stage], static_cast<DWORD>(state), value));
}

HRESULT Device::SetSamplerState(DWORD sampler, D3DSAMPLERSTATETYPE state, DWORD value) {
    const std::lock_guard lock(mutex_);
    return Answer(sampler < samplers && Set(samplerStates_[sampler], static_cast<DWORD>(state), value));
}

HRESULT Device::GetSamplerState(DWORD sampler, D3DSAMPLERSTATETYPE state, DWORD* value) {
    return Answer(sampler < samplers && Get(samplerStates_[sampler], static_cast<DWORD>(state), value));
}

HRESULT Device::SetTexture(DWORD stage, IDirect3DBaseTexture9* texture) {
    const std::lock_guard lock(mutex_);
    if (stage >= stages) {
        return D3DERR_INVALIDCALL;
    }
    textures_[stage] = texture ? Texture::Of(texture) : nullptr;
    return D3D_OK;
}

HRESULT Device::GetTexture(DWORD stage, IDirect3DBaseTexture9** texture) {
    if (!texture || stage >= stages) {
        return D3DERR_INVALIDCALL;
    }
    *texture = textures_[stage] ? new (std::nothrow) Texture(*this, textures_[stage]) : nullptr;
    return D3D_OK;
}

HRESULT Device::SetFVF(DWORD fvf) {
    const std::lock_guard lock(mutex_);
    fvf_ = fvf;
    return D3D_OK;
}

HRESULT Device::GetFVF(DWORD* fvf) {
    if (!fvf) {
        return D3DERR_INVALIDCALL;
    }
    *fvf = fvf_;
    return D3D_OK;
}

HRESULT Device::SetStreamSource(UINT stream, IDirect3DVertexBuffer9* buffer, UINT offset, UINT stride) {
    const std::lock_guard lock(mutex_);
    if (stream != 0) {
        return D3DERR_INVALIDCALL;
    }
    vertices_ = buffer ? VertexBuffer::Of(buffer) : nullptr;
    vertexOffset_ = offset;
    vertexStride_ = stride;
    return D3D_OK;
}

HRESULT Device::GetStreamSource(UINT stream, IDirect3DVertexBuffer9** buffer, UINT* offset, UINT* stride) {
    if (stream != 0 || !buffer || !offset || !stride) {
        return D3DERR_INVALIDCALL;
    }
    *buffer = vertices_ ? new (std::nothrow) VertexBuffer(*this, vertices_) : nullptr;
    *offset = vertexOffset_;
    *stride = vertexStride_;
    return D3D_OK;
}

HRESULT Device::SetIndices(IDirect3DIndexBuffer9* buffer) {
    const std::lock_guard lock(mutex_);
    indices_ = buffer ? IndexBuffer::Of(buffer) : nullptr;
    return D3D_OK;
}

HRESULT Device::GetIndices(IDirect3DIndexBuffer9** buffer) {
    if (!buffer) {
        return D3DERR_INVALIDCALL;
    }
    *buffer = indices_ ? new (std::nothrow) IndexBuffer(*this, indices_) : nullptr;
    return D3D_OK;
}

}   // namespace rastel::platform::d3d
