// The shape of what text services tell; which font answers is the system's choice.
#include <cstdlib>

#include "tests/platform/gdi/gdi_test_support.h"

namespace rastel::test {
namespace {

const MAT2 identity = {{0, 1}, {0, 0}, {0, 0}, {0, 1}};

class Glyphs : public ::testing::Test {
protected:
    Glyphs() : section(300, 80, Plain32()) {
        font_ = ::CreateFontW(-32, 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS,
                              CLIP_DEFAULT_PRECIS, ANTIALIASED_QUALITY, VARIABLE_PITCH | FF_SWISS, L"Arial");
        previous_ = ::SelectObject(section.Dc(), font_);
    }
    ~Glyphs() override {
        ::SelectObject(section.Dc(), previous_);
        ::DeleteObject(font_);
    }
    SIZE Extent(const wchar_t* text) {
        SIZE size{};
        EXPECT_TRUE(::GetTextExtentPoint32W(section.Dc(), text, static_cast<int>(std::wcslen(text)), &size));
        return size;
    }
    // What is not black.
    RECT Ink() {
        RECT ink{INT32_MAX, INT32_MAX, INT32_MIN, INT32_MIN};
        for (int y = 0; y < section.Height(); ++y) {
            for (int x = 0; x < section.Width(); ++x) {
                if (section.Raw(x, y) & 0xFFFFFF) {
                    ink = {std::min<LONG>(ink.left, x), std::min<LONG>(ink.top, y), std::max<LONG>(ink.right, x + 1),
                           std::max<LONG>(ink.bottom, y + 1)};
                }
            }
        }
        return ink;
    }

    Section section;

private:
    HFONT font_;
    HGDIOBJ previous_;
};

TEST_F(Glyphs, MetricsFitTogether) {
    TEXTMETRICW metrics{};
    ASSERT_TRUE(::GetTextMetricsW(section.Dc(), &metrics));
    EXPECT_EQ(metrics.tmHeight, metrics.tmAscent + metrics.tmDescent);
    EXPECT_NEAR(metrics.tmHeight - metrics.tmInternalLeading, 32, 1);   // what a negative height asks for
    EXPECT_EQ(metrics.tmWeight, FW_NORMAL);
    EXPECT_GT(metrics.tmAveCharWidth, 8);
    EXPECT_EQ(Extent(L"W").cy, metrics.tmHeight);
    EXPECT_EQ(Extent(L"").cx, 0);
    const UINT bytes = ::GetOutlineTextMetricsW(section.Dc(), 0, nullptr);
    ASSERT_GE(bytes, sizeof(OUTLINETEXTMETRICW));
    std::vector<BYTE> memory(bytes);
    auto* const outline = reinterpret_cast<OUTLINETEXTMETRICW*>(memory.data());
    ASSERT_NE(::GetOutlineTextMetricsW(section.Dc(), bytes, outline), 0u);
    EXPECT_EQ(outline->otmTextMetrics.tmHeight, metrics.tmHeight);
    EXPECT_GT(outline->otmsUnderscoreSize, 0);
    EXPECT_LT(outline->otmsUnderscorePosition, 0);   // below the base line
}

TEST_F(Glyphs, OutlinesAreTightBoxesOf65Levels) {
    for (const wchar_t letter : {L'A', L'g', L'-', L'W', L'.'}) {
        GLYPHMETRICS asked{}, glyph{};
        const DWORD bytes = ::GetGlyphOutlineW(section.Dc(), letter, GGO_GRAY8_BITMAP, &asked, 0, nullptr, &identity);
        ASSERT_NE(bytes, GDI_ERROR);
        const UINT pitch = (asked.gmBlackBoxX + 3) / 4 * 4;
        ASSERT_EQ(bytes, pitch * asked.gmBlackBoxY);
        std::vector<BYTE> levels(bytes, 0xEE);
        ASSERT_EQ(::GetGlyphOutlineW(section.Dc(), letter, GGO_GRAY8_BITMAP, &glyph, bytes, levels.data(), &identity),
                  bytes);
        EXPECT_EQ(std::memcmp(&asked, &glyph, sizeof(glyph)), 0);
        EXPECT_LE(*std::max_element(levels.begin(), levels.end()), 64);
        EXPECT_GT(*std::max_element(levels.begin(), levels.end()), 32);
        const wchar_t text[] = {letter, 0};
        EXPECT_EQ(glyph.gmCellIncX, Extent(text).cx);
        EXPECT_EQ(glyph.gmCellIncY, 0);
    }
    GLYPHMETRICS dot{}, high{};
    ::GetGlyphOutlineW(section.Dc(), L'.', GGO_METRICS, &dot, 0, nullptr, &identity);
    ::GetGlyphOutlineW(section.Dc(), L'A', GGO_METRICS, &high, 0, nullptr, &identity);
    EXPECT_GT(high.gmptGlyphOrigin.y, 18);   // rows above the base line
    EXPECT_LT(dot.gmptGlyphOrigin.y, 8);
    EXPECT_LT(dot.gmBlackBoxX, high.gmBlackBoxX);
}

TEST_F(Glyphs, ASpaceHasWidthAndNoBits) {
    GLYPHMETRICS space{};
    EXPECT_EQ(::GetGlyphOutlineW(section.Dc(), L' ', GGO_GRAY8_BITMAP, &space, 0, nullptr, &identity), 0u);
    EXPECT_EQ(space.gmCellIncX, Extent(L" ").cx);
    EXPECT_GT(space.gmCellIncX, 4);
}

TEST_F(Glyphs, TextStandsWhereItsAlignmentSays) {
    TEXTMETRICW metrics{};
    ::GetTextMetricsW(section.Dc(), &metrics);
    ::SetTextColor(section.Dc(), RGB(255, 255, 255));
    ::SetBkMode(section.Dc(), TRANSPARENT);
    const int width = Extent(L"Hill").cx;
    for (const auto& [align, left, base] :
         {std::tuple{UINT{TA_LEFT | TA_TOP}, 150, 20 + static_cast<int>(metrics.tmAscent)},
          {UINT{TA_RIGHT | TA_BASELINE}, 150 - width, 20},
          {UINT{TA_CENTER | TA_BOTTOM}, 150 - width / 2, 20 - static_cast<int>(metrics.tmDescent)}}) {
        std::memset(section.Bits(), 0, section.Bytes());
        ::SetTextAlign(section.Dc(), align);
        ASSERT_TRUE(::TextOutW(section.Dc(), 150, 20 + 24, L"Hill", 4));
        const RECT ink = Ink();
        EXPECT_NEAR(ink.left, left, 5) << align;
        EXPECT_NEAR(ink.right, left + width, 5) << align;
        EXPECT_EQ(ink.bottom, base + 24) << align;   // none of these letters goes below the base line
    }
    ::SetTextAlign(section.Dc(), TA_LEFT | TA_TOP);
    ::SetBkMode(section.Dc(), OPAQUE);
    ::SetBkColor(section.Dc(), RGB(0, 0, 255));
    std::memset(section.Bits(), 0xFF, section.Bytes());
    ASSERT_TRUE(::TextOutW(section.Dc(), 10, 10, L"Hill", 4));
    EXPECT_EQ(section.Raw(10, 10), 0x000000FFu);   // its cell is filled, and no alpha byte is left
    EXPECT_EQ(section.Raw(10 + width - 1, 10 + metrics.tmHeight - 1) >> 24, 0u);
    EXPECT_EQ(section.Raw(9, 10), 0xFFFFFFFFu);
    EXPECT_EQ(section.Raw(10, 10 + metrics.tmHeight), 0xFFFFFFFFu);
}

}   // namespace
}   // namespace rastel::test
