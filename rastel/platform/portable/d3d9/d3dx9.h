// The few things of D3DX 9 that hosts of this library use.
#pragma once

#include "rastel/platform/portable/d3d9/types.h"

struct D3DXVECTOR3 {
    D3DXVECTOR3() = default;
    D3DXVECTOR3(float atX, float atY, float atZ) : x(atX), y(atY), z(atZ) {}

    float x, y, z;
};

struct D3DXMATRIX : D3DMATRIX {};

struct D3DXMACRO {
    LPCSTR Name;
    LPCSTR Definition;
};

struct ID3DXInclude;
struct ID3DXEffectPool;
struct ID3DXEffect;
struct ID3DXBuffer;

static_assert(sizeof(D3DXVECTOR3) == 12 && sizeof(D3DXMATRIX) == 64);
