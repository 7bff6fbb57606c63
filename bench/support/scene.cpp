#include "support/scene.h"

#include <algorithm>
#include <cmath>
#include <random>
#include <stdexcept>

namespace rastel::bench {
namespace {

template <class Owner, class Object>
Owner Owned(Object* object) {
    if (!object) {
        throw std::runtime_error("no memory for the buffers");
    }
    return Owner(object);
}

// Runs of `longest` pixels at most, each all transparent or all of varying colours.
void Paint(CSurface& surface, unsigned seed, unsigned longest) {
    std::minstd_rand random(seed);
    const Area area = PixelsOf(surface);
    bool opaque = false;
    unsigned left = 0;
    for (int y = 0; y < surface.GetHeight(); ++y) {
        auto* const row = reinterpret_cast<DWORD*>(area.at + static_cast<std::ptrdiff_t>(y) * area.pitch);
        for (int x = 0; x < surface.GetWidth(); ++x) {
            if (left == 0) {
                opaque = longest == 1 ? (random() >> 8 & 1) != 0 : !opaque;
                left = 1 + static_cast<unsigned>(random() >> 8) % longest;
            }
            --left;
            row[x] = opaque ? 0xFF000001 | static_cast<DWORD>(random()) : transparentKey;
        }
    }
}

void Paint(CAlphaChannel& plane, unsigned seed) {
    std::minstd_rand random(seed);
    const Area area = PixelsOf(plane);
    for (int y = 0; y < plane.GetHeight(); ++y) {
        for (int x = 0; x < plane.GetWidth(); ++x) {
            area.at[static_cast<std::ptrdiff_t>(y) * area.pitch + x] = static_cast<BYTE>(random() >> 8);
        }
    }
}

// Strokes of a few pixels with soft edges, on lines with gaps between them.
void PaintInk(CAlphaChannel& plane, unsigned seed) {
    constexpr int linePitch = 20, lineHeight = 13;
    std::minstd_rand random(seed);
    const Area area = PixelsOf(plane);
    for (int y = 0; y < plane.GetHeight(); ++y) {
        BYTE* const row = area.at + static_cast<std::ptrdiff_t>(y) * area.pitch;
        for (int x = 0; y % linePitch < lineHeight && x + 4 <= plane.GetWidth();
             x += 4 + static_cast<int>(random() >> 8) % 25) {
            row[x] = static_cast<BYTE>(random() >> 8);
            row[x + 1] = 255;
            row[x + 2] = static_cast<BYTE>(random() >> 8);
        }
    }
}

// An ellipse up to the edges, with a rim of three pixels from solid to clear.
void PaintDisc(CAlphaChannel& plane) {
    constexpr double rim = 3;
    const Area area = PixelsOf(plane);
    const double middleX = plane.GetWidth() / 2.0, middleY = plane.GetHeight() / 2.0;
    for (int y = 0; y < plane.GetHeight(); ++y) {
        for (int x = 0; x < plane.GetWidth(); ++x) {
            const double inside =
                (1 - std::hypot((x + 0.5) / middleX - 1, (y + 0.5) / middleY - 1)) * std::min(middleX, middleY);
            area.at[static_cast<std::ptrdiff_t>(y) * area.pitch + x] =
                static_cast<BYTE>(std::clamp(inside / rim, 0.0, 1.0) * 255);
        }
    }
}

Area Inside(Area whole, int x, int y, int bytesPerPixel) {
    return {whole.at + static_cast<std::ptrdiff_t>(y) * whole.pitch + x * bytesPerPixel, whole.pitch};
}

}   // namespace

Area PixelsOf(CSurfaceBase& store) {
    const Area area{store.LockData(), store.GetPitch()};
    if (!area.at) {
        throw std::runtime_error("a store can't be locked");
    }
    store.UnlockData();
    return area;
}

Scene::Scene(CDisplayManager& manager, Size size) : manager_(manager), size_(size) {
    const unsigned bufferCount = static_cast<long long>(size.width) * size.height > 1'000'000 ? 2 : 4;
    for (unsigned i = 0; i < bufferCount; ++i) {
        Buffers b;
        const int w = size.width, h = size.height;
        b.sprite = Owned<SurfaceOwner>(manager.CreateSurface(w, h));
        b.noise = Owned<SurfaceOwner>(manager.CreateSurface(w, h));
        b.target = Owned<SurfaceOwner>(manager.CreateSurface(w + targetMargin, h + targetMargin));
        b.plane = Owned<PlaneOwner>(manager.CreateAlphaChannel(w, h));
        b.inkPlane = Owned<PlaneOwner>(manager.CreateAlphaChannel(w, h));
        b.discPlane = Owned<PlaneOwner>(manager.CreateAlphaChannel(w, h));
        b.targetPlane = Owned<PlaneOwner>(manager.CreateAlphaChannel(w + targetMargin, h + targetMargin));
        Paint(*b.sprite, 3 * i + 1, 24);
        Paint(*b.noise, 3 * i + 2, 1);
        Paint(*b.target, 3 * i + 3, 24);
        Paint(*b.plane, 2 * i + 1);
        PaintInk(*b.inkPlane, i + 1);
        PaintDisc(*b.discPlane);
        Paint(*b.targetPlane, 2 * i + 2);
        buffers_.push_back(std::move(b));
    }
    for (int i = 0; i < roundCount; ++i) {
        const Buffers& b = buffers_[static_cast<unsigned>(i) % bufferCount];
        Round r{};
        r.index = i;
        r.width = size.width;
        r.height = size.height;
        r.x = i % 2 ? i : i / 4 * 8 % targetMargin;   // every other one stays aligned
        r.y = i / 2;
        r.sprite = b.sprite.get();
        r.noise = b.noise.get();
        r.target = b.target.get();
        r.plane = b.plane.get();
        r.inkPlane = b.inkPlane.get();
        r.discPlane = b.discPlane.get();
        r.targetPlane = b.targetPlane.get();
        r.fromSprite = PixelsOf(*b.sprite);
        r.fromNoise = PixelsOf(*b.noise);
        r.fromPlane = PixelsOf(*b.plane);
        r.fromInkPlane = PixelsOf(*b.inkPlane);
        r.wholeTarget = PixelsOf(*b.target);
        r.wholeTargetPlane = PixelsOf(*b.targetPlane);
        r.to = Inside(r.wholeTarget, r.x, r.y, 4);
        r.toPlane = Inside(r.wholeTargetPlane, r.x, r.y, 1);
        rounds_.push_back(r);
    }
}

CSurface& Scene::WideSource(int roundIndex) {
    const unsigned i = static_cast<unsigned>(roundIndex) % static_cast<unsigned>(buffers_.size());
    SurfaceOwner& wide = buffers_[i].wide;
    if (!wide) {
        wide = Owned<SurfaceOwner>(manager_.CreateSurface(2 * size_.width, 2 * size_.height));
        Paint(*wide, 100 + i, 24);
    }
    return *wide;
}

}   // namespace rastel::bench
