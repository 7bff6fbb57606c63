// Colour-key copy, shadow and stretch.
#include <gtest/gtest.h>

#include "rastel/surface/dib_surface.h"
#include "tests/support/test_store.h"

using rastel::test::Noise;
using rastel::test::OpenSurface;
using rastel::test::PixelsOf;
using rastel::test::SetPixels;
using rastel::test::TestStore;

namespace {

TEST(TransparentBlt, LeavesKeyPixelsOutAndClearsTheAlphaByteOfTheOthers) {
    TestStore target(5, 1), source(5, 1);
    const DWORD pixels[] = {0x00FF0000, 0x80FF0000, 0x80FF0001, 0xFFFFFFFF, 0x00000000};
    for (int x = 0; x < 5; ++x) {
        source.SetPixel(x, 0, pixels[x]);
        target.SetPixel(x, 0, 0xAAAAAAAA);
    }
    EXPECT_EQ(target.TransparentBlt(0, 0, source, 0x000000FF, nullptr, nullptr), 1);   // red, as a COLORREF
    EXPECT_EQ(PixelsOf(target), (std::vector<DWORD>{0xAAAAAAAA, 0xAAAAAAAA, 0x00FF0001, 0x00FFFFFF, 0}));

    target.SetPixel(3, 0, 0xAAAAAAAA);
    EXPECT_EQ(target.TransparentBlt(0, 0, source, 0xFFFFFFFF, nullptr, nullptr), 1);   // white, not "no key"
    EXPECT_EQ(target.Pixel(3, 0), 0xAAAAAAAAu);
}

TEST(TransparentBlt, AnEmptySourceLocksNothingAndARefusedOneUnlocks) {
    std::vector<std::string> log;
    TestStore target(4, 4, 0, &log), source(4, 4, 0, &log);
    target.name = "target";
    source.name = "source";
    EXPECT_EQ(target.TransparentBlt(4, 0, source, 0, nullptr, nullptr), 1);
    EXPECT_EQ(target.TransparentBlt(9, 0, source, 0, nullptr, nullptr), 0);
    EXPECT_TRUE(log.empty());
    source.refuseLock = true;
    EXPECT_EQ(target.TransparentBlt(0, 0, source, 0, nullptr, nullptr), 0);
    EXPECT_EQ(log, (std::vector<std::string>{"target.LockData", "source.LockData", "target.UnlockData"}));
}

TEST(ShadowBlt, ScalesAllFourBytesAndAlwaysReturnsZero) {
    TestStore store(7, 3, 4);
    const auto byteAfter = [&](int percent, DWORD pixel) {
        store.SetPixel(6, 2, pixel);
        EXPECT_EQ(store.ShadowBlt(nullptr, percent), 0);
        return store.Pixel(6, 2);
    };
    EXPECT_EQ(byteAfter(0, 0xFF804001), 0xFF804001u);
    EXPECT_EQ(byteAfter(50, 0xFFFF8001), 0x7F7F4000u);
    EXPECT_EQ(byteAfter(100, 0xFFFFFFFF), 0u);
    EXPECT_EQ(byteAfter(-100, 0x01020384), 0x02040608u);   // factor 512: bytes wrap
    // (100 - 150) * 256 / 100 is -128, a huge factor when taken as unsigned: 0x02 * 0xFFFFFF80 >> 8 is 0xFFFFFF.
    EXPECT_EQ(byteAfter(150, 0x02020202), 0xFFFFFFFFu);
    EXPECT_TRUE(store.GuardsStand());

    store.FillWithNoise(1);
    const std::vector<DWORD> before = PixelsOf(store);
    CRect outside(10, 10, 20, 20);
    EXPECT_EQ(store.ShadowBlt(&outside, 100), 0);
    EXPECT_EQ(PixelsOf(store), before);
    EXPECT_FALSE(store.isLocked);
}

class StretchBltTest : public ::testing::Test {
protected:
    void SetUp() override { OpenSurface::UseBestProfile(); }
    void TearDown() override {
        CSurface::s_pCopyBlt = nullptr;
        CSurface::s_pFillColor = nullptr;
    }
};

TEST_F(StretchBltTest, EqualSizesTakeTheCopyAndOthersTheContexts) {
    class Recording : public TestStore {
    public:
        using TestStore::TestStore;
        int copies = 0, stretches = 0;
        CRect lastTarget, lastSource;
        int CopyBlt(int, int, CSurface&, CRect*, CRect*) override { return ++copies; }
        int InternalStretchBlt(CRect& target, CSurfaceBase&, CRect& source, CRect*) override {
            lastTarget = target;
            lastSource = source;
            return ++stretches;
        }
    };
    Recording target(10, 10);
    TestStore source(10, 10), larger(10, 11);
    EXPECT_EQ(target.StretchBlt(nullptr, source, nullptr, nullptr), 1);
    EXPECT_EQ(target.copies, 1);
    EXPECT_EQ(target.StretchBlt(nullptr, larger, nullptr, nullptr), 1);
    EXPECT_EQ(target.stretches, 1);

    CRect flat(0, 0, 0, 5), mirrored(8, 0, 3, 5), beyond(-5, -5, 100, 3);
    EXPECT_EQ(target.StretchBlt(&flat, source, nullptr, nullptr), 1);
    EXPECT_EQ(target.stretches, 1);
    EXPECT_EQ(target.StretchBlt(&mirrored, source, &beyond, nullptr), 2);
    EXPECT_EQ(target.lastTarget, mirrored);
    EXPECT_EQ(target.lastSource, CRect(0, 0, 10, 3));   // cut to the source; the destination is not cut
}

// Systems differ by one in the pixel that they pick.
bool IsNear(const std::vector<DWORD>& pixels, std::size_t width, std::size_t x, std::size_t y, DWORD picked) {
    for (std::size_t row = y == 0 ? 0 : y - 1; row <= y + 1 && row < pixels.size() / width; ++row) {
        for (std::size_t column = x == 0 ? 0 : x - 1; column <= x + 1 && column < width; ++column) {
            if (pixels[row * width + column] == picked) {
                return true;
            }
        }
    }
    return false;
}

TEST_F(StretchBltTest, PicksPixels) {
    CDibSurface source, target;
    ASSERT_TRUE(source.InitializeSurface(7, 5) && target.InitializeSurface(16, 12));
    const std::vector<DWORD> pixels = Noise(35, 3);
    SetPixels(source, pixels);
    EXPECT_NE(target.StretchBlt(nullptr, source, nullptr, nullptr), 0);
    const std::vector<DWORD> stretched = PixelsOf(target);
    for (std::size_t y = 0; y < 12; ++y) {
        for (std::size_t x = 0; x < 16; ++x) {
            ASSERT_TRUE(IsNear(pixels, 7, x * 7 / 16, y * 5 / 12, stretched[y * 16 + x])) << x << ' ' << y;
        }
    }

    // Under a clip the same picture, cropped; the clip is gone afterwards.
    SetPixels(target, std::vector<DWORD>(16 * 12, 1));
    CRect clip(3, 2, 11, 9);
    EXPECT_NE(target.StretchBlt(nullptr, source, nullptr, &clip), 0);
    const std::vector<DWORD> clipped = PixelsOf(target);
    for (int y = 0; y < 12; ++y) {
        for (int x = 0; x < 16; ++x) {
            const auto at = static_cast<std::size_t>(y * 16 + x);
            ASSERT_EQ(clipped[at], clip.PtInRect(CPoint(x, y)) ? stretched[at] : 1u);
        }
    }
    EXPECT_EQ(target.StretchBlt(nullptr, target, nullptr, nullptr), 0);   // onto itself: a copy that is refused
    CRect part(0, 0, 3, 3);
    EXPECT_EQ(target.StretchBlt(nullptr, target, &part, nullptr), 0);   // and a stretch that is
}

}   // namespace
