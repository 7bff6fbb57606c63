#include "rastel/display/direct3d_wrapper.h"

namespace {

// An entry point as the function that it is.
template <class Function>
Function* As(FARPROC entryPoint) {
    return reinterpret_cast<Function*>(reinterpret_cast<void (*)()>(entryPoint));
}

}   // namespace

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
        wchar_t name[] = L"D3DX9_00.DLL";
        name[6] = static_cast<wchar_t>(L'0' + i / 10);
        name[7] = static_cast<wchar_t>(L'0' + i % 10);
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

IDirect3D9* CDirect3DWrapper::Direct3DCreate9(unsigned int sdkVersion) {
    using Function = IDirect3D9* WINAPI(UINT);
    return m_pfnDirect3DCreate9 ? As<Function>(m_pfnDirect3DCreate9)(sdkVersion) : nullptr;
}

LONG CDirect3DWrapper::D3DXCreateTexture(IDirect3DDevice9* device, unsigned int width, unsigned int height,
                                         unsigned int mipLevels, DWORD usage, D3DFORMAT format, D3DPOOL pool,
                                         IDirect3DTexture9** texture) {
    using Function =
        HRESULT WINAPI(IDirect3DDevice9*, UINT, UINT, UINT, DWORD, D3DFORMAT, D3DPOOL, IDirect3DTexture9**);
    return m_pfnD3DXCreateTexture
               ? As<Function>(m_pfnD3DXCreateTexture)(device, width, height, mipLevels, usage, format, pool, texture)
               : E_FAIL;
}

D3DXMATRIX* CDirect3DWrapper::D3DXMatrixPerspectiveFovLH(D3DXMATRIX* out, float fovY, float aspect, float zNear,
                                                         float zFar) {
    using Function = D3DXMATRIX* WINAPI(D3DXMATRIX*, FLOAT, FLOAT, FLOAT, FLOAT);
    return m_pfnD3DXMatrixPerspectiveFovLH
               ? As<Function>(m_pfnD3DXMatrixPerspectiveFovLH)(out, fovY, aspect, zNear, zFar)
               : nullptr;
}

D3DXMATRIX* CDirect3DWrapper::D3DXMatrixLookAtLH(D3DXMATRIX* out, const D3DXVECTOR3* eye, const D3DXVECTOR3* at,
                                                 const D3DXVECTOR3* up) {
    using Function = D3DXMATRIX* WINAPI(D3DXMATRIX*, const D3DXVECTOR3*, const D3DXVECTOR3*, const D3DXVECTOR3*);
    return m_pfnD3DXMatrixLookAtLH ? As<Function>(m_pfnD3DXMatrixLookAtLH)(out, eye, at, up) : nullptr;
}

LONG CDirect3DWrapper::D3DXCreateEffectFromFileW(IDirect3DDevice9* device, const wchar_t* file,
                                                 const D3DXMACRO* defines, ID3DXInclude* include, DWORD flags,
                                                 ID3DXEffectPool* pool, ID3DXEffect** effect, ID3DXBuffer** errors) {
    using Function = HRESULT WINAPI(IDirect3DDevice9*, LPCWSTR, const D3DXMACRO*, ID3DXInclude*, DWORD,
                                    ID3DXEffectPool*, ID3DXEffect**, ID3DXBuffer**);
    return m_pfnD3DXCreateEffectFromFileW ? As<Function>(m_pfnD3DXCreateEffectFromFileW)(device, file, defines, include,
                                                                                         flags, pool, effect, errors)
                                          : 0;
}

D3DXMATRIX* CDirect3DWrapper::D3DXMatrixMultiply(D3DXMATRIX* out, const D3DXMATRIX* a, const D3DXMATRIX* b) {
    using Function = D3DXMATRIX* WINAPI(D3DXMATRIX*, const D3DXMATRIX*, const D3DXMATRIX*);
    return m_pfnD3DXMatrixMultiply ? As<Function>(m_pfnD3DXMatrixMultiply)(out, a, b) : nullptr;
}
