// Contexts, what is selected in them, and their saved states.
#include <thread>

#include "tests/platform/gdi/gdi_test_support.h"

namespace rastel::test {
namespace {

TEST(Context, SavedStatesHoldEverything) {
    Section first(8, 8, Plain32());
    Section second(8, 8, Plain32());
    const HDC dc = CreateCompatibleDC(nullptr);
    const HPEN pen = CreatePen(PS_SOLID, 1, RGB(1, 1, 1));
    const HBRUSH brush = CreateSolidBrush(RGB(2, 2, 2));
    const HBITMAP bitmap = CreateBitmap(4, 4, 1, 32, nullptr);
    EXPECT_EQ(RestoreDC(dc, -1), FALSE);
    ASSERT_EQ(SaveDC(dc), 1);
    const HGDIOBJ stockBitmap = SelectObject(dc, bitmap);
    SelectObject(dc, pen);
    SelectObject(dc, brush);
    SetViewportOrgEx(dc, 3, 4, nullptr);
    SetTextColor(dc, RGB(5, 5, 5));
    SetBkColor(dc, RGB(6, 6, 6));
    SetBkMode(dc, TRANSPARENT);
    SetROP2(dc, R2_XORPEN);
    SetStretchBltMode(dc, HALFTONE);
    MoveToEx(dc, 7, 8, nullptr);
    IntersectClipRect(dc, 0, 0, 1, 1);
    ASSERT_EQ(SaveDC(dc), 2);
    ASSERT_EQ(SaveDC(dc), 3);
    SetViewportOrgEx(dc, 0, 0, nullptr);
    SelectObject(dc, stockBitmap);
    MoveToEx(dc, 0, 0, nullptr);
    EXPECT_FALSE(RestoreDC(dc, 4));
    EXPECT_FALSE(RestoreDC(dc, 0));
    EXPECT_FALSE(RestoreDC(dc, -4));
    ASSERT_TRUE(RestoreDC(dc, 2));
    POINT point{};
    EXPECT_EQ(GetCurrentObject(dc, OBJ_BITMAP), bitmap);
    GetViewportOrgEx(dc, &point);
    EXPECT_EQ(point.y, 4);
    GetCurrentPositionEx(dc, &point);
    EXPECT_EQ(point.x, 7);
    ASSERT_TRUE(RestoreDC(dc, -1));
    EXPECT_FALSE(RestoreDC(dc, -1));
    EXPECT_EQ(GetCurrentObject(dc, OBJ_BITMAP), stockBitmap);
    EXPECT_EQ(GetCurrentObject(dc, OBJ_PEN), GetStockObject(BLACK_PEN));
    EXPECT_EQ(GetCurrentObject(dc, OBJ_BRUSH), GetStockObject(WHITE_BRUSH));
    EXPECT_EQ(GetTextColor(dc), 0u);
    EXPECT_EQ(GetBkColor(dc), RGB(255, 255, 255));
    EXPECT_EQ(GetBkMode(dc), OPAQUE);
    EXPECT_EQ(GetROP2(dc), R2_COPYPEN);
    EXPECT_EQ(GetStretchBltMode(dc), BLACKONWHITE);
    RECT box{};
    EXPECT_EQ(GetClipBox(dc, &box), SIMPLEREGION);
    EXPECT_EQ(box.right, 1);
    for (const HGDIOBJ object : std::vector<HGDIOBJ>{pen, brush, bitmap, dc}) {
        EXPECT_TRUE(DeleteObject(object));
    }
}

TEST(Context, ABitmapIsSelectedInOneContextAtATime) {
    const HBITMAP bitmap = CreateBitmap(2, 2, 1, 32, nullptr);
    const HDC first = CreateCompatibleDC(nullptr);
    const HDC second = CreateCompatibleDC(nullptr);
    const HGDIOBJ stock = SelectObject(first, bitmap);
    ASSERT_NE(stock, nullptr);
    EXPECT_EQ(SelectObject(second, bitmap), nullptr);
    EXPECT_EQ(SelectObject(first, bitmap), bitmap);
    // A saved state does not steal what another context took meanwhile.
    SaveDC(first);
    EXPECT_EQ(SelectObject(first, stock), bitmap);
    EXPECT_EQ(SelectObject(second, bitmap), stock);
    ASSERT_TRUE(RestoreDC(first, -1));
    EXPECT_EQ(GetCurrentObject(first, OBJ_BITMAP), stock);
    DeleteDC(second);   // lets go of it
    EXPECT_EQ(SelectObject(first, bitmap), stock);
    DeleteDC(first);
    EXPECT_TRUE(DeleteObject(bitmap));
}

TEST(Handles, ContextsOfManyThreadsDoNotMeet) {
    std::vector<std::thread> threads;
    std::vector<int> wrong(4);
    for (std::size_t i = 0; i < wrong.size(); ++i) {
        threads.emplace_back([i, &wrong] {
            for (int round = 0; round < 300; ++round) {
                const HDC dc = CreateCompatibleDC(nullptr);
                const HBITMAP bitmap = CreateBitmap(3, 3, 1, 32, nullptr);
                const HGDIOBJ stock = SelectObject(dc, bitmap);
                const HBRUSH brush = CreateSolidBrush(static_cast<COLORREF>(round));
                const RECT all = {0, 0, 3, 3};
                FillRect(dc, &all, brush);
                wrong[i] += GetPixel(dc, 2, 2) != static_cast<COLORREF>(round);
                DeleteObject(brush);
                SelectObject(dc, stock);
                DeleteObject(bitmap);
                wrong[i] += DeleteDC(dc) ? 0 : 1;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(wrong, std::vector<int>(4));
}

}   // namespace
}   // namespace rastel::test
