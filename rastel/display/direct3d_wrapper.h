// Direct3D 9 and D3DX 9, loaded by name, so that the library starts on a machine that has neither.
#pragma once

#include "rastel/platform/d3d9.h"
#include "rastel/platform/kernel.h"

class RASTEL_API CDirect3DWrapper {
public:
    CDirect3DWrapper();
    CDirect3DWrapper(const CDirect3DWrapper&) = delete;
    CDirect3DWrapper& operator=(const CDirect3DWrapper&) = delete;
    virtual ~CDirect3DWrapper();

    HINSTANCE GetHInstance() { return m_hD3D9; }   // null: no Direct3D 9 on this machine

    // Each passes its arguments on as they are. Without the library or the entry point: null; E_FAIL for the texture;
    // 0, with nothing written, for the effect.
    IDirect3D9* Direct3DCreate9(unsigned int sdkVersion);
    LONG D3DXCreateTexture(IDirect3DDevice9* device, unsigned int width, unsigned int height, unsigned int mipLevels,
                           DWORD usage, D3DFORMAT format, D3DPOOL pool, IDirect3DTexture9** texture);
    D3DXMATRIX* D3DXMatrixPerspectiveFovLH(D3DXMATRIX* out, float fovY, float aspect, float zNear, float zFar);
    D3DXMATRIX* D3DXMatrixLookAtLH(D3DXMATRIX* out, const D3DXVECTOR3* eye, const D3DXVECTOR3* at,
                                   const D3DXVECTOR3* up);
    LONG D3DXCreateEffectFromFileW(IDirect3DDevice9* device, const wchar_t* file, const D3DXMACRO* defines,
                                   ID3DXInclude* include, DWORD flags, ID3DXEffectPool* pool, ID3DXEffect** effect,
                                   ID3DXBuffer** errors);
    D3DXMATRIX* D3DXMatrixMultiply(D3DXMATRIX* out, const D3DXMATRIX* a, const D3DXMATRIX* b);

    static CDirect3DWrapper* GetThis() { return m_pThis; }
    static CDirect3DWrapper* m_pThis;   // the wrapper constructed last; null once any has been destroyed

protected:
    HMODULE m_hD3D9 = nullptr;
    HMODULE m_hD3DX = nullptr;
    FARPROC m_pfnDirect3DCreate9 = nullptr;
    FARPROC m_pfnD3DXCreateTexture = nullptr;
    FARPROC m_pfnD3DXMatrixPerspectiveFovLH = nullptr;
    FARPROC m_pfnD3DXMatrixLookAtLH = nullptr;
    FARPROC m_pfnD3DXCreateEffectFromFileW = nullptr;
    FARPROC m_pfnD3DXMatrixMultiply = nullptr;
};
