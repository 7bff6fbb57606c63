#include "rastel/platform/portable/gdi/glyph_cache.h"

#include <utility>

namespace rastel::platform {

namespace {
constexpr std::size_t kCapacityBytes = 8 << 20;
}

GlyphCache::GlyphCache() : images_(kCapacityBytes) {}

std::shared_ptr<const GlyphImage> GlyphCache::Get(ScaledFace& face, unsigned glyph, const GlyphBox& needed,
                                                  bool* isWhole) {
    const Key key(face.Id(), glyph);
    if (isWhole) {
        *isWhole = true;
    }
    if (auto known = images_.Find(key)) {
        return known;
    }
    ScaledFace::Drawn drawn = face.Draw(glyph, needed);
    drawnCount_++;
    auto image = std::make_shared<const GlyphImage>(std::move(drawn.image));
    if (drawn.whole) {
        images_.Insert(key, image, image->Bytes());
    } else if (isWhole) {
        *isWhole = false;
    }
    return image;
}

}   // namespace rastel::platform
