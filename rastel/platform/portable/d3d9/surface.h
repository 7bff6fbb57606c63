// An image as an interface: colours that can be locked, or depths that can't.
#pragma once

#include "rastel/platform/portable/d3d9/image.h"
#include "rastel/platform/portable/d3d9/resource.h"

namespace rastel::platform::d3d {

class Surface final : public Resource<IDirect3DSurface9> {
public:
    Surface(IDirect3DDevice9& device, ImagePointer image) : Resource(device), image_(std::move(image)) {}

    // A new interface on the image, with one reference. Null without image or memory.
    static IDirect3DSurface9* On(IDirect3DDevice9& device, const ImagePointer& image);
    static const ImagePointer& Of(IDirect3DSurface9* surface) { return static_cast<Surface*>(surface)->image_; }

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

    ImagePointer image_;
    HDC context_ = nullptr;
};

// What LockRect and UnlockRect of surfaces and textures do.
HRESULT LockImage(Image& image, D3DLOCKED_RECT* locked, const RECT* area);
HRESULT UnlockImage(Image& image);

}   // namespace rastel::platform::d3d
