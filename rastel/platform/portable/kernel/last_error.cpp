#include "rastel/platform/portable/kernel.h"

namespace {
thread_local DWORD lastError = ERROR_SUCCESS;
}

DWORD GetLastError() {
    return lastError;
}

void SetLastError(DWORD error) {
    lastError = error;
}
