#include "rastel/platform/portable/d3d9/surface.h"

#include <new>

#include "rastel/platform/portable/gdi/device_context.h"

namespace rastel::platform::d3d {

Surface::~Surface() {
    if (context_) {
        ReleaseDC(context_);
    }
}

HRESULT Surface::QueryInterface(REFIID wanted, void** object) {
    if (!object) {
        return E_POINTER;
    }
    if (Fails("QueryInterface", object)) {
        return E_FAIL;
    }
    const bool isMine = wanted == IID_IUnknown || wanted == IID_IDirect3DResource9 || wanted == IID_IDirect3DSurface9;
    return HandOut(isMine ? static_cast<IDirect3DSurface9*>(this) : nullptr, object);
}

HRESULT Surface::GetContainer(REFIID, void** container) {
    if (container) {
        *container = nullptr;
    }
    return E_NOINTERFACE;
}

HRESULT Surface::GetDesc(D3DSURFACE_DESC* description) {
    if (!description || ShouldFail("GetDesc")) {
        return D3DERR_INVALIDCALL;
    }
    *description = body_->description;
    return D3D_OK;
}

HRESULT LockImage(Image& image, D3DLOCKED_RECT* locked, const RECT* area) {
    if (!locked) {
        return D3DERR_INVALIDCALL;
    }
    *locked = {};
    const RECT part = area ? *area : image.Whole();
    if (ShouldFail("LockRect") || !image.bitmap || image.isLocked || !IsPart(part, image)) {
        return D3DERR_INVALIDCALL;
    }
    image.isLocked = true;
    locked->Pitch = image.bitmap->pitch;
    locked->pBits = image.Row(part.top) + static_cast<std::ptrdiff_t>(part.left) * image.BytesPerPixel();
    return D3D_OK;
}

HRESULT UnlockImage(Image& image) {
    if (!image.isLocked) {
        return D3DERR_INVALIDCALL;
    }
    image.isLocked = false;
    return D3D_OK;
}

HRESULT Surface::LockRect(D3DLOCKED_RECT* locked, const RECT* area, DWORD) {
    const Turn turn = TakeTurn(device_);
    return LockImage(*body_, locked, area);
}

HRESULT Surface::UnlockRect() {
    const Turn turn = TakeTurn(device_);
    return UnlockImage(*body_);
}

HRESULT Surface::GetDC(HDC* context) try {
    if (!context) {
        return D3DERR_INVALIDCALL;
    }
    const Turn turn = TakeTurn(device_);
    if (Fails("GetDC", context) || context_ || body_->isLocked || !body_->bitmap) {
        return D3DERR_INVALIDCALL;
    }
    const auto made = MakeContext(ContextKind::Memory, nullptr);
    if (!made) {
        return E_OUTOFMEMORY;
    }
    if (!SelectBitmap(*made, body_->bitmap)) {
        RemoveObject(made->handle);
        return D3DERR_INVALIDCALL;
    }
    body_->isLocked = true;
    *context = context_ = static_cast<HDC>(made->handle);
    return D3D_OK;
} catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
}

HRESULT Surface::ReleaseDC(HDC context) {
    const Turn turn = TakeTurn(device_);
    if (!context_ || context != context_) {
        return D3DERR_INVALIDCALL;
    }
    RemoveObject(context_);
    context_ = nullptr;
    body_->isLocked = false;
    return D3D_OK;
}

}   // namespace rastel::platform::d3d
