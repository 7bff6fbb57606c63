#include "rastel/platform/portable/gdi/text_quick.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <memory>
#include <optional>

#include "rastel/platform/portable/gdi/device_context.h"
#include "rastel/platform/portable/gdi/font_engine.h"
#include "rastel/platform/portable/gdi/text_decode.h"
#include "rastel/platform/portable/gdi/text_font.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace rastel::platform {

namespace {

constexpr std::array<RGBQUAD, 256> MakeGreys() {
    std::array<RGBQUAD, 256> greys{};
    for (std::size_t i = 0; i < greys.size(); i++) {
        const auto level = static_cast<BYTE>(i);
        greys[i] = RGBQUAD{level, level, level, 0};
    }
    return greys;
}
constexpr std::array<RGBQUAD, 256> kGreys = MakeGreys();

bool IsGreyRamp(const PixelBuffer& pixels) {
    return pixels.format.bitsPerPixel == 8 && pixels.format.IsIndexed() && pixels.colorCount == 256 &&
           std::memcmp(pixels.colors, kGreys.data(), sizeof(kGreys)) == 0;
}

bool IsPlain(const ContextState& state) {
    return state.backMode == TRANSPARENT && (state.textAlign & ~static_cast<UINT>(TA_BASELINE)) == 0 &&
           (state.textAlign == TA_BASELINE || state.textAlign == TA_TOP) && state.bitmap && !state.bitmap->stock;
}

// False: the clip is more than one rectangle.
bool Limit(RECT* area, const std::optional<Region>& clip) {
    if (!clip) {
        return true;
    }
    if (clip->Rects().size() > 1) {
        return false;
    }
    const RECT bounds = clip->Bounds();
    *area = RECT{std::max(area->left, bounds.left), std::max(area->top, bounds.top),
                 std::min(area->right, bounds.right), std::min(area->bottom, bounds.bottom)};
    return true;
}

// (color * coverage + target * (255 - coverage) + 127) / 255 in both halves of a word. A sum is at most 65152, and
// there (sum + 1 + sum / 256) / 256 is the quotient; neither carries into the other half.
DWORD MixHalves(DWORD target, DWORD color, DWORD coverage) {
    const DWORD sum = color * coverage + target * (255 - coverage) + 0x007F007F;
    return ((sum + 0x00010001 + ((sum >> 8) & 0x00FF00FF)) >> 8) & 0x00FF00FF;
}

// Pixels that nothing covers keep all their bits; the others get an alpha byte of 0.
void MixPixels(DWORD* target, const unsigned char* coverage, int count, DWORD color) {
    const DWORD redBlue = color & 0x00FF00FF;
    const DWORD green = (color >> 8) & 0xFF;
    for (int i = 0; i < count; i++) {
        if (coverage[i] != 0) {
            target[i] = MixHalves(target[i] & 0x00FF00FF, redBlue, coverage[i]) |
                        (MixHalves((target[i] >> 8) & 0xFF, green, coverage[i]) << 8);
        }
    }
}

#if defined(__SSE2__)
// The sum and the quotient of MixHalves on eight channels.
__m128i MixChannels(__m128i target, __m128i color, __m128i coverage) {
    const __m128i rest = _mm_sub_epi16(_mm_set1_epi16(255), coverage);
    const __m128i sum = _mm_add_epi16(_mm_add_epi16(_mm_mullo_epi16(color, coverage), _mm_mullo_epi16(target, rest)),
                                      _mm_set1_epi16(127));
    return _mm_srli_epi16(_mm_add_epi16(_mm_add_epi16(sum, _mm_set1_epi16(1)), _mm_srli_epi16(sum, 8)), 8);
}

// Four pixels, by a byte of coverage each; those that nothing covers keep all their bits.
void MixFour(DWORD* target, std::uint32_t coverage, __m128i wideColor) {
    const __m128i zero = _mm_setzero_si128();
    __m128i shares = _mm_cvtsi32_si128(static_cast<int>(coverage));
    shares = _mm_unpacklo_epi8(shares, shares);
    shares = _mm_unpacklo_epi16(shares, shares);   // each byte four times
    const __m128i before = _mm_loadu_si128(reinterpret_cast<const __m128i*>(target));
    const __m128i low = MixChannels(_mm_unpacklo_epi8(before, zero), wideColor, _mm_unpacklo_epi8(shares, zero));
    const __m128i high = MixChannels(_mm_unpackhi_epi8(before, zero), wideColor, _mm_unpackhi_epi8(shares, zero));
    const __m128i mixed = _mm_and_si128(_mm_packus_epi16(low, high), _mm_set1_epi32(0x00FFFFFF));
    const __m128i bare = _mm_cmpeq_epi8(shares, zero);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(target),
                     _mm_or_si128(_mm_and_si128(bare, before), _mm_andnot_si128(bare, mixed)));
}

void MixRow(DWORD* target, const unsigned char* coverage, int count, DWORD color) {
    if (count < 4) {
        MixPixels(target, coverage, count, color);
        return;
    }
    const __m128i wideColor = _mm_unpacklo_epi8(_mm_set1_epi32(static_cast<int>(color)), _mm_setzero_si128());
    const auto fourAt = [coverage](int x) {
        std::uint32_t four;
        std::memcpy(&four, coverage + x, sizeof(four));
        return four;
    };
    int x = 0;
    for (; x + 4 <= count; x += 4) {
        if (const std::uint32_t four = fourAt(x)) {
            MixFour(target + x, four, wideColor);
        }
    }
    if (x < count) {   // the last four, of which some are done
        const int done = x + 4 - count;
        if (const std::uint32_t four = fourAt(count - 4) & ~0u << 8 * done) {
            MixFour(target + count - 4, four, wideColor);
        }
    }
}
#else
void MixRow(DWORD* target, const unsigned char* coverage, int count, DWORD color) {
    MixPixels(target, coverage, count, color);
}
#endif

void MixRow(unsigned char* target, const unsigned char* coverage, int count, DWORD level) {
    for (int i = 0; i < count; i++) {
        target[i] = static_cast<unsigned char>(MixHalves(target[i], level, coverage[i]));
    }
}

}   // namespace

bool DrawQuickly(DeviceContext& context, int x, int y, LPCWSTR text, int length) {
    const ContextState& state = context.state;
    if (length != 1 || !text[0] || !context.IsMemory() || !IsPlain(state)) {
        return false;
    }
    const PixelBuffer pixels = PixelsOf(*state.bitmap);
    RECT area = {0, 0, pixels.width, pixels.height};
    const COLORREF color = ResolveColor(context, state.textColor);
    const bool isGrey = GetRValue(color) == GetGValue(color) && GetRValue(color) == GetBValue(color);
    const bool isWide = pixels.format == FormatOfDepth(32);
    if (!Limit(&area, state.clip) || !Limit(&area, state.metaClip) || !(isWide || (isGrey && IsGreyRamp(pixels)))) {
        return false;
    }
    char32_t character;
    DecodeCharacter(text, length, &character);
    std::shared_ptr<const GlyphImage> image;
    std::int64_t left = std::int64_t{x} + state.origin.x;
    std::int64_t top = std::int64_t{y} + state.origin.y;
    {
        EngineLock engine;
        const auto font = RealizedFontOf(*engine, context);
        if (!font || font->Angle() != 0 || font->Wanted().lfUnderline || font->Wanted().lfStrikeOut) {
            return false;
        }
        top += state.textAlign == TA_BASELINE ? 0 : font->Metrics().ascent;
        const FontGlyph glyph = font->Find(character);
        const GlyphBox needed{area.left - left, top - area.bottom, area.right - left, top - area.top};
        image = engine->Glyphs().Get(*glyph.face, glyph.glyph, needed);
    }
    if (image->IsEmpty()) {
        return true;
    }
    left += image->left;
    top -= image->top;
    const auto firstColumn = std::max<std::int64_t>(left, area.left);
    const auto columns = static_cast<int>(
        std::max<std::int64_t>(0, std::min<std::int64_t>(left + image->width, area.right) - firstColumn));
    const auto lastRow = std::min<std::int64_t>(top + image->height, area.bottom);
    const DWORD ink = RGB(GetBValue(color), GetGValue(color), GetRValue(color));   // in 32-bit pixel order
    for (std::int64_t row = std::max<std::int64_t>(top, area.top); row < lastRow && columns > 0; row++) {
        const unsigned char* coverage = image->coverage.data() + (row - top) * image->width + (firstColumn - left);
        unsigned char* target = pixels.Row(static_cast<int>(row));
        if (isWide) {
            MixRow(reinterpret_cast<DWORD*>(target) + firstColumn, coverage, columns, ink);
        } else {
            MixRow(target + firstColumn, coverage, columns, ink & 0xFF);
        }
    }
    return true;
}

}   // namespace rastel::platform
