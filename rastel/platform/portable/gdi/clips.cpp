// Regions, and the clips of contexts that are made of them. Clips are kept in device coordinates; rectangles that a
// caller passes are logical, regions are in device coordinates already.
#include <algorithm>
#include <cstring>
#include <new>

#include "rastel/platform/portable/gdi/device_context.h"

using rastel::platform::DeviceContext;
using rastel::platform::Find;
using rastel::platform::FindContext;
using rastel::platform::Region;
using rastel::platform::RegionObject;

namespace {

RECT Ordered(const RECT& rect) {
    return {std::min(rect.left, rect.right), std::min(rect.top, rect.bottom), std::max(rect.left, rect.right),
            std::max(rect.top, rect.bottom)};
}

int CopyRegion(HRGN region, Region* copy) {
    const auto found = Find<RegionObject>(region);
    if (!found) {
        return RGN_ERROR;
    }
    const std::lock_guard lock(found->mutex);
    *copy = found->region;
    return copy->Complexity();
}

int ReplaceRegion(HRGN region, const Region& value) {
    const auto found = Find<RegionObject>(region);
    if (!found) {
        return RGN_ERROR;
    }
    const std::lock_guard lock(found->mutex);
    found->region = value;
    return value.Complexity();
}

int EffectiveComplexity(const DeviceContext& context) {
    Region clip;
    return EffectiveClip(context, &clip) ? clip.Complexity() : RGN_ERROR;
}

// What stands for "no limit" when something is cut out of it.
Region Everything() {
    return Region(RECT{INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX});
}

}   // namespace

HRGN CreateRectRgn(int left, int top, int right, int bottom) try {
    auto object = std::make_shared<RegionObject>();
    object->region = Region(Ordered({left, top, right, bottom}));
    return static_cast<HRGN>(rastel::platform::AddObject(object));
} catch (const std::bad_alloc&) {
    return nullptr;
}

HRGN CreateRectRgnIndirect(const RECT* rect) {
    return rect == nullptr ? nullptr : CreateRectRgn(rect->left, rect->top, rect->right, rect->bottom);
}

BOOL SetRectRgn(HRGN region, int left, int top, int right, int bottom) {
    return ReplaceRegion(region, Region(Ordered({left, top, right, bottom}))) != RGN_ERROR ? TRUE : FALSE;
}

int OffsetRgn(HRGN region, int dx, int dy) {
    const auto found = Find<RegionObject>(region);
    if (!found) {
        return RGN_ERROR;
    }
    const std::lock_guard lock(found->mutex);
    found->region.Offset(dx, dy);
    return found->region.Complexity();
}

int CombineRgn(HRGN target, HRGN first, HRGN second, int mode) {
    Region result;
    Region other;
    if (CopyRegion(first, &result) == RGN_ERROR || mode < RGN_AND || mode > RGN_COPY ||
        (mode != RGN_COPY && CopyRegion(second, &other) == RGN_ERROR)) {
        return RGN_ERROR;
    }
    switch (mode) {
        case RGN_AND:
            result.Intersect(other);
            break;
        case RGN_OR:
            result.Unite(other);
            break;
        case RGN_XOR: {
            Region both = result;
            both.Intersect(other);
            result.Unite(other);
            result.Subtract(both);
            break;
        }
        case RGN_DIFF:
            result.Subtract(other);
            break;
        default:
            break;
    }
    return ReplaceRegion(target, result);
}

int GetRgnBox(HRGN region, LPRECT box) {
    Region copy;
    const int complexity = CopyRegion(region, &copy);
    if (complexity == RGN_ERROR || box == nullptr) {
        return RGN_ERROR;
    }
    *box = copy.Bounds();
    return complexity;
}

DWORD GetRegionData(HRGN region, DWORD bytes, LPRGNDATA data) {
    Region copy;
    if (CopyRegion(region, &copy) == RGN_ERROR) {
        return 0;
    }
    const std::size_t rectBytes = copy.Rects().size() * sizeof(RECT);
    const std::size_t needed = sizeof(RGNDATAHEADER) + rectBytes;
    if (needed > UINT32_MAX) {
        return 0;
    }
    if (data == nullptr || bytes < needed) {
        return data == nullptr ? static_cast<DWORD>(needed) : 0;
    }
    RGNDATAHEADER header{};
    header.dwSize = sizeof(header);
    header.iType = RDH_RECTANGLES;
    header.nCount = static_cast<DWORD>(copy.Rects().size());
    header.nRgnSize = static_cast<DWORD>(rectBytes);
    header.rcBound = copy.Bounds();
    auto* const target = reinterpret_cast<unsigned char*>(data);
    std::memcpy(target, &header, sizeof(header));
    if (rectBytes != 0) {
        std::memcpy(target + sizeof(header), copy.Rects().data(), rectBytes);
    }
    return static_cast<DWORD>(needed);
}

int SelectClipRgn(HDC context, HRGN region) {
    const auto found = FindContext(context);
    if (!found) {
        return RGN_ERROR;
    }
    if (region == nullptr) {
        found->state.clip.reset();
        return EffectiveComplexity(*found);
    }
    Region clip;
    if (CopyRegion(region, &clip) == RGN_ERROR) {
        return RGN_ERROR;
    }
    found->state.clip = std::move(clip);
    return EffectiveComplexity(*found);
}

int GetClipRgn(HDC context, HRGN region) {
    const auto found = FindContext(context);
    if (!found || !Find<RegionObject>(region)) {
        return -1;
    }
    if (!found->state.clip) {
        return 0;
    }
    return ReplaceRegion(region, *found->state.clip) != RGN_ERROR ? 1 : -1;
}

int IntersectClipRect(HDC context, int left, int top, int right, int bottom) {
    const auto found = FindContext(context);
    if (!found) {
        return RGN_ERROR;
    }
    const RECT rect = ToDevice(*found, Ordered({left, top, right, bottom}));
    std::optional<Region>& clip = found->state.clip;
    if (clip) {
        clip->Intersect(rect);
    } else {
        clip = Region(rect);
    }
    return EffectiveComplexity(*found);
}

int ExcludeClipRect(HDC context, int left, int top, int right, int bottom) {
    const auto found = FindContext(context);
    if (!found) {
        return RGN_ERROR;
    }
    const RECT rect = ToDevice(*found, Ordered({left, top, right, bottom}));
    std::optional<Region>& clip = found->state.clip;
    if (!clip) {
        clip = Everything();
    }
    clip->Subtract(rect);
    return EffectiveComplexity(*found);
}

int GetClipBox(HDC context, LPRECT box) {
    const auto found = FindContext(context);
    Region clip;
    if (!found || box == nullptr || !EffectiveClip(*found, &clip)) {
        return RGN_ERROR;
    }
    const RECT device = clip.Bounds();
    const POINT& origin = found->state.origin;
    *box = clip.IsEmpty() ? RECT{}
                          : rastel::platform::ClampedRect(
                                std::int64_t{device.left} - origin.x, std::int64_t{device.top} - origin.y,
                                std::int64_t{device.right} - origin.x, std::int64_t{device.bottom} - origin.y);
    return clip.Complexity();
}

BOOL RectVisible(HDC context, const RECT* rect) {
    const auto found = FindContext(context);
    Region clip;
    if (!found || rect == nullptr || !EffectiveClip(*found, &clip)) {
        return FALSE;
    }
    clip.Intersect(ToDevice(*found, Ordered(*rect)));
    return clip.IsEmpty() ? FALSE : TRUE;
}

int SetMetaRgn(HDC context) {
    const auto found = FindContext(context);
    if (!found) {
        return RGN_ERROR;
    }
    std::optional<Region>& clip = found->state.clip;
    std::optional<Region>& meta = found->state.metaClip;
    if (clip && meta) {
        meta->Intersect(*clip);
    } else if (clip) {
        meta = std::move(clip);
    }
    clip.reset();
    return EffectiveComplexity(*found);
}
