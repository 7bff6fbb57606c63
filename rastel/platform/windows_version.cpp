#include "rastel/platform/windows_version.h"

#include "rastel/platform/kernel.h"

namespace rastel::platform {

namespace {

// All zero where the system does not say.
OSVERSIONINFOW Version() {
    OSVERSIONINFOW version = {};
    version.dwOSVersionInfoSize = sizeof(version);
    return ::GetVersionExW(&version) ? version : OSVERSIONINFOW{};
}

}   // namespace

bool IsWindows9x() {
    return Version().dwPlatformId == VER_PLATFORM_WIN32_WINDOWS;
}

bool IsWindowsNt60() {
    const OSVERSIONINFOW version = Version();
    return version.dwPlatformId == VER_PLATFORM_WIN32_NT && version.dwMajorVersion == 6 && version.dwMinorVersion == 0;
}

}   // namespace rastel::platform
