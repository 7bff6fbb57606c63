#include "rastel/platform/portable/d3d9/entry_points.h"

#include "rastel/platform/portable/d3d9/d3dx.h"
#include "rastel/platform/portable/d3d9/direct3d.h"

namespace rastel::platform::d3d {

namespace {

IDirect3D9* WINAPI Create(UINT version) {
    return Direct3D::Make(version);
}

// As a pointer to no function in particular, which the caller knows better.
template <class Function>
FARPROC EntryPoint(Function* function) {
    return reinterpret_cast<FARPROC>(reinterpret_cast<void (*)()>(function));
}

}   // namespace

std::span<const ModuleEntryPoint> Direct3DEntryPoints() {
    static const ModuleEntryPoint points[] = {{"Direct3DCreate9", EntryPoint(Create)}};
    return points;
}

std::span<const ModuleEntryPoint> D3dxEntryPoints() {
    static const ModuleEntryPoint points[] = {{"D3DXCreateTexture", EntryPoint(CreateTextureD3dx)},
                                              {"D3DXMatrixPerspectiveFovLH", EntryPoint(MatrixPerspectiveFovLH)},
                                              {"D3DXMatrixLookAtLH", EntryPoint(MatrixLookAtLH)},
                                              {"D3DXCreateEffectFromFileW", EntryPoint(CreateEffectFromFileW)},
                                              {"D3DXMatrixMultiply", EntryPoint(MatrixMultiply)}};
    return points;
}

}   // namespace rastel::platform::d3d
