// The composite as an object: what it owns, its key, the masks it makes of itself.
#include <gtest/gtest.h>

#include <climits>

#include "rastel/alpha/dib_alpha_channel.h"
#include "rastel/image/dib.h"
#include "tests/composite/composite_fixture.h"

using rastel::Reference;
using rastel::test::Bytes;
using rastel::test::BytesOf;
using rastel::test::CompositeTest;
using rastel::test::OpenComposite;
using rastel::test::Plane;

namespace {

class Composite : public CompositeTest {};

TEST_F(Composite, OwnsOneReferenceOnEachStore) {
    const LONG stores = CSurfaceBase::GetSurfacesAllocated();
    CAdvSurface* const composite = manager.CreateAdvSurface(10, 20, 1);
    ASSERT_NE(composite, nullptr);
    EXPECT_EQ(CSurfaceBase::GetSurfacesAllocated(), stores + 3);
    EXPECT_EQ(composite->GetWidth(), 10);
    EXPECT_EQ(composite->GetPitch(), composite->GetSurface()->GetPitch());
    EXPECT_EQ(composite->GetBytesPrPixel(), 4);

    const Reference<CSurface> same(manager.CreateSurface(10, 20)), other(manager.CreateSurface(11, 20));
    composite->SetSurface(same.get());
    EXPECT_NE(composite->GetAlphaChannel(), nullptr);   // it still fits
    EXPECT_EQ(same->AddRef(), 3);
    same->Release();
    composite->SetSurface(nullptr);
    EXPECT_NE(composite->GetAlphaChannel(), nullptr);
    EXPECT_EQ(composite->GetWidth(), 10);
    EXPECT_EQ(composite->LockData(), nullptr);
    EXPECT_EQ(composite->GetDC(), nullptr);
    EXPECT_EQ(composite->GetBitmapInfo(), nullptr);
    composite->SetSurface(other.get());
    EXPECT_EQ(composite->GetAlphaChannel(), nullptr);
    EXPECT_EQ(composite->GetWidth(), 11);
    composite->SetSurface(other.get());   // the store it holds already

    const Reference<CAlphaChannel> fits(manager.CreateAlphaChannel(11, 20)), wrong(manager.CreateAlphaChannel(10, 20));
    composite->SetAlphaChannel(fits.get());
    EXPECT_EQ(composite->GetAlphaChannel(), fits.get());
    composite->SetAlphaChannel(wrong.get());
    EXPECT_EQ(composite->GetAlphaChannel(), nullptr);
    composite->SetSurface(nullptr);
    composite->SetAlphaChannel(wrong.get());   // any size without a colour store
    EXPECT_EQ(composite->GetAlphaChannel(), wrong.get());
    EXPECT_EQ(composite->Release(), 0);
    EXPECT_EQ(wrong->AddRef(), 2);
    wrong->Release();
    EXPECT_EQ(manager.CreateAdvSurface(0, 10, 1), nullptr);
    EXPECT_EQ(manager.CreateAdvSurface(INT_MAX, INT_MAX, 1), nullptr);
}

TEST_F(Composite, BlackIsAKeyAndTheKeyOutlivesItsStores) {
    OpenComposite composite(4, 4, 0);
    EXPECT_EQ(composite.HasColorKey(), 0);
    composite.SetColorKey(0);
    EXPECT_EQ(composite.HasColorKey(), 1);
    composite.Destroy();
    EXPECT_EQ(composite.InitializeSurface(5, 5, 1), 1);
    EXPECT_EQ(composite.GetColorKey(), 0u);
    composite.SetColorKey(0xFFFFFFFF);
    EXPECT_EQ(composite.HasColorKey(), 0);
}

TEST_F(Composite, AKeyBecomesPlaneContent) {
    OpenComposite composite(4, 1, 0);
    composite.SetColors({0x00FF0000, 0x80FF0000, 0x00000001, 0x00FF0000});
    EXPECT_EQ(composite.ApplyTransparentColorToAlpha(), 0);
    EXPECT_EQ(composite.GetAlphaChannel(), nullptr);
    composite.SetColorKey(0x000000FF);   // red
    EXPECT_EQ(composite.ApplyTransparentColorToAlpha(), 1);
    EXPECT_EQ(composite.Alphas(), (Bytes{0, 255, 255, 0}));   // all 32 bits count
    EXPECT_EQ(composite.HasColorKey(), 0);

    OpenComposite withPlane(2, 1, 1);
    withPlane.SetColors({0, 1});
    withPlane.SetAlphas({77, 88});
    withPlane.SetColorKey(0);
    withPlane.GetAlphaChannel()->LockData();
    EXPECT_EQ(withPlane.ApplyTransparentColorToAlpha(), 0);
    EXPECT_EQ(withPlane.HasColorKey(), 1);
    withPlane.GetAlphaChannel()->UnlockData();
    EXPECT_EQ(withPlane.ApplyTransparentColorToAlpha(), 1);
    EXPECT_EQ(withPlane.Alphas(), (Bytes{0, 88}));
    CAdvSurface empty;
    empty.SetColorKey(1);
    EXPECT_EQ(empty.ApplyTransparentColorToAlpha(), 0);
}

TEST_F(Composite, AMaskIsTheShapeInsideABorder) {
    const auto mask = [](CAdvSurface& composite, int border) {
        const Reference<CAlphaChannel> plane(composite.MakeMask(border, 3, 200));
        return plane ? BytesOf(*plane) : Bytes();
    };
    OpenComposite composite(2, 1, 0);
    EXPECT_EQ(mask(composite, 1), (Bytes{3, 3, 3, 3, 3, 200, 200, 3, 3, 3, 3, 3}));
    composite.SetColors({0x80FF0000, 0x00FF0001});
    composite.SetColorKey(0x000000FF);
    EXPECT_EQ(mask(composite, 1), (Bytes{3, 3, 3, 3, 3, 3, 200, 3, 3, 3, 3, 3}));   // 24 bits count
    composite.LockData();
    EXPECT_EQ(composite.MakeMask(1, 0, 255), nullptr);
    composite.UnlockData();

    OpenComposite withPlane(2, 1, 1);
    withPlane.SetAlphas({127, 128});
    withPlane.SetColorKey(0);   // the plane comes first
    EXPECT_EQ(mask(withPlane, 0), (Bytes{3, 200}));
    EXPECT_EQ(mask(withPlane, 1), (Bytes{3, 3, 3, 3, 3, 3, 200, 3, 3, 3, 3, 3}));
    // Ring and gaps go through the threshold as well.
    const Reference<CAlphaChannel> inverse(withPlane.MakeMask(1, 255, 0));
    EXPECT_EQ(BytesOf(*inverse), (Bytes{0, 0, 0, 0, 0, 255, 0, 0, 0, 0, 0, 0}));

    OpenComposite large(10, 10, 0);
    large.SetColorKey(0x00FFFFFF);
    EXPECT_EQ(mask(large, -3), Bytes(16, 200));
    for (const int border : {-5, -100, INT_MIN, INT_MAX}) {
        EXPECT_EQ(large.MakeMask(border, 0, 255), nullptr);
    }
}

TEST_F(Composite, TakesImagesAndScalesThemToItself) {
    winext::CDib colors, grey;
    ASSERT_EQ(colors.Create(2, 2, 24), 1);   // bottom-up
    const int pitch = colors.GetPitch();
    for (int i = 0; i < 6; ++i) {
        colors.GetBits()[i] = static_cast<unsigned char>(10 * i);            // the lower row
        colors.GetBits()[pitch + i] = static_cast<unsigned char>(100 + i);   // the upper row
    }
    ASSERT_EQ(grey.Create(1, -1, 8), 1);
    grey.SetColor(7, 0x505050);
    grey.GetBits()[0] = 7;

    CAdvSurface composite;
    EXPECT_EQ(composite.SetDib(grey, nullptr), 1);   // an empty one takes the image's size
    EXPECT_EQ(composite.GetWidth(), 1);
    ASSERT_EQ(composite.InitializeSurface(4, 4, 0), 1);
    EXPECT_EQ(composite.SetDib(colors, nullptr), 1);
    EXPECT_EQ(composite.GetWidth(), 4);
    EXPECT_EQ(composite.GetAlphaChannel(), nullptr);
    const std::vector<DWORD> pixels = rastel::test::PixelsOf(*composite.GetSurface());
    EXPECT_EQ(pixels[0] & 0xFFFFFF, 0x666564u);
    EXPECT_EQ(pixels[3] & 0xFFFFFF, 0x696867u);
    EXPECT_EQ(pixels[15] & 0xFFFFFF, 0x32281Eu);
    EXPECT_EQ(composite.SetDib(colors, &grey), 1);
    ASSERT_NE(composite.GetAlphaChannel(), nullptr);
    EXPECT_EQ(BytesOf(*composite.GetAlphaChannel()), Bytes(16, 0x50));

    winext::CDib empty;
    EXPECT_EQ(composite.SetDib(empty, nullptr), 0);
}

}   // namespace
