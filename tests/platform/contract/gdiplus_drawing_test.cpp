// What a Graphics draws on them and on contexts, and what it leaves alone.
#include <gtest/gtest.h>

#include <climits>
#include <limits>

#include "tests/platform/contract/gdiplus_canvas.h"

namespace {

using Gdiplus::Bitmap;
using Gdiplus::BitmapData;
using Gdiplus::Color;
using Gdiplus::Graphics;
using Gdiplus::Pen;
using Gdiplus::PointF;
using Gdiplus::Rect;
using Gdiplus::RectF;
using Gdiplus::SolidBrush;

using rastel::test::faint;
using rastel::test::green;
using rastel::test::red;

using GdiplusDrawing = rastel::test::GdiplusCanvas;

TEST_F(GdiplusDrawing, WhatIsNotCoveredKeepsItsBitsAndFaintColoursAreExact) {
    graphics.Clear(Color(faint));
    EXPECT_EQ(Count(faint), 40 * 30);
    graphics.SetSmoothingMode(Gdiplus::SmoothingModeAntiAlias);
    graphics.FillEllipse(&redBrush, 10, 10, 8, 8);
    EXPECT_EQ(At(14, 14), red);
    EXPECT_GT(Count(faint), 40 * 30 - 110);
    graphics.Clear(Color(0u));
    const SolidBrush brush{Color(faint)};
    graphics.FillRectangle(&brush, 2.5f, 2.5f, 10.0f, 10.0f);
    EXPECT_EQ(Count(faint), 100);   // no colour is lost to the alpha of 3
    EXPECT_EQ(Count(0), 40 * 30 - 100);
}

TEST_F(GdiplusDrawing, ShapesWithoutSmoothingAreWholePixels) {
    const Pen pen{Color(red)};
    graphics.DrawLine(&pen, 2, 3, 12, 3);
    EXPECT_EQ(Count(red), 11);   // both ends
    EXPECT_EQ(At(12, 3), red);
    graphics.Clear(Color(0u));
    graphics.DrawRectangle(&pen, 5, 6, 10, 4);
    EXPECT_EQ(Count(red), 2 * 11 + 2 * 3);
    EXPECT_EQ(At(15, 10), red);
    graphics.Clear(Color(0u));
    graphics.FillRectangle(&redBrush, 5, 6, 10, 4);
    EXPECT_EQ(Count(red), 40);
    EXPECT_EQ(At(5, 6), red);
    EXPECT_EQ(At(14, 9), red);
}

TEST_F(GdiplusDrawing, TransformsAndClips) {
    graphics.TranslateTransform(20, 10);
    graphics.ScaleTransform(2, 1);
    graphics.FillRectangle(&redBrush, 0, 0, 4, 3);
    EXPECT_EQ(Count(red), 24);
    EXPECT_EQ(At(27, 12), red);
    graphics.ResetTransform();
    graphics.Clear(Color(0u));
    const Gdiplus::GraphicsState state = graphics.Save();
    graphics.SetClip(Rect(10, 10, 10, 10));
    graphics.ExcludeClip(Rect(12, 12, 2, 2));
    graphics.FillRectangle(&redBrush, 0, 0, 40, 30);
    EXPECT_EQ(Count(red), 96);
    graphics.SetClip(Rect(0, 0, 5, 5), Gdiplus::CombineModeUnion);
    graphics.Clear(Color(green));
    EXPECT_EQ(Count(green), 96 + 25);
    graphics.SetClip(Rect(100, 100, 5, 5));
    graphics.Clear(Color(red));
    EXPECT_EQ(Count(red), 0);
    graphics.Restore(state);
    graphics.Clear(Color(red));
    EXPECT_EQ(Count(red), 40 * 30);
}

TEST_F(GdiplusDrawing, LocksConvertAndWriteBackTheirPartOnly) {
    bitmap.SetPixel(2, 1, Color(0x80FF8040));
    bitmap.SetPixel(5, 4, Color(faint));
    const Rect part(2, 1, 2, 2);
    BitmapData data;
    ASSERT_EQ(bitmap.LockBits(&part, 3, PixelFormat32bppPARGB, &data), Gdiplus::Ok);
    EXPECT_EQ(bitmap.LockBits(&part, 1, PixelFormat32bppARGB, &data), Gdiplus::WrongState);
    auto* const words = static_cast<DWORD*>(data.Scan0);
    EXPECT_EQ(words[0], 0x80804020u);
    words[1] = 0xFF112233;
    EXPECT_EQ(bitmap.UnlockBits(&data), Gdiplus::Ok);
    EXPECT_EQ(bitmap.UnlockBits(&data), Gdiplus::WrongState);
    EXPECT_EQ(At(3, 1), 0xFF112233u);
    EXPECT_EQ(At(5, 4), faint);
    for (const auto& [width, height] : {std::pair{0, 5}, {5, -1}, {INT_MAX, INT_MAX}}) {
        EXPECT_NE(Bitmap(width, height).GetLastStatus(), Gdiplus::Ok);
    }
}

}   // namespace
