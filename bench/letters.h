// The line of text that is drawn, and what Rastel draws it with.
#pragma once

#include <iterator>
#include <memory>
#include <string>

#include "rastel/composite/adv_surface.h"
#include "rastel/text/text_render.h"
#include "support/peers.h"

#if defined(RASTEL_BENCH_HAS_SDL2_TTF)
#include <SDL_ttf.h>
#endif

namespace rastel::bench {

inline constexpr char line[] = "The quick brown fox jumps over the lazy dog, sixty letters..";
inline constexpr char family[] = "DejaVu Sans";

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

#if defined(RASTEL_BENCH_HAS_SDL2_TTF)
inline constexpr char familyFile[] = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";
inline constexpr SDL_Color textColor = {20, 40, 60, 255};

struct TtfClose {
    void operator()(TTF_Font* font) const { TTF_CloseFont(font); }
};
using TtfOwner = std::unique_ptr<TTF_Font, TtfClose>;

// Null where the file isn't there.
inline TtfOwner OpenTtf(int height) {
    return TtfOwner(TTF_WasInit() || TTF_Init() == 0 ? TTF_OpenFont(familyFile, height) : nullptr);
}

// The line comes as a picture of its own, which is blended then.
inline bool DrawTtf(TTF_Font* font, SDL_Surface* target, const Round& r, int height) {
    const SdlOwner picture(font ? TTF_RenderUTF8_Blended(font, line, textColor) : nullptr, SDL_FreeSurface);
    SDL_Rect to = {r.x, r.y + height, 0, 0};
    return picture && SDL_BlitSurface(picture.get(), nullptr, target, &to) == 0;
}
#endif

}   // namespace rastel::bench
