// Qt's raster painter over a scene's memory: a painter for each target, open all the time, nearest texels. Apart from
// the other peers because its headers are heavy.
#pragma once

#if defined(RASTEL_BENCH_HAS_QT)
#include <memory>
#include <QBrush>
#include <QImage>
#include <QPainter>
#include <QTransform>
#include <vector>

#include "support/scene.h"

namespace rastel::bench {

inline QImage QtImage(CSurfaceBase& store, QImage::Format format) {
    const Area area = PixelsOf(store);
    return QImage(area.at, store.GetWidth(), store.GetHeight(), area.pitch, format);
}

template <class Pick>
std::vector<QImage> QtImages(const Scene& scene, Pick pick, QImage::Format format) {
    std::vector<QImage> images;
    for (unsigned i = 0; i < roundCount; ++i) {
        images.push_back(QtImage(*pick(scene.At(i)), format));
    }
    return images;
}

// A target and its painter, which goes first.
struct QtTarget {
    QtTarget(CSurface& store, QImage::Format format) : image(QtImage(store, format)), painter(&image) {}
    QImage image;
    QPainter painter;
};
using QtTargets = std::vector<std::shared_ptr<QtTarget>>;

inline QtTargets QtPainters(const Scene& scene, QImage::Format format) {
    QtTargets targets;
    for (unsigned i = 0; i < roundCount; ++i) {
        targets.push_back(std::make_shared<QtTarget>(*scene.At(i).target, format));
    }
    return targets;
}

}   // namespace rastel::bench
#endif
