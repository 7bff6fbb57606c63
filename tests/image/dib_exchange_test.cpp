// Images copied, handed over and packed: who owns what, which way rows run, and headers that lie.
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <memory>
#include <numeric>
#include <tuple>

#include "rastel/image/dib.h"
#include "rastel/image/dib_section.h"
#include "rastel/platform/gdi.h"
#include "rastel/platform/gdiplus.h"
#include "rastel/platform/kernel.h"
#include "tests/image/icon_bytes.h"

using rastel::test::Append;
using rastel::test::ByteVector;
using winext::CDib;
using winext::CDibSection;

namespace {

std::size_t PixelBytes(CDib& image) {
    return static_cast<std::size_t>(image.GetPitch()) * static_cast<std::size_t>(image.GetHeight());
}

void Fill(CDib& image, int width, int height, int bits, int seed = 1) {
    image.Destroy();
    ASSERT_EQ(image.Create(width, height, bits), 1);
    std::iota(image.GetBits(), image.GetBits() + PixelBytes(image), static_cast<unsigned char>(seed));
    for (int i = 0; bits < 9 && i < 1 << bits; ++i) {
        image.SetColor(i, static_cast<DWORD>(i * 0x010203 + seed));
    }
}

void ExpectFilled(CDib& image, int width, int height, int bits, int seed = 1) {
    CDib wanted;
    Fill(wanted, width, height, bits, seed);
    ASSERT_NE(image.GetBits(), nullptr);
    EXPECT_EQ(image.GetWidth(), width);
    EXPECT_EQ(image.GetHeight(), std::abs(height));
    EXPECT_EQ(image.IsTopDown(), height < 0);
    EXPECT_EQ(image.GetBitsPrPixel(), bits);
    ASSERT_EQ(image.GetPitch(), wanted.GetPitch());
    EXPECT_EQ(std::memcmp(image.GetBits(), wanted.GetBits(), PixelBytes(wanted)), 0);
    for (int i = 0; bits < 9 && i < 1 << bits; ++i) {
        ASSERT_EQ(image.GetColor(i), wanted.GetColor(i)) << i;
    }
}

void ExpectEmpty(CDib& image) {
    EXPECT_EQ(image.GetBits(), nullptr);
    EXPECT_EQ(image.GetBitmapInfo(), nullptr);
    EXPECT_EQ(image.GetWidth(), 0);
}

template <class Pair>
class ExchangeTest : public ::testing::Test {
protected:
    typename std::tuple_element<0, Pair>::type source;
    typename std::tuple_element<1, Pair>::type target;
    CDib& Source() { return source; }
    CDib& Target() { return target; }
};
using Pairs = ::testing::Types<std::tuple<CDib, CDib>, std::tuple<CDib, CDibSection>, std::tuple<CDibSection, CDib>,
                               std::tuple<CDibSection, CDibSection>>;
TYPED_TEST_SUITE(ExchangeTest, Pairs);

TYPED_TEST(ExchangeTest, ACopyHasItsOwnPixelsColoursAndOrientation) {
    for (const int bits : {1, 4, 8, 16, 24, 32}) {
        for (const int height : {-5, 5}) {
            Fill(this->Source(), 7, height, bits);
            EXPECT_EQ(this->Target().Assign(this->Source()), &this->target);
            ExpectFilled(this->Target(), 7, height, bits);
            this->source.GetBits()[0] = 0xEE;
            ExpectFilled(this->Target(), 7, height, bits);
        }
    }
    EXPECT_EQ(this->Target().Assign(this->Target()), &this->target);
    ExpectFilled(this->Target(), 7, 5, 32);
    this->source.Destroy();
    EXPECT_EQ(this->Target().Assign(this->Source()), &this->target);
    ExpectEmpty(this->Target());
}

TYPED_TEST(ExchangeTest, MovingLeavesTheSourceEmptyAndReplacesTheTarget) {
    Fill(this->Source(), 6, -4, 8, 3);
    Fill(this->Target(), 9, 9, 32);
    EXPECT_EQ(this->source.MoveTo(this->Source()), 1);   // onto itself
    ExpectFilled(this->Source(), 6, -4, 8, 3);
    EXPECT_EQ(this->source.MoveTo(this->target), 1);
    ExpectEmpty(this->Source());
    ExpectFilled(this->Target(), 6, -4, 8, 3);
}

TYPED_TEST(ExchangeTest, DetachedBlocksOutliveTheirObjectAndCanBeAttached) {
    BITMAPINFO* info = nullptr;
    unsigned char* bits = nullptr;
    {
        TypeParam pair;
        CDib& image = std::get<0>(pair);
        Fill(image, 5, 3, 4, 9);
        EXPECT_EQ(image.Detach(nullptr, &bits), 0);
        EXPECT_EQ(image.Detach(&info, nullptr), 0);
        ExpectFilled(image, 5, 3, 4, 9);
        EXPECT_EQ(image.Detach(&info, &bits), 1);
        ExpectEmpty(image);
    }
    ASSERT_NE(info, nullptr);
    ASSERT_NE(bits, nullptr);
    Fill(this->Target(), 2, 2, 24);
    EXPECT_EQ(this->target.Attach(info, bits), 1);
    ExpectFilled(this->Target(), 5, 3, 4, 9);

    EXPECT_EQ(this->source.Detach(&info, &bits), 1);
    EXPECT_EQ(info, nullptr);
    EXPECT_EQ(bits, nullptr);
}

TEST(DibExchange, AttachingOwnBlocksKeepsThem) {
    CDib image;
    Fill(image, 5, 5, 16);
    EXPECT_EQ(image.Attach(image.GetBitmapInfo(), image.GetBits()), 1);
    ExpectFilled(image, 5, 5, 16);
    CDibSection section;
    Fill(section, 5, 5, 16);
    EXPECT_EQ(section.Attach(section.GetBitmapInfo(), section.GetBits()), 0);
    ExpectFilled(section, 5, 5, 16);
}

TEST(DibExchange, ASectionRefusesHalfAnImageAndConsumesABadOne) {
    CDibSection section;
    Fill(section, 3, 3, 32);
    unsigned char* bits = new unsigned char[16];
    EXPECT_EQ(section.Attach(nullptr, bits), 0);   // still ours
    ExpectFilled(section, 3, 3, 32);
    auto* const block = new unsigned char[sizeof(BITMAPINFOHEADER)]();
    auto* const info = reinterpret_cast<BITMAPINFO*>(block);
    EXPECT_EQ(section.Attach(info, nullptr), 0);
    info->bmiHeader = {sizeof(BITMAPINFOHEADER), INT_MAX, INT_MIN, 1, 32, 0, 0, 0, 0, 0, 0};
    EXPECT_EQ(section.Attach(info, bits), 1);   // no longer: a leak or a second delete would show here
    ExpectEmpty(section);

    CDib half;
    half.Attach(nullptr, new unsigned char[16]);
    EXPECT_EQ(half.MoveTo(section), 0);
    ExpectEmpty(half);
}

TEST(DibExchange, AttachedHeadersMayLie) {
    CDib image;
    auto* const block = new unsigned char[sizeof(BITMAPINFOHEADER)]();
    auto* const info = reinterpret_cast<BITMAPINFO*>(block);
    info->bmiHeader = {sizeof(BITMAPINFOHEADER), INT_MAX, INT_MIN, 1, 32, 0, 0, 0, 0, 0, 0};
    ASSERT_EQ(image.Attach(info, new unsigned char[4]), 1);
    EXPECT_GT(image.GetHeight(), 0);
    EXPECT_GT(image.GetPitch(), 0);
    EXPECT_EQ(image.CreateGlobal(), nullptr);
    CDib copy;
    copy.Assign(image);
    ExpectEmpty(copy);
}

TEST(DibExchange, BitmapsOfGdiplusComeOutUprightFromBottomUpImages) {
    for (const int bits : {24, 32}) {
        CDib image;
        Fill(image, 5, 3, bits);
        const std::unique_ptr<Gdiplus::Bitmap> bitmap(image.CreateBitmap());
        ASSERT_TRUE(bitmap);
        EXPECT_EQ(bitmap->GetPixelFormat(), bits == 24 ? PixelFormat24bppRGB : PixelFormat32bppARGB);
        Gdiplus::BitmapData data{};
        const Gdiplus::Rect whole(0, 0, 5, 3);
        ASSERT_EQ(bitmap->LockBits(&whole, Gdiplus::ImageLockModeRead, bitmap->GetPixelFormat(), &data), Gdiplus::Ok);
        const auto rowBytes = static_cast<std::size_t>(5 * bits / 8);
        for (int y = 0; y < 3; ++y) {
            EXPECT_EQ(std::memcmp(static_cast<unsigned char*>(data.Scan0) + y * data.Stride,
                                  image.GetBits() + (2 - y) * image.GetPitch(), rowBytes),
                      0);
        }
        bitmap->UnlockBits(&data);
    }
    for (const int bits : {1, 8, 16}) {
        CDib image;
        image.Create(4, 4, bits);
        EXPECT_EQ(image.CreateBitmap(), nullptr);
    }
    EXPECT_EQ(CDib().CreateBitmap(), nullptr);
}

TEST(DibExchange, CopyDibLosesTheOrientation) {
    CDib source;
    CDibSection section;
    for (const int bits : {1, 8, 24, 32}) {
        Fill(source, 7, -5, bits);
        EXPECT_EQ(section.CopyDib(source), 1);
        ExpectFilled(section, 7, 5, bits);
    }
    EXPECT_EQ(section.CopyDib(section), 1);
    ExpectFilled(section, 7, 5, 32);
    source.Destroy();
    EXPECT_EQ(section.CopyDib(source), 1);
    ExpectEmpty(section);
}

TEST(DibExchange, ASectionsBitmapPassesFromHandToHand) {
    CDibSection first, second, third;
    EXPECT_EQ(first.DetachBitmap(), nullptr);
    Fill(first, 6, -3, 8);
    const HBITMAP bitmap = first.m_hBitmap;
    const unsigned char* const bits = first.GetBits();
    CDib& target = second;
    ASSERT_EQ(first.MoveTo(target), 1);
    EXPECT_EQ(first.m_hBitmap, nullptr);
    EXPECT_EQ(second.m_hBitmap, bitmap);
    EXPECT_EQ(second.GetBits(), bits);   // no pixel moved

    EXPECT_EQ(second.DetachBitmap(), bitmap);
    ExpectEmpty(second);
    ASSERT_EQ(third.Create(2, 2, 32), 1);
    ASSERT_EQ(third.AttachBitmap(bitmap), 1);
    EXPECT_EQ(third.AttachBitmap(bitmap), 1);
    EXPECT_EQ(third.GetBits(), bits);
    EXPECT_EQ(third.GetWidth(), 6);
    EXPECT_EQ(third.GetHeight(), 3);
    EXPECT_EQ(third.GetPitch(), 8);
    EXPECT_EQ(third.GetBitmapInfo()->bmiHeader.biSizeImage, 24u);
    EXPECT_EQ(third.LoadGlobal(nullptr), 1);   // a section loads nothing and says that it did
    EXPECT_EQ(third.GetBits(), bits);
    third.Destroy();
    BITMAP gone;
    EXPECT_EQ(::GetObjectW(bitmap, sizeof(gone), &gone), 0);   // it owned the bitmap
}

TEST(DibExchange, OnlySectionsAreAttached) {
    const HBITMAP plain = ::CreateBitmap(4, 4, 1, 1, nullptr);
    ASSERT_NE(plain, nullptr);
    for (const HBITMAP bitmap : {plain, HBITMAP{}, reinterpret_cast<HBITMAP>(LONG_PTR{-4})}) {
        CDibSection section;
        ASSERT_EQ(section.Create(2, 2, 32), 1);
        EXPECT_EQ(section.AttachBitmap(bitmap), 0);
        EXPECT_EQ(section.m_hBitmap, nullptr);
        ExpectEmpty(section);
    }
    EXPECT_NE(::DeleteObject(plain), 0);   // the caller's all the time
}

TEST(DibExchange, SectionsWithMasksBringThemAlong) {
    struct {
        BITMAPINFOHEADER header;
        DWORD masks[3];
    } info = {{sizeof(BITMAPINFOHEADER), 3, 2, 1, 16, BI_BITFIELDS, 0, 0, 0, 0, 0}, {0xF800, 0x07E0, 0x001F}};
    void* bits = nullptr;
    CDibSection narrow, wide;
    ASSERT_EQ(narrow.AttachBitmap(
                  ::CreateDIBSection(nullptr, reinterpret_cast<BITMAPINFO*>(&info), DIB_RGB_COLORS, &bits, nullptr, 0)),
              1);
    static_cast<WORD*>(bits)[0] = 0xF81F;
    // GDI reads the masks behind the header.
    ASSERT_EQ(wide.Create(3, 2, 32), 1);
    const HDC dc = ::CreateCompatibleDC(nullptr);
    const HGDIOBJ old = ::SelectObject(dc, wide.m_hBitmap);
    ::StretchDIBits(dc, 0, 0, 3, 2, 0, 0, 3, 2, narrow.GetBits(), narrow.GetBitmapInfo(), DIB_RGB_COLORS, SRCCOPY);
    EXPECT_EQ(::GetPixel(dc, 0, 1), RGB(255, 0, 255));
    ::SelectObject(dc, old);
    ::DeleteDC(dc);
    info.header.biBitCount = 32;
    std::copy_n(std::initializer_list<DWORD>{0xFF0000, 0xFF00, 0xFF}.begin(), 3, info.masks);
    ASSERT_EQ(narrow.AttachBitmap(
                  ::CreateDIBSection(nullptr, reinterpret_cast<BITMAPINFO*>(&info), DIB_RGB_COLORS, &bits, nullptr, 0)),
              1);
    EXPECT_EQ(narrow.GetBitmapInfo()->bmiHeader.biCompression, static_cast<DWORD>(BI_RGB));   // nothing to tell
}

}   // namespace
