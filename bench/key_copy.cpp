#include "families.h"
#include "support/contenders.h"
#include "support/peers.h"

namespace rastel::bench {
namespace {

// Where a peer knows no key it draws the same picture by its alpha bytes, which say the same: 255, or 0 over colour 0.
void AddSource(Suite& suite, const std::string& operation, CSurface* Round::*source, Area Round::*from) {
    suite.Aim(operation, 1.3, 640 * 480);
    suite.Add(operation, "memcpy", [from](const Round& r) { CopyRows(r.to, r.*from, r.width * 4, r.height); });
    suite.Add(operation, "Rastel", [source](const Round& r) {
        return r.target->TransparentBlt(r.x, r.y, *(r.*source), transparentKey, nullptr, nullptr);
    });
    AddTables(suite, operation, [from](const kernels::RowTable& table, const Round& r) {
        table.keyCopyRect(r.to.at, r.to.pitch, (r.*from).at, (r.*from).pitch, r.width, r.height, transparentKey);
    });
#if defined(RASTEL_BENCH_HAS_PIXMAN)
    suite.AddPrepared(operation, "pixman", [source](Scene& scene) {
        return [sources = PixmanImages(scene, [source](const Round& r) { return r.*source; }),
                targets = PixmanImages(scene, [](const Round& r) { return r.target; })](const Round& r) {
            const auto i = static_cast<std::size_t>(r.index);
            PixmanComposite(PIXMAN_OP_OVER, sources[i], targets[i], r);
        };
    });
#endif
#if defined(RASTEL_BENCH_HAS_SDL2)
    suite.AddPrepared(operation, "SDL2", [source](Scene& scene) {
        auto sources = SdlSurfaces(scene, [source](const Round& r) { return r.*source; });
        for (const SdlOwner& surface : sources) {
            SDL_SetColorKey(surface.get(), SDL_TRUE, transparentKey);
        }
        return [sources, targets = SdlSurfaces(scene, [](const Round& r) { return r.target; })](const Round& r) {
            const auto i = static_cast<std::size_t>(r.index);
            SDL_Rect to = SdlRect(r);
            return SDL_BlitSurface(sources[i].get(), nullptr, targets[i].get(), &to) == 0;
        };
    });
#endif
#if defined(RASTEL_BENCH_HAS_LIBYUV)
    suite.Add(operation, "libyuv", [from](const Round& r) {
        return libyuv::ARGBBlend((r.*from).at, (r.*from).pitch, r.to.at, r.to.pitch, r.to.at, r.to.pitch, r.width,
                                 r.height) == 0;
    });
#endif
}

}   // namespace

void AddKeyCopy(Suite& suite) {
    AddSource(suite, "key copy, runs", &Round::sprite, &Round::fromSprite);
    AddSource(suite, "key copy, noise", &Round::noise, &Round::fromNoise);
}

}   // namespace rastel::bench
