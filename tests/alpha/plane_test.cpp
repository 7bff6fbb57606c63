// Planes: the store, the algebra, the masks made from colours.
#include <gtest/gtest.h>

#include <functional>
#include <tuple>

#include "rastel/surface/dib_surface.h"
#include "tests/support/plane.h"
#include "tests/support/test_store.h"

using rastel::test::Bytes;
using rastel::test::Plane;
using rastel::test::SetPixels;
using rastel::test::TestStore;

namespace {

TEST(Plane, IsAStoreOfOneByteAPixelWithGreyColours) {
    const LONG bytes = CSurfaceBase::GetSurfaceMenory();
    CDibAlphaChannel plane;
    EXPECT_EQ(plane.Initialize(0, 5), 0);
    EXPECT_EQ(plane.Initialize(0x7FFFFFFF, 0x7FFFFFFF), 0);
    ASSERT_EQ(plane.Initialize(3, 5), 1);
    EXPECT_EQ(plane.GetPitch(), 4);
    EXPECT_EQ(CSurfaceBase::GetSurfaceMenory(), bytes + 15);
    EXPECT_EQ(plane.GetBytesPrPixel(), 1);

    plane.LockData()[4 + 2] = 0x37;
    plane.UnlockData();
    const HDC dc = plane.GetDC();
    EXPECT_EQ(::GetPixel(dc, 2, 1), 0x00373737u);
    ::SetPixelV(dc, 0, 0, 0x00808080);
    plane.ReleaseDC(dc);
    EXPECT_EQ(plane.LockData()[0], 0x80);
    plane.UnlockData();

    BITMAPINFO* const info = plane.GetBitmapInfo();
    EXPECT_EQ(info->bmiHeader.biHeight, -5);
    EXPECT_EQ(info->bmiHeader.biBitCount, 8);
    const auto* const colors = reinterpret_cast<const unsigned char*>(info) + 40;
    EXPECT_EQ(colors[4 * 255], 255);
    EXPECT_EQ(colors[4 * 77 + 2], 77);
    EXPECT_EQ(colors[4 * 77 + 3], 0);
    delete[] reinterpret_cast<unsigned char*>(info);
}

// Runs an operation between two planes at every small offset and compares with the formula for each pixel.
void CheckPair(const std::function<int(Plane&, int, int, Plane&, CRect*, CRect*)>& run,
               const std::function<int(int, int)>& formula) {
    CRect sourceRect(2, 1, 30, 17), clip(3, 2, 35, 18);
    for (int dx = -32; dx <= 42; dx += 5) {
        for (int dy = -20; dy <= 22; dy += 6) {
            for (CRect* const part : {static_cast<CRect*>(nullptr), &sourceRect}) {
                Plane target(41, 21, 1), source(33, 19, 2);
                Bytes expected = target.Get();
                const Bytes from = source.Get();
                const CRect area = part ? *part : source.GetRect();
                for (int y = 0; y < area.Height(); ++y) {
                    for (int x = 0; x < area.Width(); ++x) {
                        if (clip.PtInRect(CPoint(dx + x, dy + y))) {
                            unsigned char& byte = expected[static_cast<std::size_t>((dy + y) * 41 + dx + x)];
                            byte = static_cast<unsigned char>(
                                formula(byte, from[static_cast<std::size_t>((area.top + y) * 33 + area.left + x)]));
                        }
                    }
                }
                run(target, dx, dy, source, part, &clip);
                ASSERT_EQ(target.Get(), expected) << dx << ' ' << dy;
            }
        }
    }
}

TEST(Plane, CopyMergeAndMixFollowTheirFormulas) {
    CheckPair([](Plane& t, int x, int y, Plane& s, CRect* part, CRect* clip) { return t.CopyBlt(x, y, s, part, clip); },
              [](int, int s) { return s; });
    CheckPair([](Plane& t, int x, int y, Plane& s, CRect* part, CRect* clip) { return t.Merge(x, y, s, part, clip); },
              [](int d, int s) { return d * s >> 8; });
    CheckPair([](Plane& t, int x, int y, Plane& s, CRect* part, CRect* clip) { return t.BltMix(x, y, s, part, clip); },
              [](int d, int s) { return d > s ? d : s; });
}

TEST(Plane, WithItselfNothingHappens) {
    Plane plane(9, 9, 4);
    const Bytes before = plane.Get();
    EXPECT_EQ(plane.Merge(0, 0, plane, nullptr, nullptr), 0);
    EXPECT_EQ(plane.BltMix(0, 0, plane, nullptr, nullptr), 0);
    EXPECT_EQ(plane.CopyBlt(0, 0, plane, nullptr, nullptr), 0);
    EXPECT_EQ(plane.Get(), before);
}

TEST(Plane, FillMultiplyAndInvertKeepToTheirRegion) {
    Plane plane(8, 2);
    CRect outside(20, 20, 30, 30), part(2, 0, 5, 9), clip(3, -4, 8, 1);
    EXPECT_EQ(plane.Fill(&outside, 9, nullptr), 1);
    EXPECT_EQ(plane.Get(), Bytes(16));
    EXPECT_EQ(plane.Fill(nullptr, 200, nullptr), 1);
    EXPECT_EQ(plane.Fill(&part, 100, &clip), 1);
    EXPECT_EQ(plane.Get(), (Bytes{200, 200, 200, 100, 100, 200, 200, 200, 200, 200, 200, 200, 200, 200, 200, 200}));
    EXPECT_EQ(plane.Multiply(&part, 128), 1);
    EXPECT_EQ(plane.Get(), (Bytes{200, 200, 100, 50, 50, 200, 200, 200, 200, 200, 100, 100, 100, 200, 200, 200}));
    EXPECT_EQ(plane.Invert(&part), 1);
    EXPECT_EQ(plane.Get(), (Bytes{200, 200, 155, 205, 205, 200, 200, 200, 200, 200, 155, 155, 155, 200, 200, 200}));
    EXPECT_EQ(plane.Invert(&outside), 1);
    EXPECT_EQ(plane.Multiply(&outside, 0), 1);
    EXPECT_EQ(plane.Get()[0], 200);
    EXPECT_EQ(plane.Multiply(nullptr, -3), 1);
    EXPECT_EQ(plane.Get()[0], static_cast<unsigned char>((200 * -3) >> 8));
}

TEST(Plane, RefusesAColourSurfaceAndALockedOne) {
    Plane plane(4, 4, 1), other(4, 4, 2);
    TestStore colours(4, 4);
    EXPECT_EQ(plane.CopyBlt(0, 0, colours, nullptr, nullptr), 0);
    const Bytes before = plane.Get();
    other.LockData();
    EXPECT_EQ(plane.Merge(0, 0, other, nullptr, nullptr), 0);
    EXPECT_EQ(plane.Merge(9, 0, other, nullptr, nullptr), 0);
    EXPECT_EQ(plane.Get(), before);   // and not left locked
    other.UnlockData();
    plane.LockData();
    EXPECT_EQ(plane.Fill(nullptr, 1, nullptr), 0);
    EXPECT_EQ(plane.Multiply(nullptr, 1), 0);
    EXPECT_EQ(plane.Invert(nullptr), 0);
    CRect none(2, 2, 2, 3);
    EXPECT_EQ(plane.Fill(&none, 1, nullptr), 1);   // nothing to lock for
    plane.UnlockData();
}

TEST(Plane, MasksCompareAll32BitsFromTheSourceRectangleOn) {
    CDibSurface colours;
    ASSERT_TRUE(colours.InitializeSurface(13, 1));
    std::vector<DWORD> pixels(13, 0x00112233);
    pixels[10] = 0x00445566;
    pixels[11] = 0x80112233;   // the same colour with another alpha byte
    SetPixels(colours, pixels);
    CRect fromTen(10, 0, 13, 1);
    Plane plane(3, 1);
    EXPECT_EQ(plane.OpaqueMask(0, 0, colours, 0x00112233, &fromTen, nullptr), 1);
    EXPECT_EQ(plane.Get(), (Bytes{255, 255, 0}));
    plane.Fill(nullptr, 9, nullptr);
    EXPECT_EQ(plane.TransparentMask(0, 0, colours, 0x00112233, &fromTen, nullptr), 1);
    EXPECT_EQ(plane.Get(), (Bytes{9, 9, 0}));
    EXPECT_EQ(plane.TransparentMask(3, 0, colours, 0, nullptr, nullptr), 1);
    EXPECT_EQ(plane.OpaqueMask(4, 0, colours, 0, nullptr, nullptr), 0);
}

TEST(Plane, StretchGoesThroughItsContexts) {
    Plane source(2, 2), target(16, 16);
    source.Set({10, 80, 150, 220});
    CRect whole(0, 0, 16, 16);
    EXPECT_NE(target.StretchBlt(whole, source, nullptr, nullptr), 0);
    const Bytes to = target.Get();
    for (const auto& [x, y, value] : {std::tuple{0u, 0u, 10}, {15u, 0u, 80}, {4u, 12u, 150}, {12u, 12u, 220}}) {
        EXPECT_EQ(to[y * 16 + x], value);   // not at the borders, where systems differ by one
    }
}

}   // namespace
