// GDI+ on our own rasters, for systems that have none: bitmaps, image files and a Graphics to draw with.
//
// Colours are straight ARGB, in and out. A drawing changes no pixel that it doesn't cover. No start-up call is needed.
#pragma once

#include "rastel/platform/portable/gdiplus/flat.h"
#include "rastel/platform/portable/gdiplus/graphics.h"
#include "rastel/platform/portable/gdiplus/image.h"
#include "rastel/platform/portable/gdiplus/tools.h"
#include "rastel/platform/portable/gdiplus/types.h"
