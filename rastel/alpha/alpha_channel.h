// The alpha plane: one byte a pixel, a coverage from 0 (transparent) to 255 (opaque), and the algebra on it.
//
// Rows run top-down, GetPitch() bytes apart. pSrcRect lies in the source and pClip in this plane; null means the whole
// of it. Operations return 1 for success and 0 for failure; what clips to nothing is a success unless it lies wholly
// outside. Two planes of one operation must be different objects.
#pragma once

#include "rastel/surface/surface_base.h"

class CSurface;
struct FACE3D;

namespace winext {
class CImage;
}

class RASTEL_API CAlphaChannel : public CSurfaceBase {
public:
    CAlphaChannel();
    ~CAlphaChannel() override;

    BITMAPINFO* GetBitmapInfo() override;   // with 256 grey entries; the caller frees it with array delete
    int GetBytesPrPixel() override;

protected:
    // The order of the virtual operations is binary interface.
    virtual int InternalFill(CRect& rc, unsigned char value);   // rc inside the plane

public:
    virtual int Initialize(int width, int height) = 0;
    virtual void Destroy() = 0;

    virtual int Fill(CRect* pRect, unsigned char value, CRect* pClip);

    // From another plane only: any other store gives 0.
    virtual int CopyBlt(int x, int y, CSurfaceBase& src, CRect* pSrcRect, CRect* pClip);

    // Stretches through device contexts; nothing is clipped here but by pClip.
    virtual int StretchBlt(CRect& rcDst, CAlphaChannel& src, CRect* pSrcRect, CRect* pClip);

    virtual int BltMix(int x, int y, CAlphaChannel& src, CRect* pSrcRect, CRect* pClip);   // the larger of the two
    virtual int Merge(int x, int y, CAlphaChannel& src, CRect* pSrcRect, CRect* pClip);    // (target * source) >> 8
    virtual int Multiply(CRect* pRect, int factor);                                        // (byte * factor) >> 8
    virtual int Invert(CRect* pRect);                                                      // 255 - byte

    // Compare whole 32-bit pixels with `color`, which is in memory order (see CSurface::RGB2COLOR).
    // TransparentMask: equal gives 0. OpaqueMask: different gives 255. Other bytes stay.
    virtual int TransparentMask(int x, int y, CSurface& src, DWORD color, CRect* pSrcRect, CRect* pClip);
    virtual int OpaqueMask(int x, int y, CSurface& src, DWORD color, CRect* pSrcRect, CRect* pClip);

    virtual int BltTexturedTriangle(FACE3D& face, CAlphaChannel& src, CRect* pClip);
    virtual int BltTexture(CPoint* const corners, CRect* pDstRect, CAlphaChannel& src, CRect* pSrcRect, CRect* pClip);
    virtual int BltRotate(CRect* pDstRect, double angle, CPoint centre, CAlphaChannel& src, CRect* pSrcRect,
                          CRect* pClip);

    virtual CAlphaChannel* Expand(int radius, int value);
    virtual CAlphaChannel* Blur(int radius);
    virtual int Subtract(CAlphaChannel& other, int x, int y);
    virtual int TressHold(int level, unsigned char low, unsigned char high);

    // Loads an 8-bit image, resampled to the plane's size by nearest pixels; with a palette that is no grey ramp, the
    // green of each entry. An image of another depth, without pixels, or of 32768 pixels a side or more gives 0.
    virtual int SetImage(winext::CImage& image);

private:
    friend class CAdvSurface;                 // stretches the planes of its temporaries
    CRect Region(const CRect* pRect) const;   // the whole plane, cut by *pRect
};
