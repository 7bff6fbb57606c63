// Pictures into surfaces and planes, and the screen into a picture.
#pragma once

#include <optional>

#include "examples/support/picture.h"
#include "rastel/rastel.h"
#include "rastel/surface/reference.h"

namespace rastel::example {

using Surface = rastel::Reference<CSurface>;
using Plane = rastel::Reference<CAlphaChannel>;

// All return null when the manager has no store for them, or the store refuses its pixels.
Surface ToSurface(CDisplayManager& manager, const Picture& picture);    // alpha bytes 0: they are passengers
Plane ToPlane(CDisplayManager& manager, const Picture& picture);        // the brightness of each pixel
Plane AlphaToPlane(CDisplayManager& manager, const Picture& picture);   // its coverage

// What is more transparent than not takes the colour `key`, a COLORREF, and nothing else has it.
Picture Keyed(const Picture& picture, COLORREF key);

// What the screen shows in that rectangle, whatever its format. Nothing: the screen can't be read.
std::optional<Picture> CaptureScreen(const RECT& area);

}   // namespace rastel::example
