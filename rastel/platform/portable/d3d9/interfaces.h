// Direct3D 9's interfaces, in the system's own order of operations.
//
// What the software device behind them lacks answers D3DERR_INVALIDCALL. An object belongs to whoever holds a
// reference.
#pragma once

#include "rastel/platform/portable/d3d9/types.h"

struct D3DADAPTER_IDENTIFIER9;
struct D3DCAPS9;
struct IDirect3D9;
struct IDirect3DDevice9;
struct IDirect3DSwapChain9;
struct IDirect3DBaseTexture9;
struct IDirect3DCubeTexture9;
struct IDirect3DVolumeTexture9;
struct IDirect3DStateBlock9;
struct IDirect3DVertexDeclaration9;
struct IDirect3DVertexShader9;
struct IDirect3DPixelShader9;
struct IDirect3DQuery9;

struct IDirect3DResource9 : IUnknown {
    virtual HRESULT GetDevice(IDirect3DDevice9** device) = 0;
    virtual HRESULT SetPrivateData(REFGUID, const void*, DWORD, DWORD) = 0;
    virtual HRESULT GetPrivateData(REFGUID, void*, DWORD*) = 0;
    virtual HRESULT FreePrivateData(REFGUID) = 0;
    virtual DWORD SetPriority(DWORD) = 0;
    virtual DWORD GetPriority() = 0;
    virtual void PreLoad() = 0;
    virtual D3DRESOURCETYPE GetType() = 0;
};

struct IDirect3DSurface9 : IDirect3DResource9 {
    virtual HRESULT GetContainer(REFIID wanted, void** container) = 0;
    virtual HRESULT GetDesc(D3DSURFACE_DESC* description) = 0;
    virtual HRESULT LockRect(D3DLOCKED_RECT* locked, const RECT* area, DWORD flags) = 0;
    virtual HRESULT UnlockRect() = 0;
    virtual HRESULT GetDC(HDC* context) = 0;
    virtual HRESULT ReleaseDC(HDC context) = 0;
};

struct IDirect3DBaseTexture9 : IDirect3DResource9 {
    virtual DWORD SetLOD(DWORD) = 0;
    virtual DWORD GetLOD() = 0;
    virtual DWORD GetLevelCount() = 0;
    virtual HRESULT SetAutoGenFilterType(D3DTEXTUREFILTERTYPE) = 0;
    virtual D3DTEXTUREFILTERTYPE GetAutoGenFilterType() = 0;
    virtual void GenerateMipSubLevels() = 0;
};

struct IDirect3DTexture9 : IDirect3DBaseTexture9 {
    virtual HRESULT GetLevelDesc(UINT level, D3DSURFACE_DESC* description) = 0;
    virtual HRESULT GetSurfaceLevel(UINT level, IDirect3DSurface9** surface) = 0;
    virtual HRESULT LockRect(UINT level, D3DLOCKED_RECT* locked, const RECT* area, DWORD flags) = 0;
    virtual HRESULT UnlockRect(UINT level) = 0;
    virtual HRESULT AddDirtyRect(const RECT*) = 0;
};

struct IDirect3DVertexBuffer9 : IDirect3DResource9 {
    virtual HRESULT Lock(UINT offset, UINT size, void** data, DWORD flags) = 0;   // size 0: to the end
    virtual HRESULT Unlock() = 0;
    virtual HRESULT GetDesc(D3DVERTEXBUFFER_DESC* description) = 0;
};

struct IDirect3DIndexBuffer9 : IDirect3DResource9 {
    virtual HRESULT Lock(UINT offset, UINT size, void** data, DWORD flags) = 0;
    virtual HRESULT Unlock() = 0;
    virtual HRESULT GetDesc(D3DINDEXBUFFER_DESC* description) = 0;
};

struct IDirect3DSwapChain9 : IUnknown {
    virtual HRESULT Present(const RECT* source, const RECT* target, HWND window, const RGNDATA* dirty, DWORD flags) = 0;
    virtual HRESULT GetFrontBufferData(IDirect3DSurface9*) = 0;
    virtual HRESULT GetBackBuffer(UINT index, D3DBACKBUFFER_TYPE type, IDirect3DSurface9** buffer) = 0;
    virtual HRESULT GetRasterStatus(D3DRASTER_STATUS*) = 0;
    virtual HRESULT GetDisplayMode(D3DDISPLAYMODE* mode) = 0;
    virtual HRESULT GetDevice(IDirect3DDevice9** device) = 0;
    virtual HRESULT GetPresentParameters(D3DPRESENT_PARAMETERS* parameters) = 0;
};

struct IDirect3D9 : IUnknown {
    virtual HRESULT RegisterSoftwareDevice(void*) = 0;
    virtual UINT GetAdapterCount() = 0;
    virtual HRESULT GetAdapterIdentifier(UINT, DWORD, D3DADAPTER_IDENTIFIER9*) = 0;
    virtual UINT GetAdapterModeCount(UINT adapter, D3DFORMAT format) = 0;
    virtual HRESULT EnumAdapterModes(UINT adapter, D3DFORMAT format, UINT index, D3DDISPLAYMODE* mode) = 0;
    virtual HRESULT GetAdapterDisplayMode(UINT adapter, D3DDISPLAYMODE* mode) = 0;
    virtual HRESULT CheckDeviceType(UINT adapter, D3DDEVTYPE type, D3DFORMAT display, D3DFORMAT back,
                                    BOOL isWindowed) = 0;
    virtual HRESULT CheckDeviceFormat(UINT adapter, D3DDEVTYPE type, D3DFORMAT display, DWORD usage,
                                      D3DRESOURCETYPE resource, D3DFORMAT wanted) = 0;
    virtual HRESULT CheckDeviceMultiSampleType(UINT, D3DDEVTYPE, D3DFORMAT, BOOL, D3DMULTISAMPLE_TYPE type,
                                               DWORD* levels) = 0;
    virtual HRESULT CheckDepthStencilMatch(UINT adapter, D3DDEVTYPE type, D3DFORMAT display, D3DFORMAT target,
                                           D3DFORMAT depth) = 0;
    virtual HRESULT CheckDeviceFormatConversion(UINT, D3DDEVTYPE, D3DFORMAT source, D3DFORMAT target) = 0;
    virtual HRESULT GetDeviceCaps(UINT, D3DDEVTYPE, D3DCAPS9*) = 0;
    virtual HMONITOR GetAdapterMonitor(UINT) = 0;
    virtual HRESULT CreateDevice(UINT adapter, D3DDEVTYPE type, HWND focus, DWORD flags,
                                 D3DPRESENT_PARAMETERS* parameters, IDirect3DDevice9** device) = 0;
};

struct IDirect3DDevice9 : IUnknown {
    virtual HRESULT TestCooperativeLevel() = 0;
    virtual UINT GetAvailableTextureMem() = 0;
    virtual HRESULT EvictManagedResources() = 0;
    virtual HRESULT GetDirect3D(IDirect3D9** direct3D) = 0;
    virtual HRESULT GetDeviceCaps(D3DCAPS9*) = 0;
    virtual HRESULT GetDisplayMode(UINT chain, D3DDISPLAYMODE* mode) = 0;
    virtual HRESULT GetCreationParameters(D3DDEVICE_CREATION_PARAMETERS* parameters) = 0;
    virtual HRESULT SetCursorProperties(UINT, UINT, IDirect3DSurface9*) = 0;
    virtual void SetCursorPosition(int, int, DWORD) = 0;
    virtual BOOL ShowCursor(BOOL) = 0;
    virtual HRESULT CreateAdditionalSwapChain(D3DPRESENT_PARAMETERS*, IDirect3DSwapChain9** chain) = 0;
    virtual HRESULT GetSwapChain(UINT index, IDirect3DSwapChain9** chain) = 0;
    virtual UINT GetNumberOfSwapChains() = 0;
    virtual HRESULT Reset(D3DPRESENT_PARAMETERS* parameters) = 0;
    virtual HRESULT Present(const RECT* source, const RECT* target, HWND window, const RGNDATA* dirty) = 0;
    virtual HRESULT GetBackBuffer(UINT chain, UINT index, D3DBACKBUFFER_TYPE type, IDirect3DSurface9** buffer) = 0;
    virtual HRESULT GetRasterStatus(UINT, D3DRASTER_STATUS*) = 0;
    virtual HRESULT SetDialogBoxMode(BOOL) = 0;
    virtual void SetGammaRamp(UINT, DWORD, const D3DGAMMARAMP*) = 0;
    virtual void GetGammaRamp(UINT, D3DGAMMARAMP*) = 0;
    virtual HRESULT CreateTexture(UINT width, UINT height, UINT levels, DWORD usage, D3DFORMAT format, D3DPOOL pool,
                                  IDirect3DTexture9** texture, HANDLE* shared) = 0;
    virtual HRESULT CreateVolumeTexture(UINT, UINT, UINT, UINT, DWORD, D3DFORMAT, D3DPOOL, IDirect3DVolumeTexture9**,
                                        HANDLE*) = 0;
    virtual HRESULT CreateCubeTexture(UINT, UINT, DWORD, D3DFORMAT, D3DPOOL, IDirect3DCubeTexture9**, HANDLE*) = 0;
    virtual HRESULT CreateVertexBuffer(UINT bytes, DWORD usage, DWORD fvf, D3DPOOL pool,
                                       IDirect3DVertexBuffer9** buffer, HANDLE* shared) = 0;
    virtual HRESULT CreateIndexBuffer(UINT bytes, DWORD usage, D3DFORMAT format, D3DPOOL pool,
                                      IDirect3DIndexBuffer9** buffer, HANDLE* shared) = 0;
    virtual HRESULT CreateRenderTarget(UINT width, UINT height, D3DFORMAT format, D3DMULTISAMPLE_TYPE, DWORD,
                                       BOOL isLockable, IDirect3DSurface9** surface, HANDLE* shared) = 0;
    virtual HRESULT CreateDepthStencilSurface(UINT width, UINT height, D3DFORMAT format, D3DMULTISAMPLE_TYPE, DWORD,
                                              BOOL discards, IDirect3DSurface9** surface, HANDLE* shared) = 0;
    virtual HRESULT UpdateSurface(IDirect3DSurface9* source, const RECT* part, IDirect3DSurface9* target,
                                  const POINT* corner) = 0;
    virtual HRESULT UpdateTexture(IDirect3DBaseTexture9* source, IDirect3DBaseTexture9* target) = 0;
    virtual HRESULT GetRenderTargetData(IDirect3DSurface9* source, IDirect3DSurface9* target) = 0;
    virtual HRESULT GetFrontBufferData(UINT, IDirect3DSurface9*) = 0;
    virtual HRESULT StretchRect(IDirect3DSurface9* source, const RECT* part, IDirect3DSurface9* target,
                                const RECT* landing, D3DTEXTUREFILTERTYPE filter) = 0;
    virtual HRESULT ColorFill(IDirect3DSurface9* surface, const RECT* area, D3DCOLOR color) = 0;
    virtual HRESULT CreateOffscreenPlainSurface(UINT width, UINT height, D3DFORMAT format, D3DPOOL pool,
                                                IDirect3DSurface9** surface, HANDLE* shared) = 0;
    virtual HRESULT SetRenderTarget(DWORD index, IDirect3DSurface9* surface) = 0;
    virtual HRESULT GetRenderTarget(DWORD index, IDirect3DSurface9** surface) = 0;
    virtual HRESULT SetDepthStencilSurface(IDirect3DSurface9* surface) = 0;
    virtual HRESULT GetDepthStencilSurface(IDirect3DSurface9** surface) = 0;
    virtual HRESULT BeginScene() = 0;
    virtual HRESULT EndScene() = 0;
    virtual HRESULT Clear(DWORD count, const D3DRECT* rects, DWORD flags, D3DCOLOR color, float z, DWORD stencil) = 0;
    virtual HRESULT SetTransform(D3DTRANSFORMSTATETYPE state, const D3DMATRIX* matrix) = 0;
    virtual HRESULT GetTransform(D3DTRANSFORMSTATETYPE state, D3DMATRIX* matrix) = 0;
    virtual HRESULT MultiplyTransform(D3DTRANSFORMSTATETYPE state, const D3DMATRIX* matrix) = 0;
    virtual HRESULT SetViewport(const D3DVIEWPORT9* viewport) = 0;
    virtual HRESULT GetViewport(D3DVIEWPORT9* viewport) = 0;
    virtual HRESULT SetMaterial(const D3DMATERIAL9*) = 0;
    virtual HRESULT GetMaterial(D3DMATERIAL9*) = 0;
    virtual HRESULT SetLight(DWORD, const D3DLIGHT9*) = 0;
    virtual HRESULT GetLight(DWORD, D3DLIGHT9*) = 0;
    virtual HRESULT LightEnable(DWORD, BOOL) = 0;
    virtual HRESULT GetLightEnable(DWORD, BOOL*) = 0;
    virtual HRESULT SetClipPlane(DWORD, const float*) = 0;
    virtual HRESULT GetClipPlane(DWORD, float*) = 0;
    virtual HRESULT SetRenderState(D3DRENDERSTATETYPE state, DWORD value) = 0;
    virtual HRESULT GetRenderState(D3DRENDERSTATETYPE state, DWORD* value) = 0;
    virtual HRESULT CreateStateBlock(DWORD, IDirect3DStateBlock9**) = 0;
    virtual HRESULT BeginStateBlock() = 0;
    virtual HRESULT EndStateBlock(IDirect3DStateBlock9**) = 0;
    virtual HRESULT SetClipStatus(const D3DCLIPSTATUS9*) = 0;
    virtual HRESULT GetClipStatus(D3DCLIPSTATUS9*) = 0;
    virtual HRESULT GetTexture(DWORD stage, IDirect3DBaseTexture9** texture) = 0;
    virtual HRESULT SetTexture(DWORD stage, IDirect3DBaseTexture9* texture) = 0;
    virtual HRESULT GetTextureStageState(DWORD stage, D3DTEXTURESTAGESTATETYPE state, DWORD* value) = 0;
    virtual HRESULT SetTextureStageState(DWORD stage, D3DTEXTURESTAGESTATETYPE state, DWORD value) = 0;
    virtual HRESULT GetSamplerState(DWORD sampler, D3DSAMPLERSTATETYPE state, DWORD* value) = 0;
    virtual HRESULT SetSamplerState(DWORD sampler, D3DSAMPLERSTATETYPE state, DWORD value) = 0;
    virtual HRESULT ValidateDevice(DWORD* passes) = 0;
    virtual HRESULT SetPaletteEntries(UINT, const PALETTEENTRY*) = 0;
    virtual HRESULT GetPaletteEntries(UINT, PALETTEENTRY*) = 0;
    virtual HRESULT SetCurrentTexturePalette(UINT) = 0;
    virtual HRESULT GetCurrentTexturePalette(UINT*) = 0;
    virtual HRESULT SetScissorRect(const RECT* rect) = 0;
    virtual HRESULT GetScissorRect(RECT* rect) = 0;
    virtual HRESULT SetSoftwareVertexProcessing(BOOL) = 0;
    virtual BOOL GetSoftwareVertexProcessing() = 0;
    virtual HRESULT SetNPatchMode(float) = 0;
    virtual float GetNPatchMode() = 0;
    virtual HRESULT DrawPrimitive(D3DPRIMITIVETYPE type, UINT firstVertex, UINT count) = 0;
    virtual HRESULT DrawIndexedPrimitive(D3DPRIMITIVETYPE type, INT baseVertex, UINT leastIndex, UINT vertexCount,
                                         UINT firstIndex, UINT count) = 0;
    virtual HRESULT DrawPrimitiveUP(D3DPRIMITIVETYPE type, UINT count, const void* vertices, UINT stride) = 0;
    virtual HRESULT DrawIndexedPrimitiveUP(D3DPRIMITIVETYPE type, UINT leastIndex, UINT vertexCount, UINT count,
                                           const void* indices, D3DFORMAT indexFormat, const void* vertices,
                                           UINT stride) = 0;
    virtual HRESULT ProcessVertices(UINT, UINT, UINT, IDirect3DVertexBuffer9*, IDirect3DVertexDeclaration9*, DWORD) = 0;
    virtual HRESULT CreateVertexDeclaration(const D3DVERTEXELEMENT9*, IDirect3DVertexDeclaration9**) = 0;
    virtual HRESULT SetVertexDeclaration(IDirect3DVertexDeclaration9*) = 0;
    virtual HRESULT GetVertexDeclaration(IDirect3DVertexDeclaration9**) = 0;
    virtual HRESULT SetFVF(DWORD fvf) = 0;
    virtual HRESULT GetFVF(DWORD* fvf) = 0;
    virtual HRESULT CreateVertexShader(const DWORD*, IDirect3DVertexShader9**) = 0;
    virtual HRESULT SetVertexShader(IDirect3DVertexShader9*) = 0;
    virtual HRESULT GetVertexShader(IDirect3DVertexShader9**) = 0;
    virtual HRESULT SetVertexShaderConstantF(UINT, const float*, UINT) = 0;
    virtual HRESULT GetVertexShaderConstantF(UINT, float*, UINT) = 0;
    virtual HRESULT SetVertexShaderConstantI(UINT, const int*, UINT) = 0;
    virtual HRESULT GetVertexShaderConstantI(UINT, int*, UINT) = 0;
    virtual HRESULT SetVertexShaderConstantB(UINT, const BOOL*, UINT) = 0;
    virtual HRESULT GetVertexShaderConstantB(UINT, BOOL*, UINT) = 0;
    virtual HRESULT SetStreamSource(UINT stream, IDirect3DVertexBuffer9* buffer, UINT offset, UINT stride) = 0;
    virtual HRESULT GetStreamSource(UINT stream, IDirect3DVertexBuffer9** buffer, UINT* offset, UINT* stride) = 0;
    virtual HRESULT SetStreamSourceFreq(UINT, UINT) = 0;
    virtual HRESULT GetStreamSourceFreq(UINT, UINT*) = 0;
    virtual HRESULT SetIndices(IDirect3DIndexBuffer9* buffer) = 0;
    virtual HRESULT GetIndices(IDirect3DIndexBuffer9** buffer) = 0;
    virtual HRESULT CreatePixelShader(const DWORD*, IDirect3DPixelShader9**) = 0;
    virtual HRESULT SetPixelShader(IDirect3DPixelShader9*) = 0;
    virtual HRESULT GetPixelShader(IDirect3DPixelShader9**) = 0;
    virtual HRESULT SetPixelShaderConstantF(UINT, const float*, UINT) = 0;
    virtual HRESULT GetPixelShaderConstantF(UINT, float*, UINT) = 0;
    virtual HRESULT SetPixelShaderConstantI(UINT, const int*, UINT) = 0;
    virtual HRESULT GetPixelShaderConstantI(UINT, int*, UINT) = 0;
    virtual HRESULT SetPixelShaderConstantB(UINT, const BOOL*, UINT) = 0;
    virtual HRESULT GetPixelShaderConstantB(UINT, BOOL*, UINT) = 0;
    virtual HRESULT DrawRectPatch(UINT, const float*, const D3DRECTPATCH_INFO*) = 0;
    virtual HRESULT DrawTriPatch(UINT, const float*, const D3DTRIPATCH_INFO*) = 0;
    virtual HRESULT DeletePatch(UINT) = 0;
    virtual HRESULT CreateQuery(DWORD, IDirect3DQuery9**) = 0;
};
