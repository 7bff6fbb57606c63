// Which way of presenting is the fastest here: measured once for each display, then read back.
#include <algorithm>
#include <utility>

#include "rastel/display/display_manager.h"
#include "rastel/display/line_converters.h"
#include "rastel/display/primary_surface.h"
#include "rastel/platform/gdi.h"
#include "rastel/platform/kernel.h"
#include "rastel/platform/windows_version.h"
#include "rastel/surface/measuring_priority.h"
#include "rastel/surface/pixel_lock.h"
#include "rastel/surface/surface.h"

namespace {

constexpr int testWidth = 640;
constexpr int testHeight = 480;

HDC CreateScreenContext() {
    return ::CreateDCW(L"DISPLAY", nullptr, nullptr, nullptr);
}

// Moves the test area between the screen and a bitmap, and deletes the context. False: it could not be moved.
template <class Move>
bool WithAreaBitmap(HDC screen, HBITMAP bitmap, Move move) {
    bool isMoved = false;
    if (const HDC memory = ::CreateCompatibleDC(screen)) {
        const HGDIOBJ old = ::SelectObject(memory, bitmap);
        isMoved = old && move(memory);
        ::SelectObject(memory, old);
        ::DeleteDC(memory);
    }
    ::DeleteDC(screen);
    return isMoved;
}

// Null: nothing was saved, and nothing may be put back.
HBITMAP SaveArea(HDC screen, int x, int y) {
    const HBITMAP saved = ::CreateCompatibleBitmap(screen, testWidth, testHeight);
    const bool isSaved = WithAreaBitmap(screen, saved, [&](HDC memory) {
        return ::BitBlt(memory, 0, 0, testWidth, testHeight, screen, x, y, SRCCOPY) != FALSE;
    });
    if (isSaved) {
        return saved;
    }
    ::DeleteObject(saved);
    return nullptr;
}

void RestoreArea(HBITMAP saved, int x, int y) {
    const HDC screen = saved ? CreateScreenContext() : nullptr;
    if (screen) {
        WithAreaBitmap(screen, saved, [&](HDC memory) {
            return ::BitBlt(screen, x, y, testWidth, testHeight, memory, 0, 0, SRCCOPY) != FALSE;
        });
    }
    ::DeleteObject(saved);
}

void DrawTestPicture(CSurface& surface) {
    const rastel::ScopedDc context(surface);
    const HDC dc = context.Get();
    if (!dc) {
        return;
    }
    ::PatBlt(dc, 0, 0, 8888, 8888, BLACKNESS);
    ::SetTextColor(dc, 0xFFFFFF);
    ::SetBkColor(dc, 0);
    const HFONT font = ::CreateFontW(-40, 0, 0, 0, 400, FALSE, FALSE, FALSE, ANSI_CHARSET, OUT_DEFAULT_PRECIS,
                                     CLIP_DEFAULT_PRECIS, ANTIALIASED_QUALITY, DEFAULT_PITCH, L"Arial");
    const HGDIOBJ old = ::SelectObject(dc, font);
    ::SetTextAlign(dc, TA_CENTER);
    ::TextOutW(dc, 320, 220, L"Profiling Display...", 20);
    ::SelectObject(dc, old);
    ::DeleteObject(font);
}

int Rate(long long ticks) {
    LARGE_INTEGER frequency = {};
    ::QueryPerformanceFrequency(&frequency);
    return ticks > 0 ? static_cast<int>(static_cast<DWORD>(frequency.QuadPart / ticks)) : 0;
}

}   // namespace

// The paths on the bare screen for the length of a measurement: a window that is already set would move the test
// picture away from the area that is saved, and past the edge of the screen.
class PrimaryScreenScope {
public:
    explicit PrimaryScreenScope(CPrimarySurface& primary) : primary_(primary) { Swap(); }
    ~PrimaryScreenScope() { Swap(); }
    PrimaryScreenScope(const PrimaryScreenScope&) = delete;
    PrimaryScreenScope& operator=(const PrimaryScreenScope&) = delete;

private:
    void Swap() {
        std::swap(primary_.m_hWnd, window_);
        std::swap(primary_.m_ptOrigin, origin_);
        std::swap(primary_.m_hDC, dc_);
        std::swap(primary_.m_hWndOfDC, windowOfDc_);
        std::swap(primary_.m_hPalette, palette_);
        std::swap(primary_.m_hOldPalette, oldPalette_);
    }

    CPrimarySurface& primary_;
    HWND window_ = nullptr;
    POINT origin_ = {0, 0};
    HDC dc_ = nullptr;
    HWND windowOfDc_ = nullptr;
    HPALETTE palette_ = nullptr;
    HPALETTE oldPalette_ = nullptr;
};

long long CPrimarySurface::MeasuredTicks(BltFunction blt, int x, int y, CSurface& src, CRect& rcSrc) {
    constexpr int passes = 10;
    const long long start = CDisplayManager::GetPerformanceTimer();
    for (int pass = 0; pass < passes; ++pass) {
        if (!(this->*blt)(x, y, src, rcSrc)) {
            return 0;
        }
    }
    return (CDisplayManager::GetPerformanceTimer() - start) / passes;
}

void CPrimarySurface::Profile() {
    CDisplayManager* const manager = GetDisplayManager();
    const HDC screen = CreateScreenContext();
    if (!screen || !manager) {
        ::DeleteDC(screen);
        return;
    }
    const int screenWidth = ::GetDeviceCaps(screen, HORZRES);
    const int screenHeight = ::GetDeviceCaps(screen, VERTRES);
    const int x0 = (screenWidth - testWidth) / 2;
    const int y0 = (screenHeight - testHeight) / 2;
    const HBITMAP saved = SaveArea(screen, x0, y0);
    const PrimaryScreenScope onScreen(*this);

    CSurface* const surface = manager->CreateSurface(testWidth, testHeight);
    if (surface) {
        DrawTestPicture(*surface);
    }
    m_bProfiling = 1;
    // The paths don't clip, so on a screen smaller than the picture only the part that it shows is drawn.
    const int x = std::max(x0, 0);
    const int y = std::max(y0, 0);
    CRect rect(x - x0, y - y0, std::min(x - x0 + screenWidth, testWidth), std::min(y - y0 + screenHeight, testHeight));
    const auto measure = [&](BltFunction blt) { return MeasuredTicks(blt, x, y, *surface, rect); };
    // A way that could not be tried is not taken, and not written down as having failed either.
    const auto isMissing = [](long long ticks) { return ticks < 0; };
    {
        const rastel::MeasuringPriority priority;

        m_perfStretchDIBits = manager->GetProfile(L"StretchDIBits");
        if (isMissing(m_perfStretchDIBits) && surface) {
            m_perfStretchDIBits = measure(&CPrimarySurface::BltStretchDIBits);
        }
        m_pfnBlt = &CPrimarySurface::BltStretchDIBits;
        long long best = m_perfStretchDIBits;

        // That system's buffered path has no device memory worth measuring.
        if (!rastel::platform::IsWindowsNt60()) {
            m_perfBltBuffered = manager->GetProfile(L"BltBuffered");
            if (isMissing(m_perfBltBuffered) && surface) {
                BltBuffered(x, y, *surface, rect);   // makes the buffer, which is no part of the time
                m_perfBltBuffered = measure(&CPrimarySurface::BltBuffered);
            }
            if (m_perfBltBuffered > 0 && m_perfBltBuffered < m_perfStretchDIBits) {
                m_pfnBlt = &CPrimarySurface::BltBuffered;
                best = m_perfBltBuffered;
            }
        }

        m_perfBltNoConvert = manager->GetProfile(L"BltNoConvert");
        if (isMissing(m_perfBltNoConvert)) {
            // Device surfaces have 32 bits, and are shown unconverted where the screen has them too.
            if (m_pfnConvert != Blt32) {
                m_perfBltNoConvert = 0;
            } else if (surface) {
                m_perfBltNoConvert = measure(&CPrimarySurface::BltNoConvert);
            }
        }
        if (m_perfBltNoConvert > 0 && m_perfBltNoConvert < best) {
            m_pfnBlt = &CPrimarySurface::BltNoConvert;
        }
    }
    ReleaseOffscreenBuffer();
    m_bProfiling = 0;
    if (surface) {
        surface->Release();
    }
    manager->SetProfile(L"StretchDIBits", m_perfStretchDIBits);
    manager->SetProfile(L"BltBuffered", m_perfBltBuffered);
    manager->SetProfile(L"BltDirect", m_perfBltDirect);
    manager->SetProfile(L"BltNoConvert", m_perfBltNoConvert);
    RestoreArea(saved, x0, y0);

    CSurface::Profile();
}

void CPrimarySurface::GetPerformanceData(CPerformanceData& data) {
    data.nStretchDIBits = Rate(m_perfStretchDIBits);
    data.nBltBuffered = Rate(m_perfBltBuffered);
    data.nBltDirect = Rate(m_perfBltDirect);
    data.nBltNoConvert = Rate(m_perfBltNoConvert);
    data.nFillColor = Rate(CSurface::s_perfFillColor);
    data.nFillColorOwn = Rate(CSurface::s_perfFillColorOwn);
    data.nFillColorGDI = Rate(CSurface::s_perfFillColorGDI);
    data.nCopyBlt = Rate(CSurface::s_perfCopyBlt);
    data.nCopyBltOwn = Rate(CSurface::s_perfCopyBltOwn);
    data.nCopyBltGDI = Rate(CSurface::s_perfCopyBltGDI);
}
