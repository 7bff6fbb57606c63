// Imlib2 images over a scene's memory. The library works on what its one context names.
#pragma once

#if defined(RASTEL_BENCH_HAS_IMLIB2)
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <vector>

#define X_DISPLAY_MISSING   // images in memory need no X
#include <Imlib2.h>

#include "support/scene.h"

namespace rastel::bench {

struct Imlib2Free {
    void operator()(void* image) const {
        imlib_context_set_image(image);
        imlib_free_image();   // the pixels stay their store's
    }
};
using Imlib2Owner = std::shared_ptr<void>;

// As wide as the rows are long, since an image has no pitch of its own.
inline Imlib2Owner Imlib2Image(Area area, int height, bool hasAlpha) {
    const Imlib2Owner image(
        imlib_create_image_using_data(area.pitch / 4, height, reinterpret_cast<std::uint32_t*>(area.at)), Imlib2Free());
    if (!image) {
        throw std::runtime_error("no Imlib2 image");
    }
    imlib_context_set_image(image.get());
    imlib_image_set_has_alpha(hasAlpha ? 1 : 0);
    return image;
}

template <class Pick>
std::vector<Imlib2Owner> Imlib2Images(const Scene& scene, Pick pick, bool hasAlpha) {
    std::vector<Imlib2Owner> images;
    for (unsigned i = 0; i < roundCount; ++i) {
        CSurface& store = *pick(scene.At(i));
        images.push_back(Imlib2Image(PixelsOf(store), store.GetHeight(), hasAlpha));
    }
    return images;
}

// Onto the whole round; both are straight, and the target's alpha grows where it has one.
inline void Imlib2Blend(const Imlib2Owner& source, const Imlib2Owner& target, const Round& r) {
    imlib_context_set_image(target.get());
    imlib_context_set_blend(1);
    imlib_context_set_cliprect(0, 0, 0, 0);
    imlib_blend_image_onto_image(source.get(), 1, 0, 0, r.width, r.height, r.x, r.y, r.width, r.height);
}

}   // namespace rastel::bench
#endif
