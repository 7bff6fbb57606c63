// Composites that the pages draw with.
#pragma once

#include "examples/support/stores.h"

namespace rastel::showcase {

using Composite = Reference<CAdvSurface>;

// A composite around a store that somebody else may hold too; no plane, no key.
Composite Around(CSurface& surface);

// The same with what is transparent in the sprites.
Composite KeyedComposite(CSurface& sprite);

// Evenly coloured, with a plane: opaque inside a disc that fills the square, soft over `softness` pixels at its edge.
// Null: there is no memory.
Composite Disc(CDisplayManager& manager, int side, int softness, COLORREF color);

// The picture with a plane of its own: opaque but for a soft rim.
Composite SoftEdged(CDisplayManager& manager, CSurface& picture, int softness);

// Squares of two greys, as behind something transparent.
void DrawChecks(CSurface& page, const CRect& area, int side);

}   // namespace rastel::showcase
