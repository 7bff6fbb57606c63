#include "rastel/platform/portable/d3d9/texture.h"

#include <algorithm>
#include <new>

#include "rastel/platform/portable/d3d9/surface.h"

namespace rastel::platform::d3d {

LevelsPointer MakeLevels(UINT width, UINT height, UINT levels, DWORD usage, D3DFORMAT format, D3DPOOL pool) try {
    auto made = std::make_shared<Levels>();
    for (;;) {
        ImagePointer image = IsColorFormat(format) ? MakeImage(width, height, format, usage, pool) : nullptr;
        if (!image) {
            return nullptr;
        }
        made->images.push_back(std::move(image));
        const bool isSmallest = width == 1 && height == 1;
        if (made->images.size() == levels || isSmallest) {
            return levels == 0 || made->images.size() == levels ? made : nullptr;
        }
        width = std::max(width / 2, 1u);
        height = std::max(height / 2, 1u);
    }
} catch (const std::bad_alloc&) {
    return nullptr;
}

HRESULT Texture::QueryInterface(REFIID wanted, void** object) {
    if (!object) {
        return E_POINTER;
    }
    if (Fails("QueryInterface", object)) {
        return E_FAIL;
    }
    const bool isMine = wanted == IID_IUnknown || wanted == IID_IDirect3DResource9 ||
                        wanted == IID_IDirect3DBaseTexture9 || wanted == IID_IDirect3DTexture9;
    return HandOut(isMine ? static_cast<IDirect3DTexture9*>(this) : nullptr, object);
}

HRESULT Texture::GetLevelDesc(UINT level, D3DSURFACE_DESC* description) {
    if (!description || level >= body_->images.size()) {
        return D3DERR_INVALIDCALL;
    }
    *description = body_->images[level]->description;
    return D3D_OK;
}

HRESULT Texture::GetSurfaceLevel(UINT level, IDirect3DSurface9** surface) {
    if (!surface) {
        return D3DERR_INVALIDCALL;
    }
    if (Fails("GetSurfaceLevel", surface) || level >= body_->images.size()) {
        return D3DERR_INVALIDCALL;
    }
    *surface = Show<Surface>(device_, body_->images[level]);
    return *surface ? D3D_OK : E_OUTOFMEMORY;
}

HRESULT Texture::LockRect(UINT level, D3DLOCKED_RECT* locked, const RECT* area, DWORD) {
    const Turn turn = TakeTurn(device_);
    return level < body_->images.size() ? LockImage(*body_->images[level], locked, area) : D3DERR_INVALIDCALL;
}

HRESULT Texture::UnlockRect(UINT level) {
    const Turn turn = TakeTurn(device_);
    return level < body_->images.size() ? UnlockImage(*body_->images[level]) : D3DERR_INVALIDCALL;
}

}   // namespace rastel::platform::d3d
