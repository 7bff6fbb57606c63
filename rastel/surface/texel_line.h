// A straight line through a texture.
#pragma once

#include "rastel/platform/types.h"

namespace rastel::kernels {

// The texel of a row's first pixel and the way to the next one's, in 16.16: the whole parts are column and row.
struct TexelLine {
    DWORD u, v;
    DWORD stepU, stepV;
};

// How many lines a tile of texels has, and what the number of its columns is a multiple of.
constexpr int tileRows = 8, tileColumns = 8;

}   // namespace rastel::kernels
