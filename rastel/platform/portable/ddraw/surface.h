// A DirectDraw surface: the screen itself, or pixels in memory that GDI's rasters draw on.
//
// A lock, a context that is out and a blit exclude each other. What is attached may change at any time: a blit goes on
// with what it began with.
#pragma once

#include <atomic>
#include <memory>
#include <mutex>
#include <optional>

#include "rastel/platform/com_reference.h"
#include "rastel/platform/portable/com_object.h"
#include "rastel/platform/portable/ddraw.h"
#include "rastel/platform/portable/ddraw/clipper.h"
#include "rastel/platform/portable/ddraw/direct_draw.h"
#include "rastel/platform/portable/ddraw/palette.h"
#include "rastel/platform/portable/ddraw/surface_turn.h"
#include "rastel/platform/portable/gdi/device_context.h"

namespace rastel::platform {

class DeviceSurface final : public IDirectDrawSurface, public IDirectDrawSurface2 {
public:
    static HRESULT Make(DirectDraw& maker, const DDSURFACEDESC& description, LPDIRECTDRAWSURFACE* surface);

    HRESULT QueryInterface(REFIID wanted, void** object) override;
    ULONG AddRef() override { return references_.Add(); }
    ULONG Release() override;

    HRESULT Blt(LPRECT target, LPDIRECTDRAWSURFACE source, LPRECT part, DWORD flags, LPDDBLTFX effects) override;
    HRESULT Blt(LPRECT target, LPDIRECTDRAWSURFACE2 source, LPRECT part, DWORD flags, LPDDBLTFX effects) override;
    HRESULT BltFast(DWORD x, DWORD y, LPDIRECTDRAWSURFACE source, LPRECT part, DWORD flags) override;
    HRESULT BltFast(DWORD x, DWORD y, LPDIRECTDRAWSURFACE2 source, LPRECT part, DWORD flags) override;
    HRESULT GetBltStatus(DWORD) override { return ShouldFail("GetBltStatus") ? E_FAIL : DD_OK; }
    HRESULT GetCaps(LPDDSCAPS caps) override;
    HRESULT GetClipper(LPDIRECTDRAWCLIPPER* clipper) override;
    HRESULT GetColorKey(DWORD which, LPDDCOLORKEY key) override;
    HRESULT GetDC(HDC* context) override;
    HRESULT GetFlipStatus(DWORD) override { return ShouldFail("GetFlipStatus") ? E_FAIL : DD_OK; }
    HRESULT GetPalette(LPDIRECTDRAWPALETTE* palette) override;
    HRESULT GetPixelFormat(LPDDPIXELFORMAT format) override;
    HRESULT GetSurfaceDesc(LPDDSURFACEDESC description) override;
    HRESULT Initialize(LPDIRECTDRAW, LPDDSURFACEDESC) override { return DDERR_ALREADYINITIALIZED; }
    HRESULT IsLost() override;
    HRESULT Lock(LPRECT area, LPDDSURFACEDESC description, DWORD flags, HANDLE event) override;
    HRESULT ReleaseDC(HDC context) override;
    HRESULT Restore() override;
    HRESULT SetClipper(LPDIRECTDRAWCLIPPER clipper) override;
    HRESULT SetColorKey(DWORD which, LPDDCOLORKEY key) override;
    HRESULT SetPalette(LPDIRECTDRAWPALETTE palette) override;
    HRESULT Unlock(LPVOID address) override;
    HRESULT GetDDInterface(LPVOID* directDraw) override;

    // What no surface here has: attached and overlaid ones, and flipping.
    HRESULT AddAttachedSurface(LPDIRECTDRAWSURFACE) override { return DDERR_UNSUPPORTED; }
    HRESULT AddAttachedSurface(LPDIRECTDRAWSURFACE2) override { return DDERR_UNSUPPORTED; }
    HRESULT AddOverlayDirtyRect(LPRECT) override { return DDERR_UNSUPPORTED; }
    HRESULT BltBatch(LPDDBLTBATCH, DWORD, DWORD) override { return DDERR_UNSUPPORTED; }
    HRESULT DeleteAttachedSurface(DWORD, LPDIRECTDRAWSURFACE) override { return DDERR_UNSUPPORTED; }
    HRESULT DeleteAttachedSurface(DWORD, LPDIRECTDRAWSURFACE2) override { return DDERR_UNSUPPORTED; }
    HRESULT EnumAttachedSurfaces(LPVOID, LPDDENUMSURFACESCALLBACK) override {
        return ShouldFail("EnumAttachedSurfaces") ? E_FAIL : DD_OK;
    }
    HRESULT EnumOverlayZOrders(DWORD, LPVOID, LPDDENUMSURFACESCALLBACK) override { return DDERR_UNSUPPORTED; }
    HRESULT Flip(LPDIRECTDRAWSURFACE, DWORD) override { return DDERR_UNSUPPORTED; }
    HRESULT Flip(LPDIRECTDRAWSURFACE2, DWORD) override { return DDERR_UNSUPPORTED; }
    HRESULT GetAttachedSurface(LPDDSCAPS, LPDIRECTDRAWSURFACE* surface) override { return NoneAttached(surface); }
    HRESULT GetAttachedSurface(LPDDSCAPS, LPDIRECTDRAWSURFACE2* surface) override { return NoneAttached(surface); }
    HRESULT GetOverlayPosition(LPLONG, LPLONG) override { return DDERR_UNSUPPORTED; }
    HRESULT SetOverlayPosition(LONG, LONG) override { return DDERR_UNSUPPORTED; }
    HRESULT UpdateOverlay(LPRECT, LPDIRECTDRAWSURFACE, LPRECT, DWORD, LPDDOVERLAYFX) override {
        return DDERR_UNSUPPORTED;
    }
    HRESULT UpdateOverlay(LPRECT, LPDIRECTDRAWSURFACE2, LPRECT, DWORD, LPDDOVERLAYFX) override {
        return DDERR_UNSUPPORTED;
    }
    HRESULT UpdateOverlayDisplay(DWORD) override { return DDERR_UNSUPPORTED; }
    HRESULT UpdateOverlayZOrder(DWORD, LPDIRECTDRAWSURFACE) override { return DDERR_UNSUPPORTED; }
    HRESULT UpdateOverlayZOrder(DWORD, LPDIRECTDRAWSURFACE2) override { return DDERR_UNSUPPORTED; }
    HRESULT PageLock(DWORD) override { return ShouldFail("PageLock") ? E_FAIL : DD_OK; }
    HRESULT PageUnlock(DWORD) override { return ShouldFail("PageUnlock") ? E_FAIL : DD_OK; }

private:
    struct Landing;   // where a blit goes, with what limits it
    class Turns;      // of the surfaces that take part in a blit

    explicit DeviceSurface(DirectDraw& maker);
    ~DeviceSurface();

    template <class Surface>
    static HRESULT NoneAttached(Surface** surface) {
        if (surface) {
            *surface = nullptr;
        }
        return DDERR_NOTFOUND;
    }

    HRESULT TakeScreen(DWORD caps);
    HRESULT TakeMemory(const DDSURFACEDESC& description);
    RECT Whole() const { return {0, 0, width_, height_}; }
    bool HasLostMemory() const;
    void NoteDescription();
    void Describe(DDSURFACEDESC* description) const;
    HRESULT FirstPixel(const RECT& area, Access access, void** address, LONG* pitch);

    HRESULT Draw(const RECT* target, DeviceSurface* source, const RECT* part, DWORD flags, const DDBLTFX* effects);
    HRESULT Land(const RECT& target, const Clipper* clipper, Landing* landing) const;
    HRESULT Fill(const RECT& target, const Clipper* clipper, DWORD pixel);
    HRESULT Copy(const RECT& target, const Clipper* clipper, DeviceSurface& source, const RECT& part,
                 const DDCOLORKEY* key);
    ComReference<Clipper> HeldClipper() const;
    std::optional<DDCOLORKEY> SourceKey() const;
    HRESULT DrawFast(DWORD x, DWORD y, DeviceSurface* source, const RECT* part, DWORD flags);

    ReferenceCount references_;
    DirectDraw& maker_;   // held
    bool isScreen_ = false;
    bool hasDisplayFormat_ = false;   // of the mode it was made in
    DWORD caps_ = 0;
    int width_ = 0;
    int height_ = 0;
    int pitch_ = 0;
    PixelFormat format_;
    int toldBits_ = 32;
    DDSURFACEDESC described_{};              // made once: it is asked for at each lock
    bool isLockable_ = true;                 // not a screen whose pixels are others than it says
    std::shared_ptr<BitmapObject> bitmap_;   // null: the screen
    std::atomic<std::uint64_t> generation_;

    SurfaceTurn turn_;
    bool isLocked_ = false;                     // by whoever has the turn
    std::shared_ptr<DisplayDevice> accessed_;   // a locked screen

    mutable std::mutex attachments_;   // of what follows
    HDC context_ = nullptr;            // that is out
    ComReference<Clipper> clipper_;
    ComReference<DevicePalette> palette_;
    std::optional<DDCOLORKEY> key_;
    std::atomic<bool> hasKey_ = false;   // asked for at each lock, and mostly false
};

}   // namespace rastel::platform
