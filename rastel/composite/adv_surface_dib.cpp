// Images into composites. GDI scales and converts them, so any depth that it draws is taken.
#include "rastel/alpha/alpha_channel.h"
#include "rastel/composite/adv_surface.h"
#include "rastel/display/display_manager.h"
#include "rastel/image/dib.h"
#include "rastel/platform/gdi.h"
#include "rastel/surface/pixel_lock.h"
#include "rastel/surface/surface.h"

namespace {

void StretchDib(CSurfaceBase& store, int width, int height, winext::CDib& dib) {
    const rastel::ScopedDc dc(store);
    if (!dc) {
        return;
    }
    ::SetStretchBltMode(dc.Get(), COLORONCOLOR);
    ::StretchDIBits(dc.Get(), 0, 0, width, height, 0, 0, dib.GetWidth(), dib.GetHeight(), dib.GetBits(),
                    dib.GetBitmapInfo(), DIB_RGB_COLORS, SRCCOPY);
}

}   // namespace

int CAdvSurface::SetDib(winext::CDib& dib, winext::CDib* pAlpha) {
    if (!dib.GetBits()) {
        return 0;
    }
    CDisplayManager* const manager = GetDisplayManager();
    if (!m_pSurface) {
        m_pSurface = manager ? manager->CreateSurface(dib.GetWidth(), dib.GetHeight()) : nullptr;
        if (!m_pSurface) {
            return 0;
        }
        CopySizeOfSurface();
    }
    StretchDib(*m_pSurface, m_Width, m_Height, dib);
    if (!pAlpha) {
        return 1;
    }
    if (!m_pAlphaChannel) {
        m_pAlphaChannel = manager ? manager->CreateAlphaChannel(m_Width, m_Height) : nullptr;
        if (!m_pAlphaChannel) {
            return 0;
        }
    }
    StretchDib(*m_pAlphaChannel, m_Width, m_Height, *pAlpha);
    return 1;
}
