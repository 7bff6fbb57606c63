#include <atomic>

#include "rastel/platform/portable/kernel.h"

namespace {

std::atomic<DWORD> processClass = NORMAL_PRIORITY_CLASS;
thread_local int threadPriority = THREAD_PRIORITY_NORMAL;

HANDLE PseudoHandle(LONG_PTR value) {
    return reinterpret_cast<HANDLE>(value);
}

bool IsClass(DWORD priorityClass) {
    switch (priorityClass) {
        case NORMAL_PRIORITY_CLASS:
        case IDLE_PRIORITY_CLASS:
        case HIGH_PRIORITY_CLASS:
        case REALTIME_PRIORITY_CLASS:
        case BELOW_NORMAL_PRIORITY_CLASS:
        case ABOVE_NORMAL_PRIORITY_CLASS:
            return true;
        default:
            return false;
    }
}

bool IsPriority(int priority) {
    return (priority >= THREAD_PRIORITY_LOWEST && priority <= THREAD_PRIORITY_HIGHEST) ||
           priority == THREAD_PRIORITY_IDLE || priority == THREAD_PRIORITY_TIME_CRITICAL;
}

// Handles of other processes and threads are never given out, so any other value is none.
bool Check(HANDLE handle, HANDLE own, bool isValueKnown) {
    if (handle != own) {
        SetLastError(ERROR_INVALID_HANDLE);
        return false;
    }
    if (!isValueKnown) {
        SetLastError(ERROR_INVALID_PARAMETER);
    }
    return isValueKnown;
}

}   // namespace

HANDLE GetCurrentProcess() {
    return PseudoHandle(-1);
}

HANDLE GetCurrentThread() {
    return PseudoHandle(-2);
}

BOOL SetPriorityClass(HANDLE process, DWORD priorityClass) {
    if (!Check(process, GetCurrentProcess(), IsClass(priorityClass))) {
        return FALSE;
    }
    processClass = priorityClass;
    return TRUE;
}

DWORD GetPriorityClass(HANDLE process) {
    return Check(process, GetCurrentProcess(), true) ? processClass.load() : 0;
}

BOOL SetThreadPriority(HANDLE thread, int priority) {
    if (!Check(thread, GetCurrentThread(), IsPriority(priority))) {
        return FALSE;
    }
    threadPriority = priority;
    return TRUE;
}

int GetThreadPriority(HANDLE thread) {
    return Check(thread, GetCurrentThread(), true) ? threadPriority : THREAD_PRIORITY_ERROR_RETURN;
}
