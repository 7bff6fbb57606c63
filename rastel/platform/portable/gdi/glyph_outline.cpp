// Glyphs as bitmaps for the caller.
#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <numbers>
#include <optional>
#include <tuple>
#include <vector>

#include "rastel/platform/portable/gdi.h"
#include "rastel/platform/portable/gdi/device_context.h"
#include "rastel/platform/portable/gdi/font_engine.h"
#include "rastel/platform/portable/gdi/text_decode.h"
#include "rastel/platform/portable/gdi/text_font.h"

namespace rastel::platform {

namespace {

constexpr std::size_t kCapacityBytes = 8 << 20;
constexpr std::int64_t kLargestArea = 64 << 20;   // in pixels; larger glyphs are refused

struct GlyphBitmap {
    GLYPHMETRICS metrics{};            // increments not set
    std::vector<unsigned char> rows;   // in the format asked for, padded to four bytes
};

// One entry a face, glyph and format. The engine's lock guards it.
using BitmapKey = std::tuple<unsigned long, unsigned, UINT>;
using BitmapCache = FontCache<BitmapKey, std::shared_ptr<const GlyphBitmap>>;

BitmapCache& Bitmaps() {
    static auto* const cache = new BitmapCache(kCapacityBytes);   // outlives every static object that draws text
    return *cache;
}

// Full coverage in that format; 0: not a bitmap format.
int TopLevel(UINT format) {
    switch (format) {
        case GGO_BITMAP:
            return 1;
        case GGO_GRAY2_BITMAP:
            return 4;
        case GGO_GRAY4_BITMAP:
            return 16;
        case GGO_GRAY8_BITMAP:
            return 64;
        default:
            return 0;
    }
}

int LevelOf(unsigned char coverage, int topLevel) {
    return (coverage * topLevel + 127) / 255;
}

// The rows and columns that have ink at this number of levels; empty: none has.
RECT InkOf(const GlyphImage& image, int topLevel) {
    RECT ink = {image.width, image.height, 0, 0};
    const unsigned char* pixel = image.coverage.data();
    for (LONG y = 0; y < image.height; y++) {
        for (LONG x = 0; x < image.width; x++, pixel++) {
            if (LevelOf(*pixel, topLevel) > 0) {
                ink.left = std::min(ink.left, x);
                ink.top = std::min(ink.top, y);
                ink.right = std::max(ink.right, x + 1);
                ink.bottom = y + 1;
            }
        }
    }
    return ink.bottom ? ink : RECT{};
}

GlyphBitmap BitmapOf(const GlyphImage& image, int topLevel) {
    GlyphBitmap bitmap;
    const RECT ink = InkOf(image, topLevel);
    const auto width = static_cast<std::size_t>(ink.right - ink.left);
    const auto height = static_cast<std::size_t>(ink.bottom - ink.top);
    if (width == 0) {
        return bitmap;
    }
    bitmap.metrics.gmBlackBoxX = static_cast<UINT>(width);
    bitmap.metrics.gmBlackBoxY = static_cast<UINT>(height);
    bitmap.metrics.gmptGlyphOrigin = POINT{image.left + ink.left, image.top - ink.top};
    const std::size_t bits = topLevel == 1 ? 1 : 8;
    const std::size_t pitch = (width * bits + 31) / 32 * 4;
    bitmap.rows.resize(pitch * height);
    for (std::size_t y = 0; y < height; y++) {
        const unsigned char* source = image.coverage.data() +
                                      (y + static_cast<std::size_t>(ink.top)) * static_cast<std::size_t>(image.width) +
                                      static_cast<std::size_t>(ink.left);
        unsigned char* row = bitmap.rows.data() + y * pitch;
        for (std::size_t x = 0; x < width; x++) {
            const int level = LevelOf(source[x], topLevel);
            if (topLevel > 1) {
                row[x] = static_cast<unsigned char>(level);
            } else if (level) {
                row[x / 8] = static_cast<unsigned char>(row[x / 8] | (0x80 >> (x % 8)));
            }
        }
    }
    return bitmap;
}

bool IsTooLarge(ScaledFace& face, unsigned glyph) {
    const FT_Outline* outline = face.Outline(glyph);
    if (!outline) {
        return false;
    }
    const GlyphBox box = BoxOf(*outline);
    return (box.right - box.left) * (box.top - box.bottom) > kLargestArea;
}

// Null: too large.
std::shared_ptr<const GlyphBitmap> Render(FontEngine& engine, ScaledFace& face, unsigned glyph, UINT format) {
    const BitmapKey key(face.Id(), glyph, format);
    if (auto known = Bitmaps().Find(key)) {
        return known;
    }
    if (IsTooLarge(face, glyph)) {
        return nullptr;
    }
    constexpr std::int64_t kFar = 1 << 20;
    const auto image = engine.Glyphs().Get(face, glyph, GlyphBox{-kFar, -kFar, kFar, kFar});
    auto bitmap = std::make_shared<const GlyphBitmap>(BitmapOf(*image, TopLevel(format)));
    Bitmaps().Insert(key, bitmap, sizeof(GlyphBitmap) + bitmap->rows.size());
    return bitmap;
}

bool IsIdentity(const MAT2& matrix) {
    const auto is = [](const FIXED& number, short value) { return number.fract == 0 && number.value == value; };
    return is(matrix.eM11, 1) && is(matrix.eM12, 0) && is(matrix.eM21, 0) && is(matrix.eM22, 1);
}

short ToShort(double value) {
    constexpr double kLimit = std::numeric_limits<short>::max();
    return static_cast<short>(std::lround(std::clamp(value, -kLimit, kLimit)));
}

// To where the next pen lies, y downwards.
void SetIncrements(GLYPHMETRICS* metrics, int advance, int angle) {
    if (angle == 0) {
        metrics->gmCellIncX = ToShort(advance);
        return;
    }
    const double radians = angle * std::numbers::pi / 1800.0;
    metrics->gmCellIncX = ToShort(advance * std::cos(radians));
    metrics->gmCellIncY = ToShort(-advance * std::sin(radians));
}

DWORD Outline(const DeviceContext& context, UINT character, UINT format, LPGLYPHMETRICS metrics, DWORD bytes,
              LPVOID buffer) {
    const UINT bitmapFormat = format == GGO_METRICS ? static_cast<UINT>(GGO_GRAY8_BITMAP) : format;
    EngineLock engine;
    const auto font = RealizedFontOf(*engine, context, bitmapFormat == GGO_BITMAP ? FontUse::Mono : FontUse::Grey);
    if (!font) {
        return GDI_ERROR;
    }
    const FontGlyph glyph = font->Find(ValidCharacter(character));
    const auto bitmap = Render(*engine, *glyph.face, glyph.glyph, bitmapFormat);
    if (!bitmap) {
        return GDI_ERROR;
    }
    const auto size = static_cast<DWORD>(bitmap->rows.size());
    const bool wantsRows = format != GGO_METRICS && buffer && bytes > 0;
    if (wantsRows && bytes < size) {
        return GDI_ERROR;
    }
    *metrics = bitmap->metrics;
    SetIncrements(metrics, glyph.advance, font->Angle());
    if (wantsRows && size > 0) {
        std::memcpy(buffer, bitmap->rows.data(), size);
    }
    return format == GGO_METRICS ? 0 : size;
}

}   // namespace

}   // namespace rastel::platform

DWORD GetGlyphOutlineW(HDC context, UINT character, UINT format, LPGLYPHMETRICS metrics, DWORD bytes, LPVOID buffer,
                       const MAT2* matrix) {
    const auto target = rastel::platform::FindContext(context);
    if (!target || !metrics || !matrix || !rastel::platform::IsIdentity(*matrix) ||
        (format != GGO_METRICS && !rastel::platform::TopLevel(format))) {
        return GDI_ERROR;
    }
    try {
        return rastel::platform::Outline(*target, character, format, metrics, bytes, buffer);
    } catch (const std::bad_alloc&) {
        return GDI_ERROR;
    }
}
