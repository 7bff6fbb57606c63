// Performance counter, priorities, version, modules with their resources, global memory and files.
#pragma once

#include "rastel/platform/export.h"

#if defined(_WIN32)
#include "rastel/platform/windows/kernel.h"
#else
#include "rastel/platform/portable/kernel.h"
#endif
