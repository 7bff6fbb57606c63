#include <time.h>

#include <cerrno>

#include "rastel/platform/portable/kernel.h"

namespace {

constexpr LONGLONG nanosecondsPerSecond = 1'000'000'000;

bool Now(LONGLONG& nanoseconds) {
    timespec now = {};
    if (::clock_gettime(CLOCK_MONOTONIC, &now) != 0) {
        return false;
    }
    nanoseconds = static_cast<LONGLONG>(now.tv_sec) * nanosecondsPerSecond + now.tv_nsec;
    return true;
}

}   // namespace

BOOL QueryPerformanceCounter(LARGE_INTEGER* count) {
    LONGLONG nanoseconds = 0;
    if (!count || !Now(nanoseconds)) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    count->QuadPart = nanoseconds;
    return TRUE;
}

BOOL QueryPerformanceFrequency(LARGE_INTEGER* frequency) {
    if (!frequency) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    frequency->QuadPart = nanosecondsPerSecond;
    return TRUE;
}

DWORD GetTickCount() {
    LONGLONG nanoseconds = 0;
    Now(nanoseconds);
    return static_cast<DWORD>(nanoseconds / 1'000'000);
}

void Sleep(DWORD milliseconds) {
    timespec rest = {};
    do {
        rest.tv_sec = static_cast<time_t>(milliseconds / 1000);
        rest.tv_nsec = static_cast<long>(milliseconds % 1000) * 1'000'000;
        while (::nanosleep(&rest, &rest) != 0 && errno == EINTR) {
        }
    } while (milliseconds == INFINITE);
}
