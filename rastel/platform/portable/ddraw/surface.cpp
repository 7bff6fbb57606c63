#include "rastel/platform/portable/ddraw/surface.h"

#include <cstring>
#include <new>

#include "rastel/platform/portable/screen/device_faults.h"
#include "rastel/platform/portable/screen/mode_list.h"

namespace rastel::platform {

namespace {

// False: not a format that the rasters know.
bool ReadFormat(const DDPIXELFORMAT& described, PixelFormat* format) {
    const DWORD bits = described.dwRGBBitCount;
    if (described.dwSize != sizeof(DDPIXELFORMAT) || !(described.dwFlags & (DDPF_RGB | DDPF_PALETTEINDEXED8))) {
        return false;
    }
    if (described.dwFlags & DDPF_PALETTEINDEXED8) {
        *format = FormatOfDepth(8);
        return bits == 8;
    }
    const bool isKnown = bits == 15 || bits == 16 || bits == 24 || bits == 32;
    *format = {bits == 15 ? 16 : static_cast<int>(bits), described.dwRBitMask, described.dwGBitMask,
               described.dwBBitMask};
    return isKnown && AreSensibleMasks(format->bitsPerPixel, format->redMask, format->greenMask, format->blueMask);
}

bool IsInside(const RECT& inner, const RECT& outer) {
    return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right &&
           inner.bottom <= outer.bottom && inner.left < inner.right && inner.top < inner.bottom;
}

struct Releaser {
    void operator()(DeviceSurface* surface) const { surface->Release(); }
};

}   // namespace

HRESULT DeviceSurface::Make(DirectDraw& maker, const DDSURFACEDESC& description, LPDIRECTDRAWSURFACE* surface) try {
    std::unique_ptr<DeviceSurface, Releaser> made(new (std::nothrow) DeviceSurface(maker));
    if (!made) {
        return DDERR_OUTOFMEMORY;
    }
    const DWORD caps = description.ddsCaps.dwCaps;
    HRESULT result = DDERR_INVALIDCAPS;
    if (caps & (DDSCAPS_FLIP | DDSCAPS_COMPLEX)) {
        result = DDERR_UNSUPPORTED;   // chains of buffers
    } else if (caps & DDSCAPS_PRIMARYSURFACE) {
        result = made->TakeScreen(caps);
    } else if (caps & DDSCAPS_OFFSCREENPLAIN) {
        result = made->TakeMemory(description);
    }
    if (result == DD_OK) {
        *surface = made.release();
    }
    return result;
} catch (const std::bad_alloc&) {
    return DDERR_OUTOFMEMORY;
}

DeviceSurface::DeviceSurface(DirectDraw& maker) : maker_(maker), generation_(DeviceSurfaceGeneration()) {
    maker_.AddRef();
}

DeviceSurface::~DeviceSurface() {
    if (context_) {
        RemoveObject(context_);
    }
    if (accessed_ && turn_.IsMine()) {
        accessed_->EndAccess();
    }
    if (palette_ && isScreen_) {
        palette_->Show(false);
    }
    clipper_.reset();
    palette_.reset();
    maker_.Release();
}

HRESULT DeviceSurface::TakeScreen(DWORD caps) {
    const auto display = Display();
    const DisplayMode mode = display->Mode();
    isScreen_ = hasDisplayFormat_ = true;
    caps_ = caps | DDSCAPS_VISIBLE | DDSCAPS_VIDEOMEMORY;
    width_ = mode.width;
    height_ = mode.height;
    const DisplayPixels pixels = PixelsOfDisplay(*display);
    format_ = pixels.format;
    toldBits_ = pixels.told;
    isLockable_ = pixels.isOwn;
    pitch_ =
        static_cast<int>((std::int64_t{width_} * format_.bitsPerPixel + 31) / 32 * 4) + display->Traits().pitchPadding;
    NoteDescription();
    return DD_OK;
}

HRESULT DeviceSurface::TakeMemory(const DDSURFACEDESC& description) {
    constexpr DWORD size = DDSD_WIDTH | DDSD_HEIGHT;
    if ((description.dwFlags & size) != size || description.dwWidth == 0 || description.dwHeight == 0) {
        return DDERR_INVALIDPARAMS;
    }
    if (description.ddsCaps.dwCaps & DDSCAPS_VIDEOMEMORY) {
        return DDERR_OUTOFVIDEOMEMORY;
    }
    const auto display = Display();
    hasDisplayFormat_ = !(description.dwFlags & DDSD_PIXELFORMAT);
    if (hasDisplayFormat_) {
        const DisplayPixels pixels = PixelsOfDisplay(*display);
        format_ = pixels.format;
        toldBits_ = pixels.told;
    } else if (ReadFormat(description.ddpfPixelFormat, &format_)) {
        toldBits_ = static_cast<int>(description.ddpfPixelFormat.dwRGBBitCount);
    } else {
        return DDERR_INVALIDPIXELFORMAT;
    }
    const std::int64_t rowBytes = (std::int64_t{description.dwWidth} * format_.bitsPerPixel / 8 + 15) / 16 * 16;
    const std::int64_t pitch = rowBytes + display->Traits().pitchPadding;
    if (pitch > INT32_MAX || description.dwHeight > INT32_MAX / pitch) {
        return DDERR_OUTOFMEMORY;
    }
    auto bitmap = std::make_shared<BitmapObject>();
    bitmap->width = width_ = static_cast<int>(description.dwWidth);
    bitmap->height = height_ = static_cast<int>(description.dwHeight);
    bitmap->pitch = pitch_ = static_cast<int>(pitch);
    bitmap->format = format_;
    if (!bitmap->pixels.Allocate(pitch * height_)) {
        return DDERR_OUTOFMEMORY;
    }
    bitmap_ = std::move(bitmap);
    caps_ = description.ddsCaps.dwCaps | DDSCAPS_SYSTEMMEMORY;
    NoteDescription();
    return DD_OK;
}

HRESULT DeviceSurface::QueryInterface(REFIID wanted, void** object) {
    if (!object) {
        return E_POINTER;
    }
    if (Fails("QueryInterface", object)) {
        return E_FAIL;
    }
    if (wanted == IID_IDirectDrawSurface2) {
        return HandOut(static_cast<IDirectDrawSurface2*>(this), object);
    }
    return HandOut(
        wanted == IID_IUnknown || wanted == IID_IDirectDrawSurface ? static_cast<IDirectDrawSurface*>(this) : nullptr,
        object);
}

ULONG DeviceSurface::Release() {
    const ULONG left = references_.Take();
    if (left == 0) {
        delete this;
    }
    return left;
}

bool DeviceSurface::HasLostMemory() const {
    return generation_ != DeviceSurfaceGeneration();
}

HRESULT DeviceSurface::IsLost() {
    if (ShouldFail("IsLost")) {
        return E_FAIL;
    }
    return HasLostMemory() ? DDERR_SURFACELOST : DD_OK;
}

HRESULT DeviceSurface::Restore() {
    if (ShouldFail("Restore")) {
        return E_FAIL;
    }
    const bool isMine = turn_.IsMine();
    HRESULT result = isMine ? DD_OK : turn_.Take(SurfaceTurn::Use::Blit, true);
    if (result != DD_OK) {
        return result;
    }
    if (HasLostMemory()) {
        const std::uint64_t generation = DeviceSurfaceGeneration();
        if (isScreen_) {
            TakeScreen(caps_);
        } else if (hasDisplayFormat_ && PixelsOfDisplay(*Display()).format != format_) {
            result = DDERR_WRONGMODE;
        } else {
            std::memset(bitmap_->pixels.Data(), 0,
                        static_cast<std::size_t>(pitch_) * static_cast<std::size_t>(height_));
        }
        if (result == DD_OK) {
            generation_ = generation;
        }
    }
    if (!isMine) {
        turn_.Give();
    }
    return result;
}

void DeviceSurface::NoteDescription() {
    described_ = {};
    described_.dwSize = sizeof(described_);
    described_.dwFlags = DDSD_CAPS | DDSD_HEIGHT | DDSD_WIDTH | DDSD_PITCH | DDSD_PIXELFORMAT;
    described_.dwHeight = static_cast<DWORD>(height_);
    described_.dwWidth = static_cast<DWORD>(width_);
    described_.lPitch = pitch_;
    described_.ddpfPixelFormat = DescribedFormat(format_, toldBits_);
    described_.ddsCaps.dwCaps = caps_;
}

void DeviceSurface::Describe(DDSURFACEDESC* description) const {
    *description = described_;
    if (const std::optional<DDCOLORKEY> key = SourceKey()) {
        description->dwFlags |= DDSD_CKSRCBLT;
        description->ddckCKSrcBlt = *key;
    }
}

HRESULT DeviceSurface::GetSurfaceDesc(LPDDSURFACEDESC description) {
    if (ShouldFail("GetSurfaceDesc")) {
        return E_FAIL;
    }
    if (!description || description->dwSize != sizeof(DDSURFACEDESC)) {
        return DDERR_INVALIDPARAMS;
    }
    Describe(description);
    return DD_OK;
}

HRESULT DeviceSurface::GetPixelFormat(LPDDPIXELFORMAT format) {
    if (ShouldFail("GetPixelFormat")) {
        return E_FAIL;
    }
    if (!format || format->dwSize != sizeof(DDPIXELFORMAT)) {
        return DDERR_INVALIDPARAMS;
    }
    *format = described_.ddpfPixelFormat;
    return DD_OK;
}

HRESULT DeviceSurface::GetCaps(LPDDSCAPS caps) {
    if (!caps) {
        return DDERR_INVALIDPARAMS;
    }
    caps->dwCaps = caps_;
    return ShouldFail("GetCaps") ? E_FAIL : DD_OK;
}

HRESULT DeviceSurface::FirstPixel(const RECT& area, Access access, void** address, LONG* pitch) {
    PixelBuffer pixels;
    if (isScreen_) {
        const auto display = Display();
        if (!isLockable_ || !display->BeginAccess(nullptr, area, access, &pixels)) {
            return DDERR_CURRENTLYNOTAVAIL;
        }
        if (pixels.format != format_) {   // the mode was changed behind us
            display->EndAccess();
            return DDERR_WRONGMODE;
        }
        accessed_ = display;
        *address = pixels.bits;
        *pitch = pixels.pitch;
        return DD_OK;
    }
    *address = bitmap_->pixels.Data() + static_cast<std::ptrdiff_t>(area.top) * pitch_ +
               static_cast<std::ptrdiff_t>(area.left) * (format_.bitsPerPixel / 8);
    *pitch = pitch_;
    return DD_OK;
}

HRESULT DeviceSurface::Lock(LPRECT area, LPDDSURFACEDESC description, DWORD flags, HANDLE) {
    if (ShouldFail("Lock")) {
        return E_FAIL;
    }
    if (!description || description->dwSize != sizeof(DDSURFACEDESC)) {
        return DDERR_INVALIDPARAMS;
    }
    if (HasLostMemory()) {
        return DDERR_SURFACELOST;
    }
    const RECT locked = area ? *area : Whole();
    if (!IsInside(locked, Whole())) {
        return DDERR_INVALIDRECT;
    }
    HRESULT result = turn_.Take(SurfaceTurn::Use::Pixels, (flags & DDLOCK_WAIT) != 0);
    if (result != DD_OK) {
        return result;
    }
    void* address = nullptr;
    LONG pitch = 0;
    result = FirstPixel(locked, flags & DDLOCK_READONLY ? Access::Read : Access::ReadWrite, &address, &pitch);
    if (result != DD_OK) {
        turn_.Give();
        return result;
    }
    isLocked_ = true;
    Describe(description);
    description->dwFlags |= DDSD_LPSURFACE;
    description->lpSurface = address;
    description->lPitch = pitch;
    return DD_OK;
}

HRESULT DeviceSurface::Unlock(LPVOID) {
    if (ShouldFail("Unlock")) {
        return E_FAIL;
    }
    if (!turn_.IsMine() || !isLocked_) {
        return DDERR_NOTLOCKED;
    }
    isLocked_ = false;
    if (accessed_) {
        accessed_->EndAccess();
        accessed_.reset();
    }
    turn_.Give();
    return DD_OK;
}

HRESULT DeviceSurface::GetDC(HDC* context) try {
    if (!context) {
        return DDERR_INVALIDPARAMS;
    }
    if (Fails("GetDC", context)) {
        return E_FAIL;
    }
    if (HasLostMemory()) {
        return DDERR_SURFACELOST;
    }
    const HRESULT result = turn_.Take(SurfaceTurn::Use::Pixels, true);
    if (result != DD_OK) {
        const std::lock_guard lock(attachments_);
        return context_ ? DDERR_DCALREADYCREATED : result;
    }
    auto made = MakeContext(isScreen_ ? ContextKind::Screen : ContextKind::Memory, nullptr);
    if (!made || (bitmap_ && !SelectBitmap(*made, bitmap_))) {
        if (made) {
            RemoveObject(made->handle);
        }
        turn_.Give();
        return DDERR_CANTCREATEDC;
    }
    const std::lock_guard lock(attachments_);
    *context = context_ = static_cast<HDC>(made->handle);
    return DD_OK;
} catch (const std::bad_alloc&) {
    turn_.Give();
    return DDERR_OUTOFMEMORY;
}

HRESULT DeviceSurface::ReleaseDC(HDC context) {
    if (ShouldFail("ReleaseDC")) {
        return E_FAIL;
    }
    {
        const std::lock_guard lock(attachments_);
        if (!context_ || context != context_) {
            return DDERR_NODC;
        }
        context_ = nullptr;
    }
    RemoveObject(context);
    turn_.Give();
    return DD_OK;
}

HRESULT DeviceSurface::GetClipper(LPDIRECTDRAWCLIPPER* clipper) {
    if (!clipper) {
        return DDERR_INVALIDPARAMS;
    }
    if (Fails("GetClipper", clipper)) {
        return E_FAIL;
    }
    *clipper = HeldClipper().release();
    return *clipper ? DD_OK : DDERR_NOCLIPPERATTACHED;
}

HRESULT DeviceSurface::SetClipper(LPDIRECTDRAWCLIPPER clipper) {
    if (ShouldFail("SetClipper")) {
        return E_FAIL;
    }
    ComReference<Clipper> next = Shared(static_cast<Clipper*>(clipper));
    const std::lock_guard lock(attachments_);
    if (!next && !clipper_) {
        return DDERR_NOCLIPPERATTACHED;
    }
    clipper_ = std::move(next);
    return DD_OK;
}

ComReference<Clipper> DeviceSurface::HeldClipper() const {
    const std::lock_guard lock(attachments_);
    return Shared(clipper_.get());
}

std::optional<DDCOLORKEY> DeviceSurface::SourceKey() const {
    if (!hasKey_) {
        return std::nullopt;
    }
    const std::lock_guard lock(attachments_);
    return key_;
}

HRESULT DeviceSurface::GetColorKey(DWORD which, LPDDCOLORKEY key) {
    if (ShouldFail("GetColorKey")) {
        return E_FAIL;
    }
    if (!key || which != DDCKEY_SRCBLT) {
        return key ? DDERR_UNSUPPORTED : DDERR_INVALIDPARAMS;
    }
    const std::optional<DDCOLORKEY> set = SourceKey();
    *key = set.value_or(DDCOLORKEY{});
    return set ? DD_OK : DDERR_NOCOLORKEY;
}

HRESULT DeviceSurface::SetColorKey(DWORD which, LPDDCOLORKEY key) {
    if (ShouldFail("SetColorKey")) {
        return E_FAIL;
    }
    if (which != DDCKEY_SRCBLT) {
        return DDERR_UNSUPPORTED;
    }
    const std::lock_guard lock(attachments_);
    key_ = key ? std::optional(*key) : std::nullopt;
    hasKey_ = key != nullptr;
    return DD_OK;
}

HRESULT DeviceSurface::GetPalette(LPDIRECTDRAWPALETTE* palette) {
    if (!palette) {
        return DDERR_INVALIDPARAMS;
    }
    if (Fails("GetPalette", palette)) {
        return E_FAIL;
    }
    const std::lock_guard lock(attachments_);
    *palette = Shared(palette_.get()).release();
    return *palette ? DD_OK : DDERR_NOPALETTEATTACHED;
}

HRESULT DeviceSurface::SetPalette(LPDIRECTDRAWPALETTE palette) try {
    if (ShouldFail("SetPalette")) {
        return E_FAIL;
    }
    if (!format_.IsIndexed()) {
        return DDERR_INVALIDPIXELFORMAT;
    }
    const std::lock_guard lock(attachments_);
    if (palette_ && isScreen_) {
        palette_->Show(false);
    }
    palette_ = Shared(static_cast<DevicePalette*>(palette));
    if (palette_ && isScreen_) {
        palette_->Show(true);
    }
    return DD_OK;
} catch (const std::bad_alloc&) {
    return DDERR_OUTOFMEMORY;
}

HRESULT DeviceSurface::GetDDInterface(LPVOID* directDraw) {
    if (!directDraw) {
        return DDERR_INVALIDPARAMS;
    }
    if (Fails("GetDDInterface", directDraw)) {
        return E_FAIL;
    }
    return HandOut(static_cast<IDirectDraw*>(&maker_), directDraw);
}

}   // namespace rastel::platform
