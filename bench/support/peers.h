// The peers' own objects over a scene's memory, for as many peers as this machine has.
#pragma once

#include <cstdint>
#include <memory>
#include <stdexcept>
#include <vector>

#include "support/scene.h"

#if defined(RASTEL_BENCH_HAS_LIBYUV)
#include <libyuv.h>
#endif

#if defined(RASTEL_BENCH_HAS_PIXMAN)
#include <pixman.h>

namespace rastel::bench {

struct PixmanUnref {
    void operator()(pixman_image_t* image) const { pixman_image_unref(image); }
};
using PixmanOwner = std::shared_ptr<pixman_image_t>;

inline PixmanOwner PixmanImage(Area area, int width, int height, pixman_format_code_t format = PIXMAN_a8r8g8b8) {
    pixman_image_t* const image =
        pixman_image_create_bits(format, width, height, reinterpret_cast<std::uint32_t*>(area.at), area.pitch);
    if (!image) {
        throw std::runtime_error("no pixman image");
    }
    return PixmanOwner(image, PixmanUnref());
}

inline PixmanOwner PixmanImage(CSurfaceBase& store) {
    return PixmanImage(PixelsOf(store), store.GetWidth(), store.GetHeight(),
                       store.GetBytesPrPixel() == 4 ? PIXMAN_a8r8g8b8 : PIXMAN_a8);
}

// One image for each round; `pick` gives the round's store.
template <class Pick>
std::vector<PixmanOwner> PixmanImages(const Scene& scene, Pick pick) {
    std::vector<PixmanOwner> images;
    for (unsigned i = 0; i < roundCount; ++i) {
        images.push_back(PixmanImage(*pick(scene.At(i))));
    }
    return images;
}

inline PixmanOwner PixmanSolid(pixman_color_t color) {
    return PixmanOwner(pixman_image_create_solid_fill(&color), PixmanUnref());
}

inline void PixmanComposite(pixman_op_t operation, const PixmanOwner& source, const PixmanOwner& target,
                            const Round& r) {
    pixman_image_composite32(operation, source.get(), nullptr, target.get(), 0, 0, 0, 0, r.x, r.y, r.width, r.height);
}

inline std::uint32_t* PixmanBits(Area area) {
    return reinterpret_cast<std::uint32_t*>(area.at);
}

}   // namespace rastel::bench
#endif

#if defined(RASTEL_BENCH_HAS_CAIRO)
#include <cairo.h>

namespace rastel::bench {

struct CairoDestroy {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
    void operator()(cairo_t* context) const { cairo_destroy(context); }
};
using CairoOwner = std::shared_ptr<cairo_surface_t>;
using CairoContext = std::shared_ptr<cairo_t>;

inline CairoOwner CairoSurface(CSurfaceBase& store) {
    const Area area = PixelsOf(store);
    return CairoOwner(cairo_image_surface_create_for_data(
                          area.at, store.GetBytesPrPixel() == 4 ? CAIRO_FORMAT_RGB24 : CAIRO_FORMAT_A8,
                          store.GetWidth(), store.GetHeight(), area.pitch),
                      CairoDestroy());
}

template <class Pick>
std::vector<CairoOwner> CairoSurfaces(const Scene& scene, Pick pick) {
    std::vector<CairoOwner> surfaces;
    for (unsigned i = 0; i < roundCount; ++i) {
        surfaces.push_back(CairoSurface(*pick(scene.At(i))));
    }
    return surfaces;
}

inline std::vector<CairoContext> CairoTargets(const Scene& scene) {
    std::vector<CairoContext> contexts;
    for (const CairoOwner& surface : CairoSurfaces(scene, [](const Round& r) { return r.target; })) {
        contexts.emplace_back(cairo_create(surface.get()), CairoDestroy());
    }
    return contexts;
}

}   // namespace rastel::bench
#endif

#if defined(RASTEL_BENCH_HAS_SDL2)
#include <SDL.h>

namespace rastel::bench {

using SdlOwner = std::shared_ptr<SDL_Surface>;

inline SdlOwner SdlSurface(CSurfaceBase& store) {
    const Area area = PixelsOf(store);
    const bool colors = store.GetBytesPrPixel() == 4;
    SDL_Surface* const surface = SDL_CreateRGBSurfaceWithFormatFrom(
        area.at, store.GetWidth(), store.GetHeight(), colors ? 32 : 8, area.pitch,
        colors ? static_cast<Uint32>(SDL_PIXELFORMAT_RGB888) : static_cast<Uint32>(SDL_PIXELFORMAT_INDEX8));
    if (!surface) {
        throw std::runtime_error("no SDL surface");
    }
    return SdlOwner(surface, SDL_FreeSurface);
}

template <class Pick>
std::vector<SdlOwner> SdlSurfaces(const Scene& scene, Pick pick) {
    std::vector<SdlOwner> surfaces;
    for (unsigned i = 0; i < roundCount; ++i) {
        surfaces.push_back(SdlSurface(*pick(scene.At(i))));
    }
    return surfaces;
}

using SdlRendererOwner = std::shared_ptr<SDL_Renderer>;
using SdlTextureOwner = std::shared_ptr<SDL_Texture>;

// Software renderers onto the targets, and the noise pictures as textures of theirs.
inline std::vector<SdlRendererOwner> SdlRenderers(const Scene& scene) {
    std::vector<SdlRendererOwner> renderers;
    for (const SdlOwner& target : SdlSurfaces(scene, [](const Round& r) { return r.target; })) {
        // The renderer needs its surface as long as it lives.
        renderers.emplace_back(SDL_CreateSoftwareRenderer(target.get()),
                               [target](SDL_Renderer* renderer) { SDL_DestroyRenderer(renderer); });
    }
    return renderers;
}

inline std::vector<SdlTextureOwner> SdlTextures(const Scene& scene, const std::vector<SdlRendererOwner>& renderers) {
    std::vector<SdlTextureOwner> textures;
    const auto pictures = SdlSurfaces(scene, [](const Round& r) { return r.noise; });
    for (std::size_t i = 0; i < pictures.size(); ++i) {
        // The texture goes before its renderer.
        textures.emplace_back(SDL_CreateTextureFromSurface(renderers[i].get(), pictures[i].get()),
                              [renderer = renderers[i]](SDL_Texture* texture) { SDL_DestroyTexture(texture); });
        SDL_SetTextureBlendMode(textures.back().get(), SDL_BLENDMODE_NONE);
    }
    return textures;
}

inline SDL_Rect SdlRect(const Round& r) {
    return {r.x, r.y, r.width, r.height};
}

}   // namespace rastel::bench
#endif
