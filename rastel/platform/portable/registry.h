// The registry of the current user, kept as files: a folder a key, a file a value.
//
// It lies under rastel/registry in $XDG_CONFIG_HOME, or in .config of $HOME; a host may name another folder. Threads
// and processes may share it: a value is written whole or not at all, and the last writer wins. Names are compared
// without regard to case; a backslash divides the levels of a key, "/" is a character like any other. A file that is no
// whole value, whatever it is, reads as a value that is not stored. Handles are checked: one that is not open gives
// ERROR_INVALID_HANDLE.
#pragma once

#include "rastel/platform/portable/kernel.h"

#define REG_NONE 0
#define REG_SZ 1
#define REG_BINARY 3
#define REG_DWORD 4

#define KEY_QUERY_VALUE 0x0001
#define KEY_SET_VALUE 0x0002
#define KEY_CREATE_SUB_KEY 0x0004
#define KEY_ENUMERATE_SUB_KEYS 0x0008
#define KEY_READ 0x20019
#define KEY_WRITE 0x20006
#define KEY_ALL_ACCESS 0xF003F

#define REG_OPTION_NON_VOLATILE 0
#define REG_CREATED_NEW_KEY 1
#define REG_OPENED_EXISTING_KEY 2

#define HKEY_CURRENT_USER (reinterpret_cast<HKEY>(static_cast<ULONG_PTR>(0x80000001)))

using REGSAM = DWORD;
using PHKEY = HKEY*;

struct SECURITY_ATTRIBUTES {
    DWORD nLength;
    LPVOID lpSecurityDescriptor;
    BOOL bInheritHandle;
};

// Sizes are in bytes; a text counts sizeof(wchar_t) for each unit, its closing null included, as on Windows.
RASTEL_API LSTATUS RegOpenKeyExW(HKEY key, LPCWSTR subKey, DWORD options, REGSAM access, PHKEY result);
RASTEL_API LSTATUS RegCreateKeyExW(HKEY key, LPCWSTR subKey, DWORD reserved, LPWSTR className, DWORD options,
                                   REGSAM access, const SECURITY_ATTRIBUTES* security, PHKEY result,
                                   LPDWORD disposition);
RASTEL_API LSTATUS RegCloseKey(HKEY key);
RASTEL_API LSTATUS RegQueryValueExW(HKEY key, LPCWSTR name, LPDWORD reserved, LPDWORD type, LPBYTE data,
                                    LPDWORD dataBytes);
RASTEL_API LSTATUS RegSetValueExW(HKEY key, LPCWSTR name, DWORD reserved, DWORD type, const BYTE* data,
                                  DWORD dataBytes);
RASTEL_API LSTATUS RegDeleteValueW(HKEY key, LPCWSTR name);
RASTEL_API LSTATUS RegDeleteKeyW(HKEY key, LPCWSTR subKey);
RASTEL_API LSTATUS RegEnumKeyExW(HKEY key, DWORD index, LPWSTR name, LPDWORD nameLength, LPDWORD reserved,
                                 LPWSTR className, LPDWORD classLength, void* lastWrite);
RASTEL_API LSTATUS RegEnumValueW(HKEY key, DWORD index, LPWSTR name, LPDWORD nameLength, LPDWORD reserved, LPDWORD type,
                                 LPBYTE data, LPDWORD dataBytes);
