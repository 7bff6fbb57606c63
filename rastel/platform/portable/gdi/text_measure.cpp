// Measures of a context's font and of text in it.
#include <algorithm>
#include <limits>
#include <new>

#include "rastel/platform/portable/gdi.h"
#include "rastel/platform/portable/gdi/device_context.h"
#include "rastel/platform/portable/gdi/text_decode.h"
#include "rastel/platform/portable/gdi/text_font.h"
#include "rastel/platform/portable/gdi/text_layout.h"

namespace rastel::platform {

namespace {

constexpr LONG kDotsPerInch = 96;

int ToInt(std::int64_t value) {
    return static_cast<int>(std::min<std::int64_t>(value, std::numeric_limits<int>::max()));
}

WCHAR ToUnit(char32_t character) {
    return static_cast<WCHAR>(std::min(character, static_cast<char32_t>(0xFFFF)));
}

}   // namespace

TEXTMETRICW TextMetricsOf(const RealizedFont& font) {
    const FontMetrics& measured = font.Metrics();
    const DesignMetrics& design = font.Design();
    const LOGFONTW& wanted = font.Wanted();
    TEXTMETRICW metrics = {};
    metrics.tmHeight = measured.height;
    metrics.tmAscent = measured.ascent;
    metrics.tmDescent = measured.descent;
    metrics.tmInternalLeading = measured.height - measured.emHeight;
    metrics.tmExternalLeading = measured.externalLeading;
    metrics.tmAveCharWidth = measured.averageWidth;
    metrics.tmMaxCharWidth = measured.maximumWidth;
    metrics.tmWeight = measured.weight;
    metrics.tmDigitizedAspectX = kDotsPerInch;
    metrics.tmDigitizedAspectY = kDotsPerInch;
    metrics.tmFirstChar = ToUnit(design.firstCharacter);
    metrics.tmLastChar = ToUnit(design.lastCharacter);
    metrics.tmDefaultChar = ToUnit(design.firstCharacter > 0 ? design.firstCharacter - 1 : 0);
    metrics.tmBreakChar = L' ';
    metrics.tmItalic = measured.slanted;
    metrics.tmUnderlined = wanted.lfUnderline != 0;
    metrics.tmStruckOut = wanted.lfStrikeOut != 0;
    // The pitch bit is set for fonts whose pitch is *not* fixed.
    const int pitch = design.fixedPitch ? 0 : TMPF_FIXED_PITCH;
    metrics.tmPitchAndFamily =
        static_cast<BYTE>(design.family | pitch | TMPF_VECTOR | (design.sfnt ? TMPF_TRUETYPE : 0));
    metrics.tmCharSet = wanted.lfCharSet == DEFAULT_CHARSET ? ANSI_CHARSET : wanted.lfCharSet;
    return metrics;
}

}   // namespace rastel::platform

BOOL GetTextMetricsW(HDC context, LPTEXTMETRICW metrics) {
    const auto target = rastel::platform::FindContext(context);
    if (!target || !metrics) {
        return FALSE;
    }
    try {
        rastel::platform::EngineLock engine;
        const auto font = rastel::platform::RealizedFontOf(*engine, *target);
        if (!font) {
            return FALSE;
        }
        *metrics = rastel::platform::TextMetricsOf(*font);
        return TRUE;
    } catch (const std::bad_alloc&) {
        return FALSE;
    }
}

BOOL GetTextExtentExPointW(HDC context, LPCWSTR text, int length, int limit, LPINT fit, LPINT extents, LPSIZE size) {
    const auto target = rastel::platform::FindContext(context);
    if (!target || !size || length < 0 || (!text && length > 0) || (fit && limit < 0)) {
        return FALSE;
    }
    try {
        rastel::platform::EngineLock engine;
        const auto font = rastel::platform::RealizedFontOf(*engine, *target);
        if (!font) {
            return FALSE;
        }
        std::int64_t width = 0;
        int count = 0;
        for (int i = 0, units = 0; i < length && text[i]; i += units) {
            char32_t character;
            units = rastel::platform::DecodeCharacter(text + i, length - i, &character);
            width += font->Find(character).advance;
            if (fit && (count < i || width > limit)) {
                continue;   // past the limit only the size of the whole still counts
            }
            for (int unit = 0; extents && unit < units; unit++) {
                extents[i + unit] = rastel::platform::ToInt(width);
            }
            count = i + units;
        }
        if (fit) {
            *fit = count;
        }
        size->cx = rastel::platform::ToInt(width);
        size->cy = font->Metrics().height;
        return TRUE;
    } catch (const std::bad_alloc&) {
        return FALSE;
    }
}

BOOL GetTextExtentPoint32W(HDC context, LPCWSTR text, int length, LPSIZE size) {
    const auto target = rastel::platform::FindContext(context);
    if (!target || !size || length < 0 || (!text && length > 0)) {
        return FALSE;
    }
    try {
        const std::u32string characters = rastel::platform::DecodeText(text, length);
        rastel::platform::EngineLock engine;
        const auto font = rastel::platform::RealizedFontOf(*engine, *target);
        if (!font) {
            return FALSE;
        }
        const std::int64_t width = rastel::platform::LineWidth(*font, characters);
        size->cx = static_cast<LONG>(std::min<std::int64_t>(width, std::numeric_limits<LONG>::max()));
        size->cy = font->Metrics().height;
        return TRUE;
    } catch (const std::bad_alloc&) {
        return FALSE;
    }
}
