// The composite: a colour surface, an optional alpha plane and an optional colour key that act together.
//
// It holds one reference on each store. When both are there the plane has the size of the colour store. Pixels
// reached through the composite itself (LockData, GetDC) are those of the colour store; the plane has its own.
// Operations return 1 for success and 0 for failure; without a colour store they fail. CDisplayManager makes
// composites; the operations that need temporaries ask it for them.
#pragma once

#include "rastel/surface/surface_base.h"

class CAlphaChannel;
class CSurface;

namespace Gdiplus {
class Bitmap;
}

namespace winext {
class CDib;
}

class RASTEL_API CAdvSurface : public CSurfaceBase {
public:
    static constexpr DWORD noColorKey = 0xFFFFFFFF;

    CAdvSurface();
    ~CAdvSurface() override;

    CSurface* GetSurface() { return m_pSurface; }                  // no new reference; may be null
    CAlphaChannel* GetAlphaChannel() { return m_pAlphaChannel; }   // no new reference; may be null
    int HasColorKey();                                             // black is a key too

    HDC GetDC() override;
    void ReleaseDC(HDC hDC) override;
    unsigned char* LockData() override;
    void UnlockData() override;
    BITMAPINFO* GetBitmapInfo() override;
    int GetBytesPrPixel() override;

protected:
    // The order of the virtual operations is binary interface. These four blend into a composite that has a plane and
    // maintain it: plain and vector arithmetic differ, see docs/arithmetic.md. Rectangles are clipped.
    virtual int InternalAlphaBltAdvCPU(int x, int y, CAdvSurface& src, CAlphaChannel& alpha, CRect& rcSrc);
    virtual int InternalAlphaBltAdvMMX(int x, int y, CAdvSurface& src, CAlphaChannel& alpha, CRect& rcSrc);
    virtual int InternalAlphaColorBltAdvCPU(int x, int y, DWORD color, CAlphaChannel& alpha, CRect& rcSrc);
    virtual int InternalAlphaColorBltAdvMMX(int x, int y, DWORD color, CAlphaChannel& alpha, CRect& rcSrc);

public:
    virtual int InitializeSurface(int width, int height, int withAlpha);   // the key stays
    virtual void Destroy();                                                // drops both stores; sizes and key stay

    // Each adds a reference of its own and drops the old store. A plane of another size than the colour store is not
    // taken, and a new colour store drops a plane that no longer fits.
    virtual void SetSurface(CSurface* pSurface);
    virtual void SetAlphaChannel(CAlphaChannel* pAlphaChannel);

    // The literal copy: colours, and planes where both have one. The key is not looked at.
    virtual int CopyBlt(int x, int y, CAdvSurface& src, CRect* pSrcRect, CRect* pClip);

    virtual int FillColor(CRect* pRect, DWORD color, CRect* pClip);   // the plane stays as it is
    virtual int ShadowBlt(CRect* pRect, int percent);                 // the plane stays as it is; always 0

    // Through an explicit plane, addressed like the source; the source's own plane and key play no part.
    virtual int AlphaBlt(int x, int y, CAdvSurface& src, CAlphaChannel& alpha, CRect* pSrcRect, CRect* pClip);
    virtual int AlphaColorBlt(int x, int y, DWORD color, CAlphaChannel& alpha, CRect* pSrcRect, CRect* pClip);

    // A new plane of the composite's shape, `border` larger on each side; the caller's to release. The plane decides,
    // from 128 on, else the key, else the whole rectangle is `inside`. Null on failure.
    virtual CAlphaChannel* MakeMask(int border, unsigned char outside, unsigned char inside);

    // Shows the source as its plane, else its key, says, and maintains this composite's plane.
    virtual int Blt(int x, int y, CAdvSurface& src, CRect* pSrcRect, CRect* pClip);
    virtual int StretchBlt(CRect* pDstRect, CAdvSurface& src, CRect* pSrcRect, CRect* pClip);

    virtual int BltTexture(CPoint* const corners, CAdvSurface& src, CRect* pSrcRect, CRect* pClip);
    virtual int BltRotate(CRect* pDstRect, double angle, CPoint centre, CAdvSurface& src, CRect* pSrcRect,
                          CRect* pClip);

    // As Blt, faded: alpha 0 or less changes nothing and succeeds, 255 or more is Blt.
    virtual int AlphaConstBlt(int x, int y, CAdvSurface& src, int alpha, CRect* pSrcRect, CRect* pClip);

    virtual void SetColorKey(DWORD key);   // COLORREF order; noColorKey: none
    virtual DWORD GetColorKey();

    // Turns the key into plane content: 0 on the pixels whose whole word equals it. 0 without a key.
    virtual int ApplyTransparentColorToAlpha();

    virtual int SetDib(winext::CDib& dib, winext::CDib* pAlpha);
    virtual Gdiplus::Bitmap* CreateBitmap();
    virtual int SetBitmap(Gdiplus::Bitmap& bitmap);

protected:
    void CopySizeOfSurface();

    CSurface* m_pSurface = nullptr;
    CAlphaChannel* m_pAlphaChannel = nullptr;
    DWORD m_ColorKey = noColorKey;

private:
    struct AdvRows;
    template <class Draw>
    int BlendAdv(int x, int y, CAdvSurface& src, CAlphaChannel& alpha, const CRect& rcSrc, Draw draw);
    template <class Draw>
    int BlendColorAdv(int x, int y, CAlphaChannel& alpha, const CRect& rcSrc, Draw draw);
};
