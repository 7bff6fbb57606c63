// The display target: puts a finished colour surface on the screen, in a window or on the whole desktop, by the way
// that was measured to be the fastest here. Every way falls back on GDI when its device refuses.
//
// Made by CDisplayManager::CreatePrimarySurface. After a change of display mode call Initialize again, and SetWindow,
// whose clipping against other windows Initialize drops. No lock: one thread at a time.
#pragma once

#include "rastel/platform/gdi.h"
#include "rastel/surface/ref_count_object.h"

class CDisplayManager;
class CRect;
class CSurface;
struct IDirectDraw2;
struct IDirectDrawClipper;
struct IDirectDrawSurface2;

class RASTEL_API CPrimarySurface : public CRefCountObject {
public:
    struct CPerformanceData {   // calls per second; 0 where nothing was measured
        int nStretchDIBits;
        int nBltBuffered;
        int nBltDirect;
        int nBltNoConvert;
        int nFillColor;
        int nFillColorOwn;
        int nFillColorGDI;
        int nCopyBlt;
        int nCopyBltOwn;
        int nCopyBltGDI;
    };

    using BltFunction = int (CPrimarySurface::*)(int x, int y, CSurface& src, CRect& rcSrc);
    using ConvertFunction = void (*)(unsigned char* dst, unsigned char* src, int width, int height, int dstPitch,
                                     int srcPitch);

    CPrimarySurface();
    ~CPrimarySurface() override;

protected:
    // The order of the virtual operations is binary interface.
    virtual void Profile();
    virtual int CreateOffscreenBuffer();
    virtual void ReleaseOffscreenBuffer();

    // The ways. rcSrc is clipped to the screen; (x, y) is relative to m_ptOrigin.
    virtual int BltStretchDIBits(int x, int y, CSurface& src, CRect& rcSrc);
    virtual int BltBuffered(int x, int y, CSurface& src, CRect& rcSrc);
    virtual int BltDirect(int x, int y, CSurface& src, CRect& rcSrc);
    virtual int BltNoConvert(int x, int y, CSurface& src, CRect& rcSrc);
    virtual int Blt3Dsurface(int x, int y, CSurface& src, CRect& rcSrc);

public:
    virtual int Initialize(CDisplayManager* pManager);   // 0 for a null manager
    virtual int Destroy();                               // drops what the device gave; always 1
    virtual int SetWindow(HWND hWnd);                    // null: the whole screen

    // (x, y), in the window's client area or on the screen, is where the corner of the source rectangle lands. 1 also
    // when nothing is left to draw.
    virtual int Blt(int x, int y, CSurface& src, CRect* pSrcRect);

    // The display's one context: asking again gives the same one, and one release ends it for all.
    virtual HDC GetDisplayDC();
    virtual void ReleaseDisplayDC(HDC hDC);

    virtual void GetPerformanceData(CPerformanceData& data);

    int GetBitsPrPixel() { return m_nBitsPrPixel; }
    IDirectDrawSurface2* GetDirectDrawSurface() { return m_pPrimary; }

protected:
    IDirectDrawSurface2* m_pPrimary = nullptr;
    IDirectDrawSurface2* m_pOffscreen = nullptr;
    IDirectDrawClipper* m_pClipper = nullptr;
    HWND m_hWnd = nullptr;
    HDC m_hDC = nullptr;
    HPALETTE m_hPalette = nullptr;
    HPALETTE m_hOldPalette = nullptr;
    int m_nWidth = 640;
    int m_nHeight = 480;
    int m_nBitsPrPixel = 32;
    long long m_perfStretchDIBits = 0;
    long long m_perfBltBuffered = 0;
    long long m_perfBltDirect = 0;   // nothing measures it
    long long m_perfBltNoConvert = 0;
    int m_bProfiling = 0;   // while it is set a failing way says so instead of falling back
    BltFunction m_pfnBlt = nullptr;
    ConvertFunction m_pfnConvert = nullptr;
    POINT m_ptOrigin = {0, 0};   // the target's corner on the screen

private:
    friend class PrimaryScreenScope;
    int m_nConvertBits = 0;      // bits a pixel of what m_pfnConvert writes
    HWND m_hWndOfDC = nullptr;   // where m_hDC came from; m_hWnd may be another one by the time it goes back
    int WindowComplexity();      // whether the window shows as one rectangle
    int FallBack(int x, int y, CSurface& src, CRect& rcSrc);
    bool ConvertInto(IDirectDrawSurface2& target, int x, int y, CSurface& src, const CRect& rcSrc);
    int BltToPrimary(CRect landing, IDirectDrawSurface2& source, CRect taken);
    void CreateDevicePrimary(IDirectDraw2& directDraw);
    CRect LandingOnScreen(int x, int y, const CRect& rcSrc) const;
    long long MeasuredTicks(BltFunction blt, int x, int y, CSurface& src, CRect& rcSrc);
};
