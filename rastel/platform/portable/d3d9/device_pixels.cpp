// The device's copies, fills and clears.
#include <algorithm>

#include "rastel/platform/portable/d3d9/device.h"
#include "rastel/platform/portable/d3d9/surface.h"

namespace rastel::platform::d3d {

namespace {

void FillColors(Image& image, const RECT& area, DWORD color) {
    const int bytes = image.BytesPerPixel();
    for (int y = area.top; y < area.bottom; ++y) {
        BYTE* pixel = image.Row(y) + static_cast<std::ptrdiff_t>(area.left) * bytes;
        for (int x = area.left; x < area.right; ++x, pixel += bytes) {
            StoreColor(image.description.Format, pixel, color);
        }
    }
}

RECT CommonPart(const RECT& first, const RECT& second) {
    return {std::max(first.left, second.left), std::max(first.top, second.top), std::min(first.right, second.right),
            std::min(first.bottom, second.bottom)};
}

bool IsEmpty(const RECT& rect) {
    return rect.left >= rect.right || rect.top >= rect.bottom;
}

HRESULT Answer(bool isDone) {
    return isDone ? D3D_OK : D3DERR_INVALIDCALL;
}

}   // namespace

HRESULT Device::UpdateSurface(IDirect3DSurface9* source, const RECT* part, IDirect3DSurface9* target,
                              const POINT* corner) {
    const std::lock_guard lock(mutex_);
    if (ShouldFail("UpdateSurface") || !source || !target) {
        return D3DERR_INVALIDCALL;
    }
    const Image& from = *Surface::Of(source);
    const Image& to = *Surface::Of(target);
    const RECT taken = part ? *part : from.Whole();
    const POINT at = corner ? *corner : POINT{};
    if (from.description.Format != to.description.Format || !IsPart(taken, from) || at.x < 0 || at.y < 0 ||
        at.x > to.Width() || at.y > to.Height()) {
        return D3DERR_INVALIDCALL;
    }
    return Answer(
        CopyImage(from, taken, to, {at.x, at.y, at.x + taken.right - taken.left, at.y + taken.bottom - taken.top}));
}

HRESULT Device::UpdateTexture(IDirect3DBaseTexture9* source, IDirect3DBaseTexture9* target) {
    const std::lock_guard lock(mutex_);
    if (ShouldFail("UpdateTexture") || !source || !target) {
        return D3DERR_INVALIDCALL;
    }
    const auto& from = Texture::OfBase(source)->images;
    const auto& to = Texture::OfBase(target)->images;
    bool isDone = true;
    for (std::size_t i = 0; i < std::min(from.size(), to.size()) && isDone; ++i) {
        isDone = from[i]->description.Width == to[i]->description.Width &&
                 from[i]->description.Height == to[i]->description.Height &&
                 CopyImage(*from[i], from[i]->Whole(), *to[i], to[i]->Whole());
    }
    return Answer(isDone);
}

HRESULT Device::GetRenderTargetData(IDirect3DSurface9* source, IDirect3DSurface9* target) {
    if (ShouldFail("GetRenderTargetData")) {
        return D3DERR_INVALIDCALL;
    }
    return UpdateSurface(source, nullptr, target, nullptr);
}

HRESULT Device::StretchRect(IDirect3DSurface9* source, const RECT* part, IDirect3DSurface9* target, const RECT* landing,
                            D3DTEXTUREFILTERTYPE) {
    const std::lock_guard lock(mutex_);
    if (ShouldFail("StretchRect") || !source || !target) {
        return D3DERR_INVALIDCALL;
    }
    const Image& from = *Surface::Of(source);
    const Image& to = *Surface::Of(target);
    return Answer(CopyImage(from, part ? *part : from.Whole(), to, landing ? *landing : to.Whole()));
}

HRESULT Device::ColorFill(IDirect3DSurface9* surface, const RECT* area, D3DCOLOR color) {
    const std::lock_guard lock(mutex_);
    if (ShouldFail("ColorFill") || !surface || !Surface::Of(surface)->bitmap) {
        return D3DERR_INVALIDCALL;
    }
    Image& image = *Surface::Of(surface);
    const RECT filled = area ? *area : image.Whole();
    if (!IsPart(filled, image)) {
        return D3DERR_INVALIDCALL;
    }
    FillColors(image, filled, color);
    return D3D_OK;
}

HRESULT Device::Clear(DWORD count, const D3DRECT* rects, DWORD flags, D3DCOLOR color, float z, DWORD) {
    const std::lock_guard lock(mutex_);
    const bool clearsDepth = (flags & D3DCLEAR_ZBUFFER) != 0;
    if (ShouldFail("Clear") || (clearsDepth && !(depth_ && z >= 0 && z <= 1)) || (count != 0) != (rects != nullptr)) {
        return D3DERR_INVALIDCALL;
    }
    Image& target = target_ ? *target_ : *chain_->buffers.front();
    const RECT view = CommonPart(target.Whole(), {static_cast<LONG>(viewport_.X), static_cast<LONG>(viewport_.Y),
                                                  static_cast<LONG>(viewport_.X + viewport_.Width),
                                                  static_cast<LONG>(viewport_.Y + viewport_.Height)});
    for (DWORD i = 0; i < std::max<DWORD>(count, 1); ++i) {
        const RECT wanted = rects ? RECT{rects[i].x1, rects[i].y1, rects[i].x2, rects[i].y2} : view;
        const RECT area = CommonPart(view, wanted);
        if (IsEmpty(area)) {
            continue;
        }
        if (flags & D3DCLEAR_TARGET) {
            FillColors(target, area, color);
        }
        if (clearsDepth) {
            const RECT inside = CommonPart(area, depth_->Whole());
            for (LONG y = inside.top; y < inside.bottom && !IsEmpty(inside); ++y) {
                float* const row = depth_->depths.data() + static_cast<std::size_t>(y) * depth_->description.Width;
                std::fill(row + inside.left, row + inside.right, z);
            }
        }
    }
    return D3D_OK;
}

}   // namespace rastel::platform::d3d
