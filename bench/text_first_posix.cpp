// The line drawn for the first time: fonts are found and opened, glyphs rendered. The peers are told where their font
// is.
#include "families.h"
#include "letters.h"
#include "rastel/platform/portable/gdi/font_files.h"
#include "support/contenders.h"
#include "support/peers.h"

namespace rastel::bench {
namespace {

constexpr int height = 20;

}   // namespace

void AddFirstText(Suite& suite) {
    const char* const operation = "text 20, first";
    suite.Add(operation, "memcpy", [](const Round& r) { CopyRows(r.to, r.fromNoise, r.width * 4, height); });
    suite.AddPrepared(operation, "Rastel", [](Scene& scene) {
        return [&scene](const Round& r) {
            platform::UseSystemFonts(true);   // forgets all that was opened and drawn
            Letters letters(scene, height, false);
            letters.render.Draw(*letters.target, r.x, r.y + 2 * height, letters.text.c_str(), -1);
        };
    });
#if defined(RASTEL_BENCH_HAS_CAIRO)
    suite.AddPrepared(operation, "cairo", [](Scene& scene) {
        auto targets = CairoTargets(scene);
        for (const CairoContext& target : targets) {
            cairo_select_font_face(target.get(), family, CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_NORMAL);
            cairo_set_source_rgb(target.get(), 0.08, 0.16, 0.24);
        }
        return [targets, drawn = std::make_shared<int>(0)](const Round& r) {
            cairo_t* const target = targets[static_cast<std::size_t>(r.index)].get();
            // Sizes that it doesn't know yet, or has forgotten.
            cairo_set_font_size(target, height + (*drawn)++ % 1000 * 0.004);
            cairo_move_to(target, r.x, r.y + 2 * height);
            cairo_show_text(target, line);
        };
    });
#endif
#if defined(RASTEL_BENCH_HAS_SDL2_TTF)
    suite.AddPrepared(operation, "SDL2_ttf", [](Scene& scene) {
        return [targets = SdlSurfaces(scene, [](const Round& r) { return r.target; })](const Round& r) {
            return DrawTtf(OpenTtf(height).get(), targets[static_cast<std::size_t>(r.index)].get(), r, height);
        };
    });
#endif
}

}   // namespace rastel::bench
