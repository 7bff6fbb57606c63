#include "rastel/platform/portable/d3d9/direct3d.h"

#include <new>

#include "rastel/platform/portable/d3d9/capabilities.h"
#include "rastel/platform/portable/d3d9/device.h"

namespace rastel::platform::d3d {

namespace {

// Formats that a display may have.
bool IsDisplayFormat(D3DFORMAT format) {
    return IsColorFormat(format) && format != D3DFMT_A8R8G8B8;
}

D3DDISPLAYMODE Described(const DisplayMode& mode, D3DFORMAT format) {
    return {static_cast<UINT>(mode.width), static_cast<UINT>(mode.height), static_cast<UINT>(mode.refreshHz), format};
}

}   // namespace

IDirect3D9* Direct3D::Make(UINT version) {
    constexpr UINT debugBit = 0x80000000;
    if (ShouldFail("Direct3DCreate9") || (version & ~debugBit) < D3D_SDK_VERSION || !Display()->Traits().direct3D) {
        return nullptr;
    }
    return new (std::nothrow) Direct3D;
}

HRESULT Direct3D::QueryInterface(REFIID wanted, void** object) {
    if (!object) {
        return E_POINTER;
    }
    if (Fails("QueryInterface", object)) {
        return E_FAIL;
    }
    return HandOut(wanted == IID_IUnknown || wanted == IID_IDirect3D9 ? this : nullptr, object);
}

ULONG Direct3D::Release() {
    const ULONG left = references_.Take();
    if (left == 0) {
        delete this;
    }
    return left;
}

HRESULT Direct3D::GetAdapterIdentifier(UINT adapter, DWORD, D3DADAPTER_IDENTIFIER9* identifier) {
    if (adapter != D3DADAPTER_DEFAULT || !identifier || ShouldFail("GetAdapterIdentifier")) {
        return D3DERR_INVALIDCALL;
    }
    *identifier = AdapterIdentifier();
    return D3D_OK;
}

HRESULT Direct3D::GetDeviceCaps(UINT adapter, D3DDEVTYPE type, D3DCAPS9* caps) {
    if (adapter != D3DADAPTER_DEFAULT || !caps || ShouldFail("GetDeviceCaps")) {
        return D3DERR_INVALIDCALL;
    }
    *caps = Capabilities(type);
    return D3D_OK;
}

UINT Direct3D::GetAdapterModeCount(UINT adapter, D3DFORMAT format) {
    UINT count = 0;
    D3DDISPLAYMODE mode;
    while (EnumAdapterModes(adapter, format, count, &mode) == D3D_OK) {
        ++count;
    }
    return count;
}

HRESULT Direct3D::EnumAdapterModes(UINT adapter, D3DFORMAT format, UINT index, D3DDISPLAYMODE* mode) try {
    if (adapter != D3DADAPTER_DEFAULT || !mode || ShouldFail("EnumAdapterModes")) {
        return D3DERR_INVALIDCALL;
    }
    const int wanted = format == D3DFMT_X8R8G8B8 ? 32 : format == D3DFMT_R5G6B5 ? 16 : 0;
    for (const DisplayMode& known : Display()->Modes()) {
        if (known.bitsPerPixel == wanted && index-- == 0) {
            *mode = Described(known, format);
            return D3D_OK;
        }
    }
    return D3DERR_INVALIDCALL;
} catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
}

HRESULT Direct3D::GetAdapterDisplayMode(UINT adapter, D3DDISPLAYMODE* mode) {
    if (adapter != D3DADAPTER_DEFAULT || !mode || ShouldFail("GetAdapterDisplayMode")) {
        return D3DERR_INVALIDCALL;
    }
    *mode = Described(Display()->Mode(), DisplayFormat());
    return D3D_OK;
}

HRESULT Direct3D::CheckDeviceType(UINT adapter, D3DDEVTYPE, D3DFORMAT display, D3DFORMAT back, BOOL isWindowed) {
    if (adapter != D3DADAPTER_DEFAULT || ShouldFail("CheckDeviceType")) {
        return D3DERR_INVALIDCALL;
    }
    return isWindowed && IsDisplayFormat(display) && (IsColorFormat(back) || back == D3DFMT_UNKNOWN)
               ? D3D_OK
               : D3DERR_NOTAVAILABLE;
}

HRESULT Direct3D::CheckDeviceFormat(UINT adapter, D3DDEVTYPE, D3DFORMAT display, DWORD usage, D3DRESOURCETYPE resource,
                                    D3DFORMAT wanted) {
    if (adapter != D3DADAPTER_DEFAULT || ShouldFail("CheckDeviceFormat")) {
        return D3DERR_INVALIDCALL;
    }
    if (!IsDisplayFormat(display)) {
        return D3DERR_NOTAVAILABLE;
    }
    const bool isPicture = resource == D3DRTYPE_SURFACE || resource == D3DRTYPE_TEXTURE;
    const bool isOffered = usage & D3DUSAGE_DEPTHSTENCIL ? resource == D3DRTYPE_SURFACE && IsDepthFormat(wanted)
                                                         : isPicture && IsColorFormat(wanted);
    return isOffered ? D3D_OK : D3DERR_NOTAVAILABLE;
}

HRESULT Direct3D::CheckDeviceMultiSampleType(UINT, D3DDEVTYPE, D3DFORMAT, BOOL, D3DMULTISAMPLE_TYPE type,
                                             DWORD* levels) {
    if (levels) {
        *levels = 1;
    }
    return type == D3DMULTISAMPLE_NONE ? D3D_OK : D3DERR_NOTAVAILABLE;
}

HRESULT Direct3D::CheckDepthStencilMatch(UINT adapter, D3DDEVTYPE, D3DFORMAT display, D3DFORMAT target,
                                         D3DFORMAT depth) {
    if (adapter != D3DADAPTER_DEFAULT) {
        return D3DERR_INVALIDCALL;
    }
    return IsDisplayFormat(display) && IsColorFormat(target) && IsDepthFormat(depth) ? D3D_OK : D3DERR_NOTAVAILABLE;
}

HRESULT Direct3D::CheckDeviceFormatConversion(UINT, D3DDEVTYPE, D3DFORMAT source, D3DFORMAT target) {
    return IsColorFormat(source) && IsColorFormat(target) ? D3D_OK : D3DERR_NOTAVAILABLE;
}

HRESULT Direct3D::CreateDevice(UINT adapter, D3DDEVTYPE type, HWND focus, DWORD flags,
                               D3DPRESENT_PARAMETERS* parameters, IDirect3DDevice9** device) {
    if (!device) {
        return D3DERR_INVALIDCALL;
    }
    if (Fails("CreateDevice", device) || adapter != D3DADAPTER_DEFAULT || !parameters) {
        return D3DERR_INVALIDCALL;
    }
    return Device::Make(*this, {adapter, type, focus, flags}, parameters, device);
}

}   // namespace rastel::platform::d3d
