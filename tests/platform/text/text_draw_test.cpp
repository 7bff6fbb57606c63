#include <algorithm>
#include <climits>
#include <initializer_list>

#include "tests/platform/text/text_test_support.h"

namespace rastel::test {
namespace {

constexpr DWORD kBackground = 0x5A102030;   // an alpha byte that nothing else writes
constexpr COLORREF kInk = RGB(250, 200, 150);
constexpr DWORD kInkPixel = 0x00FAC896;

class TextDraw : public TextTest {
protected:
    void SetUp() override { Prepare(canvas_); }

    static void Prepare(Canvas& canvas) {
        canvas.Use(FontOf(-20));
        canvas.Fill(kBackground);
        SetBkMode(canvas.Dc(), TRANSPARENT);
        SetTextColor(canvas.Dc(), kInk);
    }

    static int Differences(const std::vector<DWORD>& first, const std::vector<DWORD>& second) {
        EXPECT_EQ(first.size(), second.size());
        int count = 0;
        for (std::size_t i = 0; i < std::min(first.size(), second.size()); i++) {
            count += first[i] != second[i];
        }
        return count;
    }

    Canvas canvas_{200, 80};
};

TEST_F(TextDraw, InkIsTheTextColorAndWritesNoAlpha) {
    ASSERT_TRUE(Write(canvas_, 10, 10, L"HIL"));
    int full = 0;
    int partial = 0;
    for (const DWORD pixel : canvas_.Pixels()) {
        full += pixel == kInkPixel;
        partial += pixel != kInkPixel && pixel != kBackground;
        if (pixel != kBackground) {
            ASSERT_EQ(pixel >> 24, 0u);
            // Between the two colours, channel by channel.
            ASSERT_GE((pixel >> 16) & 0xFF, 0x10u);
            ASSERT_LE((pixel >> 16) & 0xFF, 0xFAu);
        }
    }
    EXPECT_GT(full, 50);
    EXPECT_GT(partial, 10);
}

TEST_F(TextDraw, WithoutSmoothingThereAreTwoColors) {
    LOGFONTW font = FontOf(-30);
    font.lfQuality = NONANTIALIASED_QUALITY;
    canvas_.Use(font);
    ASSERT_TRUE(Write(canvas_, 0, 0, L"SOg%"));
    for (const DWORD pixel : canvas_.Pixels()) {
        ASSERT_TRUE(pixel == kInkPixel || pixel == kBackground) << std::hex << pixel;
    }
    EXPECT_GT(canvas_.Inked(kBackground).right, 0);
}

TEST_F(TextDraw, AnOpaqueBackgroundFillsTheCellAndNoMore) {
    SetBkMode(canvas_.Dc(), OPAQUE);
    SetBkColor(canvas_.Dc(), RGB(1, 2, 3));
    const SIZE size = ExtentOf(canvas_.Dc(), L"a b");
    ASSERT_TRUE(Write(canvas_, 30, 20, L"a b"));
    const RECT cell = {30, 20, 30 + size.cx, 20 + size.cy};
    const RECT inked = canvas_.Inked(kBackground);
    EXPECT_EQ(inked.left, cell.left);
    EXPECT_EQ(inked.top, cell.top);
    EXPECT_EQ(inked.right, cell.right);
    EXPECT_EQ(inked.bottom, cell.bottom);
    EXPECT_EQ(canvas_.At(cell.left, cell.top), 0x00010203u);
    EXPECT_EQ(canvas_.At(cell.right - 1, cell.bottom - 1), 0x00010203u);

    canvas_.Fill(kBackground);
    ASSERT_TRUE(Write(canvas_, 30, 20, L"   "));
    for (const DWORD pixel : canvas_.Crop(canvas_.Inked(kBackground))) {
        ASSERT_EQ(pixel, 0x00010203u);
    }
}

TEST_F(TextDraw, AlignmentMovesByTheMeasures) {
    TEXTMETRICW metrics = {};
    ASSERT_TRUE(GetTextMetricsW(canvas_.Dc(), &metrics));
    for (const std::wstring text : {L"Text", L"odd", L"i"}) {
        const SIZE size = ExtentOf(canvas_.Dc(), text);
        const auto drawn = [&](UINT align, int x, int y) {
            canvas_.Fill(kBackground);
            SetTextAlign(canvas_.Dc(), align);
            EXPECT_TRUE(Write(canvas_, x, y, text));
            return canvas_.Pixels();
        };
        const auto expected = drawn(TA_LEFT | TA_TOP, 60, 20);
        EXPECT_EQ(Differences(expected, drawn(TA_CENTER, 60 + size.cx / 2, 20)), 0);
        EXPECT_EQ(Differences(expected, drawn(TA_RIGHT, 60 + size.cx, 20)), 0);
        EXPECT_EQ(Differences(expected, drawn(TA_BASELINE, 60, 20 + metrics.tmAscent)), 0);
        EXPECT_EQ(Differences(expected, drawn(TA_BOTTOM, 60, 20 + metrics.tmHeight)), 0);
        EXPECT_EQ(Differences(expected, drawn(TA_BOTTOM | TA_RIGHT, 60 + size.cx, 20 + metrics.tmHeight)), 0);
        EXPECT_EQ(GetTextAlign(canvas_.Dc()), static_cast<UINT>(TA_BOTTOM | TA_RIGHT));
        EXPECT_EQ(SetTextAlign(canvas_.Dc(), TA_LEFT), static_cast<UINT>(TA_BOTTOM | TA_RIGHT));
    }
}

TEST_F(TextDraw, ALineInPiecesAtTheCurrentPositionIsTheWholeLine) {
    ASSERT_TRUE(Write(canvas_, 12, 30, L"one two"));
    const auto expected = canvas_.Pixels();
    canvas_.Fill(kBackground);
    SetTextAlign(canvas_.Dc(), TA_UPDATECP);
    MoveToEx(canvas_.Dc(), 12, 30, nullptr);
    ASSERT_TRUE(Write(canvas_, 99, 99, L"one"));
    ASSERT_TRUE(Write(canvas_, -99, 0, L" two"));
    EXPECT_EQ(Differences(expected, canvas_.Pixels()), 0);
    POINT position = {};
    ASSERT_TRUE(GetCurrentPositionEx(canvas_.Dc(), &position));
    EXPECT_EQ(position.x, 12 + ExtentOf(canvas_.Dc(), L"one two").cx);
    EXPECT_EQ(position.y, 30);

    SetTextAlign(canvas_.Dc(), TA_UPDATECP | TA_RIGHT);
    ASSERT_TRUE(Write(canvas_, 0, 0, L"one two"));
    ASSERT_TRUE(GetCurrentPositionEx(canvas_.Dc(), &position));
    EXPECT_EQ(position.x, 12);
}

// Clipped drawing is full drawing, cropped: small letters out of the cache, large ones drawn in part, turned ones,
// bars and cells alike.
TEST_F(TextDraw, AClipCrops) {
    for (const LONG height : {-14, -60, -800}) {
        // So that each line, at each angle, lies on both sides of the edge.
        const int baseline = height == -800 ? 110 : 60;
        for (const LONG angle : {0, 200, 900}) {
            LOGFONTW font = FontOf(height);
            font.lfEscapement = font.lfOrientation = angle;
            font.lfUnderline = font.lfStrikeOut = height != -800;
            canvas_.Use(font);
            SetBkMode(canvas_.Dc(), height == -60 ? OPAQUE : TRANSPARENT);
            SetBkColor(canvas_.Dc(), RGB(9, 8, 7));
            SetTextAlign(canvas_.Dc(), TA_BASELINE);
            // The clipped line comes first: what it leaves behind must not spoil the whole one.
            const RECT clip = {50, 25, 180, 57};
            canvas_.Fill(kBackground);
            SaveDC(canvas_.Dc());
            IntersectClipRect(canvas_.Dc(), clip.left, clip.top, clip.right, clip.bottom);
            ASSERT_TRUE(Write(canvas_, 55, baseline, L"Rgo"));
            RestoreDC(canvas_.Dc(), -1);
            const auto clipped = canvas_.Pixels();

            canvas_.Fill(kBackground);
            ASSERT_TRUE(Write(canvas_, 55, baseline, L"Rgo"));
            const auto whole = canvas_.Pixels();
            auto expected = whole;
            for (int i = 0; i < 200 * 80; i++) {
                const int x = i % 200;
                const int y = i / 200;
                if (x < clip.left || x >= clip.right || y < clip.top || y >= clip.bottom) {
                    expected[static_cast<std::size_t>(i)] = kBackground;
                }
            }
            EXPECT_EQ(Differences(expected, clipped), 0) << height << ' ' << angle;
            EXPECT_GT(Differences(expected, std::vector<DWORD>(200 * 80, kBackground)), 0) << height << ' ' << angle;
            EXPECT_GT(Differences(expected, whole), 0) << height << ' ' << angle;
        }
    }
}

// Slanted letters reach over each other's boxes; none may wipe out another. Without smoothing the two are equal to
// the bit, as no pixel is mixed twice.
TEST_F(TextDraw, ALineIsItsCharactersOneByOne) {
    LOGFONTW font = FontOf(-26);
    font.lfItalic = 1;
    font.lfQuality = NONANTIALIASED_QUALITY;
    canvas_.Use(font);
    const std::wstring text = L"fjWAj/f\\d";
    ASSERT_TRUE(Write(canvas_, 20, 20, text));
    const auto expected = canvas_.Pixels();
    canvas_.Fill(kBackground);
    for (std::size_t i = 0; i < text.size(); i++) {
        const LONG before = ExtentOf(canvas_.Dc(), text.substr(0, i)).cx;
        ASSERT_TRUE(Write(canvas_, 20 + before, 20, text.substr(i, 1)));
    }
    EXPECT_EQ(Differences(expected, canvas_.Pixels()), 0);
}

TEST_F(TextDraw, TheOriginMovesTheText) {
    ASSERT_TRUE(Write(canvas_, 25, 15, L"shift"));
    const auto expected = canvas_.Pixels();
    canvas_.Fill(kBackground);
    SetViewportOrgEx(canvas_.Dc(), 20, -5, nullptr);
    ASSERT_TRUE(Write(canvas_, 5, 20, L"shift"));
    EXPECT_EQ(Differences(expected, canvas_.Pixels()), 0);
}

TEST_F(TextDraw, ASecondTimeDrawsTheSameWithoutNewGlyphs) {
    canvas_.Use(FontOf(-19));
    ASSERT_TRUE(Write(canvas_, 0, 0, L"again and again"));
    const auto expected = canvas_.Pixels();
    const auto drawnBefore = platform::DrawnGlyphCount();
    Canvas other(200, 80);
    Prepare(other);
    other.Use(FontOf(-19));   // a font of its own, with the same looks
    ASSERT_TRUE(Write(other, 0, 0, L"again and again"));
    EXPECT_EQ(Differences(expected, other.Pixels()), 0);
    EXPECT_EQ(platform::DrawnGlyphCount(), drawnBefore);
}

TEST_F(TextDraw, BarsRunUnderAndThroughTheWholeLine) {
    TEXTMETRICW metrics = {};
    ASSERT_TRUE(GetTextMetricsW(canvas_.Dc(), &metrics));
    const auto barRows = [&](bool underline, bool strikeOut) {
        LOGFONTW font = FontOf(-20);
        font.lfUnderline = underline;
        font.lfStrikeOut = strikeOut;
        canvas_.Use(font);
        canvas_.Fill(kBackground);
        EXPECT_TRUE(Write(canvas_, 10, 10, L"   "));
        std::vector<int> rows;
        for (int y = 0; y < 80; y++) {
            const auto row = canvas_.Crop({10, y, 10 + ExtentOf(canvas_.Dc(), L"   ").cx, y + 1});
            if (std::ranges::all_of(row, [](DWORD pixel) { return pixel == kInkPixel; })) {
                rows.push_back(y - 10);
            }
        }
        return rows;
    };
    EXPECT_TRUE(barRows(false, false).empty());
    const auto under = barRows(true, false);
    ASSERT_FALSE(under.empty());
    EXPECT_GE(under.front(), metrics.tmAscent);
    EXPECT_LT(under.back(), metrics.tmHeight);
    const auto through = barRows(false, true);
    ASSERT_FALSE(through.empty());
    EXPECT_LT(through.back(), metrics.tmAscent);
    EXPECT_EQ(barRows(true, true).size(), under.size() + through.size());
}

TEST_F(TextDraw, AQuarterTurnRunsUpwards) {
    canvas_.Use(FontOf(-16));
    ASSERT_TRUE(Write(canvas_, 100, 20, L"turn"));
    const RECT level = canvas_.Inked(kBackground);
    LOGFONTW font = FontOf(-16);
    font.lfEscapement = font.lfOrientation = 900;
    canvas_.Use(font);
    canvas_.Fill(kBackground);
    ASSERT_TRUE(Write(canvas_, 100, 60, L"turn"));
    const RECT turned = canvas_.Inked(kBackground);
    // (x, y) from the reference point goes to (y, -x); a level glyph is fitted to the pixels, a turned one is not.
    EXPECT_NEAR(turned.left - 100, level.top - 20, 1);
    EXPECT_NEAR(turned.right - 100, level.bottom - 20, 1);
    EXPECT_NEAR(60 - turned.bottom, level.left - 100, 1);
    EXPECT_NEAR(60 - turned.top, level.right - 100, 1);
}

TEST_F(TextDraw, EveryFormatTakesText) {
    ASSERT_TRUE(Write(canvas_, 3, 5, L"Fmt"));
    for (const WORD depth : std::initializer_list<WORD>{1, 4, 8, 16, 24, 32}) {
        Canvas other(200, 80, depth);
        RECT all = {0, 0, 200, 80};
        const HBRUSH brush = CreateSolidBrush(RGB(0x10, 0x20, 0x30));
        FillRect(other.Dc(), &all, brush);
        DeleteObject(brush);
        other.Use(FontOf(-20));
        SetBkMode(other.Dc(), TRANSPARENT);
        SetTextColor(other.Dc(), kInk);
        ASSERT_TRUE(Write(other, 3, 5, L"Fmt"));
        int inked = 0;
        int wrong = 0;
        const COLORREF blank = GetPixel(other.Dc(), 199, 79);
        for (int y = 0; y < 80; y++) {
            for (int x = 0; x < 200; x++) {
                const COLORREF color = GetPixel(other.Dc(), x, y);
                const DWORD expected = canvas_.At(x, y);
                inked += color != blank;
                wrong += depth >= 24 && color != RGB(expected >> 16, expected >> 8, expected);
                wrong += expected == kBackground && color != blank;
                wrong += expected == kInkPixel && color == blank;
            }
        }
        EXPECT_GT(inked, 50) << depth;
        EXPECT_EQ(wrong, 0) << depth;
    }
}

TEST_F(TextDraw, WildSizesAndPlacesAreSafe) {
    for (const LONG height : {0, -1, 1, 10000, -10000, INT_MAX, INT_MIN}) {
        for (const LONG width : {0, 1, INT_MAX, INT_MIN}) {
            for (const BYTE quality : std::initializer_list<BYTE>{ANTIALIASED_QUALITY, NONANTIALIASED_QUALITY}) {
                LOGFONTW font = FontOf(height);
                font.lfWidth = width;
                font.lfQuality = quality;
                font.lfEscapement = width == 1 ? INT_MIN : 0;
                font.lfWeight = width == INT_MAX ? INT_MAX : INT_MIN;
                font.lfUnderline = 1;
                canvas_.Use(font);
                SetBkMode(canvas_.Dc(), OPAQUE);
                for (const int place : {0, -5000, INT_MIN, INT_MAX}) {
                    SetTextAlign(canvas_.Dc(), place > 0 ? TA_LEFT : TA_RIGHT | TA_BASELINE);
                    EXPECT_TRUE(Write(canvas_, place, place, L"W@g"));
                    EXPECT_TRUE(Write(canvas_, 100, place, L"W@g"));
                }
            }
        }
    }
}

}   // namespace
}   // namespace rastel::test
