// The letters that a font object has drawn, so that drawing one again needs no lock and no search.
#pragma once

#include <array>
#include <atomic>
#include <memory>

#include "rastel/platform/portable/gdi/glyph_image.h"

namespace rastel::platform {

struct KnownLetter {
    std::shared_ptr<const GlyphImage> image;   // never null
    int ascent = 0;                            // of the font's line
};

// For several threads at once. Letters stay where they are until the end, but once fonts came or went none is found.
class KnownLetters {
public:
    KnownLetters();
    ~KnownLetters();
    KnownLetters(const KnownLetters&) = delete;
    KnownLetters& operator=(const KnownLetters&) = delete;

    const KnownLetter* Find(char32_t character) const;          // null: not known
    void Keep(char32_t character, const KnownLetter& letter);   // rare and large ones aren't kept

    // To be called when fonts come or go.
    static void ForgetAll();

private:
    unsigned generation_;
    std::array<std::atomic<const KnownLetter*>, 128> letters_{};
};

}   // namespace rastel::platform
