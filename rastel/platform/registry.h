// The registry of the current user.
#pragma once

#if defined(_WIN32)
#include "rastel/platform/windows/registry.h"
#else
#include "rastel/platform/portable/registry.h"
#endif
