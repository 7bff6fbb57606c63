#include "rastel/composite/surface_graphics.h"

#include "rastel/composite/adv_surface.h"
#include "rastel/platform/framework.h"
#include "rastel/platform/gdiplus.h"

CSurfaceGraphics::CSurfaceGraphics() = default;

CSurfaceGraphics::CSurfaceGraphics(CAdvSurface& surface, CRect* pClip) {
    CSurfaceGraphics::Attach(surface);
    if (pClip && m_pGraphics) {
        m_pGraphics->SetClip(Gdiplus::Rect(pClip->left, pClip->top, pClip->Width(), pClip->Height()),
                             Gdiplus::CombineModeReplace);
    }
}

CSurfaceGraphics& CSurfaceGraphics::operator=(const CSurfaceGraphics& other) = default;

CSurfaceGraphics::~CSurfaceGraphics() {
    CSurfaceGraphics::Detach();
}

int CSurfaceGraphics::Attach(CAdvSurface& surface) {
    Detach();
    m_pSurface = &surface;
    if (!surface.GetAlphaChannel()) {
        m_hDC = surface.GetDC();
        if (m_hDC) {
            m_pGraphics = new Gdiplus::Graphics(m_hDC);
        }
    } else {
        m_pBitmap = surface.CreateBitmap();
        if (m_pBitmap) {
            m_pGraphics = new Gdiplus::Graphics(m_pBitmap);
        }
    }
    return 1;
}

int CSurfaceGraphics::Detach() {
    // Drawing ends before anything is written back.
    delete m_pGraphics;
    m_pGraphics = nullptr;
    if (m_hDC) {
        m_pSurface->ReleaseDC(m_hDC);
        m_hDC = nullptr;
    }
    if (m_pBitmap) {
        m_pSurface->SetBitmap(*m_pBitmap);
        delete m_pBitmap;
        m_pBitmap = nullptr;
    }
    m_pSurface = nullptr;
    return 1;
}
