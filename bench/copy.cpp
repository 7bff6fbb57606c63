#include "families.h"
#include "support/contenders.h"
#include "support/peers.h"

namespace rastel::bench {
namespace {

// Reaches the candidate that the profile may have turned down.
struct Candidates : CSurface {
    static CopyBltFunction Gdi() { return &Candidates::InternalCopyBltGDI; }
};

void AddPeers(Suite& suite) {
#if defined(RASTEL_BENCH_HAS_PIXMAN)
    suite.AddPrepared("copy", "pixman", [](Scene& scene) {
        return [sources = PixmanImages(scene, [](const Round& r) { return r.sprite; }),
                targets = PixmanImages(scene, [](const Round& r) { return r.target; })](const Round& r) {
            const auto i = static_cast<std::size_t>(r.index);
            PixmanComposite(PIXMAN_OP_SRC, sources[i], targets[i], r);
        };
    });
    suite.Add("copy", "pixman_blt", [](const Round& r) {
        return pixman_blt(PixmanBits(r.fromSprite), PixmanBits(r.wholeTarget), r.fromSprite.pitch / 4,
                          r.wholeTarget.pitch / 4, 32, 32, 0, 0, r.x, r.y, r.width, r.height);
    });
#endif
#if defined(RASTEL_BENCH_HAS_SDL2)
    suite.AddPrepared("copy", "SDL2", [](Scene& scene) {
        return [sources = SdlSurfaces(scene, [](const Round& r) { return r.sprite; }),
                targets = SdlSurfaces(scene, [](const Round& r) { return r.target; })](const Round& r) {
            const auto i = static_cast<std::size_t>(r.index);
            SDL_Rect to = SdlRect(r);
            return SDL_BlitSurface(sources[i].get(), nullptr, targets[i].get(), &to) == 0;
        };
    });
#endif
#if defined(RASTEL_BENCH_HAS_LIBYUV)
    suite.Add("copy", "libyuv", [](const Round& r) {
        return libyuv::ARGBCopy(r.fromSprite.at, r.fromSprite.pitch, r.to.at, r.to.pitch, r.width, r.height) == 0;
    });
#endif
}

}   // namespace

void AddCopy(Suite& suite) {
    suite.Aim("copy", 1.0, 640 * 480);
    AddMemcpy(suite, "copy");
    suite.Add("copy", "Rastel",
              [](const Round& r) { return r.target->CopyBlt(r.x, r.y, *r.sprite, nullptr, nullptr); });
    suite.Add("copy", "Rastel GDI", [copy = Candidates::Gdi()](const Round& r) {
        return (r.target->*copy)(r.x, r.y, *r.sprite, CRect(0, 0, r.width, r.height));
    });
    AddTables(suite, "copy", [](const kernels::RowTable& table, const Round& r) {
        table.copyRect(r.to.at, r.to.pitch, r.fromSprite.at, r.fromSprite.pitch, r.width, r.height);
    });
    AddPeers(suite);
}

}   // namespace rastel::bench
