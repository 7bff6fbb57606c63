// The Direct3D object: what the one adapter can do, and the devices on it.
#pragma once

#include "rastel/platform/portable/com_object.h"
#include "rastel/platform/portable/d3d9.h"

namespace rastel::platform::d3d {

class Direct3D final : public IDirect3D9 {
public:
    static IDirect3D9* Make(UINT version);   // null: another version than 32 or above, or no Direct3D on the display

    HRESULT QueryInterface(REFIID wanted, void** object) override;
    ULONG AddRef() override { return references_.Add(); }
    ULONG Release() override;
    HRESULT RegisterSoftwareDevice(void*) override { return D3DERR_INVALIDCALL; }
    UINT GetAdapterCount() override { return 1; }
    HRESULT GetAdapterIdentifier(UINT adapter, DWORD flags, D3DADAPTER_IDENTIFIER9* identifier) override;
    UINT GetAdapterModeCount(UINT adapter, D3DFORMAT format) override;
    HRESULT EnumAdapterModes(UINT adapter, D3DFORMAT format, UINT index, D3DDISPLAYMODE* mode) override;
    HRESULT GetAdapterDisplayMode(UINT adapter, D3DDISPLAYMODE* mode) override;
    HRESULT CheckDeviceType(UINT adapter, D3DDEVTYPE type, D3DFORMAT display, D3DFORMAT back, BOOL isWindowed) override;
    HRESULT CheckDeviceFormat(UINT adapter, D3DDEVTYPE type, D3DFORMAT display, DWORD usage, D3DRESOURCETYPE resource,
                              D3DFORMAT wanted) override;
    HRESULT CheckDeviceMultiSampleType(UINT, D3DDEVTYPE, D3DFORMAT, BOOL, D3DMULTISAMPLE_TYPE type,
                                       DWORD* levels) override;
    HRESULT CheckDepthStencilMatch(UINT adapter, D3DDEVTYPE type, D3DFORMAT display, D3DFORMAT target,
                                   D3DFORMAT depth) override;
    HRESULT CheckDeviceFormatConversion(UINT, D3DDEVTYPE, D3DFORMAT source, D3DFORMAT target) override;
    HRESULT GetDeviceCaps(UINT adapter, D3DDEVTYPE type, D3DCAPS9* caps) override;
    HMONITOR GetAdapterMonitor(UINT) override { return nullptr; }
    HRESULT CreateDevice(UINT adapter, D3DDEVTYPE type, HWND focus, DWORD flags, D3DPRESENT_PARAMETERS* parameters,
                         IDirect3DDevice9** device) override;

private:
    ~Direct3D() = default;
    ReferenceCount references_;
};

}   // namespace rastel::platform::d3d
