// The font that a context draws with.
#pragma once

#include "rastel/platform/portable/gdi.h"

namespace rastel::platform {

struct DeviceContext;

LOGFONTW FontOf(const DeviceContext& context);   // the system font where none was selected

}   // namespace rastel::platform
