// One alpha for the whole picture: onto what is there, between two pictures, and with a colour key.
#include "families.h"
#include "support/contenders.h"
#include "support/peers.h"
#include "support/qt_peers.h"

namespace rastel::bench {
namespace {

constexpr int alpha = 100;

void AddConstant(Suite& suite) {
    const char* const operation = "constant alpha";
    suite.Aim(operation, 1.1, 640 * 480);
    AddMemcpy(suite, operation);
    suite.Add(operation, "Rastel",
              [](const Round& r) { return r.target->AlphaConstBlt(r.x, r.y, *r.noise, alpha, nullptr, nullptr); });
    AddTables(suite, operation, [](const kernels::RowTable& table, const Round& r) {
        table.alphaConstRect(r.to.at, r.to.pitch, r.fromNoise.at, r.fromNoise.pitch, r.to.at, r.to.pitch, r.width,
                             r.height, alpha);
    });
#if defined(RASTEL_BENCH_HAS_PIXMAN)
    suite.AddPrepared(operation, "pixman", [](Scene& scene) {
        return [mask = PixmanSolid({0, 0, 0, alpha * 0x101}),
                sources = PixmanImages(scene, [](const Round& r) { return r.noise; }),
                targets = PixmanImages(scene, [](const Round& r) { return r.target; })](const Round& r) {
            const auto i = static_cast<std::size_t>(r.index);
            pixman_image_composite32(PIXMAN_OP_OVER, sources[i].get(), mask.get(), targets[i].get(), 0, 0, 0, 0, r.x,
                                     r.y, r.width, r.height);
        };
    });
#endif
#if defined(RASTEL_BENCH_HAS_CAIRO)
    suite.AddPrepared(operation, "cairo", [](Scene& scene) {
        return [sources = CairoSurfaces(scene, [](const Round& r) { return r.noise; }),
                targets = CairoTargets(scene)](const Round& r) {
            const auto i = static_cast<std::size_t>(r.index);
            cairo_set_source_surface(targets[i].get(), sources[i].get(), r.x, r.y);
            cairo_paint_with_alpha(targets[i].get(), alpha / 255.0);
        };
    });
#endif
#if defined(RASTEL_BENCH_HAS_SDL2)
    suite.AddPrepared(operation, "SDL2", [](Scene& scene) {
        auto sources = SdlSurfaces(scene, [](const Round& r) { return r.noise; });
        for (const SdlOwner& source : sources) {
            SDL_SetSurfaceBlendMode(source.get(), SDL_BLENDMODE_BLEND);
            SDL_SetSurfaceAlphaMod(source.get(), alpha);
        }
        return [sources, targets = SdlSurfaces(scene, [](const Round& r) { return r.target; })](const Round& r) {
            const auto i = static_cast<std::size_t>(r.index);
            SDL_Rect to = SdlRect(r);
            return SDL_BlitSurface(sources[i].get(), nullptr, targets[i].get(), &to) == 0;
        };
    });
#endif
#if defined(RASTEL_BENCH_HAS_QT)
    suite.AddPrepared(operation, "Qt", [](Scene& scene) {
        auto targets = QtPainters(scene, QImage::Format_RGB32);
        for (const auto& target : targets) {
            target->painter.setOpacity(alpha / 255.0);
        }
        return [targets, sources = QtImages(
                             scene, [](const Round& r) { return r.noise; }, QImage::Format_RGB32)](const Round& r) {
            const auto i = static_cast<std::size_t>(r.index);
            targets[i]->painter.drawImage(r.x, r.y, sources[i]);
        };
    });
#endif
#if defined(RASTEL_BENCH_HAS_LIBYUV)
    suite.Add(operation, "libyuv", [](const Round& r) {
        return libyuv::ARGBInterpolate(r.to.at, r.to.pitch, r.fromNoise.at, r.fromNoise.pitch, r.to.at, r.to.pitch,
                                       r.width, r.height, alpha) == 0;
    });
#endif
}

void AddCrossFade(Suite& suite) {
    const char* const operation = "cross-fade";
    suite.Aim(operation, 1.1, 640 * 480);
    AddMemcpy(suite, operation);
    suite.Add(operation, "Rastel", [](const Round& r) {
        return r.target->AlphaConstBltEx(r.x, r.y, *r.noise, alpha, nullptr, r.sprite, nullptr);
    });
    AddTables(suite, operation, [](const kernels::RowTable& table, const Round& r) {
        table.alphaConstRect(r.to.at, r.to.pitch, r.fromNoise.at, r.fromNoise.pitch, r.fromSprite.at,
                             r.fromSprite.pitch, r.width, r.height, alpha);
    });
#if defined(RASTEL_BENCH_HAS_LIBYUV)
    suite.Add(operation, "libyuv", [](const Round& r) {
        return libyuv::ARGBInterpolate(r.fromSprite.at, r.fromSprite.pitch, r.fromNoise.at, r.fromNoise.pitch, r.to.at,
                                       r.to.pitch, r.width, r.height, alpha) == 0;
    });
#endif
}

void AddKeyedFade(Suite& suite) {
    const char* const operation = "keyed fade";
    suite.Aim(operation, 1.3, 640 * 480);
    AddMemcpy(suite, operation);
    suite.Add(operation, "Rastel", [](const Round& r) {
        return r.target->AlphaConstTransBlt(r.x, r.y, *r.sprite, alpha, transparentKey, nullptr, nullptr);
    });
    AddTables(suite, operation, [](const kernels::RowTable& table, const Round& r) {
        table.alphaConstTransRect(r.to.at, r.to.pitch, r.fromSprite.at, r.fromSprite.pitch, r.to.at, r.to.pitch,
                                  r.width, r.height, alpha, transparentKey);
    });
#if defined(RASTEL_BENCH_HAS_SDL2)
    suite.AddPrepared(operation, "SDL2", [](Scene& scene) {
        auto sources = SdlSurfaces(scene, [](const Round& r) { return r.sprite; });
        for (const SdlOwner& source : sources) {
            SDL_SetColorKey(source.get(), SDL_TRUE, transparentKey);
            SDL_SetSurfaceBlendMode(source.get(), SDL_BLENDMODE_BLEND);
            SDL_SetSurfaceAlphaMod(source.get(), alpha);
        }
        return [sources, targets = SdlSurfaces(scene, [](const Round& r) { return r.target; })](const Round& r) {
            const auto i = static_cast<std::size_t>(r.index);
            SDL_Rect to = SdlRect(r);
            return SDL_BlitSurface(sources[i].get(), nullptr, targets[i].get(), &to) == 0;
        };
    });
#endif
}

}   // namespace

void AddBlendConstant(Suite& suite) {
    AddConstant(suite);
    AddCrossFade(suite);
    AddKeyedFade(suite);
}

}   // namespace rastel::bench
