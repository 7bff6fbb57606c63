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
