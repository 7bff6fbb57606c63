#include "rastel/platform/portable/ddraw/clipper.h"

#include <cstring>
#include <new>
#include <vector>

namespace rastel::platform {

HRESULT Clipper::QueryInterface(REFIID wanted, void** object) {
    if (!object) {
        return E_POINTER;
    }
    if (Fails("QueryInterface", object)) {
        return E_FAIL;
    }
    return HandOut(wanted == IID_IUnknown || wanted == IID_IDirectDrawClipper ? this : nullptr, object);
}

ULONG Clipper::Release() {
    const ULONG left = references_.Take();
    if (left == 0) {
        delete this;
    }
    return left;
}

HWND Clipper::Window() const {
    const std::lock_guard lock(mutex_);
    return window_;
}

bool Clipper::Visible(Region* region) const {
    HWND window = nullptr;
    {
        const std::lock_guard lock(mutex_);
        window = window_;
        if (!window) {
            *region = list_;
            return hasList_;
        }
    }
    return Display()->VisibleArea(window, region);
}

HRESULT Clipper::GetClipList(LPRECT within, LPRGNDATA list, LPDWORD bytes) try {
    if (!bytes) {
        return DDERR_INVALIDPARAMS;
    }
    if (ShouldFail("GetClipList")) {
        return E_FAIL;
    }
    Region region;
    if (!Visible(&region)) {
        return DDERR_NOCLIPLIST;
    }
    if (within) {
        region.Intersect(*within);
    }
    const std::vector<RECT>& rects = region.Rects();
    const auto needed = static_cast<DWORD>(sizeof(RGNDATAHEADER) + rects.size() * sizeof(RECT));
    const DWORD room = *bytes;
    *bytes = needed;
    if (!list) {
        return DD_OK;
    }
    if (room < needed) {
        return DDERR_REGIONTOOSMALL;
    }
    RGNDATAHEADER header{};
    header.dwSize = sizeof(header);
    header.iType = RDH_RECTANGLES;
    header.nCount = static_cast<DWORD>(rects.size());
    header.nRgnSize = static_cast<DWORD>(rects.size() * sizeof(RECT));
    header.rcBound = region.Bounds();
    std::memcpy(&list->rdh, &header, sizeof(header));
    if (!rects.empty()) {
        std::memcpy(reinterpret_cast<unsigned char*>(list) + sizeof(header), rects.data(), header.nRgnSize);
    }
    return DD_OK;
} catch (const std::bad_alloc&) {
    return DDERR_OUTOFMEMORY;
}

HRESULT Clipper::GetHWnd(HWND* window) {
    if (!window) {
        return DDERR_INVALIDPARAMS;
    }
    if (Fails("GetHWnd", window)) {
        return E_FAIL;
    }
    *window = Window();
    return DD_OK;
}

HRESULT Clipper::IsClipListChanged(BOOL* isChanged) {
    if (!isChanged) {
        return DDERR_INVALIDPARAMS;
    }
    *isChanged = FALSE;
    return ShouldFail("IsClipListChanged") ? E_FAIL : DD_OK;
}

HRESULT Clipper::SetClipList(LPRGNDATA list, DWORD) try {
    if (ShouldFail("SetClipList")) {
        return E_FAIL;
    }
    Region region;
    if (list) {
        const RGNDATAHEADER& header = list->rdh;
        if (header.dwSize != sizeof(header) || header.iType != RDH_RECTANGLES ||
            header.nRgnSize < std::uint64_t{header.nCount} * sizeof(RECT)) {
            return DDERR_INVALIDCLIPLIST;
        }
        for (DWORD i = 0; i < header.nCount; ++i) {
            RECT rect;
            std::memcpy(&rect, reinterpret_cast<const unsigned char*>(list) + sizeof(header) + i * sizeof(RECT),
                        sizeof(rect));
            region.Unite(rect);
        }
    }
    const std::lock_guard lock(mutex_);
    if (window_) {
        return DDERR_CLIPPERISUSINGHWND;
    }
    hasList_ = list != nullptr;
    list_ = std::move(region);
    return DD_OK;
} catch (const std::bad_alloc&) {
    return DDERR_OUTOFMEMORY;
}

HRESULT Clipper::SetHWnd(DWORD, HWND window) {
    if (ShouldFail("SetHWnd")) {
        return E_FAIL;
    }
    RECT client{};
    if (window && !Display()->ClientArea(window, &client)) {
        return DDERR_INVALIDPARAMS;
    }
    const std::lock_guard lock(mutex_);
    window_ = window;
    return DD_OK;
}

}   // namespace rastel::platform
