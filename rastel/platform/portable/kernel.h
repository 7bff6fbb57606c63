// The kernel's services: clock, priorities, version, modules with their resources, global memory, files and wide text.
#pragma once

#include "rastel/platform/portable/types.h"

#define NORMAL_PRIORITY_CLASS 0x00000020
#define IDLE_PRIORITY_CLASS 0x00000040
#define HIGH_PRIORITY_CLASS 0x00000080
#define REALTIME_PRIORITY_CLASS 0x00000100
#define BELOW_NORMAL_PRIORITY_CLASS 0x00004000
#define ABOVE_NORMAL_PRIORITY_CLASS 0x00008000

#define THREAD_PRIORITY_IDLE (-15)
#define THREAD_PRIORITY_LOWEST (-2)
#define THREAD_PRIORITY_NORMAL 0
#define THREAD_PRIORITY_HIGHEST 2
#define THREAD_PRIORITY_TIME_CRITICAL 15
#define THREAD_PRIORITY_ERROR_RETURN 0x7FFFFFFF

#define INFINITE 0xFFFFFFFF

#define VER_PLATFORM_WIN32s 0
#define VER_PLATFORM_WIN32_WINDOWS 1
#define VER_PLATFORM_WIN32_NT 2

#define GMEM_FIXED 0x0000
#define GMEM_MOVEABLE 0x0002
#define GMEM_ZEROINIT 0x0040
#define GHND (GMEM_MOVEABLE | GMEM_ZEROINIT)

#define ERROR_SUCCESS 0L
#define ERROR_FILE_NOT_FOUND 2L
#define ERROR_PATH_NOT_FOUND 3L
#define ERROR_ACCESS_DENIED 5L
#define ERROR_INVALID_HANDLE 6L
#define ERROR_NOT_ENOUGH_MEMORY 8L
#define ERROR_WRITE_FAULT 29L
#define ERROR_READ_FAULT 30L
#define ERROR_INVALID_PARAMETER 87L
#define ERROR_INSUFFICIENT_BUFFER 122L
#define ERROR_MOD_NOT_FOUND 126L
#define ERROR_PROC_NOT_FOUND 127L
#define ERROR_NOT_LOCKED 158L
#define ERROR_BAD_PATHNAME 161L
#define ERROR_MORE_DATA 234L
#define ERROR_BAD_EXE_FORMAT 193L
#define ERROR_FILE_TOO_LARGE 223L
#define ERROR_NO_MORE_ITEMS 259L
#define ERROR_RESOURCE_DATA_NOT_FOUND 1812L
#define ERROR_RESOURCE_TYPE_NOT_FOUND 1813L
#define ERROR_RESOURCE_NAME_NOT_FOUND 1814L

#define DONT_RESOLVE_DLL_REFERENCES 0x00000001
#define LOAD_LIBRARY_AS_DATAFILE 0x00000002
#define LOAD_LIBRARY_AS_IMAGE_RESOURCE 0x00000020
#define LOAD_LIBRARY_AS_DATAFILE_EXCLUSIVE 0x00000040

#define IS_INTRESOURCE(name) ((reinterpret_cast<ULONG_PTR>(name) >> 16) == 0)
#define MAKEINTRESOURCEW(number) (reinterpret_cast<LPWSTR>(static_cast<ULONG_PTR>(static_cast<WORD>(number))))
#define RT_ICON MAKEINTRESOURCEW(3)
#define RT_GROUP_ICON MAKEINTRESOURCEW(14)

#define GENERIC_READ 0x80000000
#define GENERIC_WRITE 0x40000000
#define FILE_SHARE_READ 0x00000001
#define FILE_SHARE_WRITE 0x00000002
#define FILE_SHARE_DELETE 0x00000004
#define CREATE_NEW 1
#define CREATE_ALWAYS 2
#define OPEN_EXISTING 3
#define OPEN_ALWAYS 4
#define FILE_ATTRIBUTE_NORMAL 0x00000080

using FARPROC = INT_PTR (*)();
using ENUMRESNAMEPROCW = BOOL (*)(HMODULE module, LPCWSTR type, LPWSTR name, LONG_PTR parameter);

struct SECURITY_ATTRIBUTES;   // nobody here passes one
using LPSECURITY_ATTRIBUTES = SECURITY_ATTRIBUTES*;
struct OVERLAPPED;
using LPOVERLAPPED = OVERLAPPED*;

struct OSVERSIONINFOW {
    DWORD dwOSVersionInfoSize;
    DWORD dwMajorVersion;
    DWORD dwMinorVersion;
    DWORD dwBuildNumber;
    DWORD dwPlatformId;
    WCHAR szCSDVersion[128];
};
using LPOSVERSIONINFOW = OSVERSIONINFOW*;

RASTEL_API BOOL QueryPerformanceCounter(LARGE_INTEGER* count);   // nanoseconds
RASTEL_API BOOL QueryPerformanceFrequency(LARGE_INTEGER* frequency);
RASTEL_API DWORD GetTickCount();
RASTEL_API void Sleep(DWORD milliseconds);

// Kept and given back, without effect: a display library has no business above the host's own scheduling.
RASTEL_API HANDLE GetCurrentProcess();
RASTEL_API HANDLE GetCurrentThread();
RASTEL_API BOOL SetPriorityClass(HANDLE process, DWORD priorityClass);
RASTEL_API DWORD GetPriorityClass(HANDLE process);
RASTEL_API BOOL SetThreadPriority(HANDLE thread, int priority);
RASTEL_API int GetThreadPriority(HANDLE thread);

RASTEL_API BOOL GetVersionExW(LPOSVERSIONINFOW version);   // the size must be that of OSVERSIONINFOW
RASTEL_API DWORD GetLastError();
RASTEL_API void SetLastError(DWORD error);

// Modules are the services built into the library, found by name in any case, with or without ".dll". No file is
// ever loaded as code. With a flag that asks for data, the name is the path of a PE file of either width, which
// is read whole and gives its resources; every such load gives a handle of its own, for one FreeLibrary.
RASTEL_API HMODULE LoadLibraryW(LPCWSTR fileName);
RASTEL_API HMODULE LoadLibraryExW(LPCWSTR fileName, HANDLE reserved, DWORD flags);
RASTEL_API HMODULE GetModuleHandleW(LPCWSTR moduleName);
RASTEL_API FARPROC GetProcAddress(HMODULE module, LPCSTR name);
RASTEL_API BOOL FreeLibrary(HMODULE module);

// Resources of modules that were loaded as data. A name or type is a text in any case, "#" with a decimal number, or
// MAKEINTRESOURCEW of the number. Of several languages the neutral one is taken, else the first. What these give out
// lives until FreeLibrary. A resource that does not lie in the file whole is not there.
RASTEL_API HRSRC FindResourceW(HMODULE module, LPCWSTR name, LPCWSTR type);
RASTEL_API HGLOBAL LoadResource(HMODULE module, HRSRC resource);
RASTEL_API LPVOID LockResource(HGLOBAL resource);   // only to be read
RASTEL_API DWORD SizeofResource(HMODULE module, HRSRC resource);
RASTEL_API BOOL FreeResource(HGLOBAL resource);   // nothing to do: FALSE, which is its success
// Calls back for each name until one call returns FALSE, which is the result then. The callback may free the module.
RASTEL_API BOOL EnumResourceNamesW(HMODULE module, LPCWSTR type, ENUMRESNAMEPROCW callback, LONG_PTR parameter);

// Regular files that are there, to be read from start to end; any other wish is ERROR_INVALID_PARAMETER. A folder, a
// pipe or a device is no file here: ERROR_ACCESS_DENIED, without waiting on it.
RASTEL_API HANDLE CreateFileW(LPCWSTR fileName, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES security,
                              DWORD disposition, DWORD flags, HANDLE templateFile);
RASTEL_API BOOL GetFileSizeEx(HANDLE file, LARGE_INTEGER* size);
RASTEL_API BOOL ReadFile(HANDLE file, LPVOID target, DWORD bytes, LPDWORD bytesRead, LPOVERLAPPED overlapped);
RASTEL_API BOOL CloseHandle(HANDLE handle);

// A fixed block's handle is its address. A moveable one's handle is not: GlobalLock gives the address and counts,
// GlobalUnlock counts back and returns 0 at none. A handle that is no block, or no longer one, fails everywhere.
RASTEL_API HGLOBAL GlobalAlloc(UINT flags, SIZE_T bytes);
RASTEL_API LPVOID GlobalLock(HGLOBAL memory);
RASTEL_API BOOL GlobalUnlock(HGLOBAL memory);
RASTEL_API SIZE_T GlobalSize(HGLOBAL memory);
RASTEL_API HGLOBAL GlobalFree(HGLOBAL memory);   // null, or the handle where it was no block

RASTEL_API int lstrlenW(LPCWSTR text);
RASTEL_API LONGLONG _wtoi64(const wchar_t* text);   // stops at the ends of the range; 0 without digits
// The buffer must hold 65 units for radix 2, 21 for radix 10. Only radix 10 writes a sign. Another radix than 2 to 36
// gives empty text.
RASTEL_API wchar_t* _i64tow(LONGLONG value, wchar_t* buffer, int radix);
