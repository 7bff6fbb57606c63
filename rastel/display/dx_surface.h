// The colour surface in a DirectDraw surface in system memory: fill, copy, key copy and stretch are the device's.
//
// The rows are as far apart as the driver wants, so GetPitch() may exceed 4 * GetWidth(). A surface that was lost comes
// back at the next lock or blit, without its contents. Copy, key copy and stretch of the device take other surfaces
// of this class only, and give 0 for any other; CopyBlt chooses among the ways that are there.
#pragma once

#include "rastel/platform/d3d9.h"
#include "rastel/platform/ddraw.h"
#include "rastel/surface/surface.h"

class RASTEL_API CDxSurface : public CSurface {
public:
    CDxSurface();
    ~CDxSurface() override;

    int InitializeSurface(int width, int height) override;   // pixels; needs a manager with DirectDraw
    void Destroy() override;

    HDC GetDC() override;
    void ReleaseDC(HDC hDC) override;
    unsigned char* LockData() override;
    void UnlockData() override;

    IDirectDrawSurface2* GetDirectDrawSurface() { return m_pDirectDrawSurface; }   // no new reference; may be null
    IDirect3DSurface9* GetDirect3DSurface() { return m_pDirect3DSurface; }         // nothing makes one: null

protected:
    int InternalFillColor(CRect& rc, DWORD color) override;
    int InternalCopyBlt(int x, int y, CSurfaceBase& src, const CRect& rcSrc) override;

    // What the device leaves in the alpha byte of a copied pixel is its own affair. On displays below 24 bits this is
    // the copy in memory.
    int InternalTransparentBlt(int x, int y, CSurface& src, DWORD key, const CRect& rcSrc) override;
    int InternalStretchBlt(CRect& rcDst, CSurfaceBase& src, CRect& rcSrc, CRect* pClip) override;

    IDirectDrawSurface2* m_pDirectDrawSurface = nullptr;
    IDirect3DSurface9* m_pDirect3DSurface = nullptr;

private:
    LONG PixelBytes() const;   // without the padding of rows
};
