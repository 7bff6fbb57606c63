// The few things of D3DX 9 that hosts of this library use.
#pragma once

#include "rastel/platform/portable/d3d9/types.h"

struct D3DXVECTOR3 {
    D3DXVECTOR3() = default;
    D3DXVECTOR3(float atX, float atY, float atZ) : x(atX), y(atY), z(atZ) {}

    D3DXVECTOR3 operator-() const { return {-x, -y, -z}; }
    D3DXVECTOR3 operator+(const D3DXVECTOR3& v) const { return {x + v.x, y + v.y, z + v.z}; }
    D3DXVECTOR3 operator-(const D3DXVECTOR3& v) const { return {x - v.x, y - v.y, z - v.z}; }
    D3DXVECTOR3 operator*(float factor) const { return {x * factor, y * factor, z * factor}; }
    D3DXVECTOR3 operator/(float divisor) const { return *this * (1.0f / divisor); }
    D3DXVECTOR3& operator+=(const D3DXVECTOR3& v) { return *this = *this + v; }
    D3DXVECTOR3& operator-=(const D3DXVECTOR3& v) { return *this = *this - v; }
    D3DXVECTOR3& operator*=(float factor) { return *this = *this * factor; }
    D3DXVECTOR3& operator/=(float divisor) { return *this = *this / divisor; }
    bool operator==(const D3DXVECTOR3& v) const = default;

    float x, y, z;
};
inline D3DXVECTOR3 operator*(float factor, const D3DXVECTOR3& v) {
    return v * factor;
}

struct D3DXMATRIX : D3DMATRIX {
    float& operator()(UINT row, UINT column) { return m[row][column]; }
    float operator()(UINT row, UINT column) const { return m[row][column]; }
};

struct D3DXMACRO {
    LPCSTR Name;
    LPCSTR Definition;
};

struct ID3DXInclude;
struct ID3DXEffectPool;
struct ID3DXEffect;
struct ID3DXBuffer;

static_assert(sizeof(D3DXVECTOR3) == 12 && sizeof(D3DXMATRIX) == 64);
