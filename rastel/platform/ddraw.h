// DirectDraw and the part of COM that reaches it.
#pragma once

#include "rastel/platform/export.h"

#if defined(_WIN32)
#include "rastel/platform/windows/ddraw.h"
#else
#include "rastel/platform/portable/ddraw.h"
#endif
