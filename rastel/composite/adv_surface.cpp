#include "rastel/composite/adv_surface.h"

#include "rastel/alpha/alpha_channel.h"
#include "rastel/display/display_manager.h"
#include "rastel/surface/surface.h"

namespace {

// The same store may be held by nobody else: its count must not pass through 0.
template <class Store>
void Replace(Store*& held, Store* next) {
    if (held == next) {
        return;
    }
    if (held) {
        held->Release();
    }
    held = next;
    if (held) {
        held->AddRef();
    }
}

}   // namespace

CAdvSurface::CAdvSurface() = default;

CAdvSurface::~CAdvSurface() {
    CAdvSurface::Destroy();
}

void CAdvSurface::CopySizeOfSurface() {
    m_Width = m_pSurface->GetWidth();
    m_Height = m_pSurface->GetHeight();
    m_Pitch = m_pSurface->GetPitch();
}

int CAdvSurface::InitializeSurface(int width, int height, int withAlpha) {
    Destroy();
    CDisplayManager* const manager = GetDisplayManager();
    m_pSurface = manager ? manager->CreateSurface(width, height) : nullptr;
    if (!m_pSurface) {
        return 0;
    }
    CopySizeOfSurface();
    if (withAlpha) {
        m_pAlphaChannel = manager->CreateAlphaChannel(width, height);
    }
    return 1;
}

void CAdvSurface::Destroy() {
    if (m_pAlphaChannel) {
        m_pAlphaChannel->Release();
        m_pAlphaChannel = nullptr;
    }
    if (m_pSurface) {
        m_pSurface->Release();
        m_pSurface = nullptr;
    }
}

void CAdvSurface::SetSurface(CSurface* pSurface) {
    Replace(m_pSurface, pSurface);
    if (!m_pSurface) {
        return;
    }
    CopySizeOfSurface();
    if (m_pAlphaChannel && (m_pAlphaChannel->GetWidth() != m_Width || m_pAlphaChannel->GetHeight() != m_Height)) {
        m_pAlphaChannel->Release();
        m_pAlphaChannel = nullptr;
    }
}

void CAdvSurface::SetAlphaChannel(CAlphaChannel* pAlphaChannel) {
    const bool fits = pAlphaChannel &&
                      (!m_pSurface || (pAlphaChannel->GetWidth() == m_Width && pAlphaChannel->GetHeight() == m_Height));
    Replace(m_pAlphaChannel, fits ? pAlphaChannel : nullptr);
}

HDC CAdvSurface::GetDC() {
    return m_pSurface ? m_pSurface->GetDC() : nullptr;
}

void CAdvSurface::ReleaseDC(HDC hDC) {
    if (m_pSurface) {
        m_pSurface->ReleaseDC(hDC);
    }
}

unsigned char* CAdvSurface::LockData() {
    unsigned char* const bits = m_pSurface ? m_pSurface->LockData() : nullptr;
    if (bits) {
        m_Pitch = m_pSurface->GetPitch();   // a store on a device may have another one each time
    }
    return bits;
}

void CAdvSurface::UnlockData() {
    if (m_pSurface) {
        m_pSurface->UnlockData();
    }
}

BITMAPINFO* CAdvSurface::GetBitmapInfo() {
    return m_pSurface ? m_pSurface->GetBitmapInfo() : nullptr;
}

int CAdvSurface::GetBytesPrPixel() {
    return 4;
}

void CAdvSurface::SetColorKey(DWORD key) {
    m_ColorKey = key;
}

DWORD CAdvSurface::GetColorKey() {
    return m_ColorKey;
}

int CAdvSurface::HasColorKey() {
    return GetColorKey() != noColorKey;
}
