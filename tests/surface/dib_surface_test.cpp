// The store in memory: its accesses, its counters, and the scoped context.
#include <gtest/gtest.h>

#include <climits>

#include "rastel/surface/dib_surface.h"
#include "rastel/surface/surface_dc.h"
#include "tests/support/test_store.h"

using rastel::test::PixelsOf;

namespace {

TEST(DibSurface, RawAccessAndContextAreEachForOneUser) {
    CDibSurface surface;
    EXPECT_EQ(surface.LockData(), nullptr);   // no pixels yet, and nothing stays locked
    ASSERT_TRUE(surface.InitializeSurface(3, 2));
    EXPECT_EQ(surface.GetPitch(), 12);

    unsigned char* const bits = surface.LockData();
    ASSERT_NE(bits, nullptr);
    EXPECT_EQ(surface.LockData(), nullptr);
    const HDC dc = surface.GetDC();   // the two kinds don't exclude one another
    ASSERT_NE(dc, nullptr);
    EXPECT_EQ(surface.GetDC(), nullptr);
    ::SetPixelV(dc, 2, 1, 0x00112233);
    surface.UnlockData();
    surface.UnlockData();
    EXPECT_EQ(surface.LockData(), bits);
    surface.UnlockData();
    EXPECT_EQ(PixelsOf(surface), (std::vector<DWORD>{0, 0, 0, 0, 0, 0x00332211}));

    surface.ReleaseDC(nullptr);   // whatever the argument
    surface.ReleaseDC(dc);
    EXPECT_EQ(::SetPixelV(dc, 0, 0, 1), FALSE);
    EXPECT_NE(surface.GetDC(), nullptr);
    surface.Destroy();   // takes the context along
    EXPECT_EQ(surface.LockData(), nullptr);
    EXPECT_EQ(surface.GetDC(), nullptr);
    ASSERT_TRUE(surface.InitializeSurface(4, 4));
    EXPECT_NE(surface.LockData(), nullptr);
}

TEST(DibSurface, CountsItselfAndItsPixelsOnce) {
    const LONG stores = CSurfaceBase::GetSurfacesAllocated(), bytes = CSurfaceBase::GetSurfaceMenory();
    auto* const surface = new CDibSurface;
    EXPECT_EQ(CSurfaceBase::GetSurfacesAllocated(), stores + 1);
    ASSERT_TRUE(surface->InitializeSurface(3, 5));
    EXPECT_EQ(CSurfaceBase::GetSurfaceMenory(), bytes + 60);
    surface->Destroy();
    surface->Destroy();
    EXPECT_EQ(CSurfaceBase::GetSurfaceMenory(), bytes);
    ASSERT_TRUE(surface->InitializeSurface(5, 5));
    ASSERT_TRUE(surface->InitializeSurface(2, 2));
    EXPECT_EQ(CSurfaceBase::GetSurfaceMenory(), bytes + 16);
    EXPECT_EQ(surface->AddRef(), 2);
    EXPECT_EQ(surface->Release(), 1);
    EXPECT_EQ(surface->Release(), 0);
    EXPECT_EQ(CSurfaceBase::GetSurfacesAllocated(), stores);
    EXPECT_EQ(CSurfaceBase::GetSurfaceMenory(), bytes);
}

TEST(DibSurface, SizesThatCantBeHadAreRefused) {
    const LONG bytes = CSurfaceBase::GetSurfaceMenory();
    const int sizes[][2] = {{0, 10},        {10, 0},      {-1, 10},    {10, -1}, {INT_MAX, INT_MAX}, {INT_MIN, INT_MIN},
                            {32768, 32768}, {INT_MAX, 1}, {1, INT_MAX}};
    for (const auto& size : sizes) {
        CDibSurface surface;
        EXPECT_EQ(surface.InitializeSurface(size[0], size[1]), 0) << size[0] << ' ' << size[1];
        EXPECT_EQ(surface.LockData(), nullptr);
    }
    EXPECT_EQ(CSurfaceBase::GetSurfaceMenory(), bytes);
}

TEST(DibSurface, NewPixelsAreZeroAlsoInMemoryUsedBefore) {
    for (int i = 0; i < 3; ++i) {
        CDibSurface surface;
        ASSERT_TRUE(surface.InitializeSurface(200, 100));
        const std::vector<DWORD> zeros(200 * 100);
        EXPECT_EQ(PixelsOf(surface), zeros);
        rastel::test::SetPixels(surface, std::vector<DWORD>(200 * 100, 0xFFFFFFFF));
    }
}

TEST(DibSurface, DescribesItselfTopDown) {
    CDibSurface surface;
    ASSERT_TRUE(surface.InitializeSurface(640, 480));
    BITMAPINFO* const info = surface.GetBitmapInfo();
    EXPECT_EQ(info->bmiHeader.biSize, 40u);
    EXPECT_EQ(info->bmiHeader.biWidth, 640);
    EXPECT_EQ(info->bmiHeader.biHeight, -480);
    EXPECT_EQ(info->bmiHeader.biBitCount, 32);
    delete[] reinterpret_cast<unsigned char*>(info);
}

TEST(SurfaceDc, ClipsOnlyWhatIsDrawnThroughIt) {
    CDibSurface surface;
    ASSERT_TRUE(surface.InitializeSurface(4, 1));
    CRect whole(0, 0, 4, 1), clip(1, 0, 3, 1), empty(2, 0, 2, 1);
    const HBRUSH white = ::CreateSolidBrush(0xFFFFFF), black = ::CreateSolidBrush(0);
    {
        CSurfaceDC dc(surface, &clip);
        ASSERT_NE(static_cast<HDC>(dc), nullptr);
        ::FillRect(dc, &whole, white);
        CSurfaceDC refused(surface, nullptr);
        EXPECT_EQ(static_cast<HDC>(refused), nullptr);
    }
    EXPECT_EQ(PixelsOf(surface), (std::vector<DWORD>{0, 0xFFFFFF, 0xFFFFFF, 0}));
    {
        CSurfaceDC dc(surface, &empty);   // an empty clip is no clip
        ::FillRect(dc, &whole, white);
        dc.Destroy();
        EXPECT_EQ(static_cast<HDC>(dc), nullptr);
        EXPECT_EQ(PixelsOf(surface), std::vector<DWORD>(4, 0xFFFFFF));
        dc.Create();
        ::FillRect(dc, &whole, black);
    }
    EXPECT_EQ(PixelsOf(surface), std::vector<DWORD>(4, 0));
    ::DeleteObject(white);
    ::DeleteObject(black);
}

}   // namespace
