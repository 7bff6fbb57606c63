// Triangles onto a target, with depth, a texture and blending: the fixed functions, in plain loops.
#pragma once

#include "rastel/platform/portable/d3d9/texture_sampler.h"

namespace rastel::platform::d3d {

constexpr UINT mostTriangles = 1u << 24;   // of one call

struct ClipVertex {
    double x, y, z, w;   // seen where |x|, |y| <= w and 0 <= z <= w
    Color4 color;
    float u, v;
};

struct StageState {
    DWORD colorOp = D3DTOP_MODULATE, colorFirst = D3DTA_TEXTURE, colorSecond = D3DTA_CURRENT;
    DWORD alphaOp = D3DTOP_SELECTARG1, alphaFirst = D3DTA_TEXTURE, alphaSecond = D3DTA_CURRENT;
};

// All that a draw call knows but its vertices.
struct DrawState {
    Image* target = nullptr;
    Image* depth = nullptr;   // null: none
    D3DVIEWPORT9 viewport{};
    RECT limit{};   // pixels that may be written, inside target and depth
    DWORD cull = D3DCULL_CCW;
    bool isFlat = false;   // the first vertex's colour for all of the triangle
    bool testsDepth = false, writesDepth = false;
    DWORD depthFunction = D3DCMP_LESSEQUAL;
    bool testsAlpha = false;
    DWORD alphaFunction = D3DCMP_ALWAYS, alphaReference = 0;
    bool blends = false;
    DWORD sourceBlend = D3DBLEND_ONE, targetBlend = D3DBLEND_ZERO;
    StageState stage;
    SamplerState sampler;
    LevelsPointer texture;
    Color4 factor{1, 1, 1, 1};
};

// Vertices that are no numbers draw nothing. Neighbours that share an edge share no pixel and leave none out.
void DrawTriangle(const DrawState& state, const ClipVertex& first, const ClipVertex& second, const ClipVertex& third);

}   // namespace rastel::platform::d3d
