// GDI+: the bitmap and drawing classes.
#pragma once

#include "rastel/platform/export.h"

#if defined(_WIN32)
#include "rastel/platform/windows/gdiplus.h"
#else
#include "rastel/platform/portable/gdiplus.h"
#endif
