#include "rastel/display/display_manager.h"

#include <new>

#include "rastel/alpha/dib_alpha_channel.h"
#include "rastel/composite/adv_surface.h"
#include "rastel/display/dx_surface.h"
#include "rastel/display/primary_surface.h"
#include "rastel/platform/gdi.h"
#include "rastel/surface/dib_surface.h"

namespace {

CDisplayManager* s_pDisplayManager = nullptr;

// The common end of all factories: an object that can't be initialised is deleted, not released.
template <class Object, class Initialize>
Object* Initialized(Object* object, Initialize initialize) {
    if (object && !initialize(*object)) {
        delete object;
        return nullptr;
    }
    return object;
}

}   // namespace

CDisplayManager* GetDisplayManager() {
    return s_pDisplayManager;
}

CDisplayManager::CDisplayManager() {
    if (s_pDisplayManager) {
        throw 0;
    }
    s_pDisplayManager = this;
}

CDisplayManager::~CDisplayManager() {
    CDisplayManager::Destroy();
    s_pDisplayManager = nullptr;
}

int CDisplayManager::Initialize(HWND hWnd) {
    m_hWnd = hWnd;
    InitializeDirectDraw();
    return 1;
}

void CDisplayManager::EnableDirectX(int enable) {
    m_bEnableDirectX = enable;
}

int CDisplayManager::GetBitsPrPixel() {
    if (m_nBitsPrPixel == 0) {
        if (const HDC display = ::CreateDCW(L"DISPLAY", nullptr, nullptr, nullptr)) {
            m_nBitsPrPixel = ::GetDeviceCaps(display, PLANES) * ::GetDeviceCaps(display, BITSPIXEL);
            ::DeleteDC(display);
        }
    }
    return m_nBitsPrPixel;
}

long long CDisplayManager::GetPerformanceTimer() {
    LARGE_INTEGER count = {};
    ::QueryPerformanceCounter(&count);
    return count.QuadPart;
}

CPrimarySurface* CDisplayManager::CreatePrimarySurface() {
    return Initialized(new (std::nothrow) CPrimarySurface,
                       [this](CPrimarySurface& primary) { return primary.Initialize(this); });
}

CSurface* CDisplayManager::CreateSurface(int width, int height) {
    if (width == 0 || height == 0) {
        return nullptr;
    }
    const auto initialize = [=](CSurface& surface) { return surface.InitializeSurface(width, height); };
    return m_pDirectDraw ? Initialized<CSurface>(new (std::nothrow) CDxSurface, initialize)
                         : Initialized<CSurface>(new (std::nothrow) CDibSurface, initialize);
}

CAlphaChannel* CDisplayManager::CreateAlphaChannel(int width, int height) {
    return Initialized<CAlphaChannel>(new (std::nothrow) CDibAlphaChannel,
                                      [=](CAlphaChannel& plane) { return plane.Initialize(width, height); });
}

CAdvSurface* CDisplayManager::CreateAdvSurface(int width, int height, int withAlpha) {
    if (width == 0 || height == 0) {
        return nullptr;
    }
    return Initialized(new (std::nothrow) CAdvSurface,
                       [=](CAdvSurface& composite) { return composite.InitializeSurface(width, height, withAlpha); });
}
