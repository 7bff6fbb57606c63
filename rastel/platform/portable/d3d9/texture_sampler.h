// The colour that a texture has at a place.
#pragma once

#include <array>

#include "rastel/platform/portable/d3d9/texture.h"

namespace rastel::platform::d3d {

using Color4 = std::array<float, 4>;   // red, green, blue, alpha; 0 to 1

struct SamplerState {
    DWORD addressU = D3DTADDRESS_WRAP, addressV = D3DTADDRESS_WRAP;
    DWORD magnifies = D3DTEXF_POINT, minifies = D3DTEXF_POINT, chooses = D3DTEXF_NONE;   // chooses: among the levels
};

class TextureSampler {
public:
    // `pixelsPerTexel` of the triangle to be drawn, by area, at the largest level.
    TextureSampler(const Levels& levels, const SamplerState& state, double pixelsPerTexel);

    Color4 At(float u, float v) const;   // whatever the numbers

private:
    Color4 Texel(int x, int y) const;

    const Image& image_;
    SamplerState state_;
    bool isLinear_;
};

Color4 ToColor4(DWORD argb);
DWORD ToArgb(const Color4& color);   // clamped and rounded

}   // namespace rastel::platform::d3d
