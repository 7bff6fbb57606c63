// Data and priorities that every resource has and nobody asks for.
#pragma once

#include "rastel/platform/portable/d3d9/device_object.h"

namespace rastel::platform::d3d {

template <class Interface, class BodyOf>
class Resource : public DeviceObject<Interface, BodyOf> {
public:
    using DeviceObject<Interface, BodyOf>::DeviceObject;

    HRESULT SetPrivateData(REFGUID, const void*, DWORD, DWORD) override { return D3DERR_INVALIDCALL; }
    HRESULT GetPrivateData(REFGUID, void*, DWORD*) override { return D3DERR_NOTFOUND; }
    HRESULT FreePrivateData(REFGUID) override { return D3DERR_NOTFOUND; }
    DWORD SetPriority(DWORD) override { return 0; }
    DWORD GetPriority() override { return 0; }
    void PreLoad() override {}
};

}   // namespace rastel::platform::d3d
