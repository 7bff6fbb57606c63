// A short way for single characters, which hosts that place their letters themselves write by the thousand.
#pragma once

#include "rastel/platform/portable/gdi.h"

namespace rastel::platform {

struct DeviceContext;

// Draws one upright character without cell or bars on a bitmap of 32 bits or of 256 greys, exactly as a line of its own
// would come out. False: nothing was done, this is another case.
bool DrawQuickly(DeviceContext& context, int x, int y, LPCWSTR text, int length);

}   // namespace rastel::platform
