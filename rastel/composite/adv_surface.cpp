#include "rastel/composite/adv_surface.h"

#include "rastel/alpha/alpha_channel.h"
#include "rastel/display/display_manager.h"
#include "rastel/surface/surface.h"

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
    // The new reference comes before the old one goes: they may be the same store, held by nobody else.
    if (pSurface) {
        pSurface->AddRef();
    }
    if (m_pSurface) {
        m_pSurface->Release();
    }
    m_pSurface = pSurface;
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
    if (fits) {
        pAlphaChannel->AddRef();   // before the old one goes, as in SetSurface
    }
    if (m_pAlphaChannel) {
        m_pAlphaChannel->Release();
    }
    m_pAlphaChannel = fits ? pAlphaChannel : nullptr;
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
    return m_pSurface ? m_pSurface->LockData() : nullptr;
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
