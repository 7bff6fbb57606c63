// Stretches that pick pixels. The size is the target's; memcpy copies as many bytes as land there.
#include <algorithm>
#include <cmath>
#include <string>

#include "families.h"
#include "support/contenders.h"
#include "support/peers.h"

namespace rastel::bench {
namespace {

Size SourceSize(Size target, double factor) {
    return {std::max(1, static_cast<int>(std::lround(target.width / factor))),
            std::max(1, static_cast<int>(std::lround(target.height / factor)))};
}

std::vector<CSurface*> Sources(Scene& scene) {
    std::vector<CSurface*> sources;
    for (int i = 0; i < roundCount; ++i) {
        sources.push_back(&scene.WideSource(i));
    }
    return sources;
}

void AddPeers(Suite& suite, const std::string& operation, double factor) {
#if defined(RASTEL_BENCH_HAS_PIXMAN)
    suite.AddPrepared(operation, "pixman", [factor](Scene& scene) {
        const Size size = SourceSize(scene.GetSize(), factor);
        pixman_transform_t scale;
        pixman_transform_init_scale(&scale,
                                    pixman_double_to_fixed(static_cast<double>(size.width) / scene.GetSize().width),
                                    pixman_double_to_fixed(static_cast<double>(size.height) / scene.GetSize().height));
        std::vector<PixmanOwner> sources;
        for (CSurface* wide : Sources(scene)) {
            sources.push_back(PixmanImage(PixelsOf(*wide), size.width, size.height));
            pixman_image_set_transform(sources.back().get(), &scale);
            pixman_image_set_filter(sources.back().get(), PIXMAN_FILTER_NEAREST, nullptr, 0);
            pixman_image_set_repeat(sources.back().get(), PIXMAN_REPEAT_PAD);
        }
        return [sources, targets = PixmanImages(scene, [](const Round& r) { return r.target; })](const Round& r) {
            const auto i = static_cast<std::size_t>(r.index);
            PixmanComposite(PIXMAN_OP_SRC, sources[i], targets[i], r);
        };
    });
#endif
#if defined(RASTEL_BENCH_HAS_SDL2)
    suite.AddPrepared(operation, "SDL2", [factor](Scene& scene) {
        const Size size = SourceSize(scene.GetSize(), factor);
        std::vector<SdlOwner> sources;
        for (CSurface* wide : Sources(scene)) {
            sources.push_back(SdlSurface(*wide));
        }
        return [size, sources, targets = SdlSurfaces(scene, [](const Round& r) { return r.target; })](const Round& r) {
            const auto i = static_cast<std::size_t>(r.index);
            const SDL_Rect from{0, 0, size.width, size.height}, to = SdlRect(r);
            return SDL_SoftStretch(sources[i].get(), &from, targets[i].get(), &to) == 0;
        };
    });
#endif
#if defined(RASTEL_BENCH_HAS_LIBYUV)
    suite.AddPrepared(operation, "libyuv", [factor](Scene& scene) {
        std::vector<Area> sources;
        for (CSurface* wide : Sources(scene)) {
            sources.push_back(PixelsOf(*wide));
        }
        return [size = SourceSize(scene.GetSize(), factor), sources](const Round& r) {
            const Area from = sources[static_cast<std::size_t>(r.index)];
            return libyuv::ARGBScale(from.at, from.pitch, size.width, size.height, r.to.at, r.to.pitch, r.width,
                                     r.height, libyuv::kFilterNone) == 0;
        };
    });
#endif
}

void AddFactor(Suite& suite, const std::string& text) {
    const std::string operation = "stretch " + text;
    const double factor = std::stod(text);
    suite.Aim(operation, 2.0, 0);
    AddMemcpy(suite, operation);
    suite.AddPrepared(operation, "Rastel", [factor](Scene& scene) {
        return [size = SourceSize(scene.GetSize(), factor), sources = Sources(scene)](const Round& r) {
            CRect from(0, 0, size.width, size.height), to(r.x, r.y, r.x + r.width, r.y + r.height);
            return r.target->StretchBlt(&to, *sources[static_cast<std::size_t>(r.index)], &from, nullptr);
        };
    });
    AddPeers(suite, operation, factor);
}

}   // namespace

void AddStretch(Suite& suite) {
    for (const char* factor : {"0.5", "0.77", "1.3", "2", "3.1"}) {
        AddFactor(suite, factor);
    }
}

}   // namespace rastel::bench
