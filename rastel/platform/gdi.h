// Device contexts, bitmaps, brushes, pens, fonts, palettes, regions, blits and text.
#pragma once

#include "rastel/platform/export.h"

#if defined(_WIN32)
#include "rastel/platform/windows/gdi.h"
#else
#include "rastel/platform/portable/gdi.h"
#endif
