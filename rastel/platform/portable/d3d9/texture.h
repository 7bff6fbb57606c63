// A texture: an image a level, each half as large as the one before.
#pragma once

#include <vector>

#include "rastel/platform/portable/d3d9/image.h"
#include "rastel/platform/portable/d3d9/resource.h"

namespace rastel::platform::d3d {

struct Levels : Body {
    std::vector<ImagePointer> images;   // one at least
};
using LevelsPointer = std::shared_ptr<Levels>;

// No levels asked for: all of them, down to a single pixel. Null: no such size or format, or no memory.
LevelsPointer MakeLevels(UINT width, UINT height, UINT levels, DWORD usage, D3DFORMAT format, D3DPOOL pool);

class Texture final : public Resource<IDirect3DTexture9, Levels> {
public:
    using Resource::Resource;

    static const LevelsPointer& OfBase(IDirect3DBaseTexture9* texture) {
        return Of(static_cast<IDirect3DTexture9*>(texture));
    }

    HRESULT QueryInterface(REFIID wanted, void** object) override;
    D3DRESOURCETYPE GetType() override { return D3DRTYPE_TEXTURE; }
    DWORD SetLOD(DWORD) override { return 0; }
    DWORD GetLOD() override { return 0; }
    DWORD GetLevelCount() override { return static_cast<DWORD>(body_->images.size()); }
    HRESULT SetAutoGenFilterType(D3DTEXTUREFILTERTYPE) override { return D3DERR_INVALIDCALL; }
    D3DTEXTUREFILTERTYPE GetAutoGenFilterType() override { return D3DTEXF_NONE; }
    void GenerateMipSubLevels() override {}
    HRESULT GetLevelDesc(UINT level, D3DSURFACE_DESC* description) override;
    HRESULT GetSurfaceLevel(UINT level, IDirect3DSurface9** surface) override;
    HRESULT LockRect(UINT level, D3DLOCKED_RECT* locked, const RECT* area, DWORD flags) override;
    HRESULT UnlockRect(UINT level) override;
    HRESULT AddDirtyRect(const RECT*) override { return D3D_OK; }

private:
    ~Texture() override = default;
};

}   // namespace rastel::platform::d3d
