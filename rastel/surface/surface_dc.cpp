#include "rastel/surface/surface_dc.h"

#include "rastel/platform/user.h"

CSurfaceDC::CSurfaceDC(CSurfaceBase& surface, CRect* pClip) : m_pSurface(&surface) {
    if (pClip) {
        m_Clip = *pClip;
    } else {
        ::SetRectEmpty(&m_Clip);
    }
    CSurfaceDC::Create();
}

CSurfaceDC::~CSurfaceDC() {
    CSurfaceDC::Destroy();
}

void CSurfaceDC::Create() {
    if (!m_pSurface || m_hDC) {
        return;
    }
    ::GdiFlush();
    m_hDC = m_pSurface->GetDC();
    if (m_hDC && !::IsRectEmpty(&m_Clip)) {
        ::IntersectClipRect(m_hDC, m_Clip.left, m_Clip.top, m_Clip.right, m_Clip.bottom);
    }
}

void CSurfaceDC::Destroy() {
    if (!m_pSurface || !m_hDC) {
        return;
    }
    m_pSurface->ReleaseDC(m_hDC);
    m_hDC = nullptr;
    ::GdiFlush();
}
