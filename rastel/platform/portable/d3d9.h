// The names of Direct3D 9 that the display classes show in their interfaces.
#pragma once

#include "rastel/platform/portable/types.h"

struct IDirect3D9;
struct IDirect3DDevice9;
struct IDirect3DSurface9;
struct IDirect3DTexture9;

enum D3DFORMAT : DWORD {
    D3DFMT_UNKNOWN = 0,
    D3DFMT_D32 = 71,
    D3DFMT_D15S1 = 73,
    D3DFMT_D24S8 = 75,
    D3DFMT_D24X8 = 77,
    D3DFMT_D24X4S4 = 79,
    D3DFMT_D16 = 80,
    D3DFMT_FORCE_DWORD = 0x7FFFFFFF
};

enum D3DSWAPEFFECT : DWORD {
    D3DSWAPEFFECT_DISCARD = 1,
    D3DSWAPEFFECT_FLIP = 2,
    D3DSWAPEFFECT_COPY = 3,
    D3DSWAPEFFECT_FORCE_DWORD = 0x7FFFFFFF
};
