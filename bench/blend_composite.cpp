// A composite with a plane over a composite with a plane. Pixels of the peers are premultiplied, which is less work,
// where their name does not call them straight.
#include "families.h"
#include "rastel/composite/adv_surface.h"
#include "support/contenders.h"
#include "support/imlib2_peers.h"
#include "support/peers.h"
#include "support/qt_peers.h"

namespace rastel::bench {
namespace {

std::vector<std::shared_ptr<CAdvSurface>> Composites(const Scene& scene, CSurface* Round::*surface,
                                                     CAlphaChannel* Round::*plane) {
    std::vector<std::shared_ptr<CAdvSurface>> composites;
    for (unsigned i = 0; i < roundCount; ++i) {
        const Round& r = scene.At(i);
        composites.emplace_back(new CAdvSurface, Releaser());
        composites.back()->SetSurface(r.*surface);
        composites.back()->SetAlphaChannel(r.*plane);
    }
    return composites;
}

}   // namespace

void AddBlendComposite(Suite& suite) {
    const char* const operation = "composite, planes on both sides";
    suite.Aim(operation, 4.0, 640 * 480);
    AddMemcpy(suite, operation);
    suite.AddPrepared(operation, "Rastel", [](Scene& scene) {
        return [sources = Composites(scene, &Round::noise, &Round::plane),
                targets = Composites(scene, &Round::target, &Round::targetPlane)](const Round& r) {
            const auto i = static_cast<std::size_t>(r.index);
            return targets[i]->AlphaBlt(r.x, r.y, *sources[i], *r.plane, nullptr, nullptr);
        };
    });
    AddTables(suite, operation, [](const kernels::RowTable& table, const Round& r) {
        table.alphaAdvRect(r.to.at, r.to.pitch, r.toPlane.at, r.toPlane.pitch, r.fromNoise.at, r.fromNoise.pitch,
                           r.fromPlane.at, r.fromPlane.pitch, r.width, r.height);
    });
#if defined(RASTEL_BENCH_HAS_PIXMAN)
    suite.AddPrepared(operation, "pixman", [](Scene& scene) {
        return [sources = PixmanImages(scene, [](const Round& r) { return r.noise; }),
                masks = PixmanImages(scene, [](const Round& r) { return r.plane; }),
                targets = PixmanImages(scene, [](const Round& r) { return r.target; })](const Round& r) {
            const auto i = static_cast<std::size_t>(r.index);
            pixman_image_composite32(PIXMAN_OP_OVER, sources[i].get(), masks[i].get(), targets[i].get(), 0, 0, 0, 0,
                                     r.x, r.y, r.width, r.height);
        };
    });
#endif
#if defined(RASTEL_BENCH_HAS_QT)
    suite.AddPrepared(operation, "Qt, straight", [](Scene& scene) {
        return [sources = QtImages(
                    scene, [](const Round& r) { return r.noise; }, QImage::Format_ARGB32),
                targets = QtPainters(scene, QImage::Format_ARGB32)](const Round& r) {
            const auto i = static_cast<std::size_t>(r.index);
            targets[i]->painter.drawImage(r.x, r.y, sources[i]);
        };
    });
#endif
#if defined(RASTEL_BENCH_HAS_IMLIB2)
    suite.AddPrepared(operation, "Imlib2, straight", [](Scene& scene) {
        return [sources = Imlib2Images(
                    scene, [](const Round& r) { return r.noise; }, true),
                targets = Imlib2Images(
                    scene, [](const Round& r) { return r.target; }, true)](const Round& r) {
            const auto i = static_cast<std::size_t>(r.index);
            Imlib2Blend(sources[i], targets[i], r);
        };
    });
#endif
#if defined(RASTEL_BENCH_HAS_LIBYUV)
    suite.Add(operation, "libyuv", [](const Round& r) {
        return libyuv::ARGBBlend(r.fromNoise.at, r.fromNoise.pitch, r.to.at, r.to.pitch, r.to.at, r.to.pitch, r.width,
                                 r.height) == 0;
    });
#endif
}

}   // namespace rastel::bench
