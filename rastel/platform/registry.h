// The registry of the current user.
#pragma once

#include "rastel/platform/export.h"

#if defined(_WIN32)
#include "rastel/platform/windows/registry.h"
#else
#include "rastel/platform/portable/registry.h"
#endif
