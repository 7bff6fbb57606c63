#include "rastel/platform/portable/ddraw/palette.h"

#include <algorithm>
#include <new>
#include <vector>

namespace rastel::platform {

DevicePalette::DevicePalette(const PALETTEENTRY* entries) {
    std::copy(entries, entries + entries_.size(), entries_.begin());
}

HRESULT DevicePalette::QueryInterface(REFIID wanted, void** object) {
    if (!object) {
        return E_POINTER;
    }
    if (Fails("QueryInterface", object)) {
        return E_FAIL;
    }
    return HandOut(wanted == IID_IUnknown || wanted == IID_IDirectDrawPalette ? this : nullptr, object);
}

ULONG DevicePalette::Release() {
    const ULONG left = references_.Take();
    if (left == 0) {
        delete this;
    }
    return left;
}

HRESULT DevicePalette::GetCaps(LPDWORD caps) {
    if (!caps) {
        return DDERR_INVALIDPARAMS;
    }
    *caps = DDPCAPS_8BIT;
    return ShouldFail("GetCaps") ? E_FAIL : DD_OK;
}

HRESULT DevicePalette::GetEntries(DWORD, DWORD first, DWORD count, LPPALETTEENTRY entries) {
    if (ShouldFail("GetEntries")) {
        return E_FAIL;
    }
    if (!entries || first > entries_.size() || count > entries_.size() - first) {
        return DDERR_INVALIDPARAMS;
    }
    const std::lock_guard lock(mutex_);
    std::copy_n(entries_.begin() + first, count, entries);
    return DD_OK;
}

HRESULT DevicePalette::SetEntries(DWORD, DWORD first, DWORD count, LPPALETTEENTRY entries) try {
    if (ShouldFail("SetEntries")) {
        return E_FAIL;
    }
    if (!entries || first > entries_.size() || count > entries_.size() - first) {
        return DDERR_INVALIDPARAMS;
    }
    const std::lock_guard lock(mutex_);
    std::copy_n(entries, count, entries_.begin() + first);
    PassOn();
    return DD_OK;
} catch (const std::bad_alloc&) {
    return DDERR_OUTOFMEMORY;
}

void DevicePalette::Show(bool isShown) {
    const std::lock_guard lock(mutex_);
    isShown_ = isShown;
    PassOn();
}

void DevicePalette::PassOn() {
    if (isShown_) {
        std::vector<RGBQUAD> colors;
        for (const PALETTEENTRY& entry : entries_) {
            colors.push_back({entry.peBlue, entry.peGreen, entry.peRed, 0});
        }
        Display()->SetSystemPalette(0, colors);
    }
}

}   // namespace rastel::platform
