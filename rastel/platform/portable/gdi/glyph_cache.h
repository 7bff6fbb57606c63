// Glyphs that were drawn before. One entry a face, size, style, angle, smoothing and glyph.
#pragma once

#include <memory>
#include <utility>

#include "rastel/platform/portable/gdi/font_cache.h"
#include "rastel/platform/portable/gdi/font_scaled.h"
#include "rastel/platform/portable/gdi/glyph_image.h"

namespace rastel::platform {

// Not for several threads at once; the images are constant and may be shared.
class GlyphCache {
public:
    GlyphCache();

    // `needed` are the pixels round the pen that will be looked at. Empty image: nothing to see. `isWhole` may be null.
    std::shared_ptr<const GlyphImage> Get(ScaledFace& face, unsigned glyph, const GlyphBox& needed,
                                          bool* isWhole = nullptr);
    void Clear() { images_.Clear(); }
    unsigned long long DrawnCount() const { return drawnCount_; }

private:
    using Key = std::pair<unsigned long, unsigned>;   // a scaled face has a number that no other one ever gets

    FontCache<Key, std::shared_ptr<const GlyphImage>> images_;
    unsigned long long drawnCount_ = 0;
};

}   // namespace rastel::platform
