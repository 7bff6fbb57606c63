#include "families.h"
#include "support/contenders.h"
#include "support/peers.h"

namespace rastel::bench {

void AddShadow(Suite& suite) {
    AddMemcpy(suite, "shadow");
    suite.Add("shadow", "Rastel", [](const Round& r) {
        CRect rect(r.x, r.y, r.x + r.width, r.y + r.height);
        r.target->ShadowBlt(&rect, 25);
    });
    AddTables(suite, "shadow", [](const kernels::RowTable& table, const Round& r) {
        table.shadowRect(r.to.at, r.to.pitch, r.width, r.height, 192);
    });
#if defined(RASTEL_BENCH_HAS_PIXMAN)
    suite.AddPrepared("shadow", "pixman", [](Scene& scene) {
        return [black = PixmanSolid({0, 0, 0, 0x4000}),
                targets = PixmanImages(scene, [](const Round& r) { return r.target; })](const Round& r) {
            PixmanComposite(PIXMAN_OP_OVER, black, targets[static_cast<std::size_t>(r.index)], r);
        };
    });
#endif
#if defined(RASTEL_BENCH_HAS_LIBYUV)
    suite.Add("shadow", "libyuv", [](const Round& r) {
        return libyuv::ARGBShade(r.to.at, r.to.pitch, r.to.at, r.to.pitch, r.width, r.height, 0xC0C0C0C0) == 0;
    });
#endif
}

}   // namespace rastel::bench
