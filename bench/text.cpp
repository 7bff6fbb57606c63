// A line of sixty letters, drawn again and again: what renderers do once they know their letters. Nobody is a yardstick
// for text, so memcpy moves the pixels of the line's box.
#include <string>

#include "families.h"
#include "rastel/composite/adv_surface.h"
#include "rastel/text/text_render.h"
#include "support/contenders.h"
#include "support/peers.h"

namespace rastel::bench {
namespace {

constexpr char line[] = "The quick brown fox jumps over the lazy dog, sixty letters..";
constexpr char family[] = "DejaVu Sans";

struct Letters {
    Letters(Scene& scene, int height, bool hasPlane) : target(new CAdvSurface, Releaser()) {
        target->SetSurface(scene.At(0).target);
        if (hasPlane) {
            target->SetAlphaChannel(scene.At(0).targetPlane);
        }
        text.assign(std::begin(line), std::end(line) - 1);
        const std::wstring name(std::begin(family), std::end(family) - 1);
        render.SetFont(
            ::CreateFontW(-height, 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS,
                          CLIP_DEFAULT_PRECIS, ANTIALIASED_QUALITY, DEFAULT_PITCH, name.c_str()),
            1);
        render.SetColor(RGB(20, 40, 60));
    }
    std::shared_ptr<CAdvSurface> target;
    CTextRender render;
    std::wstring text;
};

void AddRastel(Suite& suite, const std::string& operation, int height, bool hasPlane) {
    suite.AddPrepared(operation, hasPlane ? "Rastel, onto a plane" : "Rastel", [height, hasPlane](Scene& scene) {
        return [letters = std::make_shared<Letters>(scene, height, hasPlane), height](const Round& r) {
            letters->render.Draw(*letters->target, r.x, r.y + 2 * height, letters->text.c_str(), -1);
        };
    });
}

void AddHeight(Suite& suite, int height) {
    const std::string operation = "text " + std::to_string(height);
    suite.Add(operation, "memcpy", [height](const Round& r) { CopyRows(r.to, r.fromNoise, r.width * 4, height); });
    AddRastel(suite, operation, height, false);
    AddRastel(suite, operation, height, true);
#if defined(RASTEL_BENCH_HAS_CAIRO)
    suite.AddPrepared(operation, "cairo", [height](Scene& scene) {
        auto targets = CairoTargets(scene);
        for (const CairoContext& target : targets) {
            cairo_select_font_face(target.get(), family, CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_NORMAL);
            cairo_set_font_size(target.get(), height);
            cairo_set_source_rgb(target.get(), 0.08, 0.16, 0.24);
        }
        return [targets, height](const Round& r) {
            cairo_t* const target = targets[static_cast<std::size_t>(r.index)].get();
            cairo_move_to(target, r.x, r.y + 2 * height);
            cairo_show_text(target, line);
        };
    });
#endif
}

}   // namespace

void AddText(Suite& suite) {
    for (const int height : {12, 20, 48}) {
        AddHeight(suite, height);
    }
}

}   // namespace rastel::bench
