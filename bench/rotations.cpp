// A picture turned about its middle onto one of its size, nearest texels. memcpy moves the target's pixels.
#include <cmath>
#include <string>

#include "families.h"
#include "rastel/composite/adv_surface.h"
#include "support/contenders.h"
#include "support/imlib2_peers.h"
#include "support/peers.h"
#include "support/qt_peers.h"

#if defined(RASTEL_BENCH_HAS_OPENCV)
#include <opencv2/imgproc.hpp>
#endif

namespace rastel::bench {
namespace {

constexpr double radians = 3.14159265358979323846 / 180;

enum class Source { Opaque, Key, Plane, DiscPlane };

void AddRastel(Suite& suite, const std::string& operation, Source kind, int degrees) {
    suite.AddPrepared(operation, "Rastel", [kind, degrees](Scene& scene) {
        const auto composite = [](CSurface* surface) {
            std::shared_ptr<CAdvSurface> made(new CAdvSurface, Releaser());
            made->SetSurface(surface);
            return made;
        };
        std::vector<std::shared_ptr<CAdvSurface>> sources, targets;
        for (unsigned i = 0; i < roundCount; ++i) {
            const Round& r = scene.At(i);
            sources.push_back(composite(r.noise));
            targets.push_back(composite(r.target));
            if (kind == Source::Plane) {
                sources.back()->SetAlphaChannel(r.plane);
            } else if (kind == Source::DiscPlane) {
                sources.back()->SetAlphaChannel(r.discPlane);
            } else if (kind == Source::Key) {
                sources.back()->SetColorKey(transparentKey);
            }
        }
        return [sources, targets, degrees](const Round& r) {
            const auto i = static_cast<std::size_t>(r.index);
            CRect to(r.x, r.y, r.x + r.width - 1, r.y + r.height - 1);   // whose corners are drawn too
            CRect clip(r.x, r.y, r.x + r.width, r.y + r.height);
            return targets[i]->BltRotate(&to, degrees * radians, to.CenterPoint(), *sources[i], nullptr, &clip);
        };
    });
}

// From the target to the source.
struct Turn {
    Turn(int degrees, const Round& r)
        : c(std::cos(degrees * radians)),
          s(std::sin(degrees * radians)),
          x(r.width / 2.0 - c * (r.x + r.width / 2.0) - s * (r.y + r.height / 2.0)),
          y(r.height / 2.0 + s * (r.x + r.width / 2.0) - c * (r.y + r.height / 2.0)) {}
    double c, s, x, y;
};

[[maybe_unused]] void AddPeers(Suite& suite, const std::string& operation, int degrees) {
#if defined(RASTEL_BENCH_HAS_PIXMAN)
    suite.AddPrepared(operation, "pixman", [degrees](Scene& scene) {
        auto sources = PixmanImages(scene, [](const Round& r) { return r.noise; });
        for (unsigned i = 0; i < roundCount; ++i) {
            const Turn turn(degrees, scene.At(i));
            const pixman_f_transform_t exact = {{{turn.c, turn.s, turn.x}, {-turn.s, turn.c, turn.y}, {0, 0, 1}}};
            pixman_transform_t transform;
            pixman_transform_from_pixman_f_transform(&transform, &exact);
            pixman_image_set_transform(sources[i].get(), &transform);
            pixman_image_set_filter(sources[i].get(), PIXMAN_FILTER_NEAREST, nullptr, 0);
        }
        return [sources, targets = PixmanImages(scene, [](const Round& r) { return r.target; })](const Round& r) {
            const auto i = static_cast<std::size_t>(r.index);
            pixman_image_composite32(PIXMAN_OP_SRC, sources[i].get(), nullptr, targets[i].get(), r.x, r.y, 0, 0, r.x,
                                     r.y, r.width, r.height);
        };
    });
#endif
#if defined(RASTEL_BENCH_HAS_CAIRO)
    suite.AddPrepared(operation, "cairo", [degrees](Scene& scene) {
        return [degrees, sources = CairoSurfaces(scene, [](const Round& r) { return r.noise; }),
                targets = CairoTargets(scene)](const Round& r) {
            const auto i = static_cast<std::size_t>(r.index);
            cairo_t* const target = targets[i].get();
            const Turn turn(degrees, r);
            cairo_matrix_t matrix;
            cairo_matrix_init(&matrix, turn.c, -turn.s, turn.s, turn.c, turn.x, turn.y);
            cairo_set_source_surface(target, sources[i].get(), 0, 0);
            cairo_pattern_set_matrix(cairo_get_source(target), &matrix);
            cairo_pattern_set_filter(cairo_get_source(target), CAIRO_FILTER_NEAREST);
            cairo_rectangle(target, r.x, r.y, r.width, r.height);
            cairo_fill(target);
        };
    });
#endif
#if defined(RASTEL_BENCH_HAS_SDL2)
    suite.AddPrepared(operation, "SDL2", [degrees](Scene& scene) {
        auto renderers = SdlRenderers(scene);
        return [degrees, renderers, textures = SdlTextures(scene, renderers)](const Round& r) {
            const auto i = static_cast<std::size_t>(r.index);
            const SDL_Rect to = SdlRect(r);
            return SDL_RenderCopyEx(renderers[i].get(), textures[i].get(), nullptr, &to, degrees, nullptr,
                                    SDL_FLIP_NONE) == 0 &&
                   SDL_RenderFlush(renderers[i].get()) == 0;
        };
    });
#endif
#if defined(RASTEL_BENCH_HAS_QT)
    suite.AddPrepared(operation, "Qt", [degrees](Scene& scene) {
        return [degrees,
                sources = QtImages(
                    scene, [](const Round& r) { return r.noise; }, QImage::Format_RGB32),
                targets = QtPainters(scene, QImage::Format_RGB32)](const Round& r) {
            const auto i = static_cast<std::size_t>(r.index);
            QPainter& painter = targets[i]->painter;
            painter.resetTransform();
            painter.setClipRect(r.x, r.y, r.width, r.height);
            painter.translate(r.x + r.width / 2.0, r.y + r.height / 2.0);
            painter.rotate(degrees);
            painter.drawImage(QPointF(-r.width / 2.0, -r.height / 2.0), sources[i]);
        };
    });
#endif
#if defined(RASTEL_BENCH_HAS_IMLIB2)
    suite.AddPrepared(operation, "Imlib2", [degrees](Scene& scene) {
        return [degrees,
                sources = Imlib2Images(
                    scene, [](const Round& r) { return r.noise; }, false),
                targets = Imlib2Images(
                    scene, [](const Round& r) { return r.target; }, false)](const Round& r) {
            const auto i = static_cast<std::size_t>(r.index);
            const double c = std::cos(degrees * radians), s = std::sin(degrees * radians);
            const double w = r.width, h = r.height;
            const auto rounded = [](double value) { return static_cast<int>(std::lround(value)); };
            imlib_context_set_image(targets[i].get());
            imlib_context_set_anti_alias(0);
            imlib_context_set_blend(0);
            imlib_context_set_cliprect(r.x, r.y, r.width, r.height);
            imlib_blend_image_onto_image_skewed(sources[i].get(), 0, 0, 0, r.width, r.height,
                                                rounded(r.x + (w - c * w + s * h) / 2),
                                                rounded(r.y + (h - s * w - c * h) / 2), rounded(c * w), rounded(s * w),
                                                rounded(-s * h), rounded(c * h));
        };
    });
#endif
#if defined(RASTEL_BENCH_HAS_OPENCV)
    suite.Add(operation, "OpenCV", [degrees](const Round& r) {
        cv::setNumThreads(1);
        const cv::Mat source(r.height, r.width, CV_8UC4, r.fromNoise.at, static_cast<std::size_t>(r.fromNoise.pitch));
        cv::Mat target(r.height, r.width, CV_8UC4, r.to.at, static_cast<std::size_t>(r.to.pitch));
        const cv::Mat turn =
            cv::getRotationMatrix2D({static_cast<float>(r.width) / 2, static_cast<float>(r.height) / 2}, -degrees, 1);
        cv::warpAffine(source, target, turn, target.size(), cv::INTER_NEAREST, cv::BORDER_TRANSPARENT);
    });
#endif
}

}   // namespace

void AddRotations(Suite& suite) {
    for (const int degrees : {0, 30, 90}) {
        const std::string operation = "turn by " + std::to_string(degrees);
        if (degrees == 30) {
            suite.Aim(operation, 4.5, 640 * 480);
        }
        AddMemcpy(suite, operation);
        AddRastel(suite, operation, Source::Opaque, degrees);
        AddPeers(suite, operation, degrees);
    }
    AddMemcpy(suite, "turn by 30, key");
    AddRastel(suite, "turn by 30, key", Source::Key, 30);
    AddMemcpy(suite, "turn by 30, plane");
    AddRastel(suite, "turn by 30, plane", Source::Plane, 30);
    AddMemcpy(suite, "turn by 30, disc");
    AddRastel(suite, "turn by 30, disc", Source::DiscPlane, 30);
}

}   // namespace rastel::bench
