// Which file on this machine serves a wanted font: LOGFONTW in, file and face number out, by fontconfig.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "rastel/platform/portable/gdi.h"

namespace rastel::platform {

enum class Hinting { None, Light, Normal, Auto };

struct FontFile {
    std::string path;
    int faceIndex = 0;      // with a named instance of a variable font in the upper 16 bits
    int weight = 400;       // 1 to 1000, of the file itself
    bool slanted = false;   // italic or oblique
    Hinting hinting = Hinting::Light;
};

// What fits a wanted font, best first. Holds its own copy of all it needs.
class FontCandidates {
public:
    virtual ~FontCandidates() = default;
    virtual int Count() const = 0;
    virtual bool HasCharacter(int index, char32_t character) const = 0;
    virtual std::optional<FontFile> File(int index) const = 0;   // none: an outline font is wanted and this is not one
};

// The fonts of this machine and the files added by hand. Keeps a configuration of its own, so that a host's use of
// fontconfig is left alone. Not for several threads at once.
class FontMatcher {
public:
    FontMatcher();
    ~FontMatcher();
    FontMatcher(const FontMatcher&) = delete;
    FontMatcher& operator=(const FontMatcher&) = delete;

    bool AddFile(const std::string& path);
    void RemoveAddedFiles();
    void UseSystemFonts(bool use);   // false: only the files added by hand

    std::optional<FontFile> Best(const LOGFONTW& wanted) const;
    std::unique_ptr<FontCandidates> All(const LOGFONTW& wanted) const;   // slower: sorts every font

private:
    struct State;
    std::unique_ptr<State> state_;
};

}   // namespace rastel::platform
