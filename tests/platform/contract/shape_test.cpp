// Fills, rectangles and lines.
#include "tests/platform/gdi/gdi_test_support.h"

namespace rastel::test {
namespace {

// Selects an object for as long as it lives, and deletes it then.
class Selected {
public:
    Selected(HDC dc, HGDIOBJ object) : dc_(dc), object_(object), previous_(SelectObject(dc, object)) {}
    ~Selected() {
        SelectObject(dc_, previous_);
        DeleteObject(object_);
    }
    Selected(const Selected&) = delete;
    Selected& operator=(const Selected&) = delete;

private:
    HDC dc_;
    HGDIOBJ object_;
    HGDIOBJ previous_;
};

int CountOf(const Section& section, DWORD raw) {
    int count = 0;
    for (int y = 0; y < section.Height(); ++y) {
        for (int x = 0; x < section.Width(); ++x) {
            count += section.Raw(x, y) == raw;
        }
    }
    return count;
}

void Line(const Section& section, POINT from, POINT to) {
    MoveToEx(section.Dc(), from.x, from.y, nullptr);
    LineTo(section.Dc(), to.x, to.y);
}

TEST(Shapes, FillsWriteTheirColourInEveryFormat) {
    for (const Format& format : kFormats) {
        if (format.depth < 8) {
            continue;   // which of a few colours is taken is the system's choice
        }
        for (int round = 0; round < 40; ++round) {
            Section section(45, 7, format);
            section.Randomize();
            Section before(45, 7, format);
            before.Load(section.Copy());
            const COLORREF color = RGB(RandomIn(0, 255), RandomIn(0, 255), RandomIn(0, 255));
            const HBRUSH brush = CreateSolidBrush(color);
            const int left = RandomIn(-3, 44);
            const RECT rect = {left, 2, RandomIn(left, 50), 5};
            EXPECT_EQ(FillRect(section.Dc(), &rect, brush), 1);
            DeleteObject(brush);
            for (int y = 0; y < 7; ++y) {
                for (int x = 0; x < 45; ++x) {
                    const bool inside = x >= rect.left && x < rect.right && y >= 2 && y < 5;
                    ASSERT_EQ(section.Raw(x, y), inside ? section.RawOf(color) : before.Raw(x, y))
                        << format.name << " " << x << "," << y;
                }
            }
        }
    }
}

TEST(Shapes, NothingDrawnLeavesAnAlphaByte) {
    Section section(12, 12, Plain32());
    const HDC dc = section.Dc();
    const auto alphaAfter = [&](auto draw) {
        std::memset(section.Bits(), 0xFF, section.Bytes());
        draw();
        return section.Raw(5, 5) >> 24;
    };
    const HBRUSH brush = CreateSolidBrush(RGB(255, 255, 255));
    const RECT all = {0, 0, 12, 12};
    EXPECT_EQ(alphaAfter([&] { FillRect(dc, &all, brush); }), 0u);
    EXPECT_EQ(alphaAfter([&] { SetPixelV(dc, 5, 5, RGB(255, 255, 255)); }), 0u);
    EXPECT_EQ(alphaAfter([&] { Line(section, {0, 0}, {12, 12}); }), 0u);
    EXPECT_EQ(alphaAfter([&] { PatBlt(dc, 0, 0, 12, 12, PATCOPY); }), 0u);
    EXPECT_EQ(alphaAfter([&] { Rectangle(dc, 0, 0, 12, 12); }), 0u);
    DeleteObject(brush);
}

TEST(Lines, EndBeforeTheirLastPixelAndMeetTheSamePixelsBothWays) {
    for (int round = 0; round < 300; ++round) {
        Section there(40, 40, Plain32());
        Section back(40, 40, Plain32());
        for (const Section* section : {&there, &back}) {
            SelectObject(section->Dc(), GetStockObject(WHITE_PEN));
        }
        const POINT from = {RandomIn(0, 39), RandomIn(0, 39)};
        const POINT to = {RandomIn(0, 39), RandomIn(0, 39)};
        Line(there, from, to);
        Line(back, to, from);
        const int length = std::max(std::abs(from.x - to.x), std::abs(from.y - to.y));
        ASSERT_EQ(CountOf(there, 0xFFFFFF), length);
        if (length > 0) {
            ASSERT_EQ(there.Raw(to.x, to.y), 0u);
            SetPixelV(there.Dc(), to.x, to.y, RGB(255, 255, 255));
            SetPixelV(back.Dc(), from.x, from.y, RGB(255, 255, 255));
        }
        ASSERT_EQ(there.Copy(), back.Copy());
    }
}

TEST(Lines, FarAwayOnesShowThePixelsOfTheWholeLine) {
    for (int round = 0; round < 200; ++round) {
        Section whole(600, 600, kFormats[2]);
        Section part(600, 600, kFormats[2]);
        Selected pen1(whole.Dc(), CreatePen(PS_SOLID, round % 3, RGB(200, 100, 50)));
        Selected pen2(part.Dc(), CreatePen(PS_SOLID, round % 3, RGB(200, 100, 50)));
        const POINT from = {RandomIn(0, 599), RandomIn(0, 599)};
        const POINT to = {RandomIn(0, 599), RandomIn(0, 599)};
        Line(whole, from, to);
        // The same line, but only a window of it is within the bitmap's clip.
        IntersectClipRect(part.Dc(), 200, 300, 260, 340);
        Line(part, from, to);
        for (int y = 300; y < 340; ++y) {
            for (int x = 200; x < 260; ++x) {
                ASSERT_EQ(part.Raw(x, y), whole.Raw(x, y));
            }
        }
    }
    // The diagonal of all coordinates passes through every point (n, n).
    Section section(50, 50, Plain32());
    SelectObject(section.Dc(), GetStockObject(WHITE_PEN));
    Line(section, {INT32_MIN, INT32_MIN}, {INT32_MAX, INT32_MAX});
    EXPECT_EQ(CountOf(section, 0xFFFFFF), 50);
    EXPECT_EQ(section.Raw(31, 31), 0xFFFFFFu);
    for (const int width : {1, 2, 9, INT32_MAX}) {
        Selected pen(section.Dc(), CreatePen(PS_DASH, width, RGB(1, 1, 1)));
        for (int round = 0; round < 200; ++round) {
            const int wild[] = {INT32_MIN, INT32_MIN + 1, -1000000, -1, 0, 25, 1000000, INT32_MAX};
            const auto any = [&wild] { return wild[static_cast<std::size_t>(RandomIn(0, 7))]; };
            SetViewportOrgEx(section.Dc(), any(), any(), nullptr);
            Line(section, {any(), any()}, {any(), any()});
            Rectangle(section.Dc(), any(), any(), any(), any());
            const RECT rect = {any(), any(), any(), any()};
            FrameRect(section.Dc(), &rect, static_cast<HBRUSH>(GetStockObject(GRAY_BRUSH)));
            SetPixel(section.Dc(), any(), any(), 0);
        }
    }
}

TEST(Lines, DashesAndGapsFollowThePen) {
    Section section(60, 3, Plain32());
    Selected pen(section.Dc(), CreatePen(PS_DASHDOT, 1, RGB(255, 0, 0)));
    SetBkColor(section.Dc(), RGB(0, 255, 0));
    Line(section, {0, 0}, {60, 0});
    SetBkMode(section.Dc(), TRANSPARENT);
    const POINT bend[] = {{0, 2}, {10, 2}, {60, 2}};   // the pattern goes on round a corner
    Polyline(section.Dc(), bend, 3);
    for (int x = 0; x < 60; ++x) {
        const int at = x % 24;
        const bool ink = at < 9 || (at >= 15 && at < 18);
        EXPECT_EQ(section.Raw(x, 0), ink ? 0xFF0000u : 0x00FF00u) << x;
        EXPECT_EQ(section.Raw(x, 2), ink ? 0xFF0000u : 0u) << x;
    }
}

TEST(Lines, WidePensCoverTheirWidthAndMixOnce) {
    for (int width = 2; width < 9; ++width) {
        Section section(60, 40, Plain32());
        Selected pen(section.Dc(), CreatePen(PS_SOLID, width, RGB(255, 255, 255)));
        Line(section, {15, 20}, {45, 20});
        int rows = 0;
        for (int y = 0; y < 40; ++y) {
            rows += section.Raw(30, y) != 0;
        }
        EXPECT_EQ(rows, width);
    }
    // Where segments meet, an exclusive-or would undo itself if they were mixed in one by one.
    Section once(60, 60, Plain32());
    Selected pen(once.Dc(), CreatePen(PS_SOLID, 7, RGB(255, 255, 255)));
    SetROP2(once.Dc(), R2_XORPEN);
    const POINT points[] = {{10, 10}, {40, 12}, {20, 45}, {10, 10}};
    Polyline(once.Dc(), points, 4);
    EXPECT_EQ(once.Raw(40, 12), 0xFFFFFFu);
    EXPECT_EQ(once.Raw(10, 10), 0xFFFFFFu);
    Polyline(once.Dc(), points, 4);
    EXPECT_EQ(CountOf(once, 0), 60 * 60);
}

TEST(Shapes, RectanglesHaveABorderAndAnInside) {
    Section section(20, 20, Plain32());
    const HDC dc = section.Dc();
    Selected pen(dc, CreatePen(PS_SOLID, 1, RGB(255, 0, 0)));
    Selected brush(dc, CreateSolidBrush(RGB(0, 0, 255)));
    ASSERT_TRUE(Rectangle(dc, 3, 4, 10, 12));
    EXPECT_EQ(CountOf(section, 0xFF0000), 2 * 7 + 2 * 6);
    EXPECT_EQ(CountOf(section, 0x0000FF), 5 * 6);
    EXPECT_EQ(section.Raw(9, 11), 0xFF0000u);
    EXPECT_EQ(section.Raw(10, 12), 0u);
    const RECT frame = {3, 4, 10, 12};
    FrameRect(dc, &frame, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    EXPECT_EQ(CountOf(section, 0xFFFFFF), 2 * 7 + 2 * 6);
    EXPECT_EQ(CountOf(section, 0x0000FF), 5 * 6);
    SelectObject(dc, GetStockObject(NULL_BRUSH));
    PatBlt(dc, 0, 0, 20, 20, BLACKNESS);
    Rectangle(dc, 0, 0, 20, 20);
    EXPECT_EQ(section.Raw(10, 10), 0u);
    EXPECT_EQ(section.Raw(19, 19), 0xFF0000u);
}

}   // namespace
}   // namespace rastel::test
