#include <thread>

#include "gdi_test_support.h"
#include "rastel/platform/portable/memory_display.h"

namespace rastel::test {
namespace {

TEST(Context, FreshMemoryContextDrawsOnOneMonochromePixel) {
    const HDC dc = CreateCompatibleDC(nullptr);
    const HDC other = CreateCompatibleDC(nullptr);
    EXPECT_EQ(GetObjectType(dc), static_cast<DWORD>(OBJ_MEMDC));
    EXPECT_EQ(SetPixel(dc, 0, 0, RGB(255, 255, 255)), RGB(255, 255, 255));
    EXPECT_EQ(GetPixel(dc, 0, 0), RGB(255, 255, 255));
    EXPECT_EQ(GetPixel(other, 0, 0), 0u);   // not the same pixel
    EXPECT_EQ(GetPixel(dc, 1, 0), CLR_INVALID);
    BITMAP description{};
    const HBITMAP compatible = CreateCompatibleBitmap(dc, 9, 7);
    EXPECT_EQ(GetObjectW(compatible, sizeof(description), &description), static_cast<int>(sizeof(description)));
    EXPECT_EQ(description.bmBitsPixel, 1);
    EXPECT_EQ(description.bmWidth, 9);
    EXPECT_TRUE(DeleteObject(compatible));
    EXPECT_TRUE(DeleteDC(dc));
    EXPECT_TRUE(DeleteDC(other));
}

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

TEST(Handles, DeletedObjectsLiveUntilTheyAreDeselected) {
    Section section(4, 4, Plain32());
    const HBRUSH brush = CreateSolidBrush(RGB(10, 20, 30));
    const HGDIOBJ stock = SelectObject(section.Dc(), brush);
    EXPECT_TRUE(DeleteObject(brush));
    EXPECT_FALSE(DeleteObject(brush));
    EXPECT_TRUE(PatBlt(section.Dc(), 0, 0, 4, 4, PATCOPY));
    EXPECT_EQ(section.Raw(1, 1), 0x000A141Eu);
    EXPECT_NE(SelectObject(section.Dc(), stock), nullptr);
    EXPECT_EQ(SelectObject(section.Dc(), brush), nullptr);
    // The next object of the kind has another handle, though it may take the place.
    const HBRUSH next = CreateSolidBrush(0);
    EXPECT_NE(next, brush);
    DeleteObject(next);
}

TEST(Handles, ForeignOnesFailInEveryCall) {
    const HDC gone = CreateCompatibleDC(nullptr);
    ASSERT_TRUE(DeleteDC(gone));
    const HBRUSH notAContext = CreateSolidBrush(0);
    int stray = 0;
    const RECT rect = {0, 0, 1, 1};
    RECT box{};
    for (const HDC dc :
         {static_cast<HDC>(nullptr), gone, reinterpret_cast<HDC>(notAContext), reinterpret_cast<HDC>(&stray),
          reinterpret_cast<HDC>(INVALID_HANDLE_VALUE), reinterpret_cast<HDC>(std::uintptr_t{5})}) {
        EXPECT_EQ(SaveDC(dc), 0);
        EXPECT_FALSE(RestoreDC(dc, -1));
        EXPECT_FALSE(DeleteDC(dc));
        EXPECT_EQ(ReleaseDC(nullptr, dc), 0);
        EXPECT_EQ(GetDeviceCaps(dc, BITSPIXEL), 0);
        EXPECT_EQ(SelectObject(dc, notAContext), nullptr);
        EXPECT_EQ(FillRect(dc, &rect, notAContext), 0);
        EXPECT_FALSE(BitBlt(dc, 0, 0, 1, 1, dc, 0, 0, SRCCOPY));
        EXPECT_FALSE(LineTo(dc, 1, 1));
        EXPECT_EQ(GetPixel(dc, 0, 0), CLR_INVALID);
        EXPECT_EQ(GetClipBox(dc, &box), RGN_ERROR);
        EXPECT_EQ(SetMetaRgn(dc), RGN_ERROR);
        EXPECT_EQ(CreateCompatibleBitmap(dc, 1, 1), nullptr);
        EXPECT_EQ(GetObjectType(dc), dc == reinterpret_cast<HDC>(notAContext) ? DWORD{OBJ_BRUSH} : 0u);
        EXPECT_EQ(SetBkColor(dc, 0), CLR_INVALID);
    }
    DeleteObject(notAContext);
    EXPECT_TRUE(DeleteObject(GetStockObject(BLACK_PEN)));   // says yes and leaves it
    EXPECT_EQ(GetObjectType(GetStockObject(BLACK_PEN)), static_cast<DWORD>(OBJ_PEN));
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

TEST(Failures, OnRequestTheyComeAsOftenAsAsked) {
    platform::UseMemoryDisplay({});
    platform::FailDeviceCalls("CreateDCW", 1);
    EXPECT_EQ(CreateDCW(L"DISPLAY", nullptr, nullptr, nullptr), nullptr);
    const HDC screen = CreateDCW(L"DISPLAY", nullptr, nullptr, nullptr);
    EXPECT_NE(screen, nullptr);
    platform::FailDeviceCalls("CreateCompatibleDC", 1);
    EXPECT_EQ(CreateCompatibleDC(screen), nullptr);
    platform::FailDeviceCalls("CreateDIBSection", 1);
    void* bits = &bits;
    InfoBlock info(4, 4, Plain32());
    EXPECT_EQ(CreateDIBSection(screen, info.Info(), DIB_RGB_COLORS, &bits, nullptr, 0), nullptr);
    EXPECT_EQ(bits, nullptr);
    EXPECT_EQ(CreateDCW(L"PRINTER", nullptr, nullptr, nullptr), nullptr);
    EXPECT_TRUE(DeleteDC(screen));
}

}   // namespace
}   // namespace rastel::test
