// Where DrawTextW puts its lines.
#include <climits>

#include "tests/text/text_fixture.h"

namespace rastel::test {
namespace {

class Recorder : public CTextRender {
public:
    struct Line {
        int x, y;
        std::wstring text;
        bool operator==(const Line&) const = default;
    };
    void Draw(CAdvSurface&, int x, int y, const wchar_t* text, int length) override {
        lines.push_back({x, y, std::wstring(text, static_cast<std::size_t>(length))});
    }
    void Initilize(const wchar_t* text) override {
        ++preparations;
        CTextRender::Initilize(text);
    }
    std::vector<Line> lines;
    int preparations = 0;
};

class TextLayout : public TextTest {
protected:
    void SetUp() override {
        TextTest::SetUp();
        const LOGFONTW font = Described(20);
        recorder.SetFont(CreateFontIndirectW(&font), 1);
        recorder.Initilize(L"");
        ASSERT_TRUE(GetTextMetricsW(recorder.GetDC(), &metrics));
        target = MakeTarget(0);
    }
    std::vector<Recorder::Line> LinesOf(const wchar_t* text, UINT format = 0) {
        recorder.lines.clear();
        recorder.DrawTextW(*target, text, box, format);
        return recorder.lines;
    }
    int WidthOf(const std::wstring& text) {
        SIZE size = {};
        EXPECT_TRUE(GetTextExtentPoint32W(recorder.GetDC(), text.c_str(), static_cast<int>(text.size()), &size));
        return size.cx;
    }

    Recorder recorder;
    TEXTMETRICW metrics = {};
    Reference<CAdvSurface> target;
    CRect box{10, 5, 211, 96};
};

TEST_F(TextLayout, ACarriageReturnEndsALineAndLineFeedsBehindItAreSteppedOver) {
    const int first = box.top + metrics.tmAscent;
    const int second = first + metrics.tmHeight;
    const std::vector<Recorder::Line> both = {{10, first, L"A"}, {10, second, L"B"}};
    EXPECT_EQ(LinesOf(L"A\r\nB"), both);
    EXPECT_EQ(LinesOf(L"A\rB"), both);
    EXPECT_EQ(LinesOf(L"A\r\n\n\nB"), both);
    EXPECT_EQ(LinesOf(L"A\r\nB\r\n"), both);
    const std::vector<Recorder::Line> one = {{10, first, L"A"}};
    EXPECT_EQ(LinesOf(L"A\r\n\r\nB"), one);   // an empty line ends the drawing
    EXPECT_EQ(LinesOf(L"A\r"), one);
    EXPECT_EQ(LinesOf(L"A\n\tB"), (std::vector<Recorder::Line>{{10, first, L"A\n\tB"}}));
    EXPECT_TRUE(LinesOf(L"").empty());
    EXPECT_TRUE(LinesOf(L"\rA").empty());
}

TEST_F(TextLayout, BitsAlignEachLineAndTheBlock) {
    const int room = box.Width() - WidthOf(L"Wide line");
    const auto x = [&](UINT format) { return LinesOf(L"Wide line\rx", format)[0].x; };
    EXPECT_EQ(x(1), 10 + room / 2);
    EXPECT_EQ(x(2), 10 + room);
    EXPECT_EQ(x(3), 10 + room / 2 + room);
    EXPECT_EQ(LinesOf(L"Wide line\rx", 2)[1].x, 211 - WidthOf(L"x"));

    const int total = 2 * metrics.tmHeight;
    const auto top = [&](UINT format) { return LinesOf(L"A\rB", format)[0].y - metrics.tmAscent; };
    EXPECT_EQ(top(4), 5 + (box.Height() - total) / 2);
    EXPECT_EQ(top(8), 96 - total);
    EXPECT_EQ(top(12), 96 - total);
    box = CRect(0, 0, 3, total - 3);   // too small: halves of what is missing round towards zero
    EXPECT_EQ(top(4), -1);
    EXPECT_EQ(LinesOf(L"Wide line", 1)[0].x, (3 - WidthOf(L"Wide line")) / 2);
    EXPECT_EQ(LinesOf(L"A", ~15u)[0].x, 0);   // other bits mean nothing
}

TEST_F(TextLayout, NoTextMakesNoContext) {
    Recorder fresh;
    fresh.DrawTextW(*target, nullptr, box, 0);
    EXPECT_EQ(fresh.GetDC(), nullptr);
    EXPECT_EQ(fresh.preparations, 0);
    render.Initilize(nullptr);
    render.Draw(*target, 0, 0, nullptr, 5);
    EXPECT_EQ(render.GetDC(), nullptr);
}

TEST_F(TextLayout, WildRectanglesStayInRange) {
    for (const CRect& wild : {CRect(INT_MIN, INT_MIN, INT_MAX, INT_MAX), CRect(INT_MAX, INT_MAX, INT_MIN, INT_MIN),
                              CRect(INT_MAX, INT_MAX, INT_MAX, INT_MAX)}) {
        for (UINT format = 0; format < 16; ++format) {
            render.DrawTextW(*target, L"A bc\r\nd", wild, format);
            box = wild;
            EXPECT_EQ(LinesOf(L"A\rB", format).size(), 2u);
        }
    }
}

}   // namespace
}   // namespace rastel::test
