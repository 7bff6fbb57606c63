// The exchange of composites with GDI+ bitmaps, and GDI+ drawing on them.
#include <gtest/gtest.h>

#include <memory>

#include "rastel/composite/surface_graphics.h"
#include "rastel/platform/gdiplus.h"
#include "tests/composite/composite_fixture.h"

using rastel::Reference;
using rastel::test::Bytes;
using rastel::test::CompositeTest;
using rastel::test::OpenComposite;

namespace {

using Words = std::vector<DWORD>;
using BitmapPointer = std::unique_ptr<Gdiplus::Bitmap>;

class Exchange : public CompositeTest {};

// The bitmap's own words, fourth bytes too.
Words WordsOf(Gdiplus::Bitmap& bitmap) {
    Words words;
    Gdiplus::BitmapData data;
    const Gdiplus::Rect whole(0, 0, static_cast<INT>(bitmap.GetWidth()), static_cast<INT>(bitmap.GetHeight()));
    EXPECT_EQ(bitmap.LockBits(&whole, Gdiplus::ImageLockModeRead, bitmap.GetPixelFormat(), &data), Gdiplus::Ok);
    for (int y = 0; y < whole.Height; ++y) {
        const auto* const row = reinterpret_cast<const DWORD*>(static_cast<BYTE*>(data.Scan0) + y * data.Stride);
        words.insert(words.end(), row, row + whole.Width);
    }
    bitmap.UnlockBits(&data);
    return words;
}

class OpenGraphics : public CSurfaceGraphics {
public:
    using CSurfaceGraphics::CSurfaceGraphics;
    using CSurfaceGraphics::m_hDC;
    using CSurfaceGraphics::m_pBitmap;
};

TEST_F(Exchange, ThePlaneIsTheBitmapsAlpha) {
    constexpr int width = 37, height = 3;   // no multiple of a vector
    const Reference<OpenComposite> composite(new OpenComposite(width, height, 1));
    Words colors, joined;
    Bytes alphas;
    for (DWORD i = 0; i < width * height; ++i) {
        colors.push_back(i * 0x2A3B4C5D);
        alphas.push_back(static_cast<unsigned char>(i * 7));
        joined.push_back((colors.back() & 0xFFFFFF) | static_cast<DWORD>(alphas.back()) << 24);
    }
    composite->SetColors(colors);
    composite->SetAlphas(alphas);
    composite->SetColorKey(0);   // not looked at beside a plane
    const BitmapPointer bitmap(composite->CreateBitmap());
    ASSERT_TRUE(bitmap);
    EXPECT_EQ(bitmap->GetPixelFormat(), PixelFormat32bppARGB);
    EXPECT_EQ(WordsOf(*bitmap), joined);

    composite->SetColors(Words(colors.size(), 0));
    composite->SetAlphas(Bytes(alphas.size(), 1));
    EXPECT_EQ(composite->SetBitmap(*bitmap), 1);
    EXPECT_EQ(composite->Colors(), joined);   // fourth bytes included
    EXPECT_EQ(composite->Alphas(), alphas);
}

TEST_F(Exchange, WithoutPlaneWordsAreCopiedAndAKeyIsTransparentBlack) {
    const Reference<OpenComposite> composite(new OpenComposite(2, 2, 0));
    const Words colors{0x12345678, 0x00C0FFEE, 0xFFC0FFEE, 0x80000001};
    composite->SetColors(colors);
    const BitmapPointer opaque(composite->CreateBitmap());
    ASSERT_TRUE(opaque);
    EXPECT_EQ(opaque->GetPixelFormat(), PixelFormat32bppRGB);
    EXPECT_EQ(WordsOf(*opaque), colors);
    composite->SetColors(Words(4, 0));
    EXPECT_EQ(composite->SetBitmap(*opaque), 1);
    EXPECT_EQ(composite->Colors(), colors);

    composite->SetColorKey(0x00EEFFC0);   // the whole word decides
    const BitmapPointer keyed(composite->CreateBitmap());
    ASSERT_TRUE(keyed);
    EXPECT_EQ(WordsOf(*keyed), (Words{0xFF345678, 0, 0xFFC0FFEE, 0xFF000001}));
    EXPECT_EQ(composite->SetBitmap(*keyed), 0);   // not taken back
    EXPECT_EQ(composite->Colors(), colors);
}

TEST_F(Exchange, OtherSizesFormatsAndBusyStoresAreRefused) {
    const Reference<OpenComposite> plain(new OpenComposite(4, 4, 0)), planed(new OpenComposite(4, 4, 1));
    Gdiplus::Bitmap argb(4, 4, PixelFormat32bppARGB), rgb(4, 4, PixelFormat32bppRGB), wide(5, 4, PixelFormat32bppRGB),
        tall(4, 5, PixelFormat32bppRGB), broken(0, 0, PixelFormat32bppRGB);
    EXPECT_EQ(plain->SetBitmap(argb), 0);
    EXPECT_EQ(planed->SetBitmap(rgb), 0);
    EXPECT_EQ(plain->SetBitmap(wide), 0);
    EXPECT_EQ(plain->SetBitmap(tall), 0);
    EXPECT_EQ(plain->SetBitmap(broken), 0);

    ASSERT_NE(planed->GetAlphaChannel()->LockData(), nullptr);
    EXPECT_EQ(planed->CreateBitmap(), nullptr);
    EXPECT_EQ(planed->SetBitmap(argb), 0);
    planed->GetAlphaChannel()->UnlockData();
    const Gdiplus::Rect whole(0, 0, 4, 4);
    Gdiplus::BitmapData data;
    ASSERT_EQ(argb.LockBits(&whole, Gdiplus::ImageLockModeRead, PixelFormat32bppARGB, &data), Gdiplus::Ok);
    EXPECT_EQ(planed->SetBitmap(argb), 0);
    argb.UnlockBits(&data);
    EXPECT_EQ(planed->SetBitmap(argb), 1);   // no lock was left behind
    const Reference<CAdvSurface> empty(new CAdvSurface);
    EXPECT_EQ(empty->CreateBitmap(), nullptr);
}

TEST_F(Exchange, DrawingReachesAPlaneAtDetachAndAColourStoreAtOnce) {
    const Reference<OpenComposite> planed(new OpenComposite(80, 40, 1)), plain(new OpenComposite(80, 40, 0));
    planed->SetColors(Words(80 * 40, 0));
    planed->SetAlphas(Bytes(80 * 40, 0));
    const Gdiplus::SolidBrush red(Gdiplus::Color(255, 200, 10, 20));
    const Gdiplus::Font font(L"DejaVu Sans", 20, Gdiplus::FontStyleRegular, Gdiplus::UnitPixel);
    OpenGraphics graphics(*planed, nullptr);
    ASSERT_NE(graphics.GetGraphice(), nullptr);
    EXPECT_EQ(graphics.m_hDC, nullptr);
    EXPECT_EQ(graphics->DrawString(L"Text", -1, &font, Gdiplus::PointF(2, 2), &red), Gdiplus::Ok);
    EXPECT_EQ(planed->Alphas(), Bytes(80 * 40, 0));
    EXPECT_EQ(graphics.Detach(), 1);
    const Bytes alphas = planed->Alphas();
    const Words colors = planed->Colors();
    std::size_t covered = 0;
    for (std::size_t i = 0; i < alphas.size(); ++i) {
        covered += alphas[i] != 0;
        ASSERT_EQ(colors[i], alphas[i] == 0 ? 0 : 0xC80A14 | static_cast<DWORD>(alphas[i]) << 24);
    }
    EXPECT_GT(covered, 100u);
    EXPECT_EQ(graphics.Detach(), 1);
    EXPECT_EQ(planed->Alphas(), alphas);

    CRect clip(3, 4, 6, 8);
    {
        OpenGraphics onStore(*plain, &clip);
        ASSERT_NE(onStore.GetGraphice(), nullptr);
        EXPECT_EQ(onStore.m_pBitmap, nullptr);
        EXPECT_EQ(plain->GetDC(), nullptr);   // it is out
        onStore->FillRectangle(&red, 0, 0, 80, 40);
    }
    const Words drawn = plain->Colors();
    for (int i = 0; i < 80 * 40; ++i) {
        const bool isInside = i % 80 >= 3 && i % 80 < 6 && i / 80 >= 4 && i / 80 < 8;
        ASSERT_EQ(drawn[static_cast<std::size_t>(i)] & 0xFFFFFF, isInside ? 0xC80A14u : 0u) << i;
    }
    const HDC dc = plain->GetDC();   // and back again
    EXPECT_NE(dc, nullptr);
    OpenGraphics refused(*plain, &clip);   // no context, so no clip either
    EXPECT_EQ(refused.GetGraphice(), nullptr);
    plain->ReleaseDC(dc);
}

}   // namespace
