// Where the measured timings are kept: a registry key for each display mode.
#include <cwchar>
#include <iterator>

#include "rastel/display/display_manager.h"
#include "rastel/platform/gdi.h"
#include "rastel/platform/kernel.h"
#include "rastel/platform/user.h"
#include "rastel/platform/windows_version.h"

namespace {

constexpr wchar_t profileRoot[] = L"Software/Tessaly/Display Profiles/";

HKEY OpenKey(HKEY parent, const CString& name) {
    HKEY key = nullptr;
    return ::RegOpenKeyExW(parent, name, 0, KEY_ALL_ACCESS, &key) == ERROR_SUCCESS ? key : nullptr;
}

HKEY CreateKey(HKEY parent, const CString& name) {
    HKEY key = nullptr;
    DWORD disposition = 0;
    const LSTATUS status = ::RegCreateKeyExW(parent, name, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key, &disposition);
    return status == ERROR_SUCCESS ? key : nullptr;
}

// Follows a path whose levels are divided by "/", a level a call; the registry never sees a "/". Keys between are
// closed again.
HKEY WalkPath(HKEY parent, const CString& path, HKEY (*enter)(HKEY parent, const CString& name)) {
    const int slash = path.Find(L'/');
    const HKEY key = enter(parent, slash < 0 ? path : path.Left(slash));
    if (!key || slash < 0) {
        return key;
    }
    const HKEY last = WalkPath(key, path.Mid(slash + 1), enter);
    ::RegCloseKey(key);
    return last;
}

}   // namespace

CString CDisplayManager::GetDisplayIdString() {
    DEVMODEW mode = {};
    mode.dmSize = sizeof(mode);
    ::EnumDisplaySettingsW(nullptr, ENUM_CURRENT_SETTINGS, &mode);
    if (rastel::platform::IsWindows9x()) {
        // That system doesn't tell its settings, but a context on the display does.
        if (const HDC display = ::CreateDCW(L"DISPLAY", nullptr, nullptr, nullptr)) {
            mode.dmPelsWidth = static_cast<DWORD>(::GetDeviceCaps(display, HORZRES));
            mode.dmPelsHeight = static_cast<DWORD>(::GetDeviceCaps(display, VERTRES));
            mode.dmBitsPerPel =
                static_cast<DWORD>(::GetDeviceCaps(display, PLANES) * ::GetDeviceCaps(display, BITSPIXEL));
            ::DeleteDC(display);
        }
        std::wcscpy(mode.dmDeviceName, L"Win95");
    }
    mode.dmDeviceName[std::size(mode.dmDeviceName) - 1] = L'\0';
    CString id;
    id.Format(L"%ls %ix%i %i bits (%i Hz)", mode.dmDeviceName, static_cast<int>(mode.dmPelsWidth),
              static_cast<int>(mode.dmPelsHeight), static_cast<int>(mode.dmBitsPerPel),
              static_cast<int>(mode.dmDisplayFrequency));
    return id;
}

HKEY CDisplayManager::GetProfileKey() {
    const CString path = CString(profileRoot) + GetDisplayIdString();
    const HKEY key = WalkPath(HKEY_CURRENT_USER, path, OpenKey);
    return key ? key : WalkPath(HKEY_CURRENT_USER, path, CreateKey);
}

long long CDisplayManager::GetProfile(const wchar_t* name) {
    const HKEY key = GetProfileKey();
    if (!key) {
        return -1;
    }
    constexpr DWORD roomBytes = 32 * sizeof(wchar_t);
    wchar_t text[33] = {};   // one more than is read: the stored text may lack its closing null
    DWORD type = REG_SZ;
    DWORD bytes = roomBytes;
    const LSTATUS status = ::RegQueryValueExW(key, name, nullptr, &type, reinterpret_cast<BYTE*>(text), &bytes);
    ::RegCloseKey(key);
    return status == ERROR_SUCCESS ? ::_wtoi64(text) : -1;
}

void CDisplayManager::SetProfile(const wchar_t* name, long long value) {
    const HKEY key = GetProfileKey();
    if (!key) {
        return;
    }
    wchar_t text[32] = {};
    ::_i64tow(value, text, 10);
    const DWORD bytes = (static_cast<DWORD>(::lstrlenW(text)) + 1) * static_cast<DWORD>(sizeof(text[0]));
    ::RegSetValueExW(key, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(text), bytes);
    ::RegCloseKey(key);
}
