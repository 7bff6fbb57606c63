// Composites to and from GDI+ bitmaps.
#include <memory>

#include "families.h"
#include "rastel/composite/adv_surface.h"
#include "rastel/platform/gdiplus.h"
#include "support/contenders.h"
#include "support/peers.h"

namespace rastel::bench {
namespace {

struct Exchange {
    Exchange(Scene& scene, bool hasPlane) : composite(new CAdvSurface, Releaser()) {
        composite->SetSurface(scene.At(0).target);
        if (hasPlane) {
            composite->SetAlphaChannel(scene.At(0).targetPlane);
        }
        bitmap.reset(composite->CreateBitmap());
    }
    std::shared_ptr<CAdvSurface> composite;
    std::shared_ptr<Gdiplus::Bitmap> bitmap;
};

void AddDirections(Suite& suite, const char* contender, bool hasPlane) {
    suite.AddPrepared("CreateBitmap", contender, [hasPlane](Scene& scene) {
        return [made = std::make_shared<Exchange>(scene, hasPlane)](const Round&) {
            const std::unique_ptr<Gdiplus::Bitmap> bitmap(made->composite->CreateBitmap());
            return bitmap != nullptr;
        };
    });
    suite.AddPrepared("SetBitmap", contender, [hasPlane](Scene& scene) {
        return [made = std::make_shared<Exchange>(scene, hasPlane)](const Round&) {
            return made->composite->SetBitmap(*made->bitmap);
        };
    });
}

}   // namespace

void AddExchange(Suite& suite) {
    for (const char* const operation : {"CreateBitmap", "SetBitmap"}) {
        suite.Add(operation, "memcpy", [](const Round& r) { CopyRows(r.to, r.fromNoise, r.width * 4, r.height); });
    }
    AddDirections(suite, "Rastel", false);
    AddDirections(suite, "Rastel, with a plane", true);
}

}   // namespace rastel::bench
