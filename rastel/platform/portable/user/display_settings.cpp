#include <algorithm>
#include <cstddef>
#include <string>

#include "rastel/platform/portable/screen/display_device.h"
#include "rastel/platform/portable/user.h"

namespace {

using rastel::platform::Display;
using rastel::platform::DisplayMode;

// As much of the name as the structure holds.
std::wstring DeviceName() {
    return Display()->Name().substr(0, CCHDEVICENAME - 1);
}

void Describe(const DisplayMode& from, const std::wstring& name, DEVMODEW* mode) {
    constexpr WORD kVersion = 0x0401;
    const WORD extra = mode->dmDriverExtra;   // the caller's own space behind the structure
    *mode = {};
    std::copy(name.begin(), name.end(), mode->dmDeviceName);
    mode->dmSpecVersion = kVersion;
    mode->dmDriverVersion = kVersion;
    mode->dmSize = sizeof(DEVMODEW);
    mode->dmDriverExtra = extra;
    mode->dmFields = DM_BITSPERPEL | DM_PELSWIDTH | DM_PELSHEIGHT | DM_DISPLAYFREQUENCY;
    mode->dmBitsPerPel = static_cast<DWORD>(from.bitsPerPixel);
    mode->dmPelsWidth = static_cast<DWORD>(from.width);
    mode->dmPelsHeight = static_cast<DWORD>(from.height);
    mode->dmDisplayFrequency = static_cast<DWORD>(from.refreshHz);
}

}   // namespace

int GetSystemMetrics(int index) {
    switch (index) {
        case SM_CXSCREEN:
            return Display()->Mode().width;
        case SM_CYSCREEN:
            return Display()->Mode().height;
        default:
            return 0;
    }
}

BOOL EnumDisplaySettingsW(LPCWSTR deviceName, DWORD modeIndex, DEVMODEW* mode) {
    const std::wstring name = DeviceName();
    if (mode == nullptr || (deviceName != nullptr && deviceName != name)) {
        return FALSE;
    }
    if (modeIndex == ENUM_CURRENT_SETTINGS || modeIndex == ENUM_REGISTRY_SETTINGS) {
        Describe(Display()->Mode(), name, mode);
        return TRUE;
    }
    const std::vector<DisplayMode> modes = Display()->Modes();
    if (modeIndex >= modes.size()) {
        return FALSE;
    }
    Describe(modes[modeIndex], name, mode);
    return TRUE;
}
