// The buffers of one size. Everybody who takes part in a comparison works on this same memory.
#pragma once

#include <memory>
#include <span>
#include <vector>

#include "rastel/alpha/alpha_channel.h"
#include "rastel/display/display_manager.h"
#include "rastel/surface/surface.h"

namespace rastel::bench {

struct Size {
    int width, height;
    auto operator<=>(const Size&) const = default;
};

struct Area {
    BYTE* at;
    int pitch;
};

struct Releaser {
    void operator()(CRefCountObject* object) const { object->Release(); }
};
using SurfaceOwner = std::unique_ptr<CSurface, Releaser>;
using PlaneOwner = std::unique_ptr<CAlphaChannel, Releaser>;

// What one call works on. Sources have the scene's size; targets are larger, and the call writes at (x, y), on aligned
// and unaligned addresses by turns.
struct Round {
    int index;   // 0 to roundCount - 1
    int x, y, width, height;

    CSurface* sprite;   // runs of colours with alpha 255 between runs of 0
    CSurface* noise;    // the same two kinds of pixels, at random
    CSurface* target;
    CAlphaChannel* plane;       // bytes at random
    CAlphaChannel* inkPlane;    // as a page of text has them: mostly 0
    CAlphaChannel* discPlane;   // as a sprite has them: solid within, clear in the corners, soft between
    CAlphaChannel* targetPlane;

    // The same pixels for those who know no Rastel: whole stores, and for `to` and `toPlane` the corner at (x, y).
    Area fromSprite, fromNoise, fromPlane, fromInkPlane;
    Area wholeTarget, wholeTargetPlane, to, toPlane;
};

constexpr int roundCount = 16;     // a power of 2
constexpr int targetMargin = 24;   // how much larger targets are, each way
constexpr DWORD transparentKey = 0;

class Scene {
public:
    Scene(CDisplayManager& manager, Size size);

    CDisplayManager& Manager() const { return manager_; }
    Size GetSize() const { return size_; }
    const Round& At(unsigned number) const { return rounds_[number % roundCount]; }

    // A source of twice the size, for stretches; made when first asked for.
    CSurface& WideSource(int roundIndex);

private:
    struct Buffers {
        SurfaceOwner sprite, noise, target, wide;
        PlaneOwner plane, inkPlane, discPlane, targetPlane;
    };

    CDisplayManager& manager_;
    Size size_;
    std::vector<Buffers> buffers_;
    std::vector<Round> rounds_;
};

Area PixelsOf(CSurfaceBase& store);   // the top-left corner; stays valid while the store lives

}   // namespace rastel::bench
