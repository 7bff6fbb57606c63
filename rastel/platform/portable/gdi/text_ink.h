// A laid out line as one picture, so that a line is one trip to the display.
#pragma once

#include "rastel/platform/portable/gdi/text_layout.h"

namespace rastel::platform {

// Glyphs and bars of the line inside `visible`; where they overlap, the one covers what the other leaves. The image is
// null when nothing shows.
PlacedImage MergeInk(const TextLine& line, const RECT& visible);

}   // namespace rastel::platform
