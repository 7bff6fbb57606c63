// What all resources have in common: a device that they keep, and data and priorities that nobody asks for.
#pragma once

#include "rastel/platform/portable/com_object.h"
#include "rastel/platform/portable/d3d9.h"

namespace rastel::platform::d3d {

template <class Interface>
class Resource : public Interface {
public:
    ULONG AddRef() override { return references_.Add(); }
    ULONG Release() override {
        const ULONG left = references_.Take();
        if (left == 0) {
            delete this;
        }
        return left;
    }

    HRESULT GetDevice(IDirect3DDevice9** device) override {
        if (!device) {
            return D3DERR_INVALIDCALL;
        }
        device_.AddRef();
        *device = &device_;
        return D3D_OK;
    }
    HRESULT SetPrivateData(REFGUID, const void*, DWORD, DWORD) override { return D3DERR_INVALIDCALL; }
    HRESULT GetPrivateData(REFGUID, void*, DWORD*) override { return D3DERR_NOTFOUND; }
    HRESULT FreePrivateData(REFGUID) override { return D3DERR_NOTFOUND; }
    DWORD SetPriority(DWORD) override { return 0; }
    DWORD GetPriority() override { return 0; }
    void PreLoad() override {}

protected:
    explicit Resource(IDirect3DDevice9& device) : device_(device) { device_.AddRef(); }
    virtual ~Resource() { device_.Release(); }

    IDirect3DDevice9& device_;   // held

private:
    ReferenceCount references_;
};

}   // namespace rastel::platform::d3d
