#include "rastel/platform/portable/d3d9/buffers.h"

#include <new>

namespace rastel::platform::d3d {

BytesPointer MakeBytes(UINT count) try {
    constexpr UINT most = 1u << 30;
    if (count == 0 || count > most) {
        return nullptr;
    }
    auto bytes = std::make_shared<BufferBytes>();
    bytes->bytes.resize(count);
    return bytes;
} catch (const std::bad_alloc&) {
    return nullptr;
}

HRESULT VertexBuffer::QueryInterface(REFIID wanted, void** object) {
    if (!object) {
        return E_POINTER;
    }
    if (Fails("QueryInterface", object)) {
        return E_FAIL;
    }
    const bool isMine =
        wanted == IID_IUnknown || wanted == IID_IDirect3DResource9 || wanted == IID_IDirect3DVertexBuffer9;
    return HandOut(isMine ? static_cast<IDirect3DVertexBuffer9*>(this) : nullptr, object);
}

HRESULT VertexBuffer::GetDesc(D3DVERTEXBUFFER_DESC* description) {
    if (!description) {
        return D3DERR_INVALIDCALL;
    }
    *description = {
        D3DFMT_VERTEXDATA, D3DRTYPE_VERTEXBUFFER, body_->usage, body_->pool, static_cast<UINT>(body_->bytes.size()),
        body_->fvf};
    return D3D_OK;
}

HRESULT IndexBuffer::QueryInterface(REFIID wanted, void** object) {
    if (!object) {
        return E_POINTER;
    }
    if (Fails("QueryInterface", object)) {
        return E_FAIL;
    }
    const bool isMine =
        wanted == IID_IUnknown || wanted == IID_IDirect3DResource9 || wanted == IID_IDirect3DIndexBuffer9;
    return HandOut(isMine ? static_cast<IDirect3DIndexBuffer9*>(this) : nullptr, object);
}

HRESULT IndexBuffer::GetDesc(D3DINDEXBUFFER_DESC* description) {
    if (!description) {
        return D3DERR_INVALIDCALL;
    }
    *description = {body_->format, D3DRTYPE_INDEXBUFFER, body_->usage, body_->pool,
                    static_cast<UINT>(body_->bytes.size())};
    return D3D_OK;
}

}   // namespace rastel::platform::d3d
