// The DirectDraw object: levels of cooperation, modes, and what surfaces, clippers and palettes are made by.
#pragma once

#include <mutex>

#include "rastel/platform/portable/com_object.h"
#include "rastel/platform/portable/ddraw.h"

namespace rastel::platform {

class DirectDraw final : public IDirectDraw, public IDirectDraw2 {
public:
    static HRESULT Make(REFIID wanted, void** object);

    HRESULT QueryInterface(REFIID wanted, void** object) override;
    ULONG AddRef() override { return references_.Add(); }
    ULONG Release() override;

    HRESULT Compact() override { return ShouldFail("Compact") ? E_FAIL : DD_OK; }
    HRESULT CreateClipper(DWORD flags, LPDIRECTDRAWCLIPPER* clipper, IUnknown* outer) override;
    HRESULT CreatePalette(DWORD flags, LPPALETTEENTRY entries, LPDIRECTDRAWPALETTE* palette, IUnknown* outer) override;
    HRESULT CreateSurface(LPDDSURFACEDESC description, LPDIRECTDRAWSURFACE* surface, IUnknown* outer) override;
    HRESULT DuplicateSurface(LPDIRECTDRAWSURFACE, LPDIRECTDRAWSURFACE* surface) override;
    HRESULT EnumDisplayModes(DWORD flags, LPDDSURFACEDESC filter, LPVOID context,
                             LPDDENUMMODESCALLBACK callback) override;
    HRESULT EnumSurfaces(DWORD, LPDDSURFACEDESC, LPVOID, LPDDENUMSURFACESCALLBACK) override {
        return DDERR_UNSUPPORTED;
    }
    HRESULT FlipToGDISurface() override { return DDERR_NOTFOUND; }
    HRESULT GetCaps(LPDDCAPS driver, LPDDCAPS emulation) override;
    HRESULT GetDisplayMode(LPDDSURFACEDESC description) override;
    HRESULT GetFourCCCodes(LPDWORD count, LPDWORD) override;
    HRESULT GetGDISurface(LPDIRECTDRAWSURFACE* surface) override;
    HRESULT GetMonitorFrequency(LPDWORD frequency) override;
    HRESULT GetScanLine(LPDWORD) override { return DDERR_UNSUPPORTED; }
    HRESULT GetVerticalBlankStatus(LPBOOL) override { return DDERR_UNSUPPORTED; }
    HRESULT Initialize(GUID* driver) override;
    HRESULT RestoreDisplayMode() override;
    HRESULT SetCooperativeLevel(HWND window, DWORD flags) override;
    HRESULT SetDisplayMode(DWORD width, DWORD height, DWORD bitsPerPixel) override;
    HRESULT SetDisplayMode(DWORD width, DWORD height, DWORD bitsPerPixel, DWORD refreshHz, DWORD flags) override;
    HRESULT WaitForVerticalBlank(DWORD flags, HANDLE event) override;
    HRESULT GetAvailableVidMem(LPDDSCAPS, LPDWORD, LPDWORD) override { return DDERR_UNSUPPORTED; }

private:
    ~DirectDraw();
    bool BringBackMode();   // what was there before the first change; false: somebody holds the screen

    ReferenceCount references_;
    std::mutex mutex_;
    bool isInitialized_ = false;
    bool isExclusive_ = false;
    bool hasOwnMode_ = false;
};

// The pixels of the display as hosts are to see them. Channels of 10 bits, and 8 bits without a palette, are known to
// no host: such a display calls itself one of 32 bits, and what is drawn on it is converted.
struct DisplayPixels {
    PixelFormat format;
    int told;     // the depth that it calls itself
    bool isOwn;   // the format is the one that it has
};
DisplayPixels PixelsOfDisplay(const DisplayDevice& display);

// How DirectDraw describes the pixels of a format; `told` is the depth that the display calls itself.
DDPIXELFORMAT DescribedFormat(const PixelFormat& format, int told);

}   // namespace rastel::platform
