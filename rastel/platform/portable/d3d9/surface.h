// An image as an interface: colours that can be locked, or depths that can't.
#pragma once

#include "rastel/platform/portable/d3d9/image.h"
#include "rastel/platform/portable/d3d9/resource.h"

namespace rastel::platform::d3d {

class Surface final : public Resource<IDirect3DSurface9, Image> {
public:
    using Resource::Resource;

    HRESULT QueryInterface(REFIID wanted, void** object) override;
    D3DRESOURCETYPE GetType() override { return D3DRTYPE_SURFACE; }
    HRESULT GetContainer(REFIID, void** container) override;
    HRESULT GetDesc(D3DSURFACE_DESC* description) override;
    HRESULT LockRect(D3DLOCKED_RECT* locked, const RECT* area, DWORD flags) override;
    HRESULT UnlockRect() override;
    HRESULT GetDC(HDC* context) override;
    HRESULT ReleaseDC(HDC context) override;

private:
    ~Surface() override;

    HDC context_ = nullptr;
};

// What LockRect and UnlockRect of surfaces and textures do.
HRESULT LockImage(Image& image, D3DLOCKED_RECT* locked, const RECT* area);
HRESULT UnlockImage(Image& image);

}   // namespace rastel::platform::d3d
