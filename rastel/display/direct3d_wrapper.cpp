#include "rastel/display/direct3d_wrapper.h"

#include "rastel/platform/framework.h"

CDirect3DWrapper* CDirect3DWrapper::m_pThis = nullptr;

CDirect3DWrapper::CDirect3DWrapper() {
    m_pThis = this;
    m_hD3D9 = ::LoadLibraryW(L"D3D9.DLL");
    if (!m_hD3D9) {
        return;
    }
    m_pfnDirect3DCreate9 = ::GetProcAddress(m_hD3D9, "Direct3DCreate9");

    constexpr int newestD3DX = 34, oldestD3DX = 24;
    for (int i = newestD3DX; i >= oldestD3DX && !m_hD3DX; --i) {
        CString name;
        name.Format(L"D3DX9_%i.DLL", i);
        m_hD3DX = ::LoadLibraryW(name);
    }
    if (!m_hD3DX) {
        return;
    }
    m_pfnD3DXCreateTexture = ::GetProcAddress(m_hD3DX, "D3DXCreateTexture");
    m_pfnD3DXMatrixPerspectiveFovLH = ::GetProcAddress(m_hD3DX, "D3DXMatrixPerspectiveFovLH");
    m_pfnD3DXMatrixLookAtLH = ::GetProcAddress(m_hD3DX, "D3DXMatrixLookAtLH");
    m_pfnD3DXCreateEffectFromFileW = ::GetProcAddress(m_hD3DX, "D3DXCreateEffectFromFileW");
    m_pfnD3DXMatrixMultiply = ::GetProcAddress(m_hD3DX, "D3DXMatrixMultiply");
}

CDirect3DWrapper::~CDirect3DWrapper() {
    if (m_hD3D9) {
        ::FreeLibrary(m_hD3D9);
        m_hD3D9 = nullptr;
    }
    if (m_hD3DX) {
        ::FreeLibrary(m_hD3DX);
        m_hD3DX = nullptr;
    }
    m_pThis = nullptr;
}
