// A line of sixty letters, drawn again and again: what renderers do once they know their letters. Nobody is a yardstick
// for text, so memcpy moves the pixels of the line's box.
#include <string>

#include "families.h"
#include "letters.h"
#include "support/contenders.h"
#include "support/peers.h"

namespace rastel::bench {
namespace {

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
#if defined(RASTEL_BENCH_HAS_SDL2_TTF)
    suite.AddPrepared(operation, "SDL2_ttf", [height](Scene& scene) {
        return [font = std::shared_ptr<TTF_Font>(OpenTtf(height)), height,
                targets = SdlSurfaces(scene, [](const Round& r) { return r.target; })](const Round& r) {
            return DrawTtf(font.get(), targets[static_cast<std::size_t>(r.index)].get(), r, height);
        };
    });
#endif
}

}   // namespace

void AddText(Suite& suite) {
    for (const int height : {12, 20, 48}) {
        AddHeight(suite, height);
    }
#if defined(RASTEL_BENCH_HAS_FIRST_TEXT)
    AddFirstText(suite);
#endif
}

}   // namespace rastel::bench
