#include "rastel/display/dx_surface.h"

#include <vector>

#include "rastel/display/display_manager.h"
#include "rastel/platform/com_reference.h"
#include "rastel/platform/user.h"

using rastel::platform::ComReference;

namespace {

void RestoreIfLost(IDirectDrawSurface2& surface) {
    if (surface.IsLost() == DDERR_SURFACELOST) {
        surface.Restore();
    }
}

IDirectDraw2* DirectDrawOfManager() {
    CDisplayManager* const manager = GetDisplayManager();
    return manager ? manager->GetDirectDraw() : nullptr;
}

// The device surface behind a store; null for stores that live elsewhere.
IDirectDrawSurface2* DeviceSurfaceOf(CSurfaceBase& store) {
    auto* const surface = dynamic_cast<CDxSurface*>(&store);
    return surface ? surface->GetDirectDrawSurface() : nullptr;
}

// A blit of unchanged size. 1 or 0.
int DeviceBlt(IDirectDrawSurface2& target, int x, int y, IDirectDrawSurface2& source, const CRect& rcSrc, DWORD flags,
              DDBLTFX* effects) {
    RestoreIfLost(target);
    RestoreIfLost(source);
    CRect landing(x, y, x + rcSrc.Width(), y + rcSrc.Height());
    CRect taken = rcSrc;
    return target.Blt(&landing, &source, &taken, flags, effects) >= 0;
}

// A clipper that lets through one rectangle; an empty one lets through nothing. Null: DirectDraw refused.
ComReference<IDirectDrawClipper> RectClipper(IDirectDraw2& directDraw, const CRect& rect) {
    IDirectDrawClipper* made = nullptr;
    directDraw.CreateClipper(0, &made, nullptr);
    ComReference<IDirectDrawClipper> clipper(made);
    const HRGN region = ::CreateRectRgn(rect.left, rect.top, rect.right, rect.bottom);
    std::vector<unsigned char> block(::GetRegionData(region, 0, nullptr));
    auto* const data = reinterpret_cast<RGNDATA*>(block.data());
    ::GetRegionData(region, static_cast<DWORD>(block.size()), data);
    ::DeleteObject(region);
    if (!clipper || block.empty()) {
        return nullptr;
    }
    clipper->SetClipList(data, 0);
    return clipper;
}

}   // namespace

CDxSurface::CDxSurface() = default;

CDxSurface::~CDxSurface() {
    CDxSurface::Destroy();
}

LONG CDxSurface::PixelBytes() const {
    return static_cast<LONG>(4LL * m_Height * m_Width);
}

int CDxSurface::InitializeSurface(int width, int height) {
    const CSingleLock lock(&m_SyncObject, TRUE);
    IDirectDraw2* const directDraw = DirectDrawOfManager();
    if (!directDraw) {
        return 0;
    }
    if (m_pDirectDrawSurface) {
        Destroy();   // the old pixels are counted with the old size
    }
    m_Width = width;
    m_Height = height;

    DDSURFACEDESC description = {};
    description.dwSize = sizeof(description);
    description.dwFlags = DDSD_CAPS | DDSD_HEIGHT | DDSD_WIDTH | DDSD_PIXELFORMAT;
    description.dwHeight = static_cast<DWORD>(height);
    description.dwWidth = static_cast<DWORD>(width);
    description.ddsCaps.dwCaps = DDSCAPS_OFFSCREENPLAIN | DDSCAPS_SYSTEMMEMORY;
    description.ddpfPixelFormat.dwSize = sizeof(description.ddpfPixelFormat);
    description.ddpfPixelFormat.dwFlags = DDPF_RGB;
    description.ddpfPixelFormat.dwRGBBitCount = 32;
    description.ddpfPixelFormat.dwRBitMask = 0xFF0000;
    description.ddpfPixelFormat.dwGBitMask = 0xFF00;
    description.ddpfPixelFormat.dwBBitMask = 0xFF;
    IDirectDrawSurface* made = nullptr;
    directDraw->CreateSurface(&description, &made, nullptr);   // the pointer says how it went
    m_pDirectDrawSurface = rastel::platform::ExchangeInterface<IDirectDrawSurface2>(made, IID_IDirectDrawSurface2);
    if (!m_pDirectDrawSurface) {
        return 0;
    }
    description = {};
    description.dwSize = sizeof(description);
    m_pDirectDrawSurface->GetSurfaceDesc(&description);
    m_Pitch = static_cast<int>(description.lPitch);
    m_SurfacesMemory += PixelBytes();
    return 1;
}

void CDxSurface::Destroy() {
    const CSingleLock lock(&m_SyncObject, TRUE);
    if (m_pDirectDrawSurface) {
        m_SurfacesMemory -= PixelBytes();
        rastel::platform::Drop(m_pDirectDrawSurface);
    }
    CSurface::Destroy();
}

HDC CDxSurface::GetDC() {
    HDC context = nullptr;
    if (m_pDirectDrawSurface) {
        m_pDirectDrawSurface->GetDC(&context);
    }
    return context;
}

void CDxSurface::ReleaseDC(HDC hDC) {
    if (m_pDirectDrawSurface) {
        m_pDirectDrawSurface->ReleaseDC(hDC);
    }
}

unsigned char* CDxSurface::LockData() {
    const CSingleLock lock(&m_SyncObject, TRUE);
    if (!m_pDirectDrawSurface) {
        return nullptr;
    }
    DDSURFACEDESC description;   // filled by a lock; zeroing all of it would take as long
    description.dwSize = sizeof(description);
    description.lpSurface = nullptr;
    if (m_pDirectDrawSurface->Lock(nullptr, &description, DDLOCK_WAIT, nullptr) == DDERR_SURFACELOST) {
        m_pDirectDrawSurface->Restore();
        m_pDirectDrawSurface->Lock(nullptr, &description, DDLOCK_WAIT, nullptr);
    }
    return static_cast<unsigned char*>(description.lpSurface);   // a lock that failed leaves it null
}

void CDxSurface::UnlockData() {
    const CSingleLock lock(&m_SyncObject, TRUE);
    if (m_pDirectDrawSurface) {
        m_pDirectDrawSurface->Unlock(nullptr);
    }
}

int CDxSurface::InternalFillColor(CRect& rc, DWORD color) {
    const CSingleLock lock(&m_SyncObject, TRUE);
    if (!m_pDirectDrawSurface) {
        return 0;
    }
    RestoreIfLost(*m_pDirectDrawSurface);
    DDBLTFX effects = {};
    effects.dwSize = sizeof(effects);
    effects.dwFillColor = RGB2COLOR(color);
    return m_pDirectDrawSurface->Blt(&rc, nullptr, nullptr, DDBLT_COLORFILL | DDBLT_WAIT, &effects) >= 0;
}

int CDxSurface::InternalCopyBlt(int x, int y, CSurfaceBase& src, const CRect& rcSrc) {
    const CSingleLock lock(&m_SyncObject, TRUE);
    const CSingleLock sourceLock(src.GetSyncObject(), TRUE);
    IDirectDrawSurface2* const source = DeviceSurfaceOf(src);
    if (!m_pDirectDrawSurface || !source) {
        return 0;
    }
    return DeviceBlt(*m_pDirectDrawSurface, x, y, *source, rcSrc, DDBLT_WAIT, nullptr);
}

int CDxSurface::InternalTransparentBlt(int x, int y, CSurface& src, DWORD key, const CRect& rcSrc) {
    CDisplayManager* const manager = GetDisplayManager();
    if (!manager || manager->GetBitsPrPixel() < 24) {
        return CSurface::InternalTransparentBlt(x, y, src, key, rcSrc);
    }
    const CSingleLock lock(&m_SyncObject, TRUE);
    const CSingleLock sourceLock(src.GetSyncObject(), TRUE);
    IDirectDrawSurface2* const source = DeviceSurfaceOf(src);
    if (!m_pDirectDrawSurface || !source) {
        return 0;
    }
    DDBLTFX effects = {};
    effects.dwSize = sizeof(effects);
    effects.ddckSrcColorkey.dwColorSpaceLowValue = RGB2COLOR(key);
    effects.ddckSrcColorkey.dwColorSpaceHighValue = RGB2COLOR(key);
    return DeviceBlt(*m_pDirectDrawSurface, x, y, *source, rcSrc, DDBLT_KEYSRCOVERRIDE | DDBLT_WAIT, &effects);
}

int CDxSurface::InternalStretchBlt(CRect& rcDst, CSurfaceBase& src, CRect& rcSrc, CRect* pClip) {
    const CSingleLock lock(&m_SyncObject, TRUE);
    const CSingleLock sourceLock(src.GetSyncObject(), TRUE);
    IDirectDrawSurface2* const source = DeviceSurfaceOf(src);
    if (!m_pDirectDrawSurface || !source) {
        return 0;
    }
    if (rcDst.Width() < 0 || rcDst.Height() < 0 || rcSrc.Width() < 0 || rcSrc.Height() < 0) {
        return CSurface::InternalStretchBlt(rcDst, src, rcSrc, pClip);   // no device mirrors by its rectangles
    }
    RestoreIfLost(*m_pDirectDrawSurface);
    RestoreIfLost(*source);
    CRect clip = GetRect();
    if (pClip) {
        ::IntersectRect(&clip, &clip, pClip);
    }
    IDirectDraw2* const directDraw = DirectDrawOfManager();
    const ComReference<IDirectDrawClipper> clipper = directDraw ? RectClipper(*directDraw, clip) : nullptr;
    if (!clipper) {
        return 0;
    }
    m_pDirectDrawSurface->SetClipper(clipper.get());
    m_pDirectDrawSurface->Blt(&rcDst, source, &rcSrc, DDBLT_WAIT, nullptr);
    m_pDirectDrawSurface->SetClipper(nullptr);
    return 1;
}
