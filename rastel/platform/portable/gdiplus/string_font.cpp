#include "rastel/platform/portable/gdiplus/string_font.h"

#include <cairo-ft.h>

#include <algorithm>
#include <iterator>
#include <map>
#include <mutex>
#include <tuple>

#include "rastel/platform/framework/characters.h"
#include "rastel/platform/portable/gdi/font_engine.h"

namespace rastel::platform::gdip {

namespace {

using FaceKey = std::tuple<std::string, int, unsigned>;   // file, face, what is synthesized

// Never destroyed: cairo keeps fonts, and with them their faces, to the end.
struct Faces {
    std::mutex mutex;
    FT_Library library = nullptr;
    std::map<FaceKey, cairo_font_face_t*> opened;
};

Faces& TheFaces() {
    static Faces* const faces = [] {
        auto* const made = new Faces;
        if (FT_Init_FreeType(&made->library) != 0) {
            made->library = nullptr;
        }
        return made;
    }();
    return *faces;
}

std::optional<FontFile> FileOf(const FontObject& font) {
    LOGFONTW wanted{};
    wanted.lfHeight = -std::max<LONG>(1, static_cast<LONG>(std::min(font.pixels, 1e4)));
    wanted.lfWeight = font.style & Gdiplus::FontStyleBold ? FW_BOLD : FW_NORMAL;
    wanted.lfItalic = (font.style & Gdiplus::FontStyleItalic) != 0;
    std::wstring family;
    std::string_view rest = font.family;
    for (char32_t code = 0; !rest.empty() && TakeUtf8(rest, code);) {
        AppendWide(family, code);
    }
    constexpr std::size_t most = std::size(wanted.lfFaceName) - 1;
    std::copy_n(family.begin(), std::min(family.size(), most), wanted.lfFaceName);
    EngineLock engine;
    return engine->Matcher().Best(wanted);
}

// Null: the file can't be opened.
cairo_font_face_t* FaceOf(const FontFile& file, unsigned synthesized) {
    Faces& faces = TheFaces();
    const std::lock_guard lock(faces.mutex);
    cairo_font_face_t*& face = faces.opened[{file.path, file.faceIndex, synthesized}];
    FT_Face opened = nullptr;
    if (!face && faces.library && FT_New_Face(faces.library, file.path.c_str(), file.faceIndex, &opened) == 0) {
        face = cairo_ft_font_face_create_for_ft_face(opened, 0);
        cairo_ft_font_face_set_synthesize(face, synthesized);
    }
    return face;
}

}   // namespace

double SelectFont(cairo_t* cairo, const FontObject& font) {
    constexpr double least = 0.1, most = 1e4;
    const double size = std::clamp(font.pixels, least, most), factor = font.pixels / size;
    cairo_set_font_size(cairo, size);
    const std::optional<FontFile> file = FileOf(font);
    if (!file) {
        return factor;
    }
    constexpr int boldEnough = 600;
    unsigned synthesized = 0;
    if ((font.style & Gdiplus::FontStyleBold) && file->weight < boldEnough) {
        synthesized |= CAIRO_FT_SYNTHESIZE_BOLD;
    }
    if ((font.style & Gdiplus::FontStyleItalic) && !file->slanted) {
        synthesized |= CAIRO_FT_SYNTHESIZE_OBLIQUE;
    }
    if (cairo_font_face_t* const face = FaceOf(*file, synthesized)) {
        cairo_set_font_face(cairo, face);
    }
    return factor;
}

}   // namespace rastel::platform::gdip
