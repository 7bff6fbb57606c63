// What a device draws with: its states as they are set and read.
#include <new>

#include "rastel/platform/portable/d3d9/device.h"

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

void Device::ResetStates() {
    target_.reset();
    isInScene_ = false;
    const auto& p = chain_->parameters;
    viewport_ = {0, 0, p.BackBufferWidth, p.BackBufferHeight, 0, 1};
    scissor_ = {0, 0, static_cast<LONG>(p.BackBufferWidth), static_cast<LONG>(p.BackBufferHeight)};
    transforms_.clear();
    material_ = {};
    renderStates_ = {};
    RenderState(D3DRS_ZENABLE) = depth_ ? D3DZB_TRUE : D3DZB_FALSE;
    RenderState(D3DRS_FILLMODE) = D3DFILL_SOLID;
    RenderState(D3DRS_SHADEMODE) = D3DSHADE_GOURAUD;
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
    const std::lock_guard lock(mutex_);
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
    const std::lock_guard lock(mutex_);
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
    const std::lock_guard lock(mutex_);
    if (!rect) {
        return D3DERR_INVALIDCALL;
    }
    *rect = scissor_;
    return D3D_OK;
}

HRESULT Device::SetMaterial(const D3DMATERIAL9* material) {
    const std::lock_guard lock(mutex_);
    if (!material) {
        return D3DERR_INVALIDCALL;
    }
    material_ = *material;
    return D3D_OK;
}

HRESULT Device::GetMaterial(D3DMATERIAL9* material) {
    const std::lock_guard lock(mutex_);
    if (!material) {
        return D3DERR_INVALIDCALL;
    }
    *material = material_;
    return D3D_OK;
}

HRESULT Device::SetRenderState(D3DRENDERSTATETYPE state, DWORD value) {
    const std::lock_guard lock(mutex_);
    return Answer(Set(renderStates_, static_cast<DWORD>(state), value));
}

HRESULT Device::GetRenderState(D3DRENDERSTATETYPE state, DWORD* value) {
    const std::lock_guard lock(mutex_);
    return Answer(Get(renderStates_, static_cast<DWORD>(state), value));
}

HRESULT Device::SetTextureStageState(DWORD stage, D3DTEXTURESTAGESTATETYPE state, DWORD value) {
    const std::lock_guard lock(mutex_);
    return Answer(stage < stages && Set(stageStates_[stage], static_cast<DWORD>(state), value));
}

HRESULT Device::GetTextureStageState(DWORD stage, D3DTEXTURESTAGESTATETYPE state, DWORD* value) {
    const std::lock_guard lock(mutex_);
    return Answer(stage < stages && Get(stageStates_[stage], static_cast<DWORD>(state), value));
}

HRESULT Device::SetSamplerState(DWORD sampler, D3DSAMPLERSTATETYPE state, DWORD value) {
    const std::lock_guard lock(mutex_);
    return Answer(sampler < samplers && Set(samplerStates_[sampler], static_cast<DWORD>(state), value));
}

HRESULT Device::GetSamplerState(DWORD sampler, D3DSAMPLERSTATETYPE state, DWORD* value) {
    const std::lock_guard lock(mutex_);
    return Answer(sampler < samplers && Get(samplerStates_[sampler], static_cast<DWORD>(state), value));
}

HRESULT Device::SetTexture(DWORD stage, IDirect3DBaseTexture9* texture) {
    const std::lock_guard lock(mutex_);
    if (stage >= stages) {
        return D3DERR_INVALIDCALL;
    }
    textures_[stage] = texture ? Texture::OfBase(texture) : nullptr;
    return D3D_OK;
}

HRESULT Device::GetTexture(DWORD stage, IDirect3DBaseTexture9** texture) {
    const std::lock_guard lock(mutex_);
    if (!texture || stage >= stages) {
        return D3DERR_INVALIDCALL;
    }
    *texture = Show<Texture>(*this, textures_[stage]);
    return D3D_OK;
}

HRESULT Device::SetFVF(DWORD fvf) {
    const std::lock_guard lock(mutex_);
    fvf_ = fvf;
    return D3D_OK;
}

HRESULT Device::GetFVF(DWORD* fvf) {
    const std::lock_guard lock(mutex_);
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
    const std::lock_guard lock(mutex_);
    if (stream != 0 || !buffer || !offset || !stride) {
        return D3DERR_INVALIDCALL;
    }
    *buffer = Show<VertexBuffer>(*this, vertices_);
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
    const std::lock_guard lock(mutex_);
    if (!buffer) {
        return D3DERR_INVALIDCALL;
    }
    *buffer = Show<IndexBuffer>(*this, indices_);
    return D3D_OK;
}

}   // namespace rastel::platform::d3d
