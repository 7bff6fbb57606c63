// The ways of putting pixels on the screen. Without a DirectDraw surface behind them all lead to the one of GDI.
#include "rastel/display/primary_surface.h"
#include "rastel/platform/user.h"
#include "rastel/surface/pixel_lock.h"
#include "rastel/surface/surface.h"

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

// Hands rows `first` to `first + rows` of the locked surface to GDI, at (x, y).
void DrawRows(HDC dc, int x, int y, const BITMAPINFO& info, const unsigned char* bits, int rows) {
    const int width = info.bmiHeader.biWidth;
    ::StretchDIBits(dc, x, y, width, rows, 0, 0, width, rows, bits, &info, DIB_RGB_COLORS, SRCCOPY);
}

}   // namespace

int CPrimarySurface::CreateOffscreenBuffer() {
    return 0;
}

void CPrimarySurface::ReleaseOffscreenBuffer() {}

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

int CPrimarySurface::BltBuffered(int x, int y, CSurface& src, CRect& rcSrc) {
    if (!m_pfnConvert) {
        return BltStretchDIBits(x, y, src, rcSrc);
    }
    return FallBack(x, y, src, rcSrc);
}

int CPrimarySurface::BltDirect(int x, int y, CSurface& src, CRect& rcSrc) {
    if (!m_pfnConvert) {
        return BltStretchDIBits(x, y, src, rcSrc);
    }
    if (m_hWnd && WindowComplexity() != SIMPLEREGION) {
        // Other windows cut into the target; only ways that clip against them will do.
        const bool isBufferedFaster = m_perfBltBuffered != 0 && m_perfBltBuffered < m_perfStretchDIBits;
        return isBufferedFaster ? BltBuffered(x, y, src, rcSrc) : BltStretchDIBits(x, y, src, rcSrc);
    }
    return FallBack(x, y, src, rcSrc);
}

int CPrimarySurface::WindowComplexity() {
    const DisplayContext display(*this);
    ::SaveDC(display.Get());
    const int complexity = ::SetMetaRgn(display.Get());
    ::RestoreDC(display.Get(), -1);
    return complexity;
}

int CPrimarySurface::BltNoConvert(int x, int y, CSurface& src, CRect& rcSrc) {
    return FallBack(x, y, src, rcSrc);
}

int CPrimarySurface::Blt3Dsurface(int x, int y, CSurface& src, CRect& rcSrc) {
    return BltStretchDIBits(x, y, src, rcSrc);   // no surface of this build lives on a Direct3D device
}
