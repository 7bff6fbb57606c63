#pragma once

#include "rastel/platform/windows/types.h"

#include <objbase.h>

// The system's GDI+ headers call min and max without naming their namespace.
#include <algorithm>
namespace Gdiplus {
using std::max;
using std::min;
}   // namespace Gdiplus

#include <gdiplus.h>
