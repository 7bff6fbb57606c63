// The manager's contact with DirectDraw: the object itself, display modes and the vertical blank.
#include <algorithm>
#include <list>
#include <new>

#include "rastel/display/display_manager.h"
#include "rastel/platform/com_reference.h"
#include "rastel/platform/d3d9.h"

namespace {

struct DisplayMode {
    int width;
    int height;
    int bits;

    bool operator==(const DisplayMode&) const = default;
};

std::list<DisplayMode> s_displayModes;   // as enumerated when DirectDraw was reached; setting a mode changes nothing

HRESULT CALLBACK AppendMode(DDSURFACEDESC* description, void*) try {
    s_displayModes.push_back({static_cast<int>(description->dwWidth), static_cast<int>(description->dwHeight),
                              static_cast<int>(description->ddpfPixelFormat.dwRGBBitCount)});
    return DDENUMRET_OK;
} catch (const std::bad_alloc&) {
    return DDENUMRET_CANCEL;   // nothing may pass through the system's code
}

}   // namespace

int CDisplayManager::InitializeDirectDraw() {
    if (m_bEnableDirectX == 0 || m_pDirectDraw) {
        return 1;
    }
    void* made = nullptr;
    ::CoCreateInstance(CLSID_DirectDraw, nullptr, CLSCTX_INPROC_SERVER | CLSCTX_INPROC_HANDLER, IID_IDirectDraw2,
                       &made);   // the pointer says how it went
    m_pDirectDraw = static_cast<IDirectDraw2*>(made);
    if (!m_pDirectDraw) {
        return 0;
    }
    if (m_pDirectDraw->Initialize(nullptr) < 0) {
        rastel::platform::Drop(m_pDirectDraw);
        return 0;
    }
    const HRESULT level = m_pDirectDraw->SetCooperativeLevel(m_hWnd, DDSCL_NORMAL);
    s_displayModes.clear();
    m_pDirectDraw->EnumDisplayModes(0, nullptr, nullptr, AppendMode);
    return level >= 0;
}

int CDisplayManager::Destroy() {
    if (m_pDirectDraw) {
        m_pDirectDraw->SetCooperativeLevel(nullptr, DDSCL_NORMAL);
        rastel::platform::Drop(m_pDirectDraw);
        s_displayModes.clear();
    }
    rastel::platform::Drop(m_pDirect3D);
    rastel::platform::Drop(m_pDirect3DDevice);
    return 1;
}

int CDisplayManager::SetMode(int width, int height, int bits) {
    if (!m_pDirectDraw ||
        m_pDirectDraw->SetCooperativeLevel(m_hWnd, DDSCL_EXCLUSIVE | DDSCL_FULLSCREEN | DDSCL_ALLOWREBOOT) < 0) {
        return 0;
    }
    return m_pDirectDraw->SetDisplayMode(static_cast<DWORD>(width), static_cast<DWORD>(height),
                                         static_cast<DWORD>(bits), 0, 0) >= 0;
}

int CDisplayManager::CanDoMode(int width, int height, int bits) {
    return m_pDirectDraw && std::ranges::find(s_displayModes, DisplayMode{width, height, bits}) != s_displayModes.end();
}

int CDisplayManager::RestoreMode() {
    return m_pDirectDraw && m_pDirectDraw->SetCooperativeLevel(m_hWnd, DDSCL_NORMAL) >= 0;
}

void CDisplayManager::WaitForVerticalBlank() {
    if (m_pDirectDraw) {
        m_pDirectDraw->WaitForVerticalBlank(DDWAITVB_BLOCKBEGIN, nullptr);
    }
}
