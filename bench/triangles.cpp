// Half of a picture as one triangle, turned by its texture. memcpy moves as many pixels.
#include "families.h"
#include "rastel/raster/face3d.h"
#include "support/contenders.h"
#include "support/peers.h"
#include "support/qt_peers.h"

namespace rastel::bench {
namespace {

// The texture runs across: its columns go down the target.
FACE3D Face(const Round& r) {
    const int right = r.width - 1, bottom = r.height - 1;
    return {{{r.x, r.y, 0, 0}, {r.x + right, r.y, 0, bottom}, {r.x, r.y + bottom, right, 0}}};
}

void AddHalfMemcpy(Suite& suite, const char* operation, int bytesPerPixel) {
    suite.Add(operation, "memcpy", [bytesPerPixel](const Round& r) {
        Area to = bytesPerPixel == 4 ? r.to : r.toPlane, from = bytesPerPixel == 4 ? r.fromNoise : r.fromPlane;
        for (int y = 0; y < r.height; ++y, to.at += to.pitch, from.at += from.pitch) {
            const int pixels = r.width - r.width * y / r.height;
            std::memcpy(to.at, from.at, static_cast<std::size_t>(pixels * bytesPerPixel));
        }
    });
}

}   // namespace

void AddTriangles(Suite& suite) {
    AddHalfMemcpy(suite, "triangle", 4);
    suite.Add("triangle", "Rastel", [](const Round& r) {
        FACE3D face = Face(r);
        return r.target->BltTexturedTriangle(face, *r.noise, nullptr);
    });
#if defined(RASTEL_BENCH_HAS_SDL2)
    suite.AddPrepared("triangle", "SDL2", [](Scene& scene) {
        auto renderers = SdlRenderers(scene);
        return [renderers, textures = SdlTextures(scene, renderers)](const Round& r) {
            if (r.width > 640) {
                return false;   // its software renderer crashes on large triangles
            }
            const auto i = static_cast<std::size_t>(r.index);
            const auto left = static_cast<float>(r.x), top = static_cast<float>(r.y);
            const auto right = static_cast<float>(r.x + r.width - 1), bottom = static_cast<float>(r.y + r.height - 1);
            const SDL_Color white = {255, 255, 255, 255};
            const SDL_Vertex vertices[] = {
                {{left, top}, white, {0, 0}}, {{right, top}, white, {0, 1}}, {{left, bottom}, white, {1, 0}}};
            return SDL_RenderGeometry(renderers[i].get(), textures[i].get(), vertices, 3, nullptr, 0) == 0 &&
                   SDL_RenderFlush(renderers[i].get()) == 0;
        };
    });
#endif
#if defined(RASTEL_BENCH_HAS_QT)
    suite.AddPrepared("triangle", "Qt", [](Scene& scene) {
        auto targets = QtPainters(scene, QImage::Format_RGB32);
        for (const auto& target : targets) {
            target->painter.setPen(Qt::NoPen);
        }
        return [targets, sources = QtImages(
                             scene, [](const Round& r) { return r.noise; }, QImage::Format_RGB32)](const Round& r) {
            const auto i = static_cast<std::size_t>(r.index);
            const double right = r.width - 1, bottom = r.height - 1;
            QBrush texture(sources[i]);
            texture.setTransform(QTransform(0, bottom / right, right / bottom, 0, r.x, r.y));
            const QPointF corners[] = {QPointF(r.x, r.y), QPointF(r.x + right, r.y), QPointF(r.x, r.y + bottom)};
            targets[i]->painter.setBrush(texture);
            targets[i]->painter.drawConvexPolygon(corners, 3);
        };
    });
#endif
    AddHalfMemcpy(suite, "triangle, key", 4);
    suite.Add("triangle, key", "Rastel", [](const Round& r) {
        FACE3D face = Face(r);
        return r.target->BltTexturedTriangleTrans(face, *r.sprite, transparentKey, nullptr);
    });
    AddHalfMemcpy(suite, "triangle, plane", 4);
    suite.Add("triangle, plane", "Rastel", [](const Round& r) {
        FACE3D face = Face(r);
        return r.target->BltTexturedTriangleAlpha(face, *r.noise, *r.plane, nullptr);
    });
    AddHalfMemcpy(suite, "triangle, disc", 4);
    suite.Add("triangle, disc", "Rastel", [](const Round& r) {
        FACE3D face = Face(r);
        return r.target->BltTexturedTriangleAlpha(face, *r.noise, *r.discPlane, nullptr);
    });
    AddHalfMemcpy(suite, "triangle of bytes", 1);
    suite.Add("triangle of bytes", "Rastel", [](const Round& r) {
        FACE3D face = Face(r);
        return r.targetPlane->BltTexturedTriangle(face, *r.plane, nullptr);
    });
}

}   // namespace rastel::bench
