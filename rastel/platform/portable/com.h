// The part of COM that DirectDraw and Direct3D hand their interfaces out through. Needs no start-up here.
#pragma once

#include <cstring>

#include "rastel/platform/portable/types.h"

inline bool operator==(const GUID& first, const GUID& second) {
    return std::memcmp(&first, &second, sizeof(GUID)) == 0;
}

// No destructor: an object ends with its last Release.
struct IUnknown {
    virtual HRESULT QueryInterface(REFIID wanted, void** object) = 0;   // null and E_NOINTERFACE: it has none such
    virtual ULONG AddRef() = 0;
    virtual ULONG Release() = 0;   // the references that are left

protected:
    ~IUnknown() = default;
};
using LPUNKNOWN = IUnknown*;

inline constexpr IID IID_IUnknown = {0, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};

#define CLSCTX_INPROC_SERVER 0x1
#define CLSCTX_INPROC_HANDLER 0x2

#define REGDB_E_CLASSNOTREG (static_cast<HRESULT>(0x80040154))
#define CLASS_E_NOAGGREGATION (static_cast<HRESULT>(0x80040110))

RASTEL_API HRESULT CoInitialize(void* reserved);
RASTEL_API void CoUninitialize();

// Knows CLSID_DirectDraw, where the display offers it.
RASTEL_API HRESULT CoCreateInstance(REFCLSID wantedClass, LPUNKNOWN outer, DWORD context, REFIID wanted, void** object);
