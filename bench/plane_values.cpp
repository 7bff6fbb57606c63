// Planes filled, merged, mixed, multiplied and inverted. Peers that know pixels only take the bytes four at a time.
#include "families.h"
#include "support/contenders.h"
#include "support/peers.h"

namespace rastel::bench {
namespace {

CRect Target(const Round& r) {
    return CRect(r.x, r.y, r.x + r.width, r.y + r.height);
}

BYTE Value(const Round& r) {
    return static_cast<BYTE>(100 + r.index);
}

#if defined(RASTEL_BENCH_HAS_PIXMAN)
std::vector<PixmanOwner> PixmanTargets(const Scene& scene) {
    return PixmanImages(scene, [](const Round& r) { return r.targetPlane; });
}
#endif

void AddFillPlane(Suite& suite) {
    AddPlaneMemcpy(suite, "plane fill");
    suite.Add("plane fill", "Rastel", [](const Round& r) {
        CRect rect = Target(r);
        return r.targetPlane->Fill(&rect, Value(r), nullptr);
    });
    AddTables(suite, "plane fill", [](const kernels::RowTable& table, const Round& r) {
        table.fillBytesRect(r.toPlane.at, r.toPlane.pitch, r.width, r.height, Value(r));
    });
    suite.Add("plane fill", "memset", [](const Round& r) {
        for (int y = 0; y < r.height; ++y) {
            std::memset(r.toPlane.at + static_cast<std::ptrdiff_t>(y) * r.toPlane.pitch, Value(r),
                        static_cast<std::size_t>(r.width));
        }
    });
#if defined(RASTEL_BENCH_HAS_PIXMAN)
    suite.Add("plane fill", "pixman_fill", [](const Round& r) {
        return pixman_fill(PixmanBits(r.wholeTargetPlane), r.wholeTargetPlane.pitch / 4, 8, r.x, r.y, r.width, r.height,
                           Value(r));
    });
#endif
#if defined(RASTEL_BENCH_HAS_SDL2)
    suite.AddPrepared("plane fill", "SDL2", [](Scene& scene) {
        return [targets = SdlSurfaces(scene, [](const Round& r) { return r.targetPlane; })](const Round& r) {
            const SDL_Rect to = SdlRect(r);
            return SDL_FillRect(targets[static_cast<std::size_t>(r.index)].get(), &to, Value(r)) == 0;
        };
    });
#endif
#if defined(RASTEL_BENCH_HAS_LIBYUV)
    suite.Add("plane fill", "libyuv",
              [](const Round& r) { libyuv::SetPlane(r.toPlane.at, r.toPlane.pitch, r.width, r.height, Value(r)); });
#endif
}

void AddMerge(Suite& suite) {
    AddPlaneMemcpy(suite, "plane merge");
    suite.Add("plane merge", "Rastel",
              [](const Round& r) { return r.targetPlane->Merge(r.x, r.y, *r.plane, nullptr, nullptr); });
    AddTables(suite, "plane merge", [](const kernels::RowTable& table, const Round& r) {
        table.mergeRect(r.toPlane.at, r.toPlane.pitch, r.fromPlane.at, r.fromPlane.pitch, r.width, r.height);
    });
#if defined(RASTEL_BENCH_HAS_PIXMAN)
    suite.AddPrepared("plane merge", "pixman", [](Scene& scene) {
        return [sources = PixmanImages(scene, [](const Round& r) { return r.plane; }),
                targets = PixmanTargets(scene)](const Round& r) {
            const auto i = static_cast<std::size_t>(r.index);
            PixmanComposite(PIXMAN_OP_IN, sources[i], targets[i], r);
        };
    });
#endif
#if defined(RASTEL_BENCH_HAS_LIBYUV)
    suite.Add("plane merge", "libyuv", [](const Round& r) {
        return libyuv::ARGBMultiply(r.fromPlane.at, r.fromPlane.pitch, r.toPlane.at, r.toPlane.pitch, r.toPlane.at,
                                    r.toPlane.pitch, r.width / 4, r.height) == 0;
    });
#endif
}

// No peer takes a maximum of bytes.
void AddMix(Suite& suite) {
    AddPlaneMemcpy(suite, "plane mix");
    suite.Add("plane mix", "Rastel",
              [](const Round& r) { return r.targetPlane->BltMix(r.x, r.y, *r.plane, nullptr, nullptr); });
    AddTables(suite, "plane mix", [](const kernels::RowTable& table, const Round& r) {
        table.maxRect(r.toPlane.at, r.toPlane.pitch, r.fromPlane.at, r.fromPlane.pitch, r.width, r.height);
    });
}

void AddMultiply(Suite& suite) {
    AddPlaneMemcpy(suite, "plane multiply");
    suite.Add("plane multiply", "Rastel", [](const Round& r) {
        CRect rect = Target(r);
        return r.targetPlane->Multiply(&rect, Value(r));
    });
    AddTables(suite, "plane multiply", [](const kernels::RowTable& table, const Round& r) {
        table.multiplyRect(r.toPlane.at, r.toPlane.pitch, r.width, r.height, Value(r));
    });
#if defined(RASTEL_BENCH_HAS_PIXMAN)
    suite.AddPrepared("plane multiply", "pixman", [](Scene& scene) {
        return [factor = PixmanSolid({0, 0, 0, 0x7000}), targets = PixmanTargets(scene)](const Round& r) {
            PixmanComposite(PIXMAN_OP_IN, factor, targets[static_cast<std::size_t>(r.index)], r);
        };
    });
#endif
#if defined(RASTEL_BENCH_HAS_LIBYUV)
    suite.Add("plane multiply", "libyuv", [](const Round& r) {
        return libyuv::ARGBShade(r.toPlane.at, r.toPlane.pitch, r.toPlane.at, r.toPlane.pitch, r.width / 4, r.height,
                                 Value(r) * 0x01010101u) == 0;
    });
#endif
}

void AddInvert(Suite& suite) {
    AddPlaneMemcpy(suite, "plane invert");
    suite.Add("plane invert", "Rastel", [](const Round& r) {
        CRect rect = Target(r);
        return r.targetPlane->Invert(&rect);
    });
    AddTables(suite, "plane invert", [](const kernels::RowTable& table, const Round& r) {
        table.invertRect(r.toPlane.at, r.toPlane.pitch, r.width, r.height);
    });
#if defined(RASTEL_BENCH_HAS_PIXMAN)
    // An opaque source held out by the target leaves 255 minus it.
    suite.AddPrepared("plane invert", "pixman", [](Scene& scene) {
        return [white = PixmanSolid({0xFFFF, 0xFFFF, 0xFFFF, 0xFFFF}), targets = PixmanTargets(scene)](const Round& r) {
            PixmanComposite(PIXMAN_OP_OUT, white, targets[static_cast<std::size_t>(r.index)], r);
        };
    });
#endif
}

}   // namespace

void AddPlaneValues(Suite& suite) {
    AddFillPlane(suite);
    AddMerge(suite);
    AddMix(suite);
    AddMultiply(suite);
    AddInvert(suite);
}

}   // namespace rastel::bench
