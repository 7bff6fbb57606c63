// The manager's Direct3D device: made by trying depth formats until one is taken.
#include "rastel/display/display_manager.h"
#include "rastel/platform/com_reference.h"
#include "rastel/platform/d3d9.h"

int CDisplayManager::Initialize3D(HWND hWnd, int width, int height) {
    rastel::platform::Drop(m_pDirect3D);
    rastel::platform::Drop(m_pDirect3DDevice);
    m_pDirect3D = m_direct3DWrapper.Direct3DCreate9(D3D_SDK_VERSION);
    if (!m_pDirect3D) {
        return 0;
    }
    m_pDirect3DDevice = Create3dDevice(hWnd, width, height, D3DSWAPEFFECT_COPY);
    return m_pDirect3DDevice != nullptr;
}

int CDisplayManager::IsDepthFormatExisting(D3DFORMAT depthFormat, D3DFORMAT adapterFormat) {
    return m_pDirect3D && m_pDirect3D->CheckDeviceFormat(D3DADAPTER_DEFAULT, D3DDEVTYPE_HAL, adapterFormat,
                                                         D3DUSAGE_DEPTHSTENCIL, D3DRTYPE_SURFACE, depthFormat) >= 0;
}

D3DFORMAT CDisplayManager::GetAutoDepthStencilFormat(D3DFORMAT adapterFormat) {
    for (const D3DFORMAT format : {D3DFMT_D32, D3DFMT_D24X8, D3DFMT_D24S8, D3DFMT_D24X4S4, D3DFMT_D16, D3DFMT_D15S1}) {
        if (IsDepthFormatExisting(format, adapterFormat)) {
            return format;
        }
    }
    return D3DFMT_UNKNOWN;
}

IDirect3DDevice9* CDisplayManager::Create3dDevice(HWND hWnd, int width, int height, D3DSWAPEFFECT swapEffect) {
    if (!m_pDirect3D) {
        return nullptr;
    }
    // The wanted swap effect with every depth first, then all of them again with the one that is never refused.
    for (const D3DSWAPEFFECT effect : {swapEffect, D3DSWAPEFFECT_COPY}) {
        for (const D3DFORMAT depth : {D3DFMT_D32, D3DFMT_D24S8, D3DFMT_D24X8, D3DFMT_D16}) {
            // Afresh each time: a device that refuses may have changed what it was asked for.
            D3DPRESENT_PARAMETERS parameters = {};
            parameters.BackBufferWidth = static_cast<UINT>(width);
            parameters.BackBufferHeight = static_cast<UINT>(height);
            parameters.BackBufferFormat = D3DFMT_UNKNOWN;
            parameters.BackBufferCount = effect == D3DSWAPEFFECT_FLIP ? 2 : 0;
            parameters.SwapEffect = effect;
            parameters.Windowed = TRUE;
            parameters.EnableAutoDepthStencil = TRUE;
            parameters.AutoDepthStencilFormat = depth;
            parameters.PresentationInterval = D3DPRESENT_INTERVAL_ONE;
            IDirect3DDevice9* device = nullptr;
            if (m_pDirect3D->CreateDevice(D3DADAPTER_DEFAULT, D3DDEVTYPE_HAL, hWnd,
                                          D3DCREATE_SOFTWARE_VERTEXPROCESSING | D3DCREATE_MULTITHREADED, &parameters,
                                          &device) >= 0) {
                return device;
            }
        }
    }
    return nullptr;
}
