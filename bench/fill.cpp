#include "families.h"
#include "support/contenders.h"
#include "support/peers.h"

namespace rastel::bench {
namespace {

// Reaches the candidate that the profile may have turned down.
struct Candidates : CSurface {
    static FillColorFunction Gdi() { return &Candidates::InternalFillColorGDI; }
};

CRect Target(const Round& r) {
    return CRect(r.x, r.y, r.x + r.width, r.y + r.height);
}

DWORD Color(const Round& r) {
    return 0x102030u + static_cast<DWORD>(r.index);
}

void AddPeers(Suite& suite) {
#if defined(RASTEL_BENCH_HAS_PIXMAN)
    suite.AddPrepared("fill", "pixman", [](Scene& scene) {
        return [targets = PixmanImages(scene, [](const Round& r) { return r.target; })](const Round& r) {
            const pixman_color_t color{0x1000, 0x2000, static_cast<std::uint16_t>(0x3000 + 256 * r.index), 0xFFFF};
            const pixman_box32_t box{r.x, r.y, r.x + r.width, r.y + r.height};
            return pixman_image_fill_boxes(PIXMAN_OP_SRC, targets[static_cast<std::size_t>(r.index)].get(), &color, 1,
                                           &box);
        };
    });
    suite.Add("fill", "pixman_fill", [](const Round& r) {
        return pixman_fill(PixmanBits(r.wholeTarget), r.wholeTarget.pitch / 4, 32, r.x, r.y, r.width, r.height,
                           Color(r));
    });
#endif
#if defined(RASTEL_BENCH_HAS_SDL2)
    suite.AddPrepared("fill", "SDL2", [](Scene& scene) {
        return [targets = SdlSurfaces(scene, [](const Round& r) { return r.target; })](const Round& r) {
            const SDL_Rect to = SdlRect(r);
            return SDL_FillRect(targets[static_cast<std::size_t>(r.index)].get(), &to, Color(r)) == 0;
        };
    });
#endif
#if defined(RASTEL_BENCH_HAS_LIBYUV)
    suite.Add("fill", "libyuv", [](const Round& r) {
        return libyuv::ARGBRect(r.wholeTarget.at, r.wholeTarget.pitch, r.x, r.y, r.width, r.height, Color(r)) == 0;
    });
#endif
}

}   // namespace

void AddFill(Suite& suite) {
    suite.Aim("fill", 0.6, 640 * 480);
    AddMemcpy(suite, "fill");
    suite.Add("fill", "Rastel", [](const Round& r) {
        CRect rect = Target(r);
        return r.target->FillColor(&rect, Color(r), nullptr);
    });
    suite.Add("fill", "Rastel GDI", [fill = Candidates::Gdi()](const Round& r) {
        CRect rect = Target(r);
        return (r.target->*fill)(rect, Color(r));
    });
    AddTables(suite, "fill", [](const kernels::RowTable& table, const Round& r) {
        table.fillRect(r.to.at, r.to.pitch, r.width, r.height, Color(r));
    });
    AddPeers(suite);
}

}   // namespace rastel::bench
