// The entry points of D3DX 9.
#pragma once

#include "rastel/platform/portable/d3d9.h"

namespace rastel::platform::d3d {

HRESULT WINAPI CreateTextureD3dx(IDirect3DDevice9* device, UINT width, UINT height, UINT levels, DWORD usage,
                                 D3DFORMAT format, D3DPOOL pool, IDirect3DTexture9** texture);
D3DXMATRIX* WINAPI MatrixPerspectiveFovLH(D3DXMATRIX* out, FLOAT fovY, FLOAT aspect, FLOAT nearest, FLOAT farthest);
D3DXMATRIX* WINAPI MatrixLookAtLH(D3DXMATRIX* out, const D3DXVECTOR3* eye, const D3DXVECTOR3* at,
                                  const D3DXVECTOR3* up);
D3DXMATRIX* WINAPI MatrixMultiply(D3DXMATRIX* out, const D3DXMATRIX* first, const D3DXMATRIX* second);

// There are no shaders here: null in all outputs, and E_FAIL.
HRESULT WINAPI CreateEffectFromFileW(IDirect3DDevice9* device, LPCWSTR file, const D3DXMACRO* defines,
                                     ID3DXInclude* include, DWORD flags, ID3DXEffectPool* pool, ID3DXEffect** effect,
                                     ID3DXBuffer** errors);

}   // namespace rastel::platform::d3d
