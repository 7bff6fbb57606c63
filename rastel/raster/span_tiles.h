// Triangles whose rows are drawn several at a time, side by side.
//
// A span that runs down a texture meets rows whose addresses differ by the pitch. Where a large power of two divides
// that, all these rows share a few sets of the processor's first cache, and by its end the span has pushed out the
// lines that the next one, a texel beside it, wants again.
#pragma once

#include <cstddef>

#include "rastel/platform/framework.h"
#include "rastel/raster/face3d.h"
#include "rastel/surface/pixel_lock.h"

namespace rastel::raster {

// Whether that is to be expected of a face within the limits of 32 bits.
bool CrowdsTheCache(const FACE3D& face, std::ptrdiff_t texturePitch, int texelBytes);

// The same pixels as by DrawTriangle, for such a face. Step is one of texture_steps.h.
template <class Step>
void DrawInTiles(const PixelLock& target, const FACE3D& face, const CRect& clip, const Step& step);

}   // namespace rastel::raster
