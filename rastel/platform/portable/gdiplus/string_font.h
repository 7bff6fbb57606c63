// The faces that strings are drawn with: the same files that GDI's text finds.
#pragma once

#include <cairo.h>

#include "rastel/platform/portable/gdiplus/native.h"

namespace rastel::platform::gdip {

// Sets face and size. Without any font on the machine cairo's own choice stays.
void SelectFont(cairo_t* cairo, const FontObject& font);

}   // namespace rastel::platform::gdip
