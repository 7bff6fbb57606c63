// One opened font file: what does not depend on a size. Design numbers are in font units, y upwards.
#pragma once

#include <ft2build.h>
#include FT_FREETYPE_H

#include <memory>

#include "rastel/platform/portable/gdi/font_match.h"

namespace rastel::platform {

struct DesignMetrics {
    int unitsPerEm = 1000;
    int ascent = 800;    // of the cell, not of the em: room for accents counts
    int descent = 200;   // downwards, positive
    int lineGap = 0;     // beyond ascent and descent
    int averageWidth = 500;
    int maximumWidth = 1000;
    int underlineTop = -100;   // upper edge, measured from the baseline
    int underlineThickness = 50;
    int strikeOutTop = 300;
    int strikeOutThickness = 50;
    int weight = 400;
    char32_t firstCharacter = 0x20;
    char32_t lastCharacter = 0x7E;
    bool fixedPitch = false;
    BYTE family = FF_DONTCARE;   // FF_ROMAN, FF_SWISS, FF_MODERN
    bool sfnt = false;           // TrueType or OpenType
};

// Not for several threads at once. The FreeType library must outlive it.
class FontFace {
public:
    static std::shared_ptr<FontFace> Open(FT_Library library, const FontFile& file);   // null: no outlines in there
    ~FontFace();
    FontFace(const FontFace&) = delete;
    FontFace& operator=(const FontFace&) = delete;

    FT_Face Handle() const { return face_; }
    const FontFile& File() const { return file_; }
    const DesignMetrics& Design() const { return design_; }
    unsigned GlyphIndex(char32_t character) const;   // 0: the font has none

private:
    FontFace(FT_Face face, FontFile file);
    void ReadDesign();

    FT_Face face_;
    FontFile file_;
    DesignMetrics design_;
};

}   // namespace rastel::platform
