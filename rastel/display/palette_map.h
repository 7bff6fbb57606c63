// Which index of an 8-bit display stands nearest to a colour.
#pragma once

#include "rastel/platform/types.h"

// Rebuilds the map of 3-3-3 colours from the system palette of `hDC`. Not while another thread converts pixels.
RASTEL_API void SetPaletteMap(HDC hDC);

namespace rastel {

// 512 entries: bits 0 to 2 of the position are the top bits of red, 3 to 5 of green, 6 to 8 of blue. All 0 at first.
const unsigned char* PaletteMap();

}   // namespace rastel
