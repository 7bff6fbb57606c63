// The pixels of any colour surface, as words without row padding. A surface that refuses its lock gives zeros, and
// takes nothing.
#pragma once

#include <vector>

#include "rastel/platform/types.h"

class CSurface;

namespace rastel::test {

std::vector<DWORD> PixelsOf(CSurface& surface);
void SetPixels(CSurface& surface, const std::vector<DWORD>& pixels);

}   // namespace rastel::test
