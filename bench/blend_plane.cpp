// Pictures and colours through a plane. Peers that take no mask blend a source that has its alpha within.
#include <string>

#include "families.h"
#include "support/contenders.h"
#include "support/imlib2_peers.h"
#include "support/peers.h"
#include "support/qt_peers.h"

namespace rastel::bench {
namespace {

struct PlaneKind {
    const char* name;
    CAlphaChannel* Round::*plane;
    Area Round::*area;
};

constexpr PlaneKind kinds[] = {{"noise", &Round::plane, &Round::fromPlane},
                               {"ink", &Round::inkPlane, &Round::fromInkPlane}};

// The noise picture with the plane's bytes as its alpha, tightly packed; one for each round.
[[maybe_unused]] std::vector<std::vector<DWORD>> PicturesWithAlpha(const Scene& scene, const PlaneKind& kind) {
    std::vector<std::vector<DWORD>> pictures;
    for (unsigned i = 0; i < roundCount; ++i) {
        const Round& r = scene.At(i);
        std::vector<DWORD>& picture = pictures.emplace_back();
        for (int y = 0; y < r.height; ++y) {
            const auto* const pixels =
                reinterpret_cast<const DWORD*>(r.fromNoise.at + static_cast<std::ptrdiff_t>(y) * r.fromNoise.pitch);
            const BYTE* const alpha = (r.*kind.area).at + static_cast<std::ptrdiff_t>(y) * (r.*kind.area).pitch;
            for (int x = 0; x < r.width; ++x) {
                picture.push_back((pixels[x] & 0xFFFFFF) | DWORD{alpha[x]} << 24);
            }
        }
    }
    return pictures;
}

// Such pictures and a peer's images over their pixels, one for each round.
template <class Image>
struct StraightSources {
    template <class Make>
    StraightSources(const Scene& scene, const PlaneKind& kind, Make make)
        : pictures(std::make_shared<std::vector<std::vector<DWORD>>>(PicturesWithAlpha(scene, kind))) {
        const Size size = scene.GetSize();
        for (std::vector<DWORD>& picture : *pictures) {
            images.push_back(make(Area{reinterpret_cast<BYTE*>(picture.data()), size.width * 4}, size));
        }
    }
    std::shared_ptr<std::vector<std::vector<DWORD>>> pictures;
    std::vector<Image> images;
};

void AddPicture(Suite& suite, const PlaneKind& kind) {
    const std::string operation = std::string("alpha, ") + kind.name;
    suite.Aim(operation, 1.5, 640 * 480);
    AddMemcpy(suite, operation);
    suite.Add(operation, "Rastel", [kind](const Round& r) {
        return r.target->AlphaBlt(r.x, r.y, *r.noise, *(r.*kind.plane), nullptr, nullptr);
    });
    AddTables(suite, operation, [kind](const kernels::RowTable& table, const Round& r) {
        table.alphaRect(r.to.at, r.to.pitch, r.fromNoise.at, r.fromNoise.pitch, (r.*kind.area).at, (r.*kind.area).pitch,
                        r.width, r.height);
    });
#if defined(RASTEL_BENCH_HAS_PIXMAN)
    suite.AddPrepared(operation, "pixman", [kind](Scene& scene) {
        return [sources = PixmanImages(scene, [](const Round& r) { return r.noise; }),
                masks = PixmanImages(scene, [kind](const Round& r) { return r.*kind.plane; }),
                targets = PixmanImages(scene, [](const Round& r) { return r.target; })](const Round& r) {
            const auto i = static_cast<std::size_t>(r.index);
            pixman_image_composite32(PIXMAN_OP_OVER, sources[i].get(), masks[i].get(), targets[i].get(), 0, 0, 0, 0,
                                     r.x, r.y, r.width, r.height);
        };
    });
#endif
#if defined(RASTEL_BENCH_HAS_CAIRO)
    suite.AddPrepared(operation, "cairo", [kind](Scene& scene) {
        return [sources = CairoSurfaces(scene, [](const Round& r) { return r.noise; }),
                masks = CairoSurfaces(scene, [kind](const Round& r) { return r.*kind.plane; }),
                targets = CairoTargets(scene)](const Round& r) {
            const auto i = static_cast<std::size_t>(r.index);
            cairo_set_source_surface(targets[i].get(), sources[i].get(), r.x, r.y);
            cairo_mask_surface(targets[i].get(), masks[i].get(), r.x, r.y);
        };
    });
#endif
#if defined(RASTEL_BENCH_HAS_SDL2)
    suite.AddPrepared(operation, "SDL2", [kind](Scene& scene) {
        const StraightSources<SdlOwner> sources(scene, kind, [](Area area, Size size) {
            const SdlOwner image(SDL_CreateRGBSurfaceWithFormatFrom(area.at, size.width, size.height, 32, area.pitch,
                                                                    SDL_PIXELFORMAT_ARGB8888),
                                 SDL_FreeSurface);
            SDL_SetSurfaceBlendMode(image.get(), SDL_BLENDMODE_BLEND);
            return image;
        });
        return [sources, targets = SdlSurfaces(scene, [](const Round& r) { return r.target; })](const Round& r) {
            const auto i = static_cast<std::size_t>(r.index);
            SDL_Rect to = SdlRect(r);
            return SDL_BlitSurface(sources.images[i].get(), nullptr, targets[i].get(), &to) == 0;
        };
    });
#endif
#if defined(RASTEL_BENCH_HAS_QT)
    suite.AddPrepared(operation, "Qt, straight", [kind](Scene& scene) {
        const StraightSources<QImage> sources(scene, kind, [](Area area, Size size) {
            return QImage(area.at, size.width, size.height, area.pitch, QImage::Format_ARGB32);
        });
        return [sources, targets = QtPainters(scene, QImage::Format_RGB32)](const Round& r) {
            const auto i = static_cast<std::size_t>(r.index);
            targets[i]->painter.drawImage(r.x, r.y, sources.images[i]);
        };
    });
#endif
#if defined(RASTEL_BENCH_HAS_IMLIB2)
    suite.AddPrepared(operation, "Imlib2, straight", [kind](Scene& scene) {
        const StraightSources<Imlib2Owner> sources(
            scene, kind, [](Area area, Size size) { return Imlib2Image(area, size.height, true); });
        return [sources, targets = Imlib2Images(
                             scene, [](const Round& r) { return r.target; }, false)](const Round& r) {
            const auto i = static_cast<std::size_t>(r.index);
            Imlib2Blend(sources.images[i], targets[i], r);
        };
    });
#endif
#if defined(RASTEL_BENCH_HAS_LIBYUV)
    suite.AddPrepared(operation, "libyuv", [kind](Scene& scene) {
        return [pictures = PicturesWithAlpha(scene, kind)](const Round& r) {
            const auto& picture = pictures[static_cast<std::size_t>(r.index)];
            return libyuv::ARGBBlend(reinterpret_cast<const BYTE*>(picture.data()), r.width * 4, r.to.at, r.to.pitch,
                                     r.to.at, r.to.pitch, r.width, r.height) == 0;
        };
    });
#endif
}

void AddColor(Suite& suite, const PlaneKind& kind, double aim) {
    const std::string operation = std::string("alpha colour, ") + kind.name;
    suite.Aim(operation, aim, 640 * 480);
    AddMemcpy(suite, operation);
    suite.Add(operation, "Rastel", [kind](const Round& r) {
        return r.target->AlphaColorBlt(r.x, r.y, 0x804020, *(r.*kind.plane), nullptr, nullptr);
    });
    AddTables(suite, operation, [kind](const kernels::RowTable& table, const Round& r) {
        table.alphaColorRect(r.to.at, r.to.pitch, 0x204080, (r.*kind.area).at, (r.*kind.area).pitch, r.width, r.height);
    });
#if defined(RASTEL_BENCH_HAS_PIXMAN)
    suite.AddPrepared(operation, "pixman", [kind](Scene& scene) {
        return [color = PixmanSolid({0x2000, 0x4000, 0x8000, 0xFFFF}),
                masks = PixmanImages(scene, [kind](const Round& r) { return r.*kind.plane; }),
                targets = PixmanImages(scene, [](const Round& r) { return r.target; })](const Round& r) {
            const auto i = static_cast<std::size_t>(r.index);
            pixman_image_composite32(PIXMAN_OP_OVER, color.get(), masks[i].get(), targets[i].get(), 0, 0, 0, 0, r.x,
                                     r.y, r.width, r.height);
        };
    });
#endif
#if defined(RASTEL_BENCH_HAS_CAIRO)
    suite.AddPrepared(operation, "cairo", [kind](Scene& scene) {
        return [masks = CairoSurfaces(scene, [kind](const Round& r) { return r.*kind.plane; }),
                targets = CairoTargets(scene)](const Round& r) {
            const auto i = static_cast<std::size_t>(r.index);
            cairo_set_source_rgb(targets[i].get(), 0.125, 0.25, 0.5);
            cairo_mask_surface(targets[i].get(), masks[i].get(), r.x, r.y);
        };
    });
#endif
}

}   // namespace

void AddBlendPlane(Suite& suite) {
    for (const PlaneKind& kind : kinds) {
        AddPicture(suite, kind);
    }
    AddColor(suite, kinds[0], 1.3);
    AddColor(suite, kinds[1], 0.6);
}

}   // namespace rastel::bench
