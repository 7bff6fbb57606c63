#include "rastel/platform/portable/ddraw/direct_draw.h"

#include <new>
#include <set>
#include <tuple>

#include "rastel/platform/portable/ddraw/clipper.h"
#include "rastel/platform/portable/ddraw/palette.h"
#include "rastel/platform/portable/ddraw/surface.h"
#include "rastel/platform/portable/memory_display.h"
#include "rastel/platform/portable/screen/display_device.h"

namespace rastel::platform {

namespace {

DDSURFACEDESC DescribedMode(const DisplayMode& mode, const PixelFormat& format) {
    DDSURFACEDESC description{};
    description.dwSize = sizeof(description);
    description.dwFlags = DDSD_HEIGHT | DDSD_WIDTH | DDSD_PITCH | DDSD_PIXELFORMAT | DDSD_REFRESHRATE;
    description.dwHeight = static_cast<DWORD>(mode.height);
    description.dwWidth = static_cast<DWORD>(mode.width);
    description.lPitch = static_cast<LONG>((std::int64_t{mode.width} * format.bitsPerPixel + 31) / 32 * 4);
    description.dwRefreshRate = static_cast<DWORD>(mode.refreshHz);
    description.ddpfPixelFormat = DescribedFormat(format, mode.bitsPerPixel);
    return description;
}

// All pixels are memory: what Blt does, it does from and to the screen and between any surfaces.
DDCAPS OfferedCaps() {
    constexpr DWORD blits = DDCAPS_BLT | DDCAPS_BLTSTRETCH | DDCAPS_BLTCOLORFILL | DDCAPS_COLORKEY;
    DDCAPS caps{};
    caps.dwSize = sizeof(caps);
    caps.dwCaps = blits | DDCAPS_GDI | DDCAPS_CANCLIP | DDCAPS_CANCLIPSTRETCHED | DDCAPS_CANBLTSYSMEM;
    caps.dwCKeyCaps = DDCKEYCAPS_SRCBLT;
    caps.ddsOldCaps.dwCaps = caps.ddsCaps.dwCaps =
        DDSCAPS_OFFSCREENPLAIN | DDSCAPS_PRIMARYSURFACE | DDSCAPS_SYSTEMMEMORY;
    caps.dwSVBCaps = caps.dwVSBCaps = caps.dwSSBCaps = blits;
    caps.dwSVBCKeyCaps = caps.dwVSBCKeyCaps = caps.dwSSBCKeyCaps = caps.dwCKeyCaps;
    constexpr DWORD copy = SRCCOPY >> 16;
    for (DWORD* const rops : {caps.dwRops, caps.dwSVBRops, caps.dwVSBRops, caps.dwSSBRops}) {
        rops[copy / 32] = 1u << copy % 32;
    }
    return caps;
}

bool IsWanted(const DDSURFACEDESC& mode, const DDSURFACEDESC* filter) {
    if (!filter) {
        return true;
    }
    const DWORD flags = filter->dwFlags;
    return (!(flags & DDSD_WIDTH) || filter->dwWidth == mode.dwWidth) &&
           (!(flags & DDSD_HEIGHT) || filter->dwHeight == mode.dwHeight) &&
           (!(flags & DDSD_REFRESHRATE) || filter->dwRefreshRate == mode.dwRefreshRate) &&
           (!(flags & DDSD_PIXELFORMAT) || filter->ddpfPixelFormat.dwRGBBitCount == mode.ddpfPixelFormat.dwRGBBitCount);
}

}   // namespace

DisplayPixels PixelsOfDisplay(const DisplayDevice& display) {
    const PixelFormat format = display.Format(), usual = FormatOfDepth(32);
    const bool isStrange =
        format.bitsPerPixel == 8 ? !format.IsIndexed() : format.bitsPerPixel == 32 && format != usual;
    return isStrange ? DisplayPixels{usual, 32, false} : DisplayPixels{format, display.Mode().bitsPerPixel, true};
}

DDPIXELFORMAT DescribedFormat(const PixelFormat& format, int told) {
    DDPIXELFORMAT described{};
    described.dwSize = sizeof(described);
    described.dwFlags = DDPF_RGB | (format.IsIndexed() ? DDPF_PALETTEINDEXED8 : 0u);
    described.dwRGBBitCount = static_cast<DWORD>(told);
    described.dwRBitMask = format.redMask;
    described.dwGBitMask = format.greenMask;
    described.dwBBitMask = format.blueMask;
    return described;
}

HRESULT DirectDraw::Make(REFIID wanted, void** object) {
    auto* const made = new (std::nothrow) DirectDraw;
    if (!made) {
        return E_OUTOFMEMORY;
    }
    const HRESULT result = made->QueryInterface(wanted, object);
    made->Release();
    return result;
}

DirectDraw::~DirectDraw() {
    BringBackMode();
}

HRESULT DirectDraw::QueryInterface(REFIID wanted, void** object) {
    if (!object) {
        return E_POINTER;
    }
    if (Fails("QueryInterface", object)) {
        return E_FAIL;
    }
    if (wanted == IID_IDirectDraw2) {
        return HandOut(static_cast<IDirectDraw2*>(this), object);
    }
    return HandOut(wanted == IID_IUnknown || wanted == IID_IDirectDraw ? static_cast<IDirectDraw*>(this) : nullptr,
                   object);
}

ULONG DirectDraw::Release() {
    const ULONG left = references_.Take();
    if (left == 0) {
        delete this;
    }
    return left;
}

HRESULT DirectDraw::CreateClipper(DWORD, LPDIRECTDRAWCLIPPER* clipper, IUnknown* outer) {
    if (!clipper) {
        return DDERR_INVALIDPARAMS;
    }
    if (Fails("CreateClipper", clipper)) {
        return E_FAIL;
    }
    if (outer) {
        return CLASS_E_NOAGGREGATION;
    }
    *clipper = new (std::nothrow) Clipper;
    return *clipper ? DD_OK : DDERR_OUTOFMEMORY;
}

HRESULT DirectDraw::CreatePalette(DWORD flags, LPPALETTEENTRY entries, LPDIRECTDRAWPALETTE* palette, IUnknown* outer) {
    if (!palette) {
        return DDERR_INVALIDPARAMS;
    }
    if (Fails("CreatePalette", palette)) {
        return E_FAIL;
    }
    if (outer) {
        return CLASS_E_NOAGGREGATION;
    }
    if (!entries || !(flags & DDPCAPS_8BIT)) {
        return DDERR_INVALIDPARAMS;
    }
    *palette = new (std::nothrow) DevicePalette(entries);
    return *palette ? DD_OK : DDERR_OUTOFMEMORY;
}

HRESULT DirectDraw::CreateSurface(LPDDSURFACEDESC description, LPDIRECTDRAWSURFACE* surface, IUnknown* outer) {
    if (!surface) {
        return DDERR_INVALIDPARAMS;
    }
    if (Fails("CreateSurface", surface)) {
        return E_FAIL;
    }
    if (outer) {
        return CLASS_E_NOAGGREGATION;
    }
    if (!description || description->dwSize != sizeof(DDSURFACEDESC) || !(description->dwFlags & DDSD_CAPS)) {
        return DDERR_INVALIDPARAMS;
    }
    return DeviceSurface::Make(*this, *description, surface);
}

HRESULT DirectDraw::DuplicateSurface(LPDIRECTDRAWSURFACE, LPDIRECTDRAWSURFACE* surface) {
    if (surface) {
        *surface = nullptr;
    }
    return DDERR_UNSUPPORTED;
}

HRESULT DirectDraw::EnumDisplayModes(DWORD flags, LPDDSURFACEDESC filter, LPVOID context,
                                     LPDDENUMMODESCALLBACK callback) try {
    if (ShouldFail("EnumDisplayModes")) {
        return E_FAIL;
    }
    if (!callback || (filter && filter->dwSize != sizeof(DDSURFACEDESC))) {
        return DDERR_INVALIDPARAMS;
    }
    const auto display = Display();
    const int now = display->Mode().bitsPerPixel;
    std::set<std::tuple<int, int, int>> told;
    for (DisplayMode mode : display->Modes()) {
        const bool isNew = told.emplace(mode.width, mode.height, mode.bitsPerPixel).second;
        if (!(flags & DDEDM_REFRESHRATES)) {
            mode.refreshHz = 0;
            if (!isNew) {
                continue;
            }
        }
        // The display's own masks are known for the depth that it has now.
        DDSURFACEDESC description =
            DescribedMode(mode, mode.bitsPerPixel == now ? display->Format() : FormatOfDepth(mode.bitsPerPixel));
        if (IsWanted(description, filter) && callback(&description, context) == DDENUMRET_CANCEL) {
            break;
        }
    }
    return DD_OK;
} catch (const std::bad_alloc&) {
    return DDERR_OUTOFMEMORY;
}

HRESULT DirectDraw::GetDisplayMode(LPDDSURFACEDESC description) {
    if (ShouldFail("GetDisplayMode")) {
        return E_FAIL;
    }
    if (!description || description->dwSize != sizeof(DDSURFACEDESC)) {
        return DDERR_INVALIDPARAMS;
    }
    const auto display = Display();
    const DisplayPixels pixels = PixelsOfDisplay(*display);
    DisplayMode mode = display->Mode();
    mode.bitsPerPixel = pixels.told;
    *description = DescribedMode(mode, pixels.format);
    return DD_OK;
}

HRESULT DirectDraw::GetCaps(LPDDCAPS driver, LPDDCAPS emulation) {
    if (ShouldFail("GetCaps")) {
        return E_FAIL;
    }
    if (!driver && !emulation) {
        return DDERR_INVALIDPARAMS;
    }
    for (DDCAPS* const caps : {driver, emulation}) {
        if (caps && caps->dwSize != sizeof(DDCAPS)) {
            return DDERR_INVALIDPARAMS;
        }
    }
    for (DDCAPS* const caps : {driver, emulation}) {
        if (caps) {
            *caps = OfferedCaps();
        }
    }
    return DD_OK;
}

HRESULT DirectDraw::GetFourCCCodes(LPDWORD count, LPDWORD) {
    if (count) {
        *count = 0;
    }
    return ShouldFail("GetFourCCCodes") ? E_FAIL : DD_OK;
}

HRESULT DirectDraw::GetGDISurface(LPDIRECTDRAWSURFACE* surface) {
    if (surface) {
        *surface = nullptr;
    }
    return DDERR_NOTFOUND;
}

HRESULT DirectDraw::GetMonitorFrequency(LPDWORD frequency) {
    if (ShouldFail("GetMonitorFrequency")) {
        return E_FAIL;
    }
    if (!frequency) {
        return DDERR_INVALIDPARAMS;
    }
    *frequency = static_cast<DWORD>(Display()->Mode().refreshHz);
    return DD_OK;
}

HRESULT DirectDraw::Initialize(GUID* driver) {
    if (ShouldFail("Initialize")) {
        return E_FAIL;
    }
    const std::lock_guard lock(mutex_);
    if (isInitialized_) {
        return DDERR_ALREADYINITIALIZED;
    }
    if (driver) {
        return DDERR_INVALIDPARAMS;   // there is no other driver than the display's
    }
    isInitialized_ = true;
    return DD_OK;
}

bool DirectDraw::BringBackMode() {
    if (!hasOwnMode_) {
        return true;
    }
    if (!Display()->RestoreMode()) {
        return false;
    }
    hasOwnMode_ = false;
    LoseDeviceSurfaces();
    return true;
}

HRESULT DirectDraw::RestoreDisplayMode() {
    if (ShouldFail("RestoreDisplayMode")) {
        return E_FAIL;
    }
    const std::unique_lock lock(mutex_, std::try_to_lock);
    if (!lock) {
        return DDERR_LOCKEDSURFACES;   // another thread changes the mode, and may wait for this one's lock on the
                                       // screen
    }
    if (!isExclusive_) {
        return DDERR_NOEXCLUSIVEMODE;
    }
    return BringBackMode() ? DD_OK : DDERR_LOCKEDSURFACES;
}

HRESULT DirectDraw::SetCooperativeLevel(HWND, DWORD flags) {
    if (ShouldFail("SetCooperativeLevel")) {
        return E_FAIL;
    }
    const bool isExclusive = (flags & DDSCL_EXCLUSIVE) != 0;
    if (isExclusive == ((flags & DDSCL_NORMAL) != 0) || (isExclusive && !(flags & DDSCL_FULLSCREEN))) {
        return DDERR_INVALIDPARAMS;
    }
    const std::unique_lock lock(mutex_, std::try_to_lock);
    if (!lock) {
        return DDERR_LOCKEDSURFACES;   // another thread changes the mode, and may wait for this one's lock on the
                                       // screen
    }
    if (!isExclusive && !BringBackMode()) {
        return DDERR_LOCKEDSURFACES;
    }
    isExclusive_ = isExclusive;
    return DD_OK;
}

HRESULT DirectDraw::SetDisplayMode(DWORD width, DWORD height, DWORD bitsPerPixel) {
    return SetDisplayMode(width, height, bitsPerPixel, 0, 0);
}

HRESULT DirectDraw::SetDisplayMode(DWORD width, DWORD height, DWORD bitsPerPixel, DWORD refreshHz, DWORD) {
    if (ShouldFail("SetDisplayMode")) {
        return E_FAIL;
    }
    const std::unique_lock lock(mutex_, std::try_to_lock);
    if (!lock) {
        return DDERR_LOCKEDSURFACES;   // another thread changes the mode, and may wait for this one's lock on the
                                       // screen
    }
    if (!isExclusive_) {
        return DDERR_NOEXCLUSIVEMODE;
    }
    constexpr DWORD most = 1 << 15;
    if (width > most || height > most || bitsPerPixel > 32 || refreshHz > most ||
        !Display()->SetMode({static_cast<int>(width), static_cast<int>(height), static_cast<int>(bitsPerPixel),
                             static_cast<int>(refreshHz)})) {
        return DDERR_INVALIDMODE;
    }
    hasOwnMode_ = true;
    LoseDeviceSurfaces();
    return DD_OK;
}

HRESULT DirectDraw::WaitForVerticalBlank(DWORD flags, HANDLE event) {
    if (ShouldFail("WaitForVerticalBlank")) {
        return E_FAIL;
    }
    if (event || (flags != DDWAITVB_BLOCKBEGIN && flags != DDWAITVB_BLOCKEND)) {
        return DDERR_UNSUPPORTED;
    }
    Display()->WaitForBlank();
    return DD_OK;
}

}   // namespace rastel::platform
