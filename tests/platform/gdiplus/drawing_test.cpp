// Bitmaps and what a Graphics draws on them and on contexts, and what it leaves alone.
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

TEST_F(GdiplusDrawing, StraightOverStraight) {
    graphics.Clear(Color(0x800000FF));
    const SolidBrush half{Color(0x80FF0000)};
    graphics.FillRectangle(&half, 0, 0, 4, 4);
    EXPECT_EQ(At(1, 1), 0xC0AA0055u);   // alpha 128 + 128 * 127 / 255, red 128 of it
    EXPECT_EQ(At(4, 4), 0x800000FFu);
    graphics.SetCompositingMode(Gdiplus::CompositingModeSourceCopy);
    graphics.FillRectangle(&half, 0, 0, 4, 4);
    EXPECT_EQ(At(1, 1), 0x80FF0000u);
}

TEST_F(GdiplusDrawing, WildTextLeavesTheNextOneWhole) {
    const RectF frame(0, 0, 1e9f, 1e9f);
    const auto widthAt = [&](float pixels) {
        const Gdiplus::Font font(L"DejaVu Sans", pixels, Gdiplus::FontStyleRegular, Gdiplus::UnitPixel);
        RectF bounds;
        EXPECT_EQ(graphics.MeasureString(L"Hill", 4, &font, frame, nullptr, &bounds), Gdiplus::Ok);
        return bounds.Width;
    };
    const float usual = widthAt(20);
    EXPECT_GT(usual, 20);
    EXPECT_GT(widthAt(70000), usual * 3000);
    EXPECT_GT(widthAt(1e8f), usual * 4e6f);
    EXPECT_LT(widthAt(0.001f), usual / 1000);
    EXPECT_EQ(widthAt(20), usual);
    const Gdiplus::Font font(L"DejaVu Sans", 20, Gdiplus::FontStyleRegular, Gdiplus::UnitPixel);
    graphics.Clear(Color(0u));
    EXPECT_EQ(graphics.DrawString(L"Hill", 4, &font, frame, nullptr, &redBrush), Gdiplus::Ok);
    EXPECT_LT(Count(0), 40 * 30 - 50);
    const Gdiplus::Font huge(L"DejaVu Sans", 1e5f, Gdiplus::FontStyleRegular, Gdiplus::UnitPixel);
    graphics.Clear(Color(0u));
    graphics.ScaleTransform(2e-4f, 2e-4f);   // to 20 pixels
    EXPECT_EQ(graphics.DrawString(L"Hill", 4, &huge, frame, nullptr, &redBrush), Gdiplus::Ok);
    EXPECT_LT(Count(0), 40 * 30 - 50);
}

TEST_F(GdiplusDrawing, TargetsMayBeLongerThanCairosOwn) {
    Bitmap strip(40000, 2, PixelFormat32bppARGB);
    Graphics onStrip(&strip);
    EXPECT_EQ(onStrip.FillRectangle(&redBrush, 0, 0, 40000, 2), Gdiplus::Ok);
    for (const int x : {0, 32763, 32764, 39999}) {
        Color color;
        strip.GetPixel(x, 1, &color);
        EXPECT_EQ(color.GetValue(), red) << x;
    }
}

TEST_F(GdiplusDrawing, PathsHaveLinesCurvesAndArcs) {
    Gdiplus::GraphicsPath path;
    path.AddLine(5, 20, 5, 10);
    path.AddArc(5, 5, 10, 10, 180, 180);
    path.AddLine(15, 10, 15, 20);
    path.CloseFigure();
    path.AddBezier(PointF(20, 20), PointF(20, 10), PointF(30, 10), PointF(30, 20));
    graphics.SetSmoothingMode(Gdiplus::SmoothingModeAntiAlias);
    EXPECT_EQ(graphics.FillPath(&redBrush, &path), Gdiplus::Ok);
    double covered = 0;
    for (int i = 0; i < 40 * 30; ++i) {
        covered += (At(i % 40, i / 40) >> 24) / 255.0;
    }
    EXPECT_NEAR(covered, 100 + 39.27 + 60, 1);   // a square, half a disc, 3/5 of the curve's hull
    EXPECT_EQ(At(10, 7), red);
    EXPECT_EQ(At(5, 5), 0u);
}

TEST_F(GdiplusDrawing, ImagesComeThroughAsTheyAreAndScale) {
    Bitmap image(4, 4, PixelFormat32bppARGB);
    for (int i = 0; i < 16; ++i) {
        image.SetPixel(i % 4, i / 4, Color(i % 4 < 2 ? 0x02FA8214 : green));
    }
    graphics.DrawImage(&image, 3, 5);
    EXPECT_EQ(At(3, 5), 0x02FA8214u);
    EXPECT_EQ(Count(0x02FA8214), 8);
    EXPECT_EQ(Count(green), 8);
    graphics.Clear(Color(0u));
    graphics.SetInterpolationMode(Gdiplus::InterpolationModeNearestNeighbor);
    graphics.DrawImage(&image, RectF(0, 0, 20, 20), 2, 0, 2, 4, Gdiplus::UnitPixel);
    EXPECT_EQ(Count(green), 400);
    graphics.DrawImage(&bitmap, 10, 10);   // onto itself
}

TEST_F(GdiplusDrawing, WildNumbersDrawOrAreRefusedButHarmNothing) {
    using Limits = std::numeric_limits<float>;
    for (const float value : {Limits::infinity(), Limits::quiet_NaN(), 1e30f, -1e30f}) {
        for (const auto mode : {Gdiplus::SmoothingModeNone, Gdiplus::SmoothingModeAntiAlias}) {
            graphics.SetSmoothingMode(mode);
            const Pen pen(Color(red), 3);
            graphics.DrawLine(&pen, value, 0.0f, 5.0f, value);
            graphics.FillRectangle(&redBrush, value, value, value, value);
            graphics.DrawArc(&pen, 0.0f, 0.0f, value, 5.0f, value, value);
            graphics.SetClip(RectF(value, 0, value, 9), Gdiplus::CombineModeExclude);
            graphics.ResetClip();
            graphics.DrawImage(&bitmap, RectF(value, 0, value, 4), value, 0, value, 4, Gdiplus::UnitPixel);
            graphics.ScaleTransform(value, 0);
            graphics.DrawEllipse(&pen, 0, 0, 9, 9);
            graphics.FillEllipse(&redBrush, 0, 0, 9, 9);
            graphics.ResetTransform();
        }
    }
    EXPECT_NE(Graphics(static_cast<HDC>(nullptr)).GetLastStatus(), Gdiplus::Ok);
    EXPECT_NE(Graphics(static_cast<Gdiplus::Image*>(nullptr)).GetLastStatus(), Gdiplus::Ok);
}

}   // namespace
