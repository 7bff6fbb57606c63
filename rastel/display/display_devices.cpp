// The manager's contact with DirectDraw and Direct3D. This build reaches neither, so the library runs as on a machine
// without them: memory surfaces, and GDI to present them.
#include "rastel/display/display_manager.h"

int CDisplayManager::InitializeDirectDraw() {
    return m_bEnableDirectX == 0;
}

int CDisplayManager::Destroy() {
    return 1;
}

int CDisplayManager::Initialize3D(HWND, int, int) {
    return 0;
}

int CDisplayManager::SetMode(int, int, int) {
    return 0;
}

int CDisplayManager::CanDoMode(int, int, int) {
    return 0;
}

int CDisplayManager::RestoreMode() {
    return 0;
}

void CDisplayManager::WaitForVerticalBlank() {}

int CDisplayManager::IsDepthFormatExisting(D3DFORMAT, D3DFORMAT) {
    return 0;
}

D3DFORMAT CDisplayManager::GetAutoDepthStencilFormat(D3DFORMAT adapterFormat) {
    for (const D3DFORMAT format : {D3DFMT_D32, D3DFMT_D24X8, D3DFMT_D24S8, D3DFMT_D24X4S4, D3DFMT_D16, D3DFMT_D15S1}) {
        if (IsDepthFormatExisting(format, adapterFormat)) {
            return format;
        }
    }
    return D3DFMT_UNKNOWN;
}

IDirect3DDevice9* CDisplayManager::Create3dDevice(HWND, int, int, D3DSWAPEFFECT) {
    return nullptr;
}
