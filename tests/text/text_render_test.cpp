// What text looks like in colours and plane.
#include <climits>

#include "tests/text/text_fixture.h"

namespace rastel::test {
namespace {

class TextRender : public TextTest {};

TEST_F(TextRender, LevelsBecomeAlphaThatNeverIsQuiteOpaque) {
    for (int level = 0; level <= 64; ++level) {
        EXPECT_EQ(render.m_CoverageTable[level], level * 255 / 65) << level;
    }
    EXPECT_EQ(render.m_CoverageTable[64], 251);

    render.SetColor(RGB(255, 255, 255));
    const auto target = MakeTarget(0);
    render.Draw(*target, 20, 60, L"HI", -1);
    DWORD brightest = 0;
    for (const DWORD pixel : PixelsOf(*target->GetSurface())) {
        brightest = std::max(brightest, pixel & 0xFF);
    }
    EXPECT_GE(brightest, 249u);
    EXPECT_LE(brightest, 251u);
}

TEST_F(TextRender, APenMovesByTheMeasureOfWhatIsBehindIt) {
    const auto whole = MakeTarget(0), pieces = MakeTarget(0);
    render.Draw(*whole, 7, 60, L"Pen ab", -1);
    const std::wstring text = L"Pen ab";
    for (std::size_t i = 0; i < text.size(); ++i) {
        render.Draw(*pieces, 7 + ExtentOf(text.substr(0, i)), 60, text.c_str() + i, 1);
    }
    EXPECT_EQ(PixelsOf(*whole->GetSurface()), PixelsOf(*pieces->GetSurface()));
    EXPECT_GT(Inked(*whole).Width(), ExtentOf(L"Pen"));
}

TEST_F(TextRender, ALengthCutsAndNeverReachesPastTheEnd) {
    const auto all = MakeTarget(0), same = MakeTarget(0), cut = MakeTarget(0), none = MakeTarget(0);
    render.Draw(*all, 7, 60, L"abc", -1);
    render.Draw(*same, 7, 60, L"abc", INT_MAX);
    EXPECT_EQ(PixelsOf(*all->GetSurface()), PixelsOf(*same->GetSurface()));
    render.Draw(*cut, 7, 60, L"abc", 1);
    EXPECT_LT(Inked(*cut).right, Inked(*all).right);
    render.Draw(*none, 7, 60, L"abc", 0);
    EXPECT_EQ(Inked(*none).right, 0);
    EXPECT_NE(render.GetDC(), nullptr);
}

TEST_F(TextRender, ASecondTimeLooksLikeTheFirst) {
    for (const int height : {kThinHeight, kSmoothHeight}) {
        for (const int withAlpha : {0, 1}) {
            Use(height);
            const auto first = MakeTarget(withAlpha), second = MakeTarget(withAlpha);
            if (withAlpha) {
                // Where a plane is transparent any colour will do; here each one counts. The colour of a letter is
                // laid over that of the one before, a step short of it, and settles after some letters.
                for (int i = 0; i < 4; ++i) {
                    render.Draw(*first, 7, 60, L"again, again", -1);
                }
                first->FillColor(nullptr, 0, nullptr);
                first->GetAlphaChannel()->Fill(nullptr, 255, nullptr);
                second->GetAlphaChannel()->Fill(nullptr, 255, nullptr);
            }
            render.Draw(*first, 7, 60, L"again, again", -1);
            render.Draw(*second, 7, 60, L"again, again", -1);
            EXPECT_EQ(PixelsOf(*first->GetSurface()), PixelsOf(*second->GetSurface()));
            EXPECT_GT(Inked(*first).right, 0);
        }
    }
}

// What is kept of one font must not be drawn with another, whoever selects it.
TEST_F(TextRender, EachFontHasItsOwnShapes) {
    const auto drawn = [&] {
        const auto target = MakeTarget(0);
        render.Draw(*target, 7, 60, L"Rg", -1);
        return PixelsOf(*target->GetSurface());
    };
    const auto large = drawn();
    Use(40);
    const auto small = drawn();
    EXPECT_NE(large, small);
    Use(kSmoothHeight);
    EXPECT_EQ(drawn(), large);
    render.prepares = false;
    Use(40);
    EXPECT_EQ(drawn(), small) << "drawn without a preparation of its own";
    Use(kSmoothHeight);

    const LOGFONTW other = Described(40);
    const HFONT font = CreateFontIndirectW(&other);
    const HGDIOBJ before = SelectObject(render.GetDC(), font);
    EXPECT_EQ(drawn(), small);
    SelectObject(render.GetDC(), before);
    DeleteObject(font);
    EXPECT_EQ(drawn(), large);
}

TEST_F(TextRender, TheClipCutsAndAnEmptyOneDoesNot) {
    const auto whole = MakeTarget(0), cut = MakeTarget(0), open = MakeTarget(0), missed = MakeTarget(0);
    render.Draw(*whole, 7, 60, L"Clipped", -1);
    CRect clip(20, 30, 90, 55);
    render.SetClipRect(clip);
    render.Draw(*cut, 7, 60, L"Clipped", -1);
    std::vector<DWORD> expected = PixelsOf(*whole->GetSurface());
    for (int i = 0; i < 300 * 100; ++i) {
        if (!clip.PtInRect(CPoint(i % 300, i / 300))) {
            expected[static_cast<std::size_t>(i)] = 0;
        }
    }
    EXPECT_EQ(PixelsOf(*cut->GetSurface()), expected);

    CRect outside(400, 0, 500, 100);
    render.SetClipRect(outside);
    render.Draw(*missed, 7, 60, L"Clipped", -1);
    EXPECT_EQ(Inked(*missed).right, 0);

    CRect empty(50, 50, 50, 60);
    render.SetClipRect(empty);
    render.Draw(*open, 7, 60, L"Clipped", -1);
    EXPECT_EQ(PixelsOf(*open->GetSurface()), PixelsOf(*whole->GetSurface()));
}

TEST_F(TextRender, APlaneShowsWhereTheTextIs) {
    for (const int height : {kThinHeight, kSmoothHeight}) {
        Use(height);
        const auto target = MakeTarget(1);
        target->GetAlphaChannel()->Fill(nullptr, 0, nullptr);
        render.Draw(*target, 7, 60, L"On a plane", -1);
        const std::vector<DWORD> colors = PixelsOf(*target->GetSurface());
        const Bytes alphas = BytesOf(*target->GetAlphaChannel());
        int opaque = 0;
        for (std::size_t i = 0; i < alphas.size(); ++i) {
            opaque += alphas[i] >= 245;
            if (alphas[i] == 0 && height == kSmoothHeight) {   // systems smooth small letters on colours only
                ASSERT_EQ(colors[i] & 0xFFFFFF, 0u) << height << ' ' << i;
            }
        }
        EXPECT_GT(opaque, 10) << height;
    }
}

TEST_F(TextRender, AnUnderlineRunsBelowEveryCharacter) {
    LOGFONTW font = Described(kSmoothHeight);
    font.lfUnderline = 1;
    for (const int withAlpha : {0, 1}) {
        Use(font);
        const auto target = MakeTarget(withAlpha);
        if (withAlpha) {
            target->GetAlphaChannel()->Fill(nullptr, 0, nullptr);
        }
        render.Draw(*target, 10, 50, L"ab ab", -1);
        const int end = 10 + ExtentOf(L"ab ab");
        const std::vector<DWORD> pixels = PixelsOf(*target->GetSurface());
        const auto isFullRow = [&](int y) {
            for (int x = 10; x < end; ++x) {
                if ((pixels[static_cast<std::size_t>(y * 300 + x)] & 0xFFFFFF) != 0xC8FA64) {
                    return false;
                }
            }
            return true;
        };
        int rows = 0;
        for (int y = 51; y < 70; ++y) {
            rows += isFullRow(y);
            if (withAlpha && isFullRow(y)) {
                EXPECT_EQ(BytesOf(*target->GetAlphaChannel())[static_cast<std::size_t>(y * 300 + 20)], 255);
            }
        }
        EXPECT_GE(rows, 1);   // as thick as the font wants it
    }
}

TEST_F(TextRender, OddTextsAndPlacesAreSurvived) {
    const wchar_t odd[] = {L'a',
                           static_cast<wchar_t>(0xD83D),
                           L'b',
                           static_cast<wchar_t>(0xDE00),
                           static_cast<wchar_t>(0xD835),
                           static_cast<wchar_t>(0xDD38),
                           static_cast<wchar_t>(-1),
                           1,
                           0xA0,
                           static_cast<wchar_t>(0xD835),
                           0};
    for (const int height : {kThinHeight, kSmoothHeight}) {
        for (const int withAlpha : {0, 1}) {
            LOGFONTW font = Described(height);
            font.lfUnderline = 1;
            Use(font);
            const auto target = MakeTarget(withAlpha);
            render.Draw(*target, 5, 60, odd, -1);
            EXPECT_GT(Inked(*target).right, 0);
            for (const int away : {INT_MIN, INT_MIN + 1, -1000000, 1000000, INT_MAX}) {
                render.Draw(*target, away, 50, L"Far off", -1);
                render.Draw(*target, 50, away, L"Far off", -1);
                render.Draw(*target, away, away, L"Far off", -1);
            }
        }
    }
    CAdvSurface nothing;   // no stores
    render.Draw(nothing, 5, 20, L"Text", -1);
}

}   // namespace
}   // namespace rastel::test
