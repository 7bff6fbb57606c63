#include "rastel/display/primary_surface.h"

#include <vector>

#include "rastel/display/display_manager.h"
#include "rastel/display/line_converters.h"
#include "rastel/display/palette_map.h"
#include "rastel/platform/com_reference.h"
#include "rastel/platform/user.h"
#include "rastel/surface/mmx.h"
#include "rastel/surface/surface.h"

namespace {

// Red in the two low bits of the index, green in the next three, blue in the top three.
HPALETTE CreateDisplayPalette() {
    std::vector<unsigned char> block(sizeof(LOGPALETTE) + 255 * sizeof(PALETTEENTRY));
    auto* const log = reinterpret_cast<LOGPALETTE*>(block.data());
    log->palVersion = 0x300;
    log->palNumEntries = 256;
    for (int v = 0; v < 256; ++v) {
        log->palPalEntry[v] = {static_cast<BYTE>(v << 6), static_cast<BYTE>(v >> 2 << 5),
                               static_cast<BYTE>(v >> 5 << 5), PC_NOCOLLAPSE};
    }
    return ::CreatePalette(log);
}

// Null: a depth that no display of today has.
CPrimarySurface::ConvertFunction ConverterFor(const DDPIXELFORMAT& format) {
    const bool useMmx = UseMMX() != 0;
    const bool is565 = format.dwRBitMask == 0xF800 && format.dwGBitMask == 0x07E0 && format.dwBBitMask == 0x001F;
    switch (format.dwRGBBitCount) {
        case 8:
            return Blt8;
        case 16:
            if (is565) {
                return useMmx ? Blt565MMX : Blt565;
            }
            [[fallthrough]];
        case 15:
            return useMmx ? Blt555MMX : Blt555;
        case 24:
            return Blt24;
        case 32:
            return Blt32;
        default:
            return nullptr;
    }
}

}   // namespace

CPrimarySurface::CPrimarySurface() = default;

CPrimarySurface::~CPrimarySurface() {
    CPrimarySurface::Destroy();
}

int CPrimarySurface::Initialize(CDisplayManager* pManager) {
    Destroy();
    if (!pManager) {
        return 0;
    }
    m_pfnConvert = nullptr;
    m_nWidth = ::GetSystemMetrics(SM_CXSCREEN);
    m_nHeight = ::GetSystemMetrics(SM_CYSCREEN);
    if (IDirectDraw2* const directDraw = pManager->GetDirectDraw()) {
        CreateDevicePrimary(*directDraw);
    }
    if (m_pPrimary) {
        DDSURFACEDESC description = {};
        description.dwSize = sizeof(description);
        m_pPrimary->GetSurfaceDesc(&description);
        m_nConvertBits = static_cast<int>(description.ddpfPixelFormat.dwRGBBitCount);
        m_pfnConvert = ConverterFor(description.ddpfPixelFormat);
        if (!m_pfnConvert) {
            return 0;
        }
    }

    if (const HDC display = GetDisplayDC()) {
        m_nBitsPrPixel = ::GetDeviceCaps(display, PLANES) * ::GetDeviceCaps(display, BITSPIXEL);
        ReleaseDisplayDC(display);
    } else if (const HDC screen = ::CreateDCW(L"DISPLAY", nullptr, nullptr, nullptr)) {
        // The window is gone, but the display still has a depth.
        m_nBitsPrPixel = ::GetDeviceCaps(screen, PLANES) * ::GetDeviceCaps(screen, BITSPIXEL);
        ::DeleteDC(screen);
    }

    Profile();
    return 1;
}

void CPrimarySurface::CreateDevicePrimary(IDirectDraw2& directDraw) {
    DDSURFACEDESC description = {};
    description.dwSize = sizeof(description);
    description.dwFlags = DDSD_CAPS;
    description.ddsCaps.dwCaps = DDSCAPS_PRIMARYSURFACE;
    IDirectDrawSurface* made = nullptr;
    directDraw.CreateSurface(&description, &made, nullptr);   // the pointer says how it went
    m_pPrimary = rastel::platform::ExchangeInterface<IDirectDrawSurface2>(made, IID_IDirectDrawSurface2);
}

int CPrimarySurface::Destroy() {
    ReleaseOffscreenBuffer();
    rastel::platform::Drop(m_pClipper);
    rastel::platform::Drop(m_pPrimary);
    return 1;
}

int CPrimarySurface::SetWindow(HWND hWnd) {
    rastel::platform::Drop(m_pClipper);
    m_hWnd = hWnd;
    CDisplayManager* const manager = GetDisplayManager();
    IDirectDraw2* const directDraw = manager ? manager->GetDirectDraw() : nullptr;
    if (!hWnd || !m_pPrimary || !directDraw) {
        return 1;
    }
    directDraw->CreateClipper(0, &m_pClipper, nullptr);
    if (!m_pClipper || m_pClipper->SetHWnd(0, hWnd) < 0) {
        return 0;
    }
    return m_pPrimary->SetClipper(m_pClipper) >= 0;
}

int CPrimarySurface::Blt(int x, int y, CSurface& src, CRect* pSrcRect) {
    if (!m_pfnBlt) {
        return 0;
    }
    if (m_hWnd) {
        // At every blit, so that a window that moved is followed without any message.
        m_ptOrigin = {0, 0};
        ::ClientToScreen(m_hWnd, &m_ptOrigin);
    }
    CRect rc = src.GetRect();
    if (pSrcRect) {
        ::IntersectRect(&rc, &rc, pSrcRect);
    }

    // Clipped to the screen, in 64 bits: no position near the limits of `int` may wrap.
    long long left = rc.left, top = rc.top, right = rc.right, bottom = rc.bottom;
    long long targetX = x, targetY = y;
    if (m_ptOrigin.x + targetX < 0) {
        left -= m_ptOrigin.x + targetX;
        targetX = -static_cast<long long>(m_ptOrigin.x);
    }
    if (m_ptOrigin.y + targetY < 0) {
        top -= m_ptOrigin.y + targetY;
        targetY = -static_cast<long long>(m_ptOrigin.y);
    }
    if (m_ptOrigin.x + targetX + (right - left) > m_nWidth) {
        right = m_nWidth - m_ptOrigin.x - targetX + left;
    }
    if (m_ptOrigin.y + targetY + (bottom - top) > m_nHeight) {
        bottom = m_nHeight - m_ptOrigin.y - targetY + top;
    }
    if (right - left < 1 || bottom - top < 1) {
        return 1;
    }
    rc.SetRect(static_cast<int>(left), static_cast<int>(top), static_cast<int>(right), static_cast<int>(bottom));
    return (this->*m_pfnBlt)(static_cast<int>(targetX), static_cast<int>(targetY), src, rc);
}

HDC CPrimarySurface::GetDisplayDC() {
    if (m_hDC) {
        return m_hDC;
    }
    m_hDC = m_hWnd ? ::GetDC(m_hWnd) : ::CreateDCW(L"DISPLAY", nullptr, nullptr, nullptr);
    if (!m_hDC) {
        return nullptr;
    }
    m_hWndOfDC = m_hWnd;
    if (!m_hWnd) {
        ::SetViewportOrgEx(m_hDC, m_ptOrigin.x, m_ptOrigin.y, nullptr);
    }
    if (m_nBitsPrPixel <= 8 && !m_hPalette) {
        m_hPalette = CreateDisplayPalette();
    }
    if (m_hPalette) {
        m_hOldPalette = ::SelectPalette(m_hDC, m_hPalette, FALSE);
        ::RealizePalette(m_hDC);
        SetPaletteMap(m_hDC);
    }
    return m_hDC;
}

void CPrimarySurface::ReleaseDisplayDC(HDC) {
    if (m_hDC && m_hOldPalette) {
        ::SelectPalette(m_hDC, m_hOldPalette, FALSE);
    }
    if (m_hPalette) {
        ::DeleteObject(m_hPalette);
    }
    if (m_hWndOfDC) {
        ::ReleaseDC(m_hWndOfDC, m_hDC);
    } else if (m_hDC) {
        ::DeleteDC(m_hDC);
    }
    m_hDC = nullptr;
    m_hWndOfDC = nullptr;
    m_hPalette = nullptr;
    m_hOldPalette = nullptr;
}
