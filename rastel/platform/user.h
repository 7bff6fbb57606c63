// Rectangle functions, windows, system metrics and display settings.
#pragma once

#include "rastel/platform/export.h"

#if defined(_WIN32)
#include "rastel/platform/windows/user.h"
#else
#include "rastel/platform/portable/user.h"
#endif
