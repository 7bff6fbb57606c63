// Which display the process draws on.
#pragma once

#include <string>

#include "rastel/platform/export.h"

namespace rastel::platform {

RASTEL_API std::wstring DisplayKind();   // "x11" or "memory"
RASTEL_API std::wstring
DisplayDeclined();   // why what was tried before it would not do; empty: it was the first choice

}   // namespace rastel::platform
