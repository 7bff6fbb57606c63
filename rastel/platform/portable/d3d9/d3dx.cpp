#include "rastel/platform/portable/d3d9/d3dx.h"

#include <cmath>

#include "rastel/platform/portable/d3d9/device.h"

namespace rastel::platform::d3d {

namespace {

float Dot(const D3DXVECTOR3& a, const D3DXVECTOR3& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

D3DXVECTOR3 Cross(const D3DXVECTOR3& a, const D3DXVECTOR3& b) {
    return D3DXVECTOR3(a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x);
}

D3DXVECTOR3 Unit(const D3DXVECTOR3& v) {
    const float length = std::sqrt(Dot(v, v));
    return length > 0 ? D3DXVECTOR3(v.x / length, v.y / length, v.z / length) : D3DXVECTOR3(0, 0, 0);
}

}   // namespace

HRESULT WINAPI CreateTextureD3dx(IDirect3DDevice9* device, UINT width, UINT height, UINT levels, DWORD usage,
                                 D3DFORMAT format, D3DPOOL pool, IDirect3DTexture9** texture) {
    if (!device || !texture) {
        return D3DERR_INVALIDCALL;
    }
    constexpr UINT byDefault = static_cast<UINT>(-1), defaultSide = 256;
    const auto side = [](UINT given) { return given == byDefault ? defaultSide : given == 0 ? 1u : given; };
    return device->CreateTexture(side(width), side(height), levels == byDefault ? 0 : levels, usage,
                                 format == D3DFMT_UNKNOWN ? D3DFMT_A8R8G8B8 : format, pool, texture, nullptr);
}

D3DXMATRIX* WINAPI MatrixPerspectiveFovLH(D3DXMATRIX* out, FLOAT fovY, FLOAT aspect, FLOAT nearest, FLOAT farthest) {
    if (out) {
        D3DXMATRIX matrix{};
        matrix._22 = 1 / std::tan(fovY / 2);
        matrix._11 = matrix._22 / aspect;
        matrix._33 = farthest / (farthest - nearest);
        matrix._34 = 1;
        matrix._43 = -nearest * matrix._33;
        *out = matrix;
    }
    return out;
}

D3DXMATRIX* WINAPI MatrixLookAtLH(D3DXMATRIX* out, const D3DXVECTOR3* eye, const D3DXVECTOR3* at,
                                  const D3DXVECTOR3* up) {
    if (!out || !eye || !at || !up) {
        return nullptr;
    }
    const D3DXVECTOR3 z = Unit(*at - *eye), x = Unit(Cross(*up, z)), y = Cross(z, x);
    const D3DXVECTOR3* const axes[] = {&x, &y, &z};
    D3DXMATRIX matrix{};
    for (int i = 0; i < 3; ++i) {
        matrix.m[0][i] = axes[i]->x;
        matrix.m[1][i] = axes[i]->y;
        matrix.m[2][i] = axes[i]->z;
        matrix.m[3][i] = -Dot(*axes[i], *eye);
    }
    matrix._44 = 1;
    *out = matrix;
    return out;
}

D3DXMATRIX* WINAPI MatrixMultiply(D3DXMATRIX* out, const D3DXMATRIX* first, const D3DXMATRIX* second) {
    if (!out || !first || !second) {
        return nullptr;
    }
    static_cast<D3DMATRIX&>(*out) = Product(*first, *second);
    return out;
}

HRESULT WINAPI CreateEffectFromFileW(IDirect3DDevice9*, LPCWSTR, const D3DXMACRO*, ID3DXInclude*, DWORD,
                                     ID3DXEffectPool*, ID3DXEffect** effect, ID3DXBuffer** errors) {
    if (effect) {
        *effect = nullptr;
    }
    if (errors) {
        *errors = nullptr;
    }
    return E_FAIL;
}

}   // namespace rastel::platform::d3d
