// The ways of putting pixels on the screen. Where a device refuses, all lead to the one of GDI.
#include <algorithm>
#include <cstddef>

#include "rastel/display/display_manager.h"
#include "rastel/display/dx_surface.h"
#include "rastel/display/primary_surface.h"
#include "rastel/platform/com_reference.h"
#include "rastel/platform/user.h"
#include "rastel/surface/pixel_lock.h"
#include "rastel/surface/surface.h"

using rastel::platform::ComReference;

namespace {

class DisplayContext {
public:
    explicit DisplayContext(CPrimarySurface& primary) : primary_(primary), dc_(primary.GetDisplayDC()) {}
    ~DisplayContext() {
        if (dc_) {
            primary_.ReleaseDisplayDC(dc_);
        }
    }
    DisplayContext(const DisplayContext&) = delete;
    DisplayContext& operator=(const DisplayContext&) = delete;

    HDC Get() const { return dc_; }

private:
    CPrimarySurface& primary_;
    HDC dc_;
};

// A device surface's memory, to be written, for the length of a scope.
class DeviceLock {
public:
    explicit DeviceLock(IDirectDrawSurface2& surface) : surface_(surface) {
        description_.dwSize = sizeof(description_);
        const HRESULT result = surface.Lock(nullptr, &description_, DDLOCK_WAIT | DDLOCK_WRITEONLY, nullptr);
        isLocked_ = result >= 0;
        if (result == DDERR_SURFACELOST) {
            surface.Restore();   // for the next time: what it held is gone
        }
    }
    ~DeviceLock() {
        if (isLocked_) {
            surface_.Unlock(nullptr);
        }
    }
    DeviceLock(const DeviceLock&) = delete;
    DeviceLock& operator=(const DeviceLock&) = delete;

    explicit operator bool() const { return isLocked_; }
    const DDSURFACEDESC& Description() const { return description_; }

private:
    IDirectDrawSurface2& surface_;
    DDSURFACEDESC description_ = {};
    bool isLocked_ = false;
};

bool Contains(const CRect& outer, const CRect& inner) {
    return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right &&
           inner.bottom <= outer.bottom;
}

// Hands rows `first` to `first + rows` of the locked surface to GDI, at (x, y).
void DrawRows(HDC dc, int x, int y, const BITMAPINFO& info, const unsigned char* bits, int rows) {
    const int width = info.bmiHeader.biWidth;
    ::StretchDIBits(dc, x, y, width, rows, 0, 0, width, rows, bits, &info, DIB_RGB_COLORS, SRCCOPY);
}

}   // namespace

int CPrimarySurface::CreateOffscreenBuffer() {
    if (m_pOffscreen) {
        return 1;
    }
    CDisplayManager* const manager = GetDisplayManager();
    IDirectDraw2* const directDraw = manager ? manager->GetDirectDraw() : nullptr;
    if (!m_pPrimary || !directDraw) {
        return 0;
    }
    // No pixel format is asked for: the display's own.
    DDSURFACEDESC description = {};
    description.dwSize = sizeof(description);
    m_pPrimary->GetSurfaceDesc(&description);
    description.dwFlags = DDSD_CAPS | DDSD_WIDTH | DDSD_HEIGHT;
    description.ddsCaps.dwCaps = DDSCAPS_OFFSCREENPLAIN | DDSCAPS_SYSTEMMEMORY;
    IDirectDrawSurface* made = nullptr;
    directDraw->CreateSurface(&description, &made, nullptr);
    m_pOffscreen = rastel::platform::ExchangeInterface<IDirectDrawSurface2>(made, IID_IDirectDrawSurface2);
    return m_pOffscreen != nullptr;
}

void CPrimarySurface::ReleaseOffscreenBuffer() {
    rastel::platform::Drop(m_pOffscreen);
}

int CPrimarySurface::FallBack(int x, int y, CSurface& src, CRect& rcSrc) {
    return m_bProfiling ? 0 : BltStretchDIBits(x, y, src, rcSrc);
}

int CPrimarySurface::BltStretchDIBits(int x, int y, CSurface& src, CRect& rcSrc) {
    const DisplayContext display(*this);
    const HDC dc = display.Get();
    if (!dc) {
        return 0;
    }
    const rastel::PixelLock pixels(src);
    if (!pixels) {
        return 1;
    }
    const int width = src.GetWidth();
    const int height = src.GetHeight();
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;   // top-down
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;

    // GDI is handed the whole surface; the clip alone selects what shows.
    const int surfaceX = x - rcSrc.left;
    const int surfaceY = y - rcSrc.top;
    CRect clip = rcSrc;
    ::OffsetRect(&clip, surfaceX, surfaceY);
    ::SaveDC(dc);
    ::IntersectClipRect(dc, clip.left, clip.top, clip.right, clip.bottom);
    if (src.GetPitch() == width * 4) {
        DrawRows(dc, surfaceX, surfaceY, info, pixels.At(0, 0), height);
    } else {
        info.bmiHeader.biHeight = -1;
        for (int line = 0; line < height; ++line) {
            DrawRows(dc, surfaceX, surfaceY + line, info, pixels.At(0, line), 1);
        }
    }
    ::RestoreDC(dc, -1);
    return 1;
}

CRect CPrimarySurface::LandingOnScreen(int x, int y, const CRect& rcSrc) const {
    CRect landing(0, 0, rcSrc.Width(), rcSrc.Height());
    ::OffsetRect(&landing, static_cast<int>(m_ptOrigin.x) + x, static_cast<int>(m_ptOrigin.y) + y);
    return landing;
}

// False: nothing was written. A surface that was lost is back for the next call.
bool CPrimarySurface::ConvertInto(IDirectDrawSurface2& target, int x, int y, CSurface& src, const CRect& rcSrc) {
    const DeviceLock device(target);
    if (!device) {
        return false;
    }
    const rastel::PixelLock pixels(src);
    if (!pixels) {
        return false;
    }
    const DDSURFACEDESC& description = device.Description();
    const CRect landing = LandingOnScreen(x, y, rcSrc);
    const bool tellsSize = description.dwWidth != 0 && description.dwHeight != 0;
    const CRect screen(0, 0, tellsSize ? static_cast<int>(description.dwWidth) : m_nWidth,
                       tellsSize ? static_cast<int>(description.dwHeight) : m_nHeight);
    const auto bits = static_cast<int>(description.ddpfPixelFormat.dwRGBBitCount);
    if ((m_nConvertBits != 0 && bits != m_nConvertBits) || !Contains(screen, landing)) {
        return false;   // the display has another mode than when it was asked
    }
    const std::ptrdiff_t pitch = description.lPitch;
    auto* const bytes = static_cast<unsigned char*>(description.lpSurface) + landing.top * pitch +
                        static_cast<std::ptrdiff_t>(landing.left) * ((bits + 1) >> 3);   // 15 bits take two bytes
    m_pfnConvert(bytes, pixels.At(rcSrc.left, rcSrc.top), rcSrc.Width(), rcSrc.Height(), static_cast<int>(pitch),
                 pixels.Pitch());
    return true;
}

// 1 or 0. Lost surfaces are restored and busy ones asked again, but not for ever.
int CPrimarySurface::BltToPrimary(CRect landing, IDirectDrawSurface2& source, CRect taken) {
    constexpr int mostTries = 100;
    for (int tries = 0; tries < mostTries; ++tries) {
        const HRESULT result = m_pPrimary->Blt(&landing, &source, &taken, DDBLT_WAIT, nullptr);
        if (result == DDERR_SURFACELOST) {
            m_pPrimary->Restore();
            source.Restore();
        } else if (result != DDERR_WASSTILLDRAWING) {
            return result >= 0;
        }
    }
    return 0;
}

int CPrimarySurface::BltBuffered(int x, int y, CSurface& src, CRect& rcSrc) {
    if (!m_pfnConvert) {
        return BltStretchDIBits(x, y, src, rcSrc);
    }
    if (!m_pPrimary) {
        return FallBack(x, y, src, rcSrc);
    }
    CreateOffscreenBuffer();
    if (!m_pOffscreen) {
        return FallBack(x, y, src, rcSrc);
    }
    if (m_nBitsPrPixel <= 8) {
        const DisplayContext renewsThePaletteMap(*this);
    }
    if (!ConvertInto(*m_pOffscreen, x, y, src, rcSrc)) {
        return FallBack(x, y, src, rcSrc);
    }
    const CRect landing = LandingOnScreen(x, y, rcSrc);   // the buffer has the screen's size
    return BltToPrimary(landing, *m_pOffscreen, landing);
}

int CPrimarySurface::BltDirect(int x, int y, CSurface& src, CRect& rcSrc) {
    if (!m_pfnConvert) {
        return BltStretchDIBits(x, y, src, rcSrc);
    }
    CRect limit(0, 0, m_nWidth, m_nHeight);
    if (m_hWnd) {
        if (WindowComplexity() != SIMPLEREGION) {
            // Other windows cut into the target; only ways that clip against them will do.
            const bool isBufferedFaster = m_perfBltBuffered != 0 && m_perfBltBuffered < m_perfStretchDIBits;
            return isBufferedFaster ? BltBuffered(x, y, src, rcSrc) : BltStretchDIBits(x, y, src, rcSrc);
        }
        ::GetClientRect(m_hWnd, &limit);
    }
    if (!m_pPrimary) {
        return FallBack(x, y, src, rcSrc);
    }
    const long long leftOut = std::max(0LL, static_cast<long long>(limit.left) - x);
    const long long topOut = std::max(0LL, static_cast<long long>(limit.top) - y);
    if (leftOut >= rcSrc.Width() || topOut >= rcSrc.Height()) {
        return 1;
    }
    rcSrc.left += static_cast<int>(leftOut);
    rcSrc.top += static_cast<int>(topOut);
    x = std::max<int>(x, limit.left);
    y = std::max<int>(y, limit.top);
    rcSrc.right = rcSrc.left + std::min<LONG>(rcSrc.Width(), limit.right - x);
    rcSrc.bottom = rcSrc.top + std::min<LONG>(rcSrc.Height(), limit.bottom - y);
    if (rcSrc.Width() < 1 || rcSrc.Height() < 1) {
        return 1;
    }
    return ConvertInto(*m_pPrimary, x, y, src, rcSrc) ? 1 : FallBack(x, y, src, rcSrc);
}

int CPrimarySurface::WindowComplexity() {
    const DisplayContext display(*this);
    ::SaveDC(display.Get());
    const int complexity = ::SetMetaRgn(display.Get());
    ::RestoreDC(display.Get(), -1);
    return complexity;
}

int CPrimarySurface::BltNoConvert(int x, int y, CSurface& src, CRect& rcSrc) {
    if (!m_pPrimary || !m_pfnConvert) {
        return FallBack(x, y, src, rcSrc);
    }
    auto* const surface = dynamic_cast<CDxSurface*>(&src);
    IDirectDrawSurface2* const source = surface ? surface->GetDirectDrawSurface() : nullptr;
    return source ? BltToPrimary(LandingOnScreen(x, y, rcSrc), *source, rcSrc) : 0;
}

int CPrimarySurface::Blt3Dsurface(int x, int y, CSurface& src, CRect& rcSrc) {
    auto* const surface = dynamic_cast<CDxSurface*>(&src);
    IDirect3DSurface9* const source = surface ? surface->GetDirect3DSurface() : nullptr;
    CDisplayManager* const manager = GetDisplayManager();
    IDirect3DDevice9* const device = manager ? manager->GetDirect3DDevice() : nullptr;
    if (!source || !device) {
        return BltStretchDIBits(x, y, src, rcSrc);
    }
    IDirect3DSwapChain9* made = nullptr;
    device->GetSwapChain(0, &made);
    const ComReference<IDirect3DSwapChain9> chain(made);
    if (!chain) {
        return 0;
    }
    IDirect3DSurface9* back = nullptr;
    chain->GetBackBuffer(0, D3DBACKBUFFER_TYPE_MONO, &back);
    if (!back) {
        return 1;
    }
    const POINT corner = {0, 0};
    device->UpdateSurface(source, &rcSrc, back, &corner);
    back->Release();
    const CRect whole = src.GetRect();
    device->Present(&whole, &whole, nullptr, nullptr);
    return 1;
}
