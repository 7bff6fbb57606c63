// The colour surface: 32-bit pixels, copied, filled, keyed, shaded, stretched and blended.
//
// In memory a pixel is blue, green, red, alpha byte; rows run top-down, GetPitch() bytes apart. The alpha byte is a
// passenger: it says nothing about transparency. Colours and keys in arguments are COLORREFs, 0x00BBGGRR. Optional
// rectangles may be null: the whole surface, or no limit. Operations return non-zero for success and 0 for failure.
// CDisplayManager makes the surfaces; see dib_surface.h for the one in memory.
#pragma once

#include "rastel/surface/surface_base.h"

class CAlphaChannel;
struct FACE3D;

class RASTEL_API CSurface : public CSurfaceBase {
public:
    using CopyBltFunction = int (CSurface::*)(int x, int y, CSurfaceBase& src, const CRect& rcSrc);
    using FillColorFunction = int (CSurface::*)(CRect& rc, DWORD color);

    CSurface();
    ~CSurface() override;

    static DWORD RGB2COLOR(DWORD c);   // 0x??BBGGRR to 0x00RRGGBB, the order in memory

    // Measures fill and copy, or reads the stored timings of this display, and chooses by them. Until it has run,
    // CopyBlt and FillColor return 0.
    static void Profile();

    BITMAPINFO* GetBitmapInfo() override;   // 40 bytes, no colour table; the caller frees it with array delete
    int GetBytesPrPixel() override;

    // The chosen operations: each holds a virtual operation, so the object's class decides which body runs.
    static CopyBltFunction s_pCopyBlt;
    static FillColorFunction s_pFillColor;

    // Ticks of the performance counter for one call at 640 x 480.
    static long long s_perfFillColor;
    static long long s_perfFillColorOwn;
    static long long s_perfFillColorGDI;
    static long long s_perfCopyBlt;
    static long long s_perfCopyBltOwn;
    static long long s_perfCopyBltGDI;

protected:
    static void UseBestProfile();   // the only writer of the two pointers; a tie keeps the earlier candidate

    int InternalCopyBlt(int x, int y, CSurfaceBase& src, const CRect& rcSrc) override;

    // The order of the virtual operations is binary interface. The Internal ones take clipped rectangles.
    virtual int InternalFillColorGDI(CRect& rc, DWORD color);   // 1 on every path
    virtual int InternalFillColorCPU(CRect& rc, DWORD color);
    virtual int InternalFillColorMMX(CRect& rc, DWORD color);
    virtual int InternalFillColor(CRect& rc, DWORD color);
    virtual int InternalCopyBltGDI(int x, int y, CSurfaceBase& src, const CRect& rcSrc);
    virtual int InternalCopyBltMMX(int x, int y, CSurfaceBase& src, const CRect& rcSrc);
    virtual int InternalTransparentBlt(int x, int y, CSurface& src, DWORD key, const CRect& rcSrc);
    virtual int InternalAlphaBlt(int x, int y, CSurface& src, CAlphaChannel& alpha, const CRect& rcSrc);

public:
    virtual int InitializeSurface(int width, int height) = 0;   // once; Destroy comes before another size
    virtual void Destroy();

    // Copies all four bytes of each pixel. A surface can't be copied onto itself.
    virtual int CopyBlt(int x, int y, CSurface& src, CRect* pSrcRect, CRect* pClip);

    // Fills with `color` and alpha byte 0. A rectangle that clips to nothing is a success.
    virtual int FillColor(CRect* pRect, DWORD color, CRect* pClip);

    // Copies the pixels that differ from `key` in their low 24 bits; they land with alpha byte 0. The others leave the
    // destination as it is.
    virtual int TransparentBlt(int x, int y, CSurface& src, DWORD key, CRect* pSrcRect, CRect* pClip);

    // Darkens in place: every byte, the alpha byte too, times ((100 - percent) * 256 / 100), >> 8. Always returns 0.
    virtual int ShadowBlt(CRect* pRect, int percent);

    // The plane lies over the source and is addressed with its co-ordinates; it must cover the source rectangle.
    virtual int AlphaBlt(int x, int y, CSurface& src, CAlphaChannel& alpha, CRect* pSrcRect, CRect* pClip);
    virtual int AlphaColorBlt(int x, int y, DWORD color, CAlphaChannel& alpha, CRect* pSrcRect, CRect* pClip);
    virtual int AlphaConstBlt(int x, int y, CSurface& src, int alpha, CRect* pSrcRect, CRect* pClip);
    virtual int AlphaConstBltEx(int x, int y, CSurface& src, int alpha, CRect* pSrcRect, CSurface* pSecond,
                                CRect* pClip);
    virtual int AlphaConstTransBlt(int x, int y, CSurface& src, int alpha, DWORD key, CRect* pSrcRect, CRect* pClip);

    virtual int BltTexturedTriangle(FACE3D& face, CSurface& src, CRect* pClip);
    virtual int BltTexturedTriangleTrans(FACE3D& face, CSurface& src, DWORD key, CRect* pClip);
    virtual int BltTexturedTriangleAlpha(FACE3D& face, CSurface& src, CAlphaChannel& alpha, CRect* pClip);

    // Picks pixels (see docs/arithmetic.md). Equal sizes are a CopyBlt. A negative size mirrors, backwards
    // from its corner, which is part of it.
    virtual int StretchBlt(CRect* pDstRect, CSurface& src, CRect* pSrcRect, CRect* pClip);
};
