// What is a sensible display mode, and which ones a display without hardware offers.
#pragma once

#include <vector>

#include "rastel/platform/portable/screen/display_device.h"

namespace rastel::platform {

bool IsSensibleMode(int width, int height, int bitsPerPixel);

// Three non-empty, contiguous, disjoint masks inside the pixel.
bool AreSensibleMasks(int storedBits, DWORD red, DWORD green, DWORD blue);

std::vector<DisplayMode> UsualModes(int refreshHz);

}   // namespace rastel::platform
