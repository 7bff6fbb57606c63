// Glyphs as bitmaps for the caller, the full measures, and the measures of every beginning of a text.
#include <climits>
#include <cstring>
#include <initializer_list>
#include <utility>

#include "tests/platform/text/text_test_support.h"

namespace rastel::test {
namespace {

constexpr MAT2 kIdentity = {{0, 1}, {0, 0}, {0, 0}, {0, 1}};

struct Bitmap {
    DWORD size = 0;
    GLYPHMETRICS metrics{};
    std::size_t pitch = 0;
    std::vector<BYTE> rows;

    int At(std::size_t x, std::size_t y) const { return rows[y * pitch + x]; }
    int Bit(std::size_t x, std::size_t y) const { return (rows[y * pitch + x / 8] >> (7 - x % 8)) & 1; }
};

class GlyphOutline : public TextTest {
protected:
    void SetUp() override { canvas_.Use(FontOf(-40)); }

    Bitmap Get(UINT character, UINT format = GGO_GRAY8_BITMAP) {
        Bitmap bitmap;
        GLYPHMETRICS first = {};
        bitmap.size = GetGlyphOutlineW(canvas_.Dc(), character, format, &first, 0, nullptr, &kIdentity);
        EXPECT_NE(bitmap.size, GDI_ERROR);
        constexpr std::size_t kGuard = 8;
        std::vector<BYTE> buffer(bitmap.size + kGuard, 0xEE);
        EXPECT_EQ(GetGlyphOutlineW(canvas_.Dc(), character, format, &bitmap.metrics, bitmap.size ? bitmap.size : 4,
                                   buffer.data(), &kIdentity),
                  bitmap.size);
        EXPECT_EQ(std::memcmp(&first, &bitmap.metrics, sizeof(first)), 0);
        for (std::size_t i = bitmap.size; i < buffer.size(); i++) {
            EXPECT_EQ(buffer[i], 0xEE);
        }
        const std::size_t bits = format == GGO_BITMAP ? 1 : 8;
        bitmap.pitch = (bitmap.metrics.gmBlackBoxX * bits + 31) / 32 * 4;
        EXPECT_EQ(bitmap.size, bitmap.pitch * bitmap.metrics.gmBlackBoxY);
        bitmap.rows.assign(buffer.begin(), buffer.begin() + static_cast<std::ptrdiff_t>(bitmap.size));
        return bitmap;
    }

    Canvas canvas_{120, 100};
};

TEST_F(GlyphOutline, LevelsGoFromNothingToTheFormatsTop) {
    for (const auto& [format, top] :
         {std::pair<UINT, int>{GGO_GRAY8_BITMAP, 64}, {GGO_GRAY4_BITMAP, 16}, {GGO_GRAY2_BITMAP, 4}}) {
        const Bitmap bitmap = Get(L'S', format);
        const auto most = *std::max_element(bitmap.rows.begin(), bitmap.rows.end());
        EXPECT_EQ(most, top);
        bool isBetween = false;
        for (const BYTE level : bitmap.rows) {
            isBetween = isBetween || (level > 0 && level < top);
        }
        EXPECT_TRUE(isBetween);
    }
}

TEST_F(GlyphOutline, TheBlackBoxHasInkOnEverySideAndPaddingIsEmpty) {
    for (const wchar_t character : std::wstring(L"SgWil.,|_jQ@")) {
        for (const UINT format : {GGO_GRAY8_BITMAP, GGO_BITMAP}) {
            const Bitmap bitmap = Get(static_cast<UINT>(character), format);
            const std::size_t width = bitmap.metrics.gmBlackBoxX;
            const std::size_t height = bitmap.metrics.gmBlackBoxY;
            ASSERT_GT(bitmap.size, 0u);
            const auto level = [&](std::size_t x, std::size_t y) {
                return format == GGO_BITMAP ? bitmap.Bit(x, y) : bitmap.At(x, y);
            };
            int left = 0, right = 0, top = 0, bottom = 0;
            for (std::size_t y = 0; y < height; y++) {
                left += level(0, y);
                right += level(width - 1, y);
                for (std::size_t x = width; x < bitmap.pitch * (format == GGO_BITMAP ? 8 : 1); x++) {
                    EXPECT_EQ(level(x, y), 0);
                }
            }
            for (std::size_t x = 0; x < width; x++) {
                top += level(x, 0);
                bottom += level(x, height - 1);
            }
            EXPECT_TRUE(left && right && top && bottom) << static_cast<int>(character) << " " << format;
        }
    }
}

// The bitmap at its origin is what text draws, so that a host's own letters and TextOutW's lie on each other.
TEST_F(GlyphOutline, OriginAndAdvanceAreThoseOfDrawnText) {
    for (const LONG height : {-9, -23, -40}) {
        canvas_.Use(FontOf(height));
        SetBkMode(canvas_.Dc(), TRANSPARENT);
        SetTextColor(canvas_.Dc(), RGB(255, 255, 255));
        SetTextAlign(canvas_.Dc(), TA_BASELINE);
        for (const wchar_t character : std::wstring(L"Agj'W")) {
            canvas_.Fill(0);
            ASSERT_TRUE(Write(canvas_, 30, 60, std::wstring(1, character)));
            const Bitmap bitmap = Get(static_cast<UINT>(character));
            const int left = 30 + bitmap.metrics.gmptGlyphOrigin.x;
            const int top = 60 - bitmap.metrics.gmptGlyphOrigin.y;
            for (int y = 0; y < 100; y++) {
                for (int x = 0; x < 120; x++) {
                    const bool inside = x >= left && x < left + static_cast<int>(bitmap.metrics.gmBlackBoxX) &&
                                        y >= top && y < top + static_cast<int>(bitmap.metrics.gmBlackBoxY);
                    const int level =
                        inside ? bitmap.At(static_cast<std::size_t>(x - left), static_cast<std::size_t>(y - top)) : 0;
                    ASSERT_EQ((static_cast<int>(canvas_.At(x, y) & 0xFF) * 64 + 127) / 255, level) << x << ' ' << y;
                }
            }
            EXPECT_EQ(bitmap.metrics.gmCellIncX, ExtentOf(canvas_.Dc(), std::wstring(1, character)).cx);
            EXPECT_EQ(bitmap.metrics.gmCellIncY, 0);
        }
    }
}

TEST_F(GlyphOutline, MetricsAloneAreThoseOfTheBitmap) {
    const Bitmap bitmap = Get(L'g');
    GLYPHMETRICS metrics = {};
    EXPECT_EQ(GetGlyphOutlineW(canvas_.Dc(), L'g', GGO_METRICS, &metrics, 0, nullptr, &kIdentity), 0u);
    EXPECT_EQ(std::memcmp(&metrics, &bitmap.metrics, sizeof(metrics)), 0);
    const Bitmap blank = Get(L' ');
    EXPECT_EQ(blank.size, 0u);
    EXPECT_EQ(blank.metrics.gmCellIncX, ExtentOf(canvas_.Dc(), L" ").cx);

    // Wherever the line goes, so does the advance.
    LOGFONTW font = FontOf(-40);
    font.lfEscapement = font.lfOrientation = 900;
    canvas_.Use(font);
    const Bitmap turned = Get(L'g');
    EXPECT_EQ(turned.metrics.gmCellIncX, 0);
    EXPECT_EQ(turned.metrics.gmCellIncY, -bitmap.metrics.gmCellIncX);
}

TEST_F(GlyphOutline, CharactersThatNoFontHasAreBoxes) {
    const Bitmap box = Get(0x0378);
    EXPECT_GT(box.size, 0u);
    for (const UINT odd : {0xD800u, 0xDFFFu, 0x110000u, 0xFFFFFFFFu}) {
        EXPECT_EQ(Get(odd).rows, box.rows) << odd;
    }
    EXPECT_NE(Get(0x1D538).rows, Get(L'A').rows);
}

TEST_F(GlyphOutline, TheFontsQualityPlaysNoPart) {
    const Bitmap smooth = Get(L'S'), hard = Get(L'S', GGO_BITMAP);
    LOGFONTW font = FontOf(-40);
    font.lfQuality = NONANTIALIASED_QUALITY;
    canvas_.Use(font);
    EXPECT_EQ(Get(L'S').rows, smooth.rows);
    EXPECT_EQ(Get(L'S', GGO_BITMAP).rows, hard.rows);
}

TEST_F(GlyphOutline, ASecondTimeDrawsNothing) {
    Get(L'K');
    const auto drawn = platform::DrawnGlyphCount();
    Get(L'K');
    EXPECT_EQ(platform::DrawnGlyphCount(), drawn);
}

TEST_F(GlyphOutline, BadArgumentsAreRefused) {
    GLYPHMETRICS metrics = {};
    BYTE few[4];
    const MAT2 twice = {{0, 2}, {0, 0}, {0, 0}, {0, 2}};
    const HDC dc = canvas_.Dc();
    EXPECT_EQ(GetGlyphOutlineW(nullptr, L'a', GGO_METRICS, &metrics, 0, nullptr, &kIdentity), GDI_ERROR);
    EXPECT_EQ(GetGlyphOutlineW(dc, L'a', GGO_METRICS, nullptr, 0, nullptr, &kIdentity), GDI_ERROR);
    EXPECT_EQ(GetGlyphOutlineW(dc, L'a', GGO_METRICS, &metrics, 0, nullptr, nullptr), GDI_ERROR);
    EXPECT_EQ(GetGlyphOutlineW(dc, L'a', GGO_METRICS, &metrics, 0, nullptr, &twice), GDI_ERROR);
    EXPECT_EQ(GetGlyphOutlineW(dc, L'a', 77, &metrics, 0, nullptr, &kIdentity), GDI_ERROR);
    EXPECT_EQ(GetGlyphOutlineW(dc, L'a', GGO_GRAY8_BITMAP, &metrics, sizeof(few), few, &kIdentity), GDI_ERROR);
    canvas_.Use(FontOf(INT_MIN));   // a letter of hundreds of megabytes
    EXPECT_EQ(GetGlyphOutlineW(dc, L'W', GGO_GRAY8_BITMAP, &metrics, 0, nullptr, &kIdentity), GDI_ERROR);
    EXPECT_EQ(GetOutlineTextMetricsW(nullptr, 0, nullptr), 0u);
}

TEST_F(GlyphOutline, OutlineMetricsHoldTheTextMetricsAndTheNames) {
    const UINT size = GetOutlineTextMetricsW(canvas_.Dc(), 0, nullptr);
    ASSERT_GT(size, sizeof(OUTLINETEXTMETRICW));
    std::vector<OUTLINETEXTMETRICW> block(size / sizeof(OUTLINETEXTMETRICW) + 1);
    EXPECT_EQ(GetOutlineTextMetricsW(canvas_.Dc(), size, block.data()), size);
    const OUTLINETEXTMETRICW& metrics = block[0];
    EXPECT_EQ(metrics.otmSize, size);
    TEXTMETRICW text = {};
    ASSERT_TRUE(GetTextMetricsW(canvas_.Dc(), &text));
    EXPECT_EQ(metrics.otmTextMetrics.tmHeight, text.tmHeight);
    EXPECT_EQ(metrics.otmTextMetrics.tmAscent, text.tmAscent);
    EXPECT_GT(metrics.otmsUnderscoreSize, 0);
    EXPECT_LT(metrics.otmsUnderscorePosition, 0);
    EXPECT_GT(metrics.otmEMSquare, 0u);
    EXPECT_GT(metrics.otmrcFontBox.top, metrics.otmrcFontBox.bottom);
    const char* const start = reinterpret_cast<const char*>(block.data());
    const auto offset = reinterpret_cast<std::size_t>(metrics.otmpFamilyName);
    EXPECT_STREQ(reinterpret_cast<const wchar_t*>(start + offset), kSans);

    // As much as fits, and nothing behind it.
    std::vector<BYTE> part(size, 0xEE);
    EXPECT_EQ(GetOutlineTextMetricsW(canvas_.Dc(), 40, reinterpret_cast<LPOUTLINETEXTMETRICW>(part.data())), 40u);
    EXPECT_EQ(std::memcmp(part.data(), &metrics, 40), 0);
    EXPECT_EQ(part[40], 0xEE);
}

TEST_F(GlyphOutline, EveryBeginningHasItsExtent) {
    const std::wstring text = L"Wave \U0001D538 fi";
    std::vector<int> extents(text.size());
    SIZE size = {};
    int fit = -1;
    const int length = static_cast<int>(text.size());
    ASSERT_TRUE(GetTextExtentExPointW(canvas_.Dc(), text.c_str(), length, 0, nullptr, extents.data(), &size));
    for (std::size_t i = 0; i < text.size(); i++) {
        EXPECT_EQ(extents[i], ExtentOf(canvas_.Dc(), text.substr(0, i + 1)).cx) << i;
    }
    EXPECT_EQ(size.cx, extents.back());
    for (const int limit : {0, extents[0] - 1, extents[0], extents[3], INT_MAX}) {
        std::vector<int> written(text.size(), -7);
        ASSERT_TRUE(GetTextExtentExPointW(canvas_.Dc(), text.c_str(), length, limit, &fit, written.data(), &size));
        const auto expected = std::upper_bound(extents.begin(), extents.end(), limit) - extents.begin();
        EXPECT_EQ(fit, expected) << limit;
        for (std::size_t i = 0; i < written.size(); i++) {
            EXPECT_EQ(written[i], i < static_cast<std::size_t>(fit) ? extents[i] : -7);
        }
        EXPECT_EQ(size.cx, extents.back());
    }
    const wchar_t pair[] = {static_cast<wchar_t>(0xD835), static_cast<wchar_t>(0xDD38)};
    int both[2] = {};
    ASSERT_TRUE(GetTextExtentExPointW(canvas_.Dc(), pair, 2, 0, nullptr, both, &size));
    EXPECT_EQ(both[0], both[1]);
    EXPECT_FALSE(GetTextExtentExPointW(canvas_.Dc(), nullptr, 2, 0, nullptr, both, &size));
    EXPECT_FALSE(GetTextExtentExPointW(canvas_.Dc(), L"a", 1, -1, &fit, both, &size));
    EXPECT_FALSE(GetTextExtentExPointW(canvas_.Dc(), L"a", 1, 0, nullptr, both, nullptr));
}

// Single characters on the usual bitmaps take a short way of their own; a clip of two rectangles takes the long one.
TEST_F(GlyphOutline, SingleCharactersAreDrawnLikeAnyText) {
    for (const WORD depth : {WORD{32}, WORD{8}}) {
        Canvas canvas(60, 60, depth);
        for (const LONG height : {-11, -30, -400}) {
            canvas.Use(FontOf(height));
            SetBkMode(canvas.Dc(), TRANSPARENT);
            SetViewportOrgEx(canvas.Dc(), 3, -2, nullptr);
            for (const UINT align : {TA_BASELINE, TA_TOP}) {
                SetTextAlign(canvas.Dc(), align);
                for (const COLORREF color : {RGB(90, 90, 90), RGB(255, 255, 255)}) {
                    SetTextColor(canvas.Dc(), color);
                    const auto drawn = [&](bool isSplit) {
                        std::vector<COLORREF> pixels;
                        SetViewportOrgEx(canvas.Dc(), 0, 0, nullptr);
                        for (int i = 0; i < 3600; i++) {
                            SetPixelV(canvas.Dc(), i % 60, i / 60, RGB(i % 251, i % 251, i % 251));
                        }
                        SetViewportOrgEx(canvas.Dc(), 3, -2, nullptr);
                        SaveDC(canvas.Dc());
                        IntersectClipRect(canvas.Dc(), 2, 4, 50, 55);
                        if (isSplit) {
                            ExcludeClipRect(canvas.Dc(), 40, 50, 50, 55);
                        }
                        EXPECT_TRUE(Write(canvas, -1, 30, L"g"));
                        RestoreDC(canvas.Dc(), -1);
                        SetViewportOrgEx(canvas.Dc(), 0, 0, nullptr);
                        for (int i = 0; i < 3600; i++) {
                            const bool isCut = i % 60 >= 43 && i / 60 >= 48;
                            pixels.push_back(isCut ? 0 : GetPixel(canvas.Dc(), i % 60, i / 60));
                        }
                        return pixels;
                    };
                    EXPECT_EQ(drawn(false), drawn(true)) << depth << ' ' << height << ' ' << align;
                }
            }
        }
    }
}

}   // namespace
}   // namespace rastel::test
