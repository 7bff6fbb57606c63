#include <algorithm>
#include <iterator>

#include "rastel/platform/portable/gdi/font_cache.h"
#include "tests/platform/text/text_test_support.h"

namespace rastel::test {
namespace {

constexpr DWORD kBlank = 0x00FFFFFF;

class TextFont : public TextTest {
protected:
    std::vector<DWORD> Picture(const LOGFONTW& font, const std::wstring& text) {
        canvas_.Use(font);
        canvas_.Fill(kBlank);
        SetBkMode(canvas_.Dc(), TRANSPARENT);
        EXPECT_TRUE(Write(canvas_, 4, 4, text));
        return canvas_.Pixels();
    }
    LONG Width(const LOGFONTW& font, const std::wstring& text) {
        canvas_.Use(font);
        return ExtentOf(canvas_.Dc(), text).cx;
    }

    Canvas canvas_{160, 60};
};

TEST_F(TextFont, AFaceIsFoundByItsNameOrItsKind) {
    EXPECT_NE(Width(FontOf(-20, kSans), L"iiii"), Width(FontOf(-20, kMono), L"iiii"));
    LOGFONTW unnamed = FontOf(-20, L"");
    unnamed.lfPitchAndFamily = FIXED_PITCH | FF_MODERN;
    EXPECT_EQ(Picture(unnamed, L"kind"), Picture(FontOf(-20, kMono), L"kind"));
    // Any name is served by something.
    EXPECT_NE(Picture(FontOf(-20, L"No Such Face Anywhere 12345678"), L"kind"), Picture(FontOf(-20), L""));
    LOGFONTW unterminated = FontOf(-20);
    std::fill(std::begin(unterminated.lfFaceName), std::end(unterminated.lfFaceName), L'x');
    EXPECT_GT(Width(unterminated, L"kind"), 0);
}

TEST_F(TextFont, BothWaysOfMakingAFontAgree) {
    LOGFONTW font = FontOf(-22);
    font.lfWidth = 8;
    font.lfWeight = FW_BOLD;
    font.lfItalic = font.lfUnderline = font.lfStrikeOut = 1;
    const auto expected = Picture(font, L"both");
    const HFONT direct = CreateFontW(-22, 8, 0, 0, FW_BOLD, TRUE, TRUE, TRUE, ANSI_CHARSET, OUT_DEFAULT_PRECIS,
                                     CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, DEFAULT_PITCH, kSans);
    LOGFONTW read = {};
    ASSERT_EQ(GetObjectW(direct, sizeof(read), &read), static_cast<int>(sizeof(read)));
    EXPECT_EQ(Picture(read, L"both"), expected);
    EXPECT_TRUE(DeleteObject(direct));

    const std::wstring tooLong(LF_FACESIZE + 9, L'n');
    const HFONT cut = CreateFontW(-10, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, tooLong.c_str());
    ASSERT_EQ(GetObjectW(cut, sizeof(read), &read), static_cast<int>(sizeof(read)));
    EXPECT_EQ(read.lfFaceName[LF_FACESIZE - 1], L'\0');
    EXPECT_TRUE(DeleteObject(cut));
    const HFONT unnamed = CreateFontW(-10, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, nullptr);
    EXPECT_NE(unnamed, nullptr);
    DeleteObject(unnamed);
}

TEST_F(TextFont, StylesThatAFamilyLacksAreMade) {
    const auto ink = [](const std::vector<DWORD>& pixels) {
        long long sum = 0;
        for (const DWORD pixel : pixels) {
            sum += 255 - (pixel & 0xFF);
        }
        return sum;
    };
    const auto plain = Picture(FontOf(-24), L"HIL");
    const RECT plainBox = canvas_.Inked(kBlank);
    LOGFONTW bold = FontOf(-24);
    bold.lfWeight = FW_BOLD;
    EXPECT_GT(ink(Picture(bold, L"HIL")), ink(plain) * 5 / 4);
    LOGFONTW italic = FontOf(-24);
    italic.lfItalic = 1;
    EXPECT_NE(Picture(italic, L"HIL"), plain);
    const RECT slantedBox = canvas_.Inked(kBlank);
    EXPECT_GT(slantedBox.right, plainBox.right);   // the tops lean over
    EXPECT_EQ(slantedBox.bottom, plainBox.bottom);
    EXPECT_EQ(Width(italic, L"HIL"), Width(FontOf(-24), L"HIL"));
}

TEST_F(TextFont, AnotherFontLendsMissingCharacters) {
    // The arrow is in the fixed pitch font only.
    EXPECT_EQ(Width(FontOf(-30, kSans), L"\x2192"), Width(FontOf(-30, kMono), L"\x2192"));
    EXPECT_EQ(Picture(FontOf(-30, kMono), L"\x2192").size(), Picture(FontOf(-30, kSans), L"\x2192").size());
    Picture(FontOf(-30, kMono), L"\x2192");
    const RECT own = canvas_.Inked(kBlank);
    Picture(FontOf(-30, kSans), L"\x2192");
    const RECT lent = canvas_.Inked(kBlank);
    EXPECT_EQ(own.right - own.left, lent.right - lent.left);
    EXPECT_EQ(own.bottom - own.top, lent.bottom - lent.top);

    const auto box = Picture(FontOf(-30), L"\x4E2D");
    EXPECT_NE(box, Picture(FontOf(-30), L""));
    EXPECT_EQ(box, Picture(FontOf(-30), L"\x0378"));
    EXPECT_EQ(box, Picture(FontOf(-30), L"\x7"));
}

TEST_F(TextFont, AContextWithoutAFontUsesTheStockOne) {
    Canvas fresh(100, 40);
    fresh.Fill(kBlank);
    TEXTMETRICW metrics = {};
    ASSERT_TRUE(GetTextMetricsW(fresh.Dc(), &metrics));
    LOGFONTW stock = {};
    ASSERT_GT(GetObjectW(GetStockObject(SYSTEM_FONT), sizeof(stock), &stock), 0);
    canvas_.Use(stock);
    TEXTMETRICW expected = {};
    ASSERT_TRUE(GetTextMetricsW(canvas_.Dc(), &expected));
    EXPECT_EQ(metrics.tmHeight, expected.tmHeight);
    EXPECT_TRUE(Write(fresh, 0, 0, L"stock"));
    EXPECT_GT(fresh.Inked(kBlank).right, 0);
}

TEST_F(TextFont, ADeletedFontThatIsSelectedStillDraws) {
    const LOGFONTW wanted = FontOf(-20, kMono);
    const HFONT font = CreateFontIndirectW(&wanted);
    const HGDIOBJ before = SelectObject(canvas_.Dc(), font);
    EXPECT_TRUE(DeleteObject(font));
    const LONG width = ExtentOf(canvas_.Dc(), L"iW").cx;
    SelectObject(canvas_.Dc(), before);
    EXPECT_EQ(width, Width(wanted, L"iW"));
    EXPECT_EQ(SelectObject(canvas_.Dc(), font), nullptr);
}

TEST_F(TextFont, LettersDrawnBeforeAreThoseOfTheFontsThatAreThereNow) {
    canvas_.Use(FontOf(-20, kMono));
    const auto drawn = [this] {
        canvas_.Fill(kBlank);
        EXPECT_TRUE(Write(canvas_, 2, 2, L"W"));
        const RECT inked = canvas_.Inked(kBlank);
        return std::vector<LONG>{inked.left, inked.top, inked.right, inked.bottom};
    };
    const std::vector<LONG> mono = drawn();
    EXPECT_EQ(drawn(), mono);
    platform::RemoveAddedFontFiles();
    ASSERT_TRUE(platform::AddFontFile(RASTEL_TEST_MEDIA "/rastel-test-sans.ttf"));
    const std::vector<LONG> sans = drawn();
    EXPECT_NE(sans, mono);   // the same font object, served by the only font that is left
    EXPECT_EQ(drawn(), sans);
    SetUpTestSuite();
    EXPECT_EQ(drawn(), mono);
    EXPECT_EQ(drawn(), mono);
}

TEST_F(TextFont, AMachineWithoutFontsFailsPlainly) {
    platform::RemoveAddedFontFiles();
    canvas_.Use(FontOf(-20));
    canvas_.Fill(kBlank);
    SIZE size = {};
    TEXTMETRICW metrics = {};
    EXPECT_FALSE(GetTextExtentPoint32W(canvas_.Dc(), L"a", 1, &size));
    EXPECT_FALSE(GetTextMetricsW(canvas_.Dc(), &metrics));
    EXPECT_FALSE(Write(canvas_, 0, 0, L"a"));
    EXPECT_EQ(canvas_.Inked(kBlank).right, 0);
    SetUpTestSuite();
    EXPECT_TRUE(Write(canvas_, 0, 0, L"a"));
}

TEST_F(TextFont, OnlyFontsCountAsFontFiles) {
    EXPECT_FALSE(platform::AddFontFile(""));
    EXPECT_FALSE(platform::AddFontFile(RASTEL_TEST_MEDIA "/no-such-font.ttf"));
    EXPECT_FALSE(platform::AddFontFile(RASTEL_TEST_MEDIA));
    EXPECT_FALSE(platform::AddFontFile(RASTEL_TEST_MEDIA "/LICENSE-fonts.txt"));
}

TEST(FontCacheTest, ForgetsWhatWasUsedLongestAgo) {
    platform::FontCache<int, int> cache(10);
    cache.Insert(1, 11, 4);
    cache.Insert(2, 22, 4);
    EXPECT_EQ(cache.Find(1), 11);
    cache.Insert(3, 33, 4);   // 2 was used longest ago
    EXPECT_EQ(cache.Find(2), 0);
    EXPECT_EQ(cache.Find(1), 11);
    EXPECT_EQ(cache.Find(3), 33);
    cache.Insert(4, 44, 6);   // too large a part of the whole
    EXPECT_EQ(cache.Find(4), 0);
    EXPECT_EQ(cache.Find(3), 33);
    cache.Insert(5, 55, 5);   // drives out 1 only
    EXPECT_EQ(cache.Find(1), 0);
    EXPECT_EQ(cache.Find(3), 33);
    EXPECT_EQ(cache.Find(5), 55);
    cache.Clear();
    EXPECT_EQ(cache.Find(5), 0);
    cache.Insert(6, 66, 5);
    EXPECT_EQ(cache.Find(6), 66);
}

}   // namespace
}   // namespace rastel::test
