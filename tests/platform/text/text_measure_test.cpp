#include <algorithm>
#include <climits>

#include "tests/platform/text/text_test_support.h"

namespace rastel::test {
namespace {

class TextMeasure : public TextTest {
protected:
    Canvas canvas_{8, 8};
};

std::vector<LOGFONTW> ManyFonts() {
    std::vector<LOGFONTW> fonts;
    for (const LONG height : {-1, -7, -13, -40, -300, 0, 1, 9, 16, 100}) {
        for (const wchar_t* face : {kSans, kMono}) {
            LOGFONTW font = FontOf(height, face);
            fonts.push_back(font);
            font.lfWeight = FW_BOLD;
            font.lfItalic = 1;
            fonts.push_back(font);
            font.lfQuality = NONANTIALIASED_QUALITY;
            font.lfWidth = 9;
            fonts.push_back(font);
        }
    }
    return fonts;
}

TEST_F(TextMeasure, AnExtentIsTheSumOfItsCharacters) {
    const std::wstring text = L"AVAToyj. Wij 0123 fi?";
    for (const LOGFONTW& font : ManyFonts()) {
        canvas_.Use(font);
        LONG sum = 0;
        for (std::size_t i = 0; i < text.size(); i++) {
            sum += ExtentOf(canvas_.Dc(), text.substr(i, 1)).cx;
            ASSERT_EQ(ExtentOf(canvas_.Dc(), text.substr(0, i + 1)).cx, sum) << font.lfHeight << ' ' << i;
        }
    }
}

TEST_F(TextMeasure, TurningALineDoesNotChangeItsLength) {
    canvas_.Use(FontOf(-17));
    const SIZE level = ExtentOf(canvas_.Dc(), L"turning");
    for (const LONG angle : {1, 450, 900, 2700, -300, 36001}) {
        LOGFONTW font = FontOf(-17);
        font.lfEscapement = font.lfOrientation = angle;
        canvas_.Use(font);
        EXPECT_EQ(ExtentOf(canvas_.Dc(), L"turning").cx, level.cx) << angle;
    }
}

TEST_F(TextMeasure, MeasuresAgreeWithEachOther) {
    for (const LOGFONTW& font : ManyFonts()) {
        canvas_.Use(font);
        TEXTMETRICW metrics = {};
        ASSERT_TRUE(GetTextMetricsW(canvas_.Dc(), &metrics));
        EXPECT_EQ(metrics.tmHeight, metrics.tmAscent + metrics.tmDescent);
        EXPECT_GT(metrics.tmHeight, 0);
        EXPECT_GT(metrics.tmAveCharWidth, 0);
        EXPECT_GE(metrics.tmMaxCharWidth, metrics.tmAveCharWidth);
        EXPECT_EQ(ExtentOf(canvas_.Dc(), L"x").cy, metrics.tmHeight);
        EXPECT_EQ(metrics.tmItalic != 0, font.lfItalic != 0);
        EXPECT_EQ(metrics.tmWeight >= FW_SEMIBOLD, font.lfWeight >= FW_SEMIBOLD);
        if (font.lfHeight < 0) {
            EXPECT_EQ(metrics.tmHeight - metrics.tmInternalLeading, -font.lfHeight);
        }
        if (font.lfWidth) {
            EXPECT_NEAR(metrics.tmAveCharWidth, font.lfWidth, 1);
        }
    }
}

TEST_F(TextMeasure, APositiveHeightIsThatOfTheCell) {
    for (int height = 1; height < 200; height++) {
        canvas_.Use(FontOf(height));
        TEXTMETRICW metrics = {};
        ASSERT_TRUE(GetTextMetricsW(canvas_.Dc(), &metrics));
        EXPECT_EQ(metrics.tmHeight, height);
    }
}

TEST_F(TextMeasure, PitchAndFamilyTellTheKindOfFont) {
    TEXTMETRICW metrics = {};
    canvas_.Use(FontOf(-20, kSans));
    ASSERT_TRUE(GetTextMetricsW(canvas_.Dc(), &metrics));
    // The bit says the opposite of its name.
    EXPECT_EQ(metrics.tmPitchAndFamily, TMPF_FIXED_PITCH | TMPF_VECTOR | TMPF_TRUETYPE | FF_SWISS);
    EXPECT_GT(ExtentOf(canvas_.Dc(), L"W").cx, ExtentOf(canvas_.Dc(), L"i").cx);

    canvas_.Use(FontOf(-20, kMono));
    ASSERT_TRUE(GetTextMetricsW(canvas_.Dc(), &metrics));
    EXPECT_EQ(metrics.tmPitchAndFamily, TMPF_VECTOR | TMPF_TRUETYPE | FF_MODERN);
    EXPECT_EQ(ExtentOf(canvas_.Dc(), L"W").cx, ExtentOf(canvas_.Dc(), L"i").cx);
}

TEST_F(TextMeasure, SurrogatePairsAreOneCharacter) {
    canvas_.Use(FontOf(-24));
    const LONG box = ExtentOf(canvas_.Dc(), L"\x0378").cx;   // no font has a character there
    const LONG pair = ExtentOf(canvas_.Dc(), {static_cast<wchar_t>(0xD835), static_cast<wchar_t>(0xDD38)}).cx;
    EXPECT_NE(pair, 2 * box);
    EXPECT_EQ(pair, ExtentOf(canvas_.Dc(), L"\U0001D538").cx);
    // Halves and what is no character at all become boxes.
    for (const unsigned unit : {0xD835u, 0xDD38u}) {
        EXPECT_EQ(ExtentOf(canvas_.Dc(), {static_cast<wchar_t>(unit)}).cx, box);
        EXPECT_EQ(ExtentOf(canvas_.Dc(), {static_cast<wchar_t>(unit), L'a'}).cx, box + ExtentOf(canvas_.Dc(), L"a").cx);
    }
    if constexpr (sizeof(wchar_t) == 4) {
        EXPECT_EQ(ExtentOf(canvas_.Dc(), {static_cast<wchar_t>(0x110000)}).cx, box);
        EXPECT_EQ(ExtentOf(canvas_.Dc(), {static_cast<wchar_t>(-1)}).cx, box);
    }
}

TEST_F(TextMeasure, ALengthPastTheEndStopsAtTheEnd) {
    canvas_.Use(FontOf(-20));
    SIZE size = {};
    ASSERT_TRUE(GetTextExtentPoint32W(canvas_.Dc(), L"abc", INT_MAX, &size));
    EXPECT_EQ(size.cx, ExtentOf(canvas_.Dc(), L"abc").cx);
    // Without a terminator nothing behind the length is read.
    const std::vector<wchar_t> bare = {L'a', L'b', L'c'};
    ASSERT_TRUE(GetTextExtentPoint32W(canvas_.Dc(), bare.data(), 3, &size));
    EXPECT_EQ(size.cx, ExtentOf(canvas_.Dc(), L"abc").cx);
}

TEST_F(TextMeasure, BadArgumentsAreRefused) {
    SIZE size = {};
    TEXTMETRICW metrics = {};
    const HDC stale = CreateCompatibleDC(nullptr);
    DeleteDC(stale);
    for (const HDC context : {static_cast<HDC>(nullptr), stale, reinterpret_cast<HDC>(this)}) {
        EXPECT_FALSE(GetTextExtentPoint32W(context, L"a", 1, &size));
        EXPECT_FALSE(GetTextMetricsW(context, &metrics));
        EXPECT_FALSE(TextOutW(context, 0, 0, L"a", 1));
        EXPECT_EQ(SetTextAlign(context, TA_CENTER), GDI_ERROR);
        EXPECT_EQ(GetTextAlign(context), GDI_ERROR);
    }
    EXPECT_FALSE(GetTextExtentPoint32W(canvas_.Dc(), nullptr, 1, &size));
    EXPECT_FALSE(GetTextExtentPoint32W(canvas_.Dc(), L"a", -1, &size));
    EXPECT_FALSE(GetTextExtentPoint32W(canvas_.Dc(), L"a", 1, nullptr));
    EXPECT_FALSE(GetTextMetricsW(canvas_.Dc(), nullptr));
    EXPECT_FALSE(TextOutW(canvas_.Dc(), 0, 0, nullptr, 1));
    EXPECT_FALSE(TextOutW(canvas_.Dc(), 0, 0, L"a", -1));
    EXPECT_EQ(CreateFontIndirectW(nullptr), nullptr);
    EXPECT_TRUE(GetTextExtentPoint32W(canvas_.Dc(), L"", 0, &size));
    EXPECT_EQ(size.cx, 0);
}

TEST_F(TextMeasure, AnExtentPastAnyIntegerStopsAtTheLargest) {
    LOGFONTW font = FontOf(INT_MIN);
    font.lfWidth = INT_MAX;
    canvas_.Use(font);
    const std::wstring text(1 << 18, L'W');
    EXPECT_EQ(ExtentOf(canvas_.Dc(), text).cx, INT_MAX);
    EXPECT_TRUE(Write(canvas_, 0, 0, text));
}

}   // namespace
}   // namespace rastel::test
