#include "rastel/platform/portable/gdi/text_quick.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <memory>
#include <optional>

#include "rastel/platform/portable/gdi/device_context.h"
#include "rastel/platform/portable/gdi/font_engine.h"
#include "rastel/platform/portable/gdi/glyph_mix_body.h"
#include "rastel/platform/portable/gdi/row_kernels.h"
#include "rastel/platform/portable/gdi/text_decode.h"
#include "rastel/platform/portable/gdi/text_font.h"

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

// Without an image where the font's lines are turned or have bars. `needed(ascent)` tells what will be looked at.
template <class Needed>
KnownLetter DrawLetter(DeviceContext& context, char32_t character, Needed needed) {
    EngineLock engine;
    const auto font = RealizedFontOf(*engine, context);
    if (!font || font->Angle() != 0 || font->Wanted().lfUnderline || font->Wanted().lfStrikeOut) {
        return {};
    }
    const int ascent = font->Metrics().ascent;
    const FontGlyph glyph = font->Find(character);
    bool isWhole = false;
    const KnownLetter letter{engine->Glyphs().Get(*glyph.face, glyph.glyph, needed(ascent), &isWhole), ascent};
    if (isWhole && context.state.font) {
        context.state.font->letters.Keep(character, letter);
    }
    return letter;
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
    std::int64_t left = std::int64_t{x} + state.origin.x;
    std::int64_t top = std::int64_t{y} + state.origin.y;
    const KnownLetter* letter = state.font ? state.font->letters.Find(character) : nullptr;
    KnownLetter drawn;
    if (!letter) {
        drawn = DrawLetter(context, character, [&](int ascent) {
            const std::int64_t baseline = top + (state.textAlign == TA_BASELINE ? 0 : ascent);
            return GlyphBox{area.left - left, baseline - area.bottom, area.right - left, baseline - area.top};
        });
        letter = &drawn;
    }
    const GlyphImage* const image = letter->image.get();
    if (!image) {
        return false;
    }
    if (image->IsEmpty()) {
        return true;
    }
    left += image->left;
    top += (state.textAlign == TA_BASELINE ? 0 : letter->ascent) - image->top;
    const auto firstColumn = std::max<std::int64_t>(left, area.left);
    const auto columns = static_cast<int>(
        std::max<std::int64_t>(0, std::min<std::int64_t>(left + image->width, area.right) - firstColumn));
    const auto firstRow = std::max<std::int64_t>(top, area.top);
    const auto rows = static_cast<int>(
        std::max<std::int64_t>(0, std::min<std::int64_t>(top + image->height, area.bottom) - firstRow));
    if (columns == 0 || rows == 0) {
        return true;
    }
    const DWORD ink = RGB(GetBValue(color), GetGValue(color), GetRValue(color));   // in 32-bit pixel order
    const unsigned char* coverage = image->coverage.data() + (firstRow - top) * image->width + (firstColumn - left);
    unsigned char* target = pixels.Row(static_cast<int>(firstRow)) + firstColumn * (isWide ? 4 : 1);
    if (isWide) {
        Kernels().mix(target, pixels.pitch, coverage, image->width, columns, rows, ink);
    } else {
        MixGreyRows(target, pixels.pitch, coverage, image->width, columns, rows, ink & 0xFF);
    }
    return true;
}

}   // namespace rastel::platform
