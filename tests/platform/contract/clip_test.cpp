// Regions and clips.
#include "tests/platform/gdi/gdi_test_support.h"

namespace rastel::test {
namespace {

TEST(RegionObjects, CombineAndDescribeThemselves) {
    const HRGN first = CreateRectRgn(10, 10, 0, 0);   // corners in any order
    const HRGN second = CreateRectRgn(5, 5, 20, 8);
    const HRGN result = CreateRectRgn(0, 0, 0, 0);
    RECT box{};
    EXPECT_EQ(CombineRgn(result, first, second, RGN_AND), SIMPLEREGION);
    EXPECT_EQ(GetRgnBox(result, &box), SIMPLEREGION);
    EXPECT_EQ(box.left, 5);
    EXPECT_EQ(box.bottom, 8);
    EXPECT_EQ(CombineRgn(result, first, second, RGN_XOR), COMPLEXREGION);
    EXPECT_EQ(CombineRgn(first, first, second, RGN_DIFF), COMPLEXREGION);   // target and operand in one
    EXPECT_EQ(CombineRgn(result, second, nullptr, RGN_COPY), SIMPLEREGION);
    EXPECT_EQ(CombineRgn(result, first, nullptr, RGN_OR), RGN_ERROR);

    const DWORD needed = GetRegionData(first, 0, nullptr);
    std::vector<unsigned char> bytes(needed);
    auto* const data = reinterpret_cast<RGNDATA*>(bytes.data());
    EXPECT_EQ(GetRegionData(first, needed - 1, data), 0u);
    ASSERT_EQ(GetRegionData(first, needed, data), needed);
    EXPECT_EQ(data->rdh.nCount, 3u);
    EXPECT_EQ(data->rdh.nRgnSize, 3 * sizeof(RECT));
    RECT last{};
    std::memcpy(&last, data->Buffer + 2 * sizeof(RECT), sizeof(last));
    EXPECT_EQ(last.top, 8);
    EXPECT_EQ(last.right, 10);

    EXPECT_TRUE(DeleteObject(first));
    EXPECT_EQ(GetRgnBox(first, &box), RGN_ERROR);
    EXPECT_EQ(GetRegionData(first, needed, data), 0u);
    DeleteObject(second);
    DeleteObject(result);
}

TEST(Clip, LimitsEveryKindOfDrawing) {
    Section source(30, 30, Plain32());
    source.Randomize();
    const HBRUSH brush = CreateSolidBrush(RGB(1, 2, 3));
    const HPEN pen = CreatePen(PS_SOLID, 5, RGB(9, 9, 9));
    using Draw = void (*)(HDC, HDC, HBRUSH);
    const Draw draws[] = {
        [](HDC dc, HDC from, HBRUSH) { BitBlt(dc, -2, -2, 30, 30, from, 0, 0, SRCCOPY); },
        [](HDC dc, HDC from, HBRUSH) { StretchBlt(dc, 0, 0, 25, 25, from, 0, 0, 11, 7, SRCPAINT); },
        [](HDC dc, HDC, HBRUSH with) {
            const RECT all = {-5, -5, 90, 90};
            FillRect(dc, &all, with);
        },
        [](HDC dc, HDC, HBRUSH) { Rectangle(dc, 2, 2, 28, 28); },
        [](HDC dc, HDC, HBRUSH) {
            MoveToEx(dc, -50, 3, nullptr);
            LineTo(dc, 80, 29);
        },
    };
    for (const Draw draw : draws) {
        for (const bool wide : {false, true}) {
            Section whole(30, 30, Plain32());
            Section part(30, 30, Plain32());
            const HRGN hole = CreateRectRgn(0, 0, 40, 40);
            const HRGN cut = CreateRectRgn(10, 9, 17, 21);
            CombineRgn(hole, hole, cut, RGN_DIFF);
            EXPECT_EQ(SelectClipRgn(part.Dc(), hole), COMPLEXREGION);
            DeleteObject(hole);
            DeleteObject(cut);
            for (Section* section : {&whole, &part}) {
                const HGDIOBJ previous = wide ? SelectObject(section->Dc(), pen) : nullptr;
                draw(section->Dc(), source.Dc(), brush);
                if (previous != nullptr) {
                    SelectObject(section->Dc(), previous);
                }
            }
            for (int y = 0; y < 30; ++y) {
                for (int x = 0; x < 30; ++x) {
                    const bool hidden = x >= 10 && x < 17 && y >= 9 && y < 21;
                    ASSERT_EQ(part.Raw(x, y), hidden ? 0 : whole.Raw(x, y)) << x << "," << y;
                }
            }
        }
    }
    DeleteObject(brush);
    DeleteObject(pen);
}

TEST(Clip, RectanglesAreLogicalAndRegionsAreNot) {
    Section section(20, 20, Plain32());
    const HDC dc = section.Dc();
    SetViewportOrgEx(dc, 5, 6, nullptr);
    IntersectClipRect(dc, 1, 1, 4, 4);
    RECT box{};
    EXPECT_EQ(GetClipBox(dc, &box), SIMPLEREGION);
    EXPECT_TRUE(EqualRect(&box, std::vector<RECT>{{1, 1, 4, 4}}.data()));
    SetViewportOrgEx(dc, 0, 0, nullptr);   // what was clipped stays where it is on the device
    GetClipBox(dc, &box);
    EXPECT_TRUE(EqualRect(&box, std::vector<RECT>{{6, 7, 9, 10}}.data()));
    const HRGN region = CreateRectRgn(1, 2, 3, 4);
    SetViewportOrgEx(dc, 5, 6, nullptr);
    SelectClipRgn(dc, region);
    GetClipBox(dc, &box);
    EXPECT_TRUE(EqualRect(&box, std::vector<RECT>{{-4, -4, -2, -2}}.data()));
    DeleteObject(region);
}

}   // namespace
}   // namespace rastel::test
