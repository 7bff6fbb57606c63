// The full measures of an outline font.
#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <new>
#include <string>

#include "rastel/platform/portable/gdi.h"
#include "rastel/platform/portable/gdi/device_context.h"
#include "rastel/platform/portable/gdi/font_engine.h"
#include "rastel/platform/portable/gdi/text_font.h"

#include FT_TRUETYPE_TABLES_H

namespace rastel::platform {

namespace {

constexpr UINT kSelectionItalic = 0x01;
constexpr UINT kSelectionUnderscore = 0x02;
constexpr UINT kSelectionStrikeOut = 0x10;
constexpr UINT kSelectionBold = 0x20;
constexpr UINT kSelectionRegular = 0x40;

// Family, face, style and full name.
using Names = std::array<std::wstring, 4>;

std::wstring Widen(const char* name) {
    std::wstring wide;
    for (; name && *name; name++) {
        wide.push_back(static_cast<wchar_t>(static_cast<unsigned char>(*name)));   // names of this kind are ASCII
    }
    return wide;
}

Names NamesOf(const FT_FaceRec& face) {
    Names names;
    names[0] = Widen(face.family_name);
    names[2] = Widen(face.style_name);
    names[3] = names[2].empty() || names[2] == L"Regular" ? names[0] : names[0] + L' ' + names[2];
    names[1] = names[3];
    return names;
}

// Lengths of the font's design in pixels, halves upwards.
class Scale {
public:
    Scale(const FontMetrics& metrics, const FT_FaceRec& face) : em_(metrics.emHeight), units_(face.units_per_EM) {}

    int operator()(std::int64_t design) const {
        const std::int64_t numerator = 2 * design * em_ + units_;
        const std::int64_t divisor = 2 * units_;
        const std::int64_t quotient = numerator / divisor;
        return static_cast<int>(numerator % divisor < 0 ? quotient - 1 : quotient);
    }

private:
    std::int64_t em_;
    std::int64_t units_;
};

void SetFromOs2(OUTLINETEXTMETRICW* result, const TT_OS2& os2, const Scale& scale) {
    static_assert(sizeof(result->otmPanoseNumber) == sizeof(os2.panose));
    std::memcpy(&result->otmPanoseNumber, os2.panose, sizeof(os2.panose));
    result->otmfsType = os2.fsType;
    result->otmAscent = scale(os2.sTypoAscender);
    result->otmDescent = scale(os2.sTypoDescender);
    result->otmLineGap = static_cast<UINT>(std::max(0, scale(os2.sTypoLineGap)));
    result->otmptSubscriptSize = POINT{scale(os2.ySubscriptXSize), scale(os2.ySubscriptYSize)};
    result->otmptSubscriptOffset = POINT{scale(os2.ySubscriptXOffset), scale(os2.ySubscriptYOffset)};
    result->otmptSuperscriptSize = POINT{scale(os2.ySuperscriptXSize), scale(os2.ySuperscriptYSize)};
    result->otmptSuperscriptOffset = POINT{scale(os2.ySuperscriptXOffset), scale(os2.ySuperscriptYOffset)};
    if (os2.version >= 2 && os2.version != 0xFFFF) {
        result->otmsCapEmHeight = static_cast<UINT>(std::max(0, scale(os2.sCapHeight)));
        result->otmsXHeight = static_cast<UINT>(std::max(0, scale(os2.sxHeight)));
    }
}

void SetSlope(OUTLINETEXTMETRICW* result, FT_FaceRec* face, bool slanted) {
    const auto* post = static_cast<const TT_Postscript*>(FT_Get_Sfnt_Table(face, FT_SFNT_POST));
    const auto* header = static_cast<const TT_HoriHeader*>(FT_Get_Sfnt_Table(face, FT_SFNT_HHEA));
    result->otmsCharSlopeRise = 1;
    if (header) {
        result->otmsCharSlopeRise = header->caret_Slope_Rise;
        result->otmsCharSlopeRun = header->caret_Slope_Run;
    }
    if (post && post->italicAngle != 0) {
        result->otmItalicAngle = static_cast<int>(static_cast<std::int64_t>(post->italicAngle) * 10 / 65536);
    } else if (slanted) {
        result->otmItalicAngle = -120;   // how far upright letters are slanted when a font has no others
    }
}

OUTLINETEXTMETRICW MetricsOf(const RealizedFont& font) {
    const FontMetrics& measured = font.Metrics();
    FT_FaceRec* const face = font.Face().Handle();
    const Scale scale(measured, *face);
    OUTLINETEXTMETRICW result = {};
    result.otmTextMetrics = TextMetricsOf(font);
    result.otmfsSelection =
        (measured.slanted ? kSelectionItalic : 0) | (font.Wanted().lfUnderline ? kSelectionUnderscore : 0) |
        (font.Wanted().lfStrikeOut ? kSelectionStrikeOut : 0) | (measured.weight >= FW_SEMIBOLD ? kSelectionBold : 0);
    if (result.otmfsSelection == 0) {
        result.otmfsSelection = kSelectionRegular;
    }
    result.otmEMSquare = face->units_per_EM;
    result.otmAscent = measured.ascent;
    result.otmDescent = -measured.descent;
    result.otmLineGap = static_cast<UINT>(measured.externalLeading);
    if (const auto* os2 = static_cast<const TT_OS2*>(FT_Get_Sfnt_Table(face, FT_SFNT_OS2))) {
        SetFromOs2(&result, *os2, scale);
    }
    SetSlope(&result, face, measured.slanted);
    result.otmrcFontBox =
        RECT{scale(face->bbox.xMin), scale(face->bbox.yMax), scale(face->bbox.xMax), scale(face->bbox.yMin)};
    result.otmMacAscent = scale(face->ascender);
    result.otmMacDescent = scale(face->descender);
    result.otmMacLineGap = static_cast<UINT>(std::max(0, scale(face->height - face->ascender + face->descender)));
    if (const auto* head = static_cast<const TT_Header*>(FT_Get_Sfnt_Table(face, FT_SFNT_HEAD))) {
        result.otmusMinimumPPEM = head->Lowest_Rec_PPEM;
    }
    result.otmsStrikeoutSize = static_cast<UINT>(measured.strikeOutThickness);
    result.otmsStrikeoutPosition = measured.strikeOutTop;
    result.otmsUnderscoreSize = measured.underlineThickness;
    result.otmsUnderscorePosition = measured.underlineTop;
    return result;
}

// The structure and behind it the names, each with its null, as one block.
std::string Pack(OUTLINETEXTMETRICW metrics, const Names& names) {
    std::size_t size = sizeof(metrics);
    char** const offsets[] = {&metrics.otmpFamilyName, &metrics.otmpFaceName, &metrics.otmpStyleName,
                              &metrics.otmpFullName};
    for (std::size_t i = 0; i < names.size(); i++) {
        *offsets[i] = reinterpret_cast<char*>(size);
        size += (names[i].size() + 1) * sizeof(wchar_t);
    }
    metrics.otmSize = static_cast<UINT>(size);
    std::string block(reinterpret_cast<const char*>(&metrics), sizeof(metrics));
    for (const std::wstring& name : names) {
        block.append(reinterpret_cast<const char*>(name.c_str()), (name.size() + 1) * sizeof(wchar_t));
    }
    return block;
}

}   // namespace

}   // namespace rastel::platform

UINT GetOutlineTextMetricsW(HDC context, UINT bytes, LPOUTLINETEXTMETRICW metrics) {
    const auto target = rastel::platform::FindContext(context);
    if (!target) {
        return 0;
    }
    try {
        rastel::platform::EngineLock engine;
        const auto font = rastel::platform::RealizedFontOf(*engine, *target);
        if (!font) {
            return 0;
        }
        const std::string block = rastel::platform::Pack(rastel::platform::MetricsOf(*font),
                                                         rastel::platform::NamesOf(*font->Face().Handle()));
        if (!metrics) {
            return static_cast<UINT>(block.size());
        }
        const std::size_t copied = std::min<std::size_t>(bytes, block.size());
        std::memcpy(static_cast<void*>(metrics), block.data(), copied);
        return static_cast<UINT>(copied);
    } catch (const std::bad_alloc&) {
        return 0;
    }
}
