// Bitmaps of GDI+: formats, locks, copies.
#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "rastel/platform/gdiplus.h"

namespace {

using Gdiplus::Bitmap;
using Gdiplus::BitmapData;
using Gdiplus::Color;
using Gdiplus::Rect;

DWORD PixelOf(Bitmap& bitmap, int x, int y) {
    Color color;
    EXPECT_EQ(bitmap.GetPixel(x, y, &color), Gdiplus::Ok);
    return color.GetValue();
}

TEST(GdiplusBitmap, FreshOnesAreZeroInEveryFormat) {
    EXPECT_EQ(PixelOf(*std::make_unique<Bitmap>(3, 3, PixelFormat32bppARGB), 2, 2), 0u);
    Bitmap rgb(3, 3, PixelFormat24bppRGB), indexed(3, 3, PixelFormat8bppIndexed);
    EXPECT_EQ(PixelOf(rgb, 1, 1), 0xFF000000u);
    EXPECT_EQ(PixelOf(indexed, 1, 1), 0xFF000000u);
    EXPECT_EQ(indexed.SetPixel(1, 1, Color(0xFF7E8082)), Gdiplus::Ok);
    EXPECT_EQ(PixelOf(indexed, 1, 1), 0xFF808080u);   // the nearest grey
}

TEST(GdiplusBitmap, ALockMayFillTheHostsOwnMemory) {
    Bitmap bitmap(6, 5, PixelFormat32bppARGB);
    bitmap.SetPixel(3, 1, Color(0xFF112233));
    const Rect part(2, 1, 2, 2);
    BYTE own[2][8] = {};
    BitmapData data{};
    data.Scan0 = own;
    data.Stride = 8;
    ASSERT_EQ(bitmap.LockBits(&part, Gdiplus::ImageLockModeRead | Gdiplus::ImageLockModeUserInputBuf,
                              PixelFormat24bppRGB, &data),
              Gdiplus::Ok);
    EXPECT_EQ(own[0][3], 0x33);
    bitmap.UnlockBits(&data);
}

TEST(GdiplusBitmap, LocksOfItsOwnFormatAreThePixels) {
    std::vector<DWORD> own(4 * 3, 0x11223344);
    Bitmap bitmap(4, 3, 16, PixelFormat32bppARGB, reinterpret_cast<BYTE*>(own.data()));
    bitmap.SetPixel(3, 2, Color(0x01FFFFFF));
    EXPECT_EQ(own[11], 0x01FFFFFFu);
    const Rect part(1, 1, 2, 1);
    BitmapData data;
    ASSERT_EQ(bitmap.LockBits(&part, Gdiplus::ImageLockModeRead, PixelFormat32bppARGB, &data), Gdiplus::Ok);
    EXPECT_EQ(data.Scan0, own.data() + 5);
    EXPECT_EQ(data.Stride, 16);
    bitmap.UnlockBits(&data);
}

TEST(GdiplusBitmap, GoesToGdiAndBack) {
    Bitmap bitmap(3, 2, PixelFormat32bppARGB);
    bitmap.SetPixel(1, 1, Color(0xFF102030));
    HBITMAP native = nullptr;
    ASSERT_EQ(bitmap.GetHBITMAP(Color(0xFFFFFFFF), &native), Gdiplus::Ok);
    const std::unique_ptr<Bitmap> back(Bitmap::FromHBITMAP(native, nullptr));
    EXPECT_EQ(PixelOf(*back, 1, 1), 0xFF102030u);
    EXPECT_EQ(PixelOf(*back, 0, 0), 0xFFFFFFFFu);
    DeleteObject(native);
    EXPECT_NE(std::make_unique<Bitmap>(native, nullptr)->GetLastStatus(), Gdiplus::Ok);
}

}   // namespace
