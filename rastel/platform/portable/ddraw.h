// DirectDraw's interfaces, with the system's own layouts and orders, over our own displays.
//
// What a host of this library uses works: modes, the primary surface, surfaces in memory, blits with stretch, fill and
// source key, clippers, contexts, lost surfaces. The rest answers DDERR_UNSUPPORTED. An object belongs to whoever holds
// a reference. Different threads may use different surfaces, and the same one by turns.
#pragma once

#include "rastel/platform/portable/com.h"
#include "rastel/platform/portable/gdi.h"

struct IDirectDraw;
struct IDirectDrawSurface;
struct IDirectDrawSurface2;
struct IDirectDrawClipper;
struct IDirectDrawPalette;
using LPDIRECTDRAW = IDirectDraw*;
using LPDIRECTDRAWSURFACE = IDirectDrawSurface*;
using LPDIRECTDRAWSURFACE2 = IDirectDrawSurface2*;
using LPDIRECTDRAWCLIPPER = IDirectDrawClipper*;
using LPDIRECTDRAWPALETTE = IDirectDrawPalette*;

inline constexpr CLSID CLSID_DirectDraw = {
    0xD7B70EE0, 0x4340, 0x11CF, {0xB0, 0x63, 0x00, 0x20, 0xAF, 0xC2, 0xCD, 0x35}};
inline constexpr IID IID_IDirectDraw = {0x6C14DB80, 0xA733, 0x11CE, {0xA5, 0x21, 0x00, 0x20, 0xAF, 0x0B, 0xE5, 0x60}};
inline constexpr IID IID_IDirectDraw2 = {0xB3A6F3E0, 0x2B43, 0x11CF, {0xA2, 0xDE, 0x00, 0xAA, 0x00, 0xB9, 0x33, 0x56}};
inline constexpr IID IID_IDirectDrawSurface = {
    0x6C14DB81, 0xA733, 0x11CE, {0xA5, 0x21, 0x00, 0x20, 0xAF, 0x0B, 0xE5, 0x60}};
inline constexpr IID IID_IDirectDrawSurface2 = {
    0x57805885, 0x6EEC, 0x11CF, {0x94, 0x41, 0xA8, 0x23, 0x03, 0xC1, 0x0E, 0x27}};
inline constexpr IID IID_IDirectDrawPalette = {
    0x6C14DB84, 0xA733, 0x11CE, {0xA5, 0x21, 0x00, 0x20, 0xAF, 0x0B, 0xE5, 0x60}};
inline constexpr IID IID_IDirectDrawClipper = {
    0x6C14DB85, 0xA733, 0x11CE, {0xA5, 0x21, 0x00, 0x20, 0xAF, 0x0B, 0xE5, 0x60}};

#define DD_OK (static_cast<HRESULT>(0))
#define MAKE_DDHRESULT(code) (static_cast<HRESULT>(0x88760000u | (code)))
#define DDERR_ALREADYINITIALIZED MAKE_DDHRESULT(5)
#define DDERR_CURRENTLYNOTAVAIL MAKE_DDHRESULT(40)
#define DDERR_INVALIDCAPS MAKE_DDHRESULT(100)
#define DDERR_INVALIDCLIPLIST MAKE_DDHRESULT(110)
#define DDERR_INVALIDMODE MAKE_DDHRESULT(120)
#define DDERR_INVALIDOBJECT MAKE_DDHRESULT(130)
#define DDERR_INVALIDPIXELFORMAT MAKE_DDHRESULT(145)
#define DDERR_INVALIDRECT MAKE_DDHRESULT(150)
#define DDERR_LOCKEDSURFACES MAKE_DDHRESULT(160)
#define DDERR_NOCLIPLIST MAKE_DDHRESULT(205)
#define DDERR_NOCOLORKEY MAKE_DDHRESULT(215)
#define DDERR_NOEXCLUSIVEMODE MAKE_DDHRESULT(225)
#define DDERR_NOTFOUND MAKE_DDHRESULT(255)
#define DDERR_OUTOFVIDEOMEMORY MAKE_DDHRESULT(380)
#define DDERR_SURFACEBUSY MAKE_DDHRESULT(430)
#define DDERR_SURFACELOST MAKE_DDHRESULT(450)
#define DDERR_WASSTILLDRAWING MAKE_DDHRESULT(540)
#define DDERR_REGIONTOOSMALL MAKE_DDHRESULT(566)
#define DDERR_CLIPPERISUSINGHWND MAKE_DDHRESULT(567)
#define DDERR_NOCLIPPERATTACHED MAKE_DDHRESULT(568)
#define DDERR_BLTFASTCANTCLIP MAKE_DDHRESULT(574)
#define DDERR_NODC MAKE_DDHRESULT(586)
#define DDERR_NOTLOCKED MAKE_DDHRESULT(584)
#define DDERR_CANTCREATEDC MAKE_DDHRESULT(585)
#define DDERR_WRONGMODE MAKE_DDHRESULT(587)
#define DDERR_NOPALETTEATTACHED MAKE_DDHRESULT(572)
#define DDERR_DCALREADYCREATED MAKE_DDHRESULT(620)
#define DDERR_GENERIC E_FAIL
#define DDERR_INVALIDPARAMS E_INVALIDARG
#define DDERR_OUTOFMEMORY E_OUTOFMEMORY
#define DDERR_UNSUPPORTED E_NOTIMPL

#define DDSCL_FULLSCREEN 0x00000001
#define DDSCL_ALLOWREBOOT 0x00000002
#define DDSCL_NOWINDOWCHANGES 0x00000004
#define DDSCL_NORMAL 0x00000008
#define DDSCL_EXCLUSIVE 0x00000010

#define DDSD_CAPS 0x00000001
#define DDSD_HEIGHT 0x00000002
#define DDSD_WIDTH 0x00000004
#define DDSD_PITCH 0x00000008
#define DDSD_LPSURFACE 0x00000800
#define DDSD_PIXELFORMAT 0x00001000
#define DDSD_CKSRCBLT 0x00010000
#define DDSD_REFRESHRATE 0x00040000

#define DDSCAPS_COMPLEX 0x00000008
#define DDSCAPS_FLIP 0x00000010
#define DDSCAPS_OFFSCREENPLAIN 0x00000040
#define DDSCAPS_PRIMARYSURFACE 0x00000200
#define DDSCAPS_SYSTEMMEMORY 0x00000800
#define DDSCAPS_VIDEOMEMORY 0x00004000
#define DDSCAPS_VISIBLE 0x00008000

#define DDPF_PALETTEINDEXED8 0x00000020
#define DDPF_RGB 0x00000040

#define DDLOCK_SURFACEMEMORYPTR 0x00000000
#define DDLOCK_WAIT 0x00000001
#define DDLOCK_READONLY 0x00000010
#define DDLOCK_WRITEONLY 0x00000020

#define DDBLT_ASYNC 0x00000200
#define DDBLT_COLORFILL 0x00000400
#define DDBLT_KEYSRC 0x00008000
#define DDBLT_KEYSRCOVERRIDE 0x00010000
#define DDBLT_ROP 0x00020000
#define DDBLT_WAIT 0x01000000

#define DDBLTFAST_NOCOLORKEY 0x00000000
#define DDBLTFAST_SRCCOLORKEY 0x00000001
#define DDBLTFAST_WAIT 0x00000010

#define DDCKEY_SRCBLT 0x00000008
#define DDWAITVB_BLOCKBEGIN 0x00000001
#define DDWAITVB_BLOCKEND 0x00000004
#define DDENUMRET_CANCEL 0
#define DDENUMRET_OK 1
#define DDEDM_REFRESHRATES 0x00000001
#define DDPCAPS_8BIT 0x00000004

#define DDCAPS_BLT 0x00000040
#define DDCAPS_BLTSTRETCH 0x00000200
#define DDCAPS_GDI 0x00000400
#define DDCAPS_COLORKEY 0x00400000
#define DDCAPS_BLTCOLORFILL 0x04000000
#define DDCAPS_CANCLIP 0x20000000
#define DDCAPS_CANCLIPSTRETCHED 0x40000000
#define DDCAPS_CANBLTSYSMEM 0x80000000
#define DDCKEYCAPS_SRCBLT 0x00000200
#define DD_ROP_SPACE (256 / 32)

struct DDSCAPS {
    DWORD dwCaps;
};
using LPDDSCAPS = DDSCAPS*;

struct DDSCAPS2 {
    DWORD dwCaps;
    DWORD dwCaps2;
    DWORD dwCaps3;
    DWORD dwCaps4;
};

struct DDCOLORKEY {
    DWORD dwColorSpaceLowValue;
    DWORD dwColorSpaceHighValue;
};
using LPDDCOLORKEY = DDCOLORKEY*;

struct DDPIXELFORMAT {
    DWORD dwSize;
    DWORD dwFlags;
    DWORD dwFourCC;
    DWORD dwRGBBitCount;
    DWORD dwRBitMask;
    DWORD dwGBitMask;
    DWORD dwBBitMask;
    DWORD dwRGBAlphaBitMask;
};
using LPDDPIXELFORMAT = DDPIXELFORMAT*;

struct DDSURFACEDESC {
    DWORD dwSize;
    DWORD dwFlags;
    DWORD dwHeight;
    DWORD dwWidth;
    LONG lPitch;
    DWORD dwBackBufferCount;
    DWORD dwRefreshRate;
    DWORD dwAlphaBitDepth;
    DWORD dwReserved;
    LPVOID lpSurface;
    DDCOLORKEY ddckCKDestOverlay;
    DDCOLORKEY ddckCKDestBlt;
    DDCOLORKEY ddckCKSrcOverlay;
    DDCOLORKEY ddckCKSrcBlt;
    DDPIXELFORMAT ddpfPixelFormat;
    DDSCAPS ddsCaps;
};
using LPDDSURFACEDESC = DDSURFACEDESC*;

struct DDBLTFX {
    DWORD dwSize;
    DWORD dwDDFX;
    DWORD dwROP;
    DWORD dwDDROP;
    DWORD dwRotationAngle;
    DWORD dwZBufferOpCode;
    DWORD dwZBufferLow;
    DWORD dwZBufferHigh;
    DWORD dwZBufferBaseDest;
    DWORD dwZDestConstBitDepth;
    union {
        DWORD dwZDestConst;
        LPDIRECTDRAWSURFACE lpDDSZBufferDest;
    };
    DWORD dwZSrcConstBitDepth;
    union {
        DWORD dwZSrcConst;
        LPDIRECTDRAWSURFACE lpDDSZBufferSrc;
    };
    DWORD dwAlphaEdgeBlendBitDepth;
    DWORD dwAlphaEdgeBlend;
    DWORD dwReserved;
    DWORD dwAlphaDestConstBitDepth;
    union {
        DWORD dwAlphaDestConst;
        LPDIRECTDRAWSURFACE lpDDSAlphaDest;
    };
    DWORD dwAlphaSrcConstBitDepth;
    union {
        DWORD dwAlphaSrcConst;
        LPDIRECTDRAWSURFACE lpDDSAlphaSrc;
    };
    union {
        DWORD dwFillColor;   // in the surface's own format
        LPDIRECTDRAWSURFACE lpDDSPattern;
    };
    DDCOLORKEY ddckDestColorkey;
    DDCOLORKEY ddckSrcColorkey;
};
using LPDDBLTFX = DDBLTFX*;

// What the device offers. "SV", "VS", "SS": blits from system to video memory, back, and within system memory.
struct DDCAPS {
    DWORD dwSize;
    DWORD dwCaps;
    DWORD dwCaps2;
    DWORD dwCKeyCaps;
    DWORD dwFXCaps;
    DWORD dwFXAlphaCaps;
    DWORD dwPalCaps;
    DWORD dwSVCaps;
    DWORD dwAlphaBltConstBitDepths;
    DWORD dwAlphaBltPixelBitDepths;
    DWORD dwAlphaBltSurfaceBitDepths;
    DWORD dwAlphaOverlayConstBitDepths;
    DWORD dwAlphaOverlayPixelBitDepths;
    DWORD dwAlphaOverlaySurfaceBitDepths;
    DWORD dwZBufferBitDepths;
    DWORD dwVidMemTotal;
    DWORD dwVidMemFree;
    DWORD dwMaxVisibleOverlays;
    DWORD dwCurrVisibleOverlays;
    DWORD dwNumFourCCCodes;
    DWORD dwAlignBoundarySrc;
    DWORD dwAlignSizeSrc;
    DWORD dwAlignBoundaryDest;
    DWORD dwAlignSizeDest;
    DWORD dwAlignStrideAlign;
    DWORD dwRops[DD_ROP_SPACE];
    DDSCAPS ddsOldCaps;
    DWORD dwMinOverlayStretch;
    DWORD dwMaxOverlayStretch;
    DWORD dwMinLiveVideoStretch;
    DWORD dwMaxLiveVideoStretch;
    DWORD dwMinHwCodecStretch;
    DWORD dwMaxHwCodecStretch;
    DWORD dwReserved1;
    DWORD dwReserved2;
    DWORD dwReserved3;
    DWORD dwSVBCaps;
    DWORD dwSVBCKeyCaps;
    DWORD dwSVBFXCaps;
    DWORD dwSVBRops[DD_ROP_SPACE];
    DWORD dwVSBCaps;
    DWORD dwVSBCKeyCaps;
    DWORD dwVSBFXCaps;
    DWORD dwVSBRops[DD_ROP_SPACE];
    DWORD dwSSBCaps;
    DWORD dwSSBCKeyCaps;
    DWORD dwSSBFXCaps;
    DWORD dwSSBRops[DD_ROP_SPACE];
    DWORD dwMaxVideoPorts;
    DWORD dwCurrVideoPorts;
    DWORD dwSVBCaps2;
    DWORD dwNLVBCaps;
    DWORD dwNLVBCaps2;
    DWORD dwNLVBCKeyCaps;
    DWORD dwNLVBFXCaps;
    DWORD dwNLVBRops[DD_ROP_SPACE];
    DDSCAPS2 ddsCaps;
};
using LPDDCAPS = DDCAPS*;

static_assert(sizeof(DDCAPS) == 380);
static_assert(sizeof(DDPIXELFORMAT) == 32 && sizeof(DDSCAPS) == 4);
static_assert(sizeof(DDSURFACEDESC) == (sizeof(void*) == 8 ? 120 : 108));
static_assert(sizeof(DDBLTFX) == (sizeof(void*) == 8 ? 128 : 100));

struct DDBLTBATCH;
struct DDOVERLAYFX;
using LPDDBLTBATCH = DDBLTBATCH*;
using LPDDOVERLAYFX = DDOVERLAYFX*;

using LPDDENUMMODESCALLBACK = HRESULT(CALLBACK*)(LPDDSURFACEDESC, LPVOID);
using LPDDENUMSURFACESCALLBACK = HRESULT(CALLBACK*)(LPDIRECTDRAWSURFACE, LPDDSURFACEDESC, LPVOID);

struct IDirectDrawClipper : IUnknown {
    virtual HRESULT GetClipList(LPRECT within, LPRGNDATA list, LPDWORD bytes) = 0;
    virtual HRESULT GetHWnd(HWND* window) = 0;
    virtual HRESULT Initialize(LPDIRECTDRAW, DWORD) = 0;
    virtual HRESULT IsClipListChanged(BOOL* isChanged) = 0;
    virtual HRESULT SetClipList(LPRGNDATA list, DWORD flags) = 0;   // copied; null: none any more
    virtual HRESULT SetHWnd(DWORD flags, HWND window) = 0;
};

struct IDirectDrawPalette : IUnknown {
    virtual HRESULT GetCaps(LPDWORD caps) = 0;
    virtual HRESULT GetEntries(DWORD flags, DWORD first, DWORD count, LPPALETTEENTRY entries) = 0;
    virtual HRESULT Initialize(LPDIRECTDRAW, DWORD, LPPALETTEENTRY) = 0;
    virtual HRESULT SetEntries(DWORD flags, DWORD first, DWORD count, LPPALETTEENTRY entries) = 0;
};

struct IDirectDraw : IUnknown {
    virtual HRESULT Compact() = 0;
    virtual HRESULT CreateClipper(DWORD flags, LPDIRECTDRAWCLIPPER* clipper, IUnknown* outer) = 0;
    virtual HRESULT CreatePalette(DWORD flags, LPPALETTEENTRY entries, LPDIRECTDRAWPALETTE* palette,
                                  IUnknown* outer) = 0;
    virtual HRESULT CreateSurface(LPDDSURFACEDESC description, LPDIRECTDRAWSURFACE* surface, IUnknown* outer) = 0;
    virtual HRESULT DuplicateSurface(LPDIRECTDRAWSURFACE, LPDIRECTDRAWSURFACE*) = 0;
    virtual HRESULT EnumDisplayModes(DWORD flags, LPDDSURFACEDESC filter, LPVOID context,
                                     LPDDENUMMODESCALLBACK callback) = 0;
    virtual HRESULT EnumSurfaces(DWORD, LPDDSURFACEDESC, LPVOID, LPDDENUMSURFACESCALLBACK) = 0;
    virtual HRESULT FlipToGDISurface() = 0;
    virtual HRESULT GetCaps(LPDDCAPS driver, LPDDCAPS emulation) = 0;
    virtual HRESULT GetDisplayMode(LPDDSURFACEDESC description) = 0;
    virtual HRESULT GetFourCCCodes(LPDWORD, LPDWORD) = 0;
    virtual HRESULT GetGDISurface(LPDIRECTDRAWSURFACE*) = 0;
    virtual HRESULT GetMonitorFrequency(LPDWORD frequency) = 0;
    virtual HRESULT GetScanLine(LPDWORD) = 0;
    virtual HRESULT GetVerticalBlankStatus(LPBOOL) = 0;
    virtual HRESULT Initialize(GUID* driver) = 0;
    virtual HRESULT RestoreDisplayMode() = 0;
    virtual HRESULT SetCooperativeLevel(HWND window, DWORD flags) = 0;
    virtual HRESULT SetDisplayMode(DWORD width, DWORD height, DWORD bitsPerPixel) = 0;
    virtual HRESULT WaitForVerticalBlank(DWORD flags, HANDLE event) = 0;
};

struct IDirectDraw2 : IUnknown {
    virtual HRESULT Compact() = 0;
    virtual HRESULT CreateClipper(DWORD flags, LPDIRECTDRAWCLIPPER* clipper, IUnknown* outer) = 0;
    virtual HRESULT CreatePalette(DWORD flags, LPPALETTEENTRY entries, LPDIRECTDRAWPALETTE* palette,
                                  IUnknown* outer) = 0;
    virtual HRESULT CreateSurface(LPDDSURFACEDESC description, LPDIRECTDRAWSURFACE* surface, IUnknown* outer) = 0;
    virtual HRESULT DuplicateSurface(LPDIRECTDRAWSURFACE, LPDIRECTDRAWSURFACE*) = 0;
    // Modes that differ in their refresh rate alone come once, unless the flags say otherwise.
    virtual HRESULT EnumDisplayModes(DWORD flags, LPDDSURFACEDESC filter, LPVOID context,
                                     LPDDENUMMODESCALLBACK callback) = 0;
    virtual HRESULT EnumSurfaces(DWORD, LPDDSURFACEDESC, LPVOID, LPDDENUMSURFACESCALLBACK) = 0;
    virtual HRESULT FlipToGDISurface() = 0;
    virtual HRESULT GetCaps(LPDDCAPS driver, LPDDCAPS emulation) = 0;
    virtual HRESULT GetDisplayMode(LPDDSURFACEDESC description) = 0;
    virtual HRESULT GetFourCCCodes(LPDWORD, LPDWORD) = 0;
    virtual HRESULT GetGDISurface(LPDIRECTDRAWSURFACE*) = 0;
    virtual HRESULT GetMonitorFrequency(LPDWORD frequency) = 0;
    virtual HRESULT GetScanLine(LPDWORD) = 0;
    virtual HRESULT GetVerticalBlankStatus(LPBOOL) = 0;
    virtual HRESULT Initialize(GUID* driver) = 0;
    virtual HRESULT RestoreDisplayMode() = 0;
    virtual HRESULT SetCooperativeLevel(HWND window, DWORD flags) = 0;
    // Needs the exclusive level. All surfaces are lost.
    virtual HRESULT SetDisplayMode(DWORD width, DWORD height, DWORD bitsPerPixel, DWORD refreshHz, DWORD flags) = 0;
    virtual HRESULT WaitForVerticalBlank(DWORD flags, HANDLE event) = 0;
    virtual HRESULT GetAvailableVidMem(LPDDSCAPS, LPDWORD, LPDWORD) = 0;
};

struct IDirectDrawSurface : IUnknown {
    virtual HRESULT AddAttachedSurface(LPDIRECTDRAWSURFACE) = 0;
    virtual HRESULT AddOverlayDirtyRect(LPRECT) = 0;
    virtual HRESULT Blt(LPRECT target, LPDIRECTDRAWSURFACE source, LPRECT part, DWORD flags, LPDDBLTFX effects) = 0;
    virtual HRESULT BltBatch(LPDDBLTBATCH, DWORD, DWORD) = 0;
    virtual HRESULT BltFast(DWORD x, DWORD y, LPDIRECTDRAWSURFACE source, LPRECT part, DWORD flags) = 0;
    virtual HRESULT DeleteAttachedSurface(DWORD, LPDIRECTDRAWSURFACE) = 0;
    virtual HRESULT EnumAttachedSurfaces(LPVOID, LPDDENUMSURFACESCALLBACK) = 0;
    virtual HRESULT EnumOverlayZOrders(DWORD, LPVOID, LPDDENUMSURFACESCALLBACK) = 0;
    virtual HRESULT Flip(LPDIRECTDRAWSURFACE, DWORD) = 0;
    virtual HRESULT GetAttachedSurface(LPDDSCAPS, LPDIRECTDRAWSURFACE*) = 0;
    virtual HRESULT GetBltStatus(DWORD flags) = 0;
    virtual HRESULT GetCaps(LPDDSCAPS caps) = 0;
    virtual HRESULT GetClipper(LPDIRECTDRAWCLIPPER* clipper) = 0;
    virtual HRESULT GetColorKey(DWORD which, LPDDCOLORKEY key) = 0;
    virtual HRESULT GetDC(HDC* context) = 0;
    virtual HRESULT GetFlipStatus(DWORD flags) = 0;
    virtual HRESULT GetOverlayPosition(LPLONG, LPLONG) = 0;
    virtual HRESULT GetPalette(LPDIRECTDRAWPALETTE* palette) = 0;
    virtual HRESULT GetPixelFormat(LPDDPIXELFORMAT format) = 0;
    virtual HRESULT GetSurfaceDesc(LPDDSURFACEDESC description) = 0;
    virtual HRESULT Initialize(LPDIRECTDRAW, LPDDSURFACEDESC) = 0;
    virtual HRESULT IsLost() = 0;
    virtual HRESULT Lock(LPRECT area, LPDDSURFACEDESC description, DWORD flags, HANDLE event) = 0;
    virtual HRESULT ReleaseDC(HDC context) = 0;
    virtual HRESULT Restore() = 0;
    virtual HRESULT SetClipper(LPDIRECTDRAWCLIPPER clipper) = 0;
    virtual HRESULT SetColorKey(DWORD which, LPDDCOLORKEY key) = 0;
    virtual HRESULT SetOverlayPosition(LONG, LONG) = 0;
    virtual HRESULT SetPalette(LPDIRECTDRAWPALETTE palette) = 0;
    virtual HRESULT Unlock(LPVOID address) = 0;
    virtual HRESULT UpdateOverlay(LPRECT, LPDIRECTDRAWSURFACE, LPRECT, DWORD, LPDDOVERLAYFX) = 0;
    virtual HRESULT UpdateOverlayDisplay(DWORD) = 0;
    virtual HRESULT UpdateOverlayZOrder(DWORD, LPDIRECTDRAWSURFACE) = 0;
};

struct IDirectDrawSurface2 : IUnknown {
    virtual HRESULT AddAttachedSurface(LPDIRECTDRAWSURFACE2) = 0;
    virtual HRESULT AddOverlayDirtyRect(LPRECT) = 0;
    // Null rectangles: all of it. Sizes that differ stretch by picking pixels; formats are converted. Without a clipper
    // the target must lie inside the surface.
    virtual HRESULT Blt(LPRECT target, LPDIRECTDRAWSURFACE2 source, LPRECT part, DWORD flags, LPDDBLTFX effects) = 0;
    virtual HRESULT BltBatch(LPDDBLTBATCH, DWORD, DWORD) = 0;
    virtual HRESULT BltFast(DWORD x, DWORD y, LPDIRECTDRAWSURFACE2 source, LPRECT part, DWORD flags) = 0;
    virtual HRESULT DeleteAttachedSurface(DWORD, LPDIRECTDRAWSURFACE2) = 0;
    virtual HRESULT EnumAttachedSurfaces(LPVOID, LPDDENUMSURFACESCALLBACK) = 0;
    virtual HRESULT EnumOverlayZOrders(DWORD, LPVOID, LPDDENUMSURFACESCALLBACK) = 0;
    virtual HRESULT Flip(LPDIRECTDRAWSURFACE2, DWORD) = 0;
    virtual HRESULT GetAttachedSurface(LPDDSCAPS, LPDIRECTDRAWSURFACE2*) = 0;
    virtual HRESULT GetBltStatus(DWORD flags) = 0;
    virtual HRESULT GetCaps(LPDDSCAPS caps) = 0;
    virtual HRESULT GetClipper(LPDIRECTDRAWCLIPPER* clipper) = 0;
    virtual HRESULT GetColorKey(DWORD which, LPDDCOLORKEY key) = 0;
    virtual HRESULT GetDC(HDC* context) = 0;   // the surface is busy until it comes back
    virtual HRESULT GetFlipStatus(DWORD flags) = 0;
    virtual HRESULT GetOverlayPosition(LPLONG, LPLONG) = 0;
    virtual HRESULT GetPalette(LPDIRECTDRAWPALETTE* palette) = 0;
    virtual HRESULT GetPixelFormat(LPDDPIXELFORMAT format) = 0;
    virtual HRESULT GetSurfaceDesc(LPDDSURFACEDESC description) = 0;
    virtual HRESULT Initialize(LPDIRECTDRAW, LPDDSURFACEDESC) = 0;
    virtual HRESULT IsLost() = 0;
    // One lock at a time: another thread waits with DDLOCK_WAIT, the same thread is refused.
    virtual HRESULT Lock(LPRECT area, LPDDSURFACEDESC description, DWORD flags, HANDLE event) = 0;
    virtual HRESULT ReleaseDC(HDC context) = 0;
    virtual HRESULT Restore() = 0;   // the contents stay lost
    virtual HRESULT SetClipper(LPDIRECTDRAWCLIPPER clipper) = 0;
    virtual HRESULT SetColorKey(DWORD which, LPDDCOLORKEY key) = 0;
    virtual HRESULT SetOverlayPosition(LONG, LONG) = 0;
    virtual HRESULT SetPalette(LPDIRECTDRAWPALETTE palette) = 0;
    virtual HRESULT Unlock(LPVOID address) = 0;
    virtual HRESULT UpdateOverlay(LPRECT, LPDIRECTDRAWSURFACE2, LPRECT, DWORD, LPDDOVERLAYFX) = 0;
    virtual HRESULT UpdateOverlayDisplay(DWORD) = 0;
    virtual HRESULT UpdateOverlayZOrder(DWORD, LPDIRECTDRAWSURFACE2) = 0;
    virtual HRESULT GetDDInterface(LPVOID* directDraw) = 0;
    virtual HRESULT PageLock(DWORD) = 0;
    virtual HRESULT PageUnlock(DWORD) = 0;
};
