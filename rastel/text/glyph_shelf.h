// The characters that a renderer has asked GDI for, kept for as long as its context has the same font.
#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <unordered_map>
#include <vector>

#include "rastel/platform/gdi.h"

namespace rastel::text {

struct Glyph {
    bool isMeasured = false;
    LONG measuredSize = 0;   // bytes of its bitmap, 0 or less: it has none
    GLYPHMETRICS measured{};

    bool isFetched = false;
    bool hasBitmap = false;
    GLYPHMETRICS metrics{};
    int width = 0;   // of the rows below; never more than the black box
    int height = 0;
    std::vector<BYTE> alpha;   // `width` bytes a row
};

// Not for several threads at once. Nothing here outlives a change of font, so no handle is kept that could be given to
// another font meanwhile.
class GlyphShelf {
public:
    // Forgets all characters when the context's font is another one than before, or measures differently.
    void Refresh(HDC hDC);

    // May throw std::bad_alloc. Stays where it is until the next Refresh or Forget.
    Glyph& At(unsigned character);
    void NoteBytes(std::size_t bytes) { bytes_ += bytes; }

    // How far each beginning of the text reaches, from 0 for none; one more than `length`.
    const std::vector<int>& Extents(HDC hDC, const wchar_t* text, int length);

private:
    struct Identity {
        LOGFONTW font{};
        TEXTMETRICW metrics{};
    };
    static bool IsSame(const Identity& first, const Identity& second);
    void Forget();

    Identity identity_;
    bool isKnown_ = false;
    std::size_t bytes_ = 0;
    std::array<std::unique_ptr<Glyph>, 256> latin_;
    std::unordered_map<unsigned, Glyph> others_;
    std::vector<int> extents_;
};

}   // namespace rastel::text
