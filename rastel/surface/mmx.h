// Whether the vector forms of the kernels may run. They have names and numbers of their own, so the host may
// choose the plain ones.
#pragma once

#include "rastel/platform/export.h"

RASTEL_API extern int s_MMXEnabled;    // what EnableMMX stored; 1 at load
RASTEL_API extern int s_MMXDetected;   // the cached result of the processor test; 0 at load

RASTEL_API void EnableMMX(int enable);   // kernels chosen already stay chosen
RASTEL_API int UseMMX();                 // 1: vector forms may run. Tests the processor until that once succeeds.
