#include <mutex>

#include "rastel/platform/portable/kernel.h"
#include "rastel/platform/portable/memory_display.h"

namespace {

struct Version {
    DWORD platform = VER_PLATFORM_WIN32_NT, major = 10, minor = 0;
};

std::mutex versionMutex;
Version reported;

}   // namespace

BOOL GetVersionExW(LPOSVERSIONINFOW version) {
    if (!version) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    if (version->dwOSVersionInfoSize != sizeof(OSVERSIONINFOW)) {
        SetLastError(ERROR_INSUFFICIENT_BUFFER);
        return FALSE;
    }
    const std::lock_guard lock(versionMutex);
    *version = {};
    version->dwOSVersionInfoSize = sizeof(OSVERSIONINFOW);
    version->dwMajorVersion = reported.major;
    version->dwMinorVersion = reported.minor;
    version->dwPlatformId = reported.platform;
    return TRUE;
}

void rastel::platform::SetWindowsVersion(DWORD platform, DWORD major, DWORD minor) {
    const std::lock_guard lock(versionMutex);
    reported = {platform, major, minor};
}
