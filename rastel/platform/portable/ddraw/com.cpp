#include "rastel/platform/portable/com.h"

#include "rastel/platform/portable/com_object.h"
#include "rastel/platform/portable/ddraw.h"
#include "rastel/platform/portable/ddraw/direct_draw.h"

HRESULT CoInitialize(void*) {
    return S_OK;
}

void CoUninitialize() {}

HRESULT CoCreateInstance(REFCLSID wantedClass, LPUNKNOWN outer, DWORD, REFIID wanted, void** object) {
    if (!object) {
        return E_POINTER;
    }
    if (rastel::platform::Fails("CoCreateInstance", object)) {
        return E_FAIL;
    }
    if (outer) {
        return CLASS_E_NOAGGREGATION;
    }
    if (!(wantedClass == CLSID_DirectDraw) || !rastel::platform::Display()->Traits().directDraw) {
        return REGDB_E_CLASSNOTREG;
    }
    return rastel::platform::DirectDraw::Make(wanted, object);
}
