// Vertex and index buffers: bytes in memory.
#pragma once

#include <memory>
#include <vector>

#include "rastel/platform/portable/d3d9/resource.h"

namespace rastel::platform::d3d {

struct BufferBytes : Body {
    std::vector<BYTE> bytes;
    DWORD usage = 0;
    D3DPOOL pool = D3DPOOL_DEFAULT;
    D3DFORMAT format = D3DFMT_VERTEXDATA;
    DWORD fvf = 0;
    int locks = 0;
};
using BytesPointer = std::shared_ptr<BufferBytes>;

// Null: no bytes at all, too many, or no memory.
BytesPointer MakeBytes(UINT count);

template <class Interface>
class Buffer : public Resource<Interface, BufferBytes> {
public:
    using Resource<Interface, BufferBytes>::Resource;

    HRESULT Lock(UINT offset, UINT size, void** data, DWORD) override {
        if (!data) {
            return D3DERR_INVALIDCALL;
        }
        const Turn turn = TakeTurn(this->device_);
        const auto count = static_cast<UINT>(this->body_->bytes.size());
        if (Fails("Lock", data) || offset >= count || size > count - offset) {
            return D3DERR_INVALIDCALL;
        }
        ++this->body_->locks;
        *data = this->body_->bytes.data() + offset;
        return D3D_OK;
    }
    HRESULT Unlock() override {
        const Turn turn = TakeTurn(this->device_);
        if (this->body_->locks == 0) {
            return D3DERR_INVALIDCALL;
        }
        --this->body_->locks;
        return D3D_OK;
    }

protected:
    ~Buffer() override = default;
};

class VertexBuffer final : public Buffer<IDirect3DVertexBuffer9> {
public:
    using Buffer::Buffer;
    HRESULT QueryInterface(REFIID wanted, void** object) override;
    D3DRESOURCETYPE GetType() override { return D3DRTYPE_VERTEXBUFFER; }
    HRESULT GetDesc(D3DVERTEXBUFFER_DESC* description) override;

private:
    ~VertexBuffer() override = default;
};

class IndexBuffer final : public Buffer<IDirect3DIndexBuffer9> {
public:
    using Buffer::Buffer;
    HRESULT QueryInterface(REFIID wanted, void** object) override;
    D3DRESOURCETYPE GetType() override { return D3DRTYPE_INDEXBUFFER; }
    HRESULT GetDesc(D3DINDEXBUFFER_DESC* description) override;

private:
    ~IndexBuffer() override = default;
};

}   // namespace rastel::platform::d3d
