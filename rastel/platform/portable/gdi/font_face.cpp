#include "rastel/platform/portable/gdi/font_face.h"

#include FT_TRUETYPE_TABLES_H

#include <algorithm>
#include <utility>

namespace rastel::platform {

namespace {

BYTE FamilyOf(const TT_OS2* os2, bool fixedPitch) {
    if (fixedPitch) {
        return FF_MODERN;
    }
    if (!os2) {
        return FF_DONTCARE;
    }
    const int familyClass = os2->sFamilyClass >> 8;
    if (familyClass == 8) {
        return FF_SWISS;
    }
    if (familyClass >= 1 && familyClass <= 7) {
        return FF_ROMAN;
    }
    // Latin text faces tell their serifs in the second number of the classification: 2 to 10 with, 11 to 15 without.
    if (os2->panose[0] == 2 && os2->panose[1] >= 2 && os2->panose[1] <= 15) {
        return os2->panose[1] >= 11 ? FF_SWISS : FF_ROMAN;
    }
    return FF_DONTCARE;
}

}   // namespace

std::shared_ptr<FontFace> FontFace::Open(FT_Library library, const FontFile& file) {
    FT_Face face = nullptr;
    if (FT_New_Face(library, file.path.c_str(), file.faceIndex, &face) != 0) {
        return nullptr;
    }
    std::shared_ptr<FontFace> opened(new FontFace(face, file));
    if (!FT_IS_SCALABLE(face) || face->units_per_EM == 0) {
        return nullptr;
    }
    // Symbol fonts have no Unicode map; their own one is then the best there is.
    if (FT_Select_Charmap(face, FT_ENCODING_UNICODE) != 0 && face->num_charmaps > 0) {
        FT_Set_Charmap(face, face->charmaps[0]);
    }
    opened->ReadDesign();
    return opened;
}

FontFace::FontFace(FT_Face face, FontFile file) : face_(face), file_(std::move(file)) {}

FontFace::~FontFace() {
    FT_Done_Face(face_);
}

unsigned FontFace::GlyphIndex(char32_t character) const {
    if (!face_->charmap) {
        return 0;
    }
    unsigned glyph = FT_Get_Char_Index(face_, character);
    // Symbol fonts keep their 256 characters in the private use area.
    if (!glyph && face_->charmap->encoding == FT_ENCODING_MS_SYMBOL && character < 0x100) {
        glyph = FT_Get_Char_Index(face_, 0xF000 + character);
    }
    return glyph;
}

void FontFace::ReadDesign() {
    const auto* os2 = static_cast<const TT_OS2*>(FT_Get_Sfnt_Table(face_, FT_SFNT_OS2));
    if (os2 && os2->version == 0xFFFF) {
        os2 = nullptr;
    }
    design_.unitsPerEm = face_->units_per_EM;
    design_.ascent = face_->ascender;
    design_.descent = -face_->descender;
    if (os2 && os2->usWinAscent + os2->usWinDescent > 0) {
        design_.ascent = os2->usWinAscent;
        design_.descent = os2->usWinDescent;
    }
    // A broken font must not give a cell of no height or one out of all proportion to the em.
    design_.ascent = std::clamp(design_.ascent, 0, 8 * design_.unitsPerEm);
    design_.descent = std::clamp(design_.descent, 0, 8 * design_.unitsPerEm);
    if (design_.ascent + design_.descent < design_.unitsPerEm / 4) {
        design_.ascent = design_.unitsPerEm * 4 / 5;
        design_.descent = design_.unitsPerEm - design_.ascent;
    }
    design_.lineGap = std::clamp(face_->height - (design_.ascent + design_.descent), 0, design_.unitsPerEm);
    design_.maximumWidth = std::clamp<int>(face_->max_advance_width, 1, 16 * design_.unitsPerEm);
    const int average = os2 && os2->xAvgCharWidth > 0 ? os2->xAvgCharWidth : design_.unitsPerEm / 2;
    design_.averageWidth = std::clamp(average, 1, design_.maximumWidth);

    design_.underlineThickness = face_->underline_thickness > 0 ? face_->underline_thickness : design_.unitsPerEm / 20;
    design_.underlineTop = face_->underline_position + design_.underlineThickness / 2;
    design_.strikeOutThickness = design_.underlineThickness;
    design_.strikeOutTop = design_.unitsPerEm * 3 / 10;
    if (os2 && os2->yStrikeoutSize > 0) {
        design_.strikeOutThickness = os2->yStrikeoutSize;
        design_.strikeOutTop = os2->yStrikeoutPosition;
    }
    design_.weight = file_.weight;
    if (os2 && os2->usFirstCharIndex <= os2->usLastCharIndex) {
        design_.firstCharacter = os2->usFirstCharIndex;
        design_.lastCharacter = os2->usLastCharIndex;
    }
    design_.fixedPitch = FT_IS_FIXED_WIDTH(face_);
    design_.family = FamilyOf(os2, design_.fixedPitch);
    design_.sfnt = FT_IS_SFNT(face_);
}

}   // namespace rastel::platform
