// The software device: its states, what it makes and what it draws on.
//
// Operations may come from several threads; one runs at a time.
#pragma once

#include <array>
#include <map>
#include <mutex>

#include "rastel/platform/portable/d3d9/buffers.h"
#include "rastel/platform/portable/d3d9/rasterizer.h"
#include "rastel/platform/portable/d3d9/swap_chain.h"
#include "rastel/platform/portable/d3d9/unoffered_operations.h"

namespace rastel::platform::d3d {

class Device final : public UnofferedOperations {
public:
    static HRESULT Make(IDirect3D9& maker, const D3DDEVICE_CREATION_PARAMETERS& creation,
                        D3DPRESENT_PARAMETERS* parameters, IDirect3DDevice9** device);

    std::recursive_mutex& Mutex() { return mutex_; }

    HRESULT QueryInterface(REFIID wanted, void** object) override;
    ULONG AddRef() override { return references_.Add(); }
    ULONG Release() override;

    // The display and the chain.
    HRESULT TestCooperativeLevel() override { return D3D_OK; }
    UINT GetAvailableTextureMem() override { return 256u << 20; }
    HRESULT EvictManagedResources() override { return D3D_OK; }
    HRESULT GetDirect3D(IDirect3D9** direct3D) override;
    HRESULT GetDeviceCaps(D3DCAPS9* caps) override;
    HRESULT GetDisplayMode(UINT chain, D3DDISPLAYMODE* mode) override;
    HRESULT GetCreationParameters(D3DDEVICE_CREATION_PARAMETERS* parameters) override;
    HRESULT GetSwapChain(UINT index, IDirect3DSwapChain9** chain) override;
    UINT GetNumberOfSwapChains() override { return 1; }
    HRESULT Reset(D3DPRESENT_PARAMETERS* parameters) override;
    HRESULT Present(const RECT* source, const RECT* target, HWND window, const RGNDATA* dirty) override;
    HRESULT GetBackBuffer(UINT chain, UINT index, D3DBACKBUFFER_TYPE type, IDirect3DSurface9** buffer) override;

    // What it makes.
    HRESULT CreateTexture(UINT width, UINT height, UINT levels, DWORD usage, D3DFORMAT format, D3DPOOL pool,
                          IDirect3DTexture9** texture, HANDLE* shared) override;
    HRESULT CreateVertexBuffer(UINT bytes, DWORD usage, DWORD fvf, D3DPOOL pool, IDirect3DVertexBuffer9** buffer,
                               HANDLE* shared) override;
    HRESULT CreateIndexBuffer(UINT bytes, DWORD usage, D3DFORMAT format, D3DPOOL pool, IDirect3DIndexBuffer9** buffer,
                              HANDLE* shared) override;
    HRESULT CreateRenderTarget(UINT width, UINT height, D3DFORMAT format, D3DMULTISAMPLE_TYPE, DWORD, BOOL isLockable,
                               IDirect3DSurface9** surface, HANDLE* shared) override;
    HRESULT CreateDepthStencilSurface(UINT width, UINT height, D3DFORMAT format, D3DMULTISAMPLE_TYPE, DWORD,
                                      BOOL discards, IDirect3DSurface9** surface, HANDLE* shared) override;
    HRESULT CreateOffscreenPlainSurface(UINT width, UINT height, D3DFORMAT format, D3DPOOL pool,
                                        IDirect3DSurface9** surface, HANDLE* shared) override;

    // Pixels from surface to surface.
    HRESULT UpdateSurface(IDirect3DSurface9* source, const RECT* part, IDirect3DSurface9* target,
                          const POINT* corner) override;
    HRESULT UpdateTexture(IDirect3DBaseTexture9* source, IDirect3DBaseTexture9* target) override;
    HRESULT GetRenderTargetData(IDirect3DSurface9* source, IDirect3DSurface9* target) override;
    HRESULT StretchRect(IDirect3DSurface9* source, const RECT* part, IDirect3DSurface9* target, const RECT* landing,
                        D3DTEXTUREFILTERTYPE filter) override;
    HRESULT ColorFill(IDirect3DSurface9* surface, const RECT* area, D3DCOLOR color) override;
    HRESULT Clear(DWORD count, const D3DRECT* rects, DWORD flags, D3DCOLOR color, float z, DWORD stencil) override;

    // States.
    HRESULT SetRenderTarget(DWORD index, IDirect3DSurface9* surface) override;
    HRESULT GetRenderTarget(DWORD index, IDirect3DSurface9** surface) override;
    HRESULT SetDepthStencilSurface(IDirect3DSurface9* surface) override;
    HRESULT GetDepthStencilSurface(IDirect3DSurface9** surface) override;
    HRESULT BeginScene() override;
    HRESULT EndScene() override;
    HRESULT SetTransform(D3DTRANSFORMSTATETYPE state, const D3DMATRIX* matrix) override;
    HRESULT GetTransform(D3DTRANSFORMSTATETYPE state, D3DMATRIX* matrix) override;
    HRESULT MultiplyTransform(D3DTRANSFORMSTATETYPE state, const D3DMATRIX* matrix) override;
    HRESULT SetViewport(const D3DVIEWPORT9* viewport) override;
    HRESULT GetViewport(D3DVIEWPORT9* viewport) override;
    HRESULT SetScissorRect(const RECT* rect) override;
    HRESULT GetScissorRect(RECT* rect) override;
    HRESULT SetMaterial(const D3DMATERIAL9* material) override;
    HRESULT GetMaterial(D3DMATERIAL9* material) override;
    HRESULT SetRenderState(D3DRENDERSTATETYPE state, DWORD value) override;
    HRESULT GetRenderState(D3DRENDERSTATETYPE state, DWORD* value) override;
    HRESULT GetTexture(DWORD stage, IDirect3DBaseTexture9** texture) override;
    HRESULT SetTexture(DWORD stage, IDirect3DBaseTexture9* texture) override;
    HRESULT GetTextureStageState(DWORD stage, D3DTEXTURESTAGESTATETYPE state, DWORD* value) override;
    HRESULT SetTextureStageState(DWORD stage, D3DTEXTURESTAGESTATETYPE state, DWORD value) override;
    HRESULT GetSamplerState(DWORD sampler, D3DSAMPLERSTATETYPE state, DWORD* value) override;
    HRESULT SetSamplerState(DWORD sampler, D3DSAMPLERSTATETYPE state, DWORD value) override;
    HRESULT SetFVF(DWORD fvf) override;
    HRESULT GetFVF(DWORD* fvf) override;
    HRESULT SetStreamSource(UINT stream, IDirect3DVertexBuffer9* buffer, UINT offset, UINT stride) override;
    HRESULT GetStreamSource(UINT stream, IDirect3DVertexBuffer9** buffer, UINT* offset, UINT* stride) override;
    HRESULT SetIndices(IDirect3DIndexBuffer9* buffer) override;
    HRESULT GetIndices(IDirect3DIndexBuffer9** buffer) override;

    // Triangle lists, strips and fans. Vertices or indices beyond their buffers: D3DERR_INVALIDCALL, nothing drawn.
    HRESULT DrawPrimitive(D3DPRIMITIVETYPE type, UINT firstVertex, UINT count) override;
    HRESULT DrawIndexedPrimitive(D3DPRIMITIVETYPE type, INT baseVertex, UINT leastIndex, UINT vertexCount,
                                 UINT firstIndex, UINT count) override;
    HRESULT DrawPrimitiveUP(D3DPRIMITIVETYPE type, UINT count, const void* vertices, UINT stride) override;
    HRESULT DrawIndexedPrimitiveUP(D3DPRIMITIVETYPE type, UINT leastIndex, UINT vertexCount, UINT count,
                                   const void* indices, D3DFORMAT indexFormat, const void* vertices,
                                   UINT stride) override;

private:
    struct Vertices;   // where a draw call takes them from
    struct Indices;

    Device(IDirect3D9& maker, const D3DDEVICE_CREATION_PARAMETERS& creation);
    ~Device();

    HRESULT MakeChain(D3DPRESENT_PARAMETERS* parameters);
    void ResetStates();
    HRESULT MakeSurface(const char* call, const ImagePointer& image, IDirect3DSurface9** surface);
    DWORD& RenderState(D3DRENDERSTATETYPE state) { return renderStates_[state]; }
    DrawState CurrentState();
    ClipVertex ReadVertex(const Vertices& vertices, std::int64_t index, const D3DMATRIX& toClip);
    HRESULT Draw(const char* call, D3DPRIMITIVETYPE type, const Vertices& vertices, const Indices& indices, UINT count);

    static constexpr DWORD stages = 8, stageStates = 33, samplers = 16, samplerStates = 14;

    ReferenceCount references_;
    std::recursive_mutex mutex_;
    IDirect3D9& maker_;   // held
    D3DDEVICE_CREATION_PARAMETERS creation_;
    ChainPointer chain_;
    ImagePointer target_, depth_;   // a null target: the chain's back buffer
    bool isInScene_ = false;
    D3DVIEWPORT9 viewport_{};
    RECT scissor_{};
    std::map<DWORD, D3DMATRIX> transforms_;
    D3DMATERIAL9 material_{};
    std::array<DWORD, 256> renderStates_{};
    std::array<std::array<DWORD, stageStates>, stages> stageStates_{};
    std::array<std::array<DWORD, samplerStates>, samplers> samplerStates_{};
    std::array<LevelsPointer, stages> textures_;
    DWORD fvf_ = 0;
    BytesPointer vertices_, indices_;
    UINT vertexOffset_ = 0, vertexStride_ = 0;
};

// Row vectors: first one, then the other.
D3DMATRIX Product(const D3DMATRIX& first, const D3DMATRIX& second);
D3DMATRIX Identity();

}   // namespace rastel::platform::d3d
