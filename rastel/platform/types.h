// The Windows base types: handles, rectangles, colour words, bitmap headers.
#pragma once

#include "rastel/platform/export.h"

#if defined(_WIN32)
#include "rastel/platform/windows/types.h"
#else
#include "rastel/platform/portable/types.h"
#endif
