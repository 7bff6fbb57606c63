// Making and ending contexts, their saved states and what they tell about the device.
#include <algorithm>
#include <cwchar>
#include <new>

#include "rastel/platform/portable/gdi/device_context.h"

using rastel::platform::ContextKind;
using rastel::platform::ContextState;
using rastel::platform::DeviceContext;
using rastel::platform::FindContext;

namespace {

HDC HandleOf(const std::shared_ptr<DeviceContext>& context) {
    return context ? static_cast<HDC>(context->handle) : nullptr;
}

bool IsDisplayName(LPCWSTR name) {
    constexpr const wchar_t* kDisplay = L"DISPLAY";
    std::size_t i = 0;
    for (; kDisplay[i] != 0; ++i) {
        const wchar_t upper = name[i] >= L'a' && name[i] <= L'z' ? static_cast<wchar_t>(name[i] - 32) : name[i];
        if (upper != kDisplay[i]) {
            return false;
        }
    }
    return name[i] == 0;
}

bool IsPaletteDevice(const rastel::platform::PixelFormat& format) {
    return format.bitsPerPixel <= 8 && format.IsIndexed();
}

// Makes a state current again. A bitmap that another context took in the meantime is not stolen from it.
void Reinstate(DeviceContext& context, ContextState state) {
    if (context.IsMemory()) {
        if (!rastel::platform::SelectBitmap(context, state.bitmap)) {
            rastel::platform::SelectBitmap(context, rastel::platform::StockBitmap());
        }
        state.bitmap = context.state.bitmap;
    }
    context.state = std::move(state);
}

bool SetOrigin(DeviceContext& context, std::int64_t x, std::int64_t y, LPPOINT previous) {
    if (x < INT32_MIN || x > INT32_MAX || y < INT32_MIN || y > INT32_MAX) {
        return false;
    }
    if (previous != nullptr) {
        *previous = context.state.origin;
    }
    context.state.origin = {static_cast<LONG>(x), static_cast<LONG>(y)};
    return true;
}

}   // namespace

HDC CreateDCW(LPCWSTR driver, LPCWSTR device, LPCWSTR port, const DEVMODEW* mode) try {
    static_cast<void>(port);
    static_cast<void>(mode);
    if (rastel::platform::ShouldFail("CreateDCW")) {
        return nullptr;
    }
    const std::wstring name = rastel::platform::Display()->Name();
    const bool isDisplay = driver != nullptr ? IsDisplayName(driver) || name == driver
                                             : device != nullptr && (IsDisplayName(device) || name == device);
    return isDisplay ? HandleOf(MakeContext(ContextKind::Screen, nullptr)) : nullptr;
} catch (const std::bad_alloc&) {
    return nullptr;
}

HDC CreateCompatibleDC(HDC context) try {
    if (rastel::platform::ShouldFail("CreateCompatibleDC") || (context != nullptr && !FindContext(context))) {
        return nullptr;
    }
    return HandleOf(rastel::platform::MakeContext(ContextKind::Memory, nullptr));
} catch (const std::bad_alloc&) {
    return nullptr;
}

HDC GetDC(HWND window) try {
    if (window == nullptr || window == GetDesktopWindow()) {
        const auto context = rastel::platform::MakeContext(ContextKind::Screen, nullptr);
        if (context) {
            context->fromGetDC = true;
        }
        return HandleOf(context);
    }
    RECT client{};
    if (!rastel::platform::Display()->ClientArea(window, &client)) {
        return nullptr;
    }
    const auto context = rastel::platform::MakeContext(ContextKind::Window, window);
    if (context) {
        context->fromGetDC = true;
    }
    return HandleOf(context);
} catch (const std::bad_alloc&) {
    return nullptr;
}

int ReleaseDC(HWND window, HDC context) {
    static_cast<void>(window);   // a context knows its own; the window may be gone
    const auto found = FindContext(context);
    return found && found->fromGetDC && rastel::platform::RemoveObject(context) ? 1 : 0;
}

BOOL DeleteDC(HDC context) {
    return FindContext(context) && rastel::platform::RemoveObject(context) ? TRUE : FALSE;
}

int SaveDC(HDC context) try {
    const auto found = FindContext(context);
    if (!found) {
        return 0;
    }
    found->saved.push_back(found->state);
    return static_cast<int>(found->saved.size());
} catch (const std::bad_alloc&) {
    return 0;
}

BOOL RestoreDC(HDC context, int saved) {
    const auto found = FindContext(context);
    if (!found) {
        return FALSE;
    }
    const auto count = static_cast<std::int64_t>(found->saved.size());
    const std::int64_t level = saved < 0 ? count + saved + 1 : std::int64_t{saved};
    if (saved == 0 || level < 1 || level > count) {
        return FALSE;
    }
    ContextState state = std::move(found->saved[static_cast<std::size_t>(level - 1)]);
    found->saved.resize(static_cast<std::size_t>(level - 1));
    Reinstate(*found, std::move(state));
    return TRUE;
}

int GetDeviceCaps(HDC context, int index) {
    if (!FindContext(context)) {
        return 0;
    }
    const auto display = rastel::platform::Display();
    const rastel::platform::DisplayMode mode = display->Mode();
    const bool hasPalette = IsPaletteDevice(display->Format());
    constexpr int kDotsPerInch = 96;
    switch (index) {
        case TECHNOLOGY:
            return DT_RASDISPLAY;
        case HORZSIZE:
            return static_cast<int>(std::int64_t{mode.width} * 254 / (kDotsPerInch * 10));
        case VERTSIZE:
            return static_cast<int>(std::int64_t{mode.height} * 254 / (kDotsPerInch * 10));
        case HORZRES:
            return mode.width;
        case VERTRES:
            return mode.height;
        case BITSPIXEL:
            return mode.bitsPerPixel;
        case PLANES:
            return 1;
        case NUMCOLORS:
            return hasPalette ? 20 : mode.bitsPerPixel <= 8 ? 1 << mode.bitsPerPixel : -1;
        case RASTERCAPS:
            return RC_BITBLT | RC_STRETCHBLT | RC_STRETCHDIB | (hasPalette ? RC_PALETTE : 0);
        case LOGPIXELSX:
        case LOGPIXELSY:
            return kDotsPerInch;
        case SIZEPALETTE:
            return hasPalette ? 256 : 0;
        case NUMRESERVED:
            return hasPalette ? 20 : 0;
        case COLORRES:
            return hasPalette ? 18 : std::min(mode.bitsPerPixel, 24);
        case VREFRESH:
            return mode.refreshHz;
        default:
            return 0;
    }
}

BOOL SetViewportOrgEx(HDC context, int x, int y, LPPOINT previous) {
    const auto found = FindContext(context);
    return found && SetOrigin(*found, x, y, previous) ? TRUE : FALSE;
}

BOOL GetViewportOrgEx(HDC context, LPPOINT origin) {
    const auto found = FindContext(context);
    if (!found || origin == nullptr) {
        return FALSE;
    }
    *origin = found->state.origin;
    return TRUE;
}

BOOL OffsetViewportOrgEx(HDC context, int dx, int dy, LPPOINT previous) {
    const auto found = FindContext(context);
    if (!found) {
        return FALSE;
    }
    const POINT origin = found->state.origin;
    return SetOrigin(*found, std::int64_t{origin.x} + dx, std::int64_t{origin.y} + dy, previous) ? TRUE : FALSE;
}

// Every call draws before it returns.
BOOL GdiFlush() {
    return TRUE;
}
