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
