// The faces that strings are drawn with: the same files that GDI's text finds.
#pragma once

#include <cairo.h>

#include "rastel/platform/portable/gdiplus/native.h"

namespace rastel::platform::gdip {

// Sets the face, and the size where it is one that cairo's shared fonts survive, else the nearest that is. Returns how
// many times larger the font is than what was set. Without any font on the machine cairo's own choice stays.
double SelectFont(cairo_t* cairo, const FontObject& font);

}   // namespace rastel::platform::gdip
