// Direct3D 9 and D3DX 9.
#pragma once

#include "rastel/platform/export.h"

#if defined(_WIN32)
#include "rastel/platform/windows/d3d9.h"
#else
#include "rastel/platform/portable/d3d9.h"
#endif
