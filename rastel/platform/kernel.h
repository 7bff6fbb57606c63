// Performance counter, priorities, version, modules and global memory.
#pragma once

#if defined(_WIN32)
#include "rastel/platform/windows/kernel.h"
#else
#include "rastel/platform/portable/kernel.h"
#endif
