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

// For several threads at once. Letters stay where they are until the end, so that whoever found one may go on drawing
// it; once fonts came or went it isn't found any more, and the next one kept takes its place.
class KnownLetters {
public:
    KnownLetters() = default;
    ~KnownLetters();
    KnownLetters(const KnownLetters&) = delete;
    KnownLetters& operator=(const KnownLetters&) = delete;

    const KnownLetter* Find(char32_t character) const;   // null: not known
    // Rare and large letters aren't kept, nor any more of them once all fonts together hold very many.
    void Keep(char32_t character, const KnownLetter& letter);

    // To be called when fonts come or go, not while a letter is being kept.
    static void ForgetAll();

private:
    struct Kept;
    std::array<std::atomic<const Kept*>, 128> letters_{};
};

}   // namespace rastel::platform
