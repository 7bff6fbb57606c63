#include "rastel/platform/portable/gdi/font_match.h"

#include <fontconfig/fontconfig.h>

#include <algorithm>
#include <cctype>
#include <string_view>
#include <vector>

#include "rastel/platform/portable/gdi/text_decode.h"

namespace rastel::platform {

namespace {

struct PatternDeleter {
    void operator()(FcPattern* pattern) const { FcPatternDestroy(pattern); }
};
struct FontSetDeleter {
    void operator()(FcFontSet* set) const { FcFontSetDestroy(set); }
};
using Pattern = std::unique_ptr<FcPattern, PatternDeleter>;
using FontSet = std::unique_ptr<FcFontSet, FontSetDeleter>;

const FcChar8* Bytes(const char* text) {
    return reinterpret_cast<const FcChar8*>(text);
}

// Stand-ins for faces that hosts ask for by name and that a free system rarely has. Fontconfig's own list knows most
// of them, but a small system may come without it.
struct Substitute {
    const char* wanted;
    std::vector<const char*> served;
};

const std::vector<Substitute>& Substitutes() {
    static const std::vector<Substitute> table = {
        {"arial", {"Liberation Sans", "Arimo", "Nimbus Sans", "DejaVu Sans", "sans-serif"}},
        {"helvetica", {"Liberation Sans", "Arimo", "Nimbus Sans", "DejaVu Sans", "sans-serif"}},
        {"arial narrow", {"Liberation Sans Narrow", "DejaVu Sans Condensed", "sans-serif"}},
        {"tahoma", {"DejaVu Sans", "Liberation Sans", "sans-serif"}},
        {"verdana", {"DejaVu Sans", "Liberation Sans", "sans-serif"}},
        {"segoe ui", {"Noto Sans", "Open Sans", "DejaVu Sans", "sans-serif"}},
        {"calibri", {"Carlito", "Liberation Sans", "DejaVu Sans", "sans-serif"}},
        {"system", {"Liberation Sans", "Arimo", "DejaVu Sans", "sans-serif"}},
        {"ms sans serif", {"Liberation Sans", "Arimo", "DejaVu Sans", "sans-serif"}},
        {"ms shell dlg", {"Liberation Sans", "Arimo", "DejaVu Sans", "sans-serif"}},
        {"ms shell dlg 2", {"DejaVu Sans", "Liberation Sans", "sans-serif"}},
        {"times new roman", {"Liberation Serif", "Tinos", "DejaVu Serif", "serif"}},
        {"times", {"Liberation Serif", "Tinos", "DejaVu Serif", "serif"}},
        {"ms serif", {"Liberation Serif", "Tinos", "DejaVu Serif", "serif"}},
        {"georgia", {"Gelasio", "DejaVu Serif", "Liberation Serif", "serif"}},
        {"cambria", {"Caladea", "DejaVu Serif", "Liberation Serif", "serif"}},
        {"courier new", {"Liberation Mono", "Cousine", "DejaVu Sans Mono", "monospace"}},
        {"courier", {"Liberation Mono", "Cousine", "DejaVu Sans Mono", "monospace"}},
        {"consolas", {"Inconsolata", "DejaVu Sans Mono", "Liberation Mono", "monospace"}},
        {"lucida console", {"DejaVu Sans Mono", "Liberation Mono", "monospace"}},
        {"fixedsys", {"DejaVu Sans Mono", "Liberation Mono", "monospace"}},
        {"terminal", {"DejaVu Sans Mono", "Liberation Mono", "monospace"}},
    };
    return table;
}

struct CharSetLanguage {
    BYTE charSet;
    const char* language;
};

constexpr CharSetLanguage kLanguages[] = {
    {128, "ja"}, {129, "ko"}, {130, "ko"}, {134, "zh-cn"}, {136, "zh-tw"}, {161, "el"}, {162, "tr"},
    {163, "vi"}, {177, "he"}, {178, "ar"}, {186, "lt"},    {204, "ru"},    {222, "th"}, {238, "pl"},
};

std::string FaceName(const LOGFONTW& wanted) {
    std::string name = ToUtf8(wanted.lfFaceName, LF_FACESIZE);
    // A leading @ asks for letters turned for vertical lines; the face is the same.
    return name.starts_with('@') ? name.substr(1) : name;
}

bool WantsFixedPitch(const LOGFONTW& wanted) {
    return (wanted.lfPitchAndFamily & 0x03) == FIXED_PITCH;
}

const char* GenericFamily(const LOGFONTW& wanted) {
    const int family = wanted.lfPitchAndFamily & 0xF0;
    if (family == FF_MODERN || WantsFixedPitch(wanted)) {
        return "monospace";
    }
    return family == FF_ROMAN ? "serif" : "sans-serif";
}

Pattern BuildPattern(FcConfig* config, const LOGFONTW& wanted) {
    Pattern pattern(FcPatternCreate());
    if (!pattern) {
        return nullptr;
    }
    const std::string name = FaceName(wanted);
    if (!name.empty()) {
        FcPatternAddString(pattern.get(), FC_FAMILY, Bytes(name.c_str()));
    }
    std::string lower = name;
    std::ranges::transform(lower, lower.begin(),
                           [](char c) { return static_cast<char>(std::tolower(static_cast<unsigned char>(c))); });
    for (const Substitute& substitute : Substitutes()) {
        if (lower == substitute.wanted) {
            for (const char* family : substitute.served) {
                FcPatternAddString(pattern.get(), FC_FAMILY, Bytes(family));
            }
        }
    }
    FcPatternAddString(pattern.get(), FC_FAMILY, Bytes(GenericFamily(wanted)));
    const int weight = wanted.lfWeight <= 0 ? FW_NORMAL : std::min<int>(wanted.lfWeight, 1000);
    FcPatternAddDouble(pattern.get(), FC_WEIGHT, FcWeightFromOpenTypeDouble(weight));
    FcPatternAddInteger(pattern.get(), FC_SLANT, wanted.lfItalic ? FC_SLANT_ITALIC : FC_SLANT_ROMAN);
    FcPatternAddBool(pattern.get(), FC_SCALABLE, FcTrue);
    FcPatternAddBool(pattern.get(), FC_OUTLINE, FcTrue);
    FcPatternAddBool(pattern.get(), FC_VARIABLE, FcFalse);
    FcPatternAddBool(pattern.get(), FC_COLOR, FcFalse);
    for (const CharSetLanguage& entry : kLanguages) {
        if (entry.charSet == wanted.lfCharSet) {
            FcPatternAddString(pattern.get(), FC_LANG, Bytes(entry.language));
        }
    }
    FcConfigSubstitute(config, pattern.get(), FcMatchPattern);
    FcDefaultSubstitute(pattern.get());
    return pattern;
}

Hinting HintingOf(FcPattern* font) {
    FcBool on = FcTrue;
    FcBool automatic = FcFalse;
    int style = FC_HINT_SLIGHT;
    FcPatternGetBool(font, FC_HINTING, 0, &on);
    FcPatternGetBool(font, FC_AUTOHINT, 0, &automatic);
    FcPatternGetInteger(font, FC_HINT_STYLE, 0, &style);
    if (!on || style == FC_HINT_NONE) {
        return Hinting::None;
    }
    if (style == FC_HINT_SLIGHT) {
        return Hinting::Light;
    }
    return automatic ? Hinting::Auto : Hinting::Normal;
}

std::optional<FontFile> FileOf(FcPattern* font) {
    FcChar8* path = nullptr;
    FcBool outline = FcFalse;
    if (FcPatternGetString(font, FC_FILE, 0, &path) != FcResultMatch || !path ||
        FcPatternGetBool(font, FC_OUTLINE, 0, &outline) != FcResultMatch || !outline) {
        return std::nullopt;
    }
    FontFile file;
    file.path = reinterpret_cast<const char*>(path);
    FcPatternGetInteger(font, FC_INDEX, 0, &file.faceIndex);
    if ((file.faceIndex >> 16) == 0x8000) {
        file.faceIndex &= 0xFFFF;   // a variable font as a whole: its default instance
    }
    double weight = 0;
    if (FcPatternGetDouble(font, FC_WEIGHT, 0, &weight) == FcResultMatch) {
        file.weight = std::clamp(static_cast<int>(FcWeightToOpenTypeDouble(weight) + 0.5), 1, 1000);
    }
    int slant = FC_SLANT_ROMAN;
    FcPatternGetInteger(font, FC_SLANT, 0, &slant);
    file.slanted = slant != FC_SLANT_ROMAN;
    // Where the configuration wants a style synthesised it also reports that style as if the file had it.
    FcBool embolden = FcFalse;
    if (FcPatternGetBool(font, FC_EMBOLDEN, 0, &embolden) == FcResultMatch && embolden) {
        file.weight = FW_NORMAL;
    }
    FcMatrix* matrix = nullptr;
    if (FcPatternGetMatrix(font, FC_MATRIX, 0, &matrix) == FcResultMatch && matrix->xy != 0) {
        file.slanted = false;
    }
    file.hinting = HintingOf(font);
    return file;
}

bool IsFixedPitch(FcPattern* font) {
    int spacing = FC_PROPORTIONAL;
    return FcPatternGetInteger(font, FC_SPACING, 0, &spacing) == FcResultMatch && spacing >= FC_MONO;
}

bool HasName(FcPattern* font, const std::string& name) {
    FcChar8* family = nullptr;
    for (int i = 0; FcPatternGetString(font, FC_FAMILY, i, &family) == FcResultMatch; i++) {
        if (FcStrCmpIgnoreCase(family, Bytes(name.c_str())) == 0) {
            return true;
        }
    }
    return false;
}

// Where no font has the wanted name nor the generic one, the search takes any pitch; then the first fixed one is
// nearer to what was wanted. Null: there is none.
Pattern FirstOfFixedPitch(FcConfig* config, FcPattern* wanted) {
    FcResult result = FcResultNoMatch;
    const FontSet fonts(FcFontSort(config, wanted, FcFalse, nullptr, &result));
    for (int i = 0; fonts && i < fonts->nfont; i++) {
        if (IsFixedPitch(fonts->fonts[i])) {
            return Pattern(FcFontRenderPrepare(config, wanted, fonts->fonts[i]));
        }
    }
    return nullptr;
}

class SortedCandidates final : public FontCandidates {
public:
    SortedCandidates(FcConfig* config, Pattern wanted, FontSet fonts)
        : config_(FcConfigReference(config)), wanted_(std::move(wanted)), fonts_(std::move(fonts)) {}
    ~SortedCandidates() override { FcConfigDestroy(config_); }
    SortedCandidates(const SortedCandidates&) = delete;
    SortedCandidates& operator=(const SortedCandidates&) = delete;

    int Count() const override { return fonts_->nfont; }

    bool HasCharacter(int index, char32_t character) const override {
        FcCharSet* characters = nullptr;
        return FcPatternGetCharSet(fonts_->fonts[index], FC_CHARSET, 0, &characters) == FcResultMatch &&
               FcCharSetHasChar(characters, character);
    }

    std::optional<FontFile> File(int index) const override {
        const Pattern font(FcFontRenderPrepare(config_, wanted_.get(), fonts_->fonts[index]));
        return font ? FileOf(font.get()) : std::nullopt;
    }

private:
    FcConfig* config_;
    Pattern wanted_;
    FontSet fonts_;
};

}   // namespace

struct FontMatcher::State {
    FcConfig* config = nullptr;
    bool systemFonts = true;
    std::vector<std::string> addedFiles;

    // With no configuration to be had, an empty one: then only added files are found.
    void Load() {
        if (config) {
            FcConfigDestroy(config);
        }
        config = systemFonts ? FcInitLoadConfigAndFonts() : nullptr;
        if (!config) {
            config = FcConfigCreate();
        }
        for (const std::string& path : addedFiles) {
            FcConfigAppFontAddFile(config, Bytes(path.c_str()));
        }
    }
};

FontMatcher::FontMatcher() : state_(std::make_unique<State>()) {
    state_->Load();
}

FontMatcher::~FontMatcher() {
    if (state_->config) {
        FcConfigDestroy(state_->config);
    }
}

bool FontMatcher::AddFile(const std::string& path) {
    if (!state_->config || !FcConfigAppFontAddFile(state_->config, Bytes(path.c_str()))) {
        return false;
    }
    state_->addedFiles.push_back(path);
    return true;
}

void FontMatcher::RemoveAddedFiles() {
    state_->addedFiles.clear();
    if (state_->config) {
        FcConfigAppFontClear(state_->config);
    }
}

void FontMatcher::UseSystemFonts(bool use) {
    if (state_->systemFonts != use) {
        state_->systemFonts = use;
        state_->Load();
    }
}

std::optional<FontFile> FontMatcher::Best(const LOGFONTW& wanted) const {
    const Pattern pattern = state_->config ? BuildPattern(state_->config, wanted) : nullptr;
    if (!pattern) {
        return std::nullopt;
    }
    FcResult result = FcResultNoMatch;
    Pattern font(FcFontMatch(state_->config, pattern.get(), &result));
    if (font && WantsFixedPitch(wanted) && !IsFixedPitch(font.get()) && !HasName(font.get(), FaceName(wanted))) {
        if (Pattern fixed = FirstOfFixedPitch(state_->config, pattern.get())) {
            font = std::move(fixed);
        }
    }
    return font ? FileOf(font.get()) : std::nullopt;
}

std::unique_ptr<FontCandidates> FontMatcher::All(const LOGFONTW& wanted) const {
    Pattern pattern = state_->config ? BuildPattern(state_->config, wanted) : nullptr;
    if (!pattern) {
        return nullptr;
    }
    FcResult result = FcResultNoMatch;
    FontSet fonts(FcFontSort(state_->config, pattern.get(), FcTrue, nullptr, &result));
    if (!fonts) {
        return nullptr;
    }
    return std::make_unique<SortedCandidates>(state_->config, std::move(pattern), std::move(fonts));
}

}   // namespace rastel::platform
