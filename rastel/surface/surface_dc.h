// A device context on a store for the length of a scope, flushed at both ends.
//
// Holds no reference: the store must outlive it. A store that refuses leaves the context null; test it.
#pragma once

#include "rastel/surface/surface_base.h"

class RASTEL_API CSurfaceDC {
public:
    CSurfaceDC(CSurfaceBase& surface, CRect* pClip);   // null or empty: no clip
    CSurfaceDC(const CSurfaceDC&) = delete;
    CSurfaceDC& operator=(const CSurfaceDC&) = delete;

    // The order of the virtual operations is binary interface.
    virtual ~CSurfaceDC();
    virtual void Destroy();   // gives the context back
    virtual void Create();    // takes a new one, unless one is held

    operator HDC() { return m_hDC; }

protected:
    CSurfaceBase* m_pSurface;
    HDC m_hDC = nullptr;
    CRect m_Clip;
};
