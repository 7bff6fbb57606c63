// GDI+ drawing on a composite.
//
// Without a plane the drawing goes straight into the colour store. With one it goes into a copy with alpha, which
// Detach writes back, colours and plane; until then the composite doesn't change. While attached the composite must
// not be locked or released: no reference is held.
#pragma once

#include "rastel/platform/export.h"
#include "rastel/platform/types.h"

class CAdvSurface;
class CRect;

namespace Gdiplus {
class Bitmap;
class Graphics;
}   // namespace Gdiplus

class RASTEL_API CSurfaceGraphics {
public:
    CSurfaceGraphics();
    CSurfaceGraphics(CAdvSurface& surface, CRect* pClip);   // null: no clip; else in the composite's pixels
    CSurfaceGraphics(const CSurfaceGraphics&) = delete;

    // Copies what is held as it is: the copy shares it, and only one of the two may be detached or destroyed.
    CSurfaceGraphics& operator=(const CSurfaceGraphics& other);

    // The order of the virtual operations is binary interface.
    virtual ~CSurfaceGraphics();
    virtual int Attach(CAdvSurface& surface);   // 1 in any case; no Graphics may have come of it
    virtual int Detach();                       // 1 in any case, and safe at any time

    Gdiplus::Graphics* GetGraphice() { return m_pGraphics; }   // may be null
    Gdiplus::Graphics* operator->() { return m_pGraphics; }

protected:
    HDC m_hDC = nullptr;
    Gdiplus::Bitmap* m_pBitmap = nullptr;   // owned
    CAdvSurface* m_pSurface = nullptr;
    Gdiplus::Graphics* m_pGraphics = nullptr;   // owned
};
