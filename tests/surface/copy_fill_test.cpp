// Copy and fill: every candidate gives the same pixels, and the measured times choose among them.
#include <gtest/gtest.h>

#include <memory>

#include "rastel/platform/cpu.h"
#include "rastel/surface/dib_surface.h"
#include "rastel/surface/mmx.h"
#include "tests/support/test_store.h"

using rastel::test::Noise;
using rastel::test::OpenSurface;
using rastel::test::PixelsOf;
using rastel::test::SetPixels;
using rastel::test::TestStore;

namespace {

// CDibSurface with its candidates opened.
class OpenDibSurface : public CDibSurface {
public:
    using CDibSurface::InternalCopyBlt;
    using CDibSurface::InternalCopyBltGDI;
    using CDibSurface::InternalCopyBltMMX;
    using CDibSurface::InternalFillColor;
    using CDibSurface::InternalFillColorCPU;
    using CDibSurface::InternalFillColorGDI;
    using CDibSurface::InternalFillColorMMX;
    int InternalCopyBltBase(int x, int y, CSurfaceBase& src, const CRect& rcSrc) {
        return CSurfaceBase::InternalCopyBlt(x, y, src, rcSrc);
    }
};

class CopyFill : public ::testing::Test {
protected:
    void TearDown() override {
        EnableMMX(1);
        CSurface::s_perfFillColor = CSurface::s_perfFillColorOwn = CSurface::s_perfFillColorGDI = 0;
        CSurface::s_perfCopyBlt = CSurface::s_perfCopyBltOwn = CSurface::s_perfCopyBltGDI = 0;
        CSurface::s_pCopyBlt = nullptr;
        CSurface::s_pFillColor = nullptr;
    }
};

TEST_F(CopyFill, NothingMovesBeforeAChoiceIsMade) {
    TestStore target(8, 8), source(8, 8);
    source.FillWithNoise(1);
    EXPECT_EQ(target.CopyBlt(0, 0, source, nullptr, nullptr), 0);
    EXPECT_EQ(target.FillColor(nullptr, 0xFFFFFF, nullptr), 0);
    EXPECT_EQ(PixelsOf(target), std::vector<DWORD>(64));

    OpenSurface::UseBestProfile();
    EXPECT_EQ(target.CopyBlt(0, 0, source, nullptr, nullptr), 1);
    EXPECT_EQ(PixelsOf(target), PixelsOf(source));
}

TEST_F(CopyFill, EveryCandidateOfACopyMovesAll32Bits) {
    using Copy = int (OpenDibSurface::*)(int, int, CSurfaceBase&, const CRect&);
    const Copy candidates[] = {&OpenDibSurface::InternalCopyBltBase, &OpenDibSurface::InternalCopyBlt,
                               &OpenDibSurface::InternalCopyBltMMX, &OpenDibSurface::InternalCopyBltGDI};
    const CRect rects[] = {{0, 0, 37, 23}, {1, 2, 2, 3}, {3, 1, 10, 20}, {5, 5, 36, 6}, {4, 4, 4, 9}};
    for (const CRect& rect : rects) {
        std::vector<DWORD> expected = Noise(37 * 23, 5);
        const std::vector<DWORD> source = Noise(37 * 23, 6);
        for (int y = rect.top; y < rect.bottom && !rect.IsRectEmpty(); ++y) {
            for (int x = rect.left; x < rect.right; ++x) {
                expected[static_cast<std::size_t>((y - rect.top) * 37 + x - rect.left)] =
                    source[static_cast<std::size_t>(y * 37 + x)];
            }
        }
        for (const Copy candidate : candidates) {
            OpenDibSurface from, to;
            ASSERT_TRUE(from.InitializeSurface(37, 23) && to.InitializeSurface(37, 23));
            SetPixels(from, source);
            SetPixels(to, Noise(37 * 23, 5));
            EXPECT_EQ((to.*candidate)(0, 0, from, rect), 1);
            EXPECT_EQ(PixelsOf(to), expected);
        }
    }
}

TEST_F(CopyFill, EveryCandidateOfAFillClearsTheAlphaByteAndKeepsTheNeighbours) {
    using Fill = int (OpenDibSurface::*)(CRect&, DWORD);
    const Fill candidates[] = {&OpenDibSurface::InternalFillColorCPU, &OpenDibSurface::InternalFillColorMMX,
                               &OpenDibSurface::InternalFillColor, &OpenDibSurface::InternalFillColorGDI};
    const CRect rects[] = {{0, 0, 37, 23}, {1, 2, 2, 3}, {3, 1, 10, 20}, {5, 5, 36, 6}, {4, 4, 4, 9}};
    for (const CRect& rect : rects) {
        std::vector<DWORD> expected = Noise(37 * 23, 5);
        for (int y = rect.top; y < rect.bottom; ++y) {
            for (int x = rect.left; x < rect.right; ++x) {
                expected[static_cast<std::size_t>(y * 37 + x)] = 0x00332211;
            }
        }
        for (const Fill candidate : candidates) {
            OpenDibSurface surface;
            ASSERT_TRUE(surface.InitializeSurface(37, 23));
            SetPixels(surface, Noise(37 * 23, 5));
            CRect rc = rect;
            EXPECT_EQ((surface.*candidate)(rc, 0x00112233), 1);
            EXPECT_EQ(PixelsOf(surface), expected);
        }
    }
    EXPECT_EQ(CSurface::RGB2COLOR(0xFF112233), 0x00332211u);
}

TEST_F(CopyFill, PaddedPitchesAreSteppedAndNeverWritten) {
    OpenSurface::UseBestProfile();
    for (const int mmx : {0, 1}) {
        EnableMMX(mmx);
        TestStore target(33, 9, 12), source(33, 9, 40);
        source.FillWithNoise(3);
        EXPECT_EQ(target.FillColor(nullptr, 0xFF000001, nullptr), 1);
        EXPECT_EQ(target.Pixel(32, 8), 0x00010000u);
        EXPECT_EQ(target.CopyBlt(0, 0, source, nullptr, nullptr), 1);
        EXPECT_EQ(PixelsOf(target), PixelsOf(source));
        EXPECT_TRUE(target.GuardsStand());
    }
}

TEST_F(CopyFill, ARectangleThatMissesIsFilledWithSuccess) {
    OpenSurface::UseBestProfile();
    TestStore store(8, 8);
    CRect outside(20, 20, 30, 30), inside(2, 2, 4, 4);
    EXPECT_EQ(store.FillColor(&outside, 0xFFFFFF, nullptr), 1);
    EXPECT_EQ(store.FillColor(&inside, 0xFFFFFF, &outside), 1);
    EXPECT_EQ(PixelsOf(store), std::vector<DWORD>(64));
}

TEST_F(CopyFill, RefusedLocksGiveZeroAndLeaveNothingLocked) {
    OpenSurface::UseBestProfile();
    std::vector<std::string> log;
    TestStore target(4, 4, 0, &log), source(4, 4, 0, &log);
    target.name = "target";
    source.name = "source";
    for (const int mmx : {0, 1}) {
        EnableMMX(mmx);
        log.clear();
        EXPECT_EQ(target.CopyBlt(0, 0, source, nullptr, nullptr), 1);
        EXPECT_EQ(log, (std::vector<std::string>{"target.LockData", "source.LockData", "source.UnlockData",
                                                 "target.UnlockData"}));
        source.refuseLock = true;
        log.clear();
        EXPECT_EQ(target.CopyBlt(0, 0, source, nullptr, nullptr), 0);
        EXPECT_EQ(log, (std::vector<std::string>{"target.LockData", "source.LockData", "target.UnlockData"}));
        EXPECT_EQ(target.CopyBlt(0, 0, target, nullptr, nullptr), 0);   // onto itself
        EXPECT_FALSE(target.isLocked);
        source.refuseLock = false;
    }
    log.clear();
    CRect rc(0, 0, 4, 4);
    EXPECT_EQ(target.InternalFillColorGDI(rc, 0), 1);   // no context here, and still 1
    EXPECT_EQ(target.InternalCopyBltGDI(0, 0, source, rc), 0);
    EXPECT_EQ(log, (std::vector<std::string>{"target.GetDC", "target.ReleaseDC", "target.GetDC"}));
}

TEST_F(CopyFill, StoresOfDifferentPixelSizesAreNotCopied) {
    class Bytes : public TestStore {
    public:
        using TestStore::TestStore;
        int GetBytesPrPixel() override { return 1; }
    };
    std::vector<std::string> log;
    TestStore target(4, 4, 0, &log);
    Bytes source(4, 4, 0, &log);
    EXPECT_EQ(target.InternalCopyBltBase(0, 0, source, CRect(0, 0, 4, 4)), 0);
    EXPECT_EQ(target.InternalCopyBltBase(0, 0, source, CRect(2, 0, 2, 4)), 1);   // empty comes first
    EXPECT_TRUE(log.empty());
}

TEST_F(CopyFill, StoresThatShareMemoryCopyRowByRowFromTheTop) {
    // Two views of one block: the source is one row above, so each row that was just written is read next.
    std::vector<DWORD> block = Noise(8 * 10, 9);
    class View : public TestStore {
    public:
        explicit View(DWORD* bits) : TestStore(8, 9), bits_(bits) {}
        unsigned char* LockData() override { return reinterpret_cast<unsigned char*>(bits_); }

    private:
        DWORD* bits_;
    };
    const std::vector<DWORD> firstRow(block.begin(), block.begin() + 8);
    for (const int mmx : {0, 1}) {
        EnableMMX(mmx);
        View source(block.data()), target(block.data() + 8);
        EXPECT_EQ(target.InternalCopyBlt(0, 0, source, CRect(0, 0, 8, 9)), 1);
        for (std::size_t i = 0; i < block.size(); ++i) {
            ASSERT_EQ(block[i], firstRow[i % 8]) << i;
        }
    }
}

TEST_F(CopyFill, TheLowestTimeIsChosenAndATieKeepsTheEarlier) {
    const auto fills = [](long long device, long long own, long long gdi) {
        CSurface::s_perfFillColor = device;
        CSurface::s_perfFillColorOwn = own;
        CSurface::s_perfFillColorGDI = gdi;
        OpenSurface::UseBestProfile();
        return CSurface::s_pFillColor;
    };
    const auto copies = [](long long device, long long own, long long gdi) {
        CSurface::s_perfCopyBlt = device;
        CSurface::s_perfCopyBltOwn = own;
        CSurface::s_perfCopyBltGDI = gdi;
        OpenSurface::UseBestProfile();
        return CSurface::s_pCopyBlt;
    };
    const CSurface::FillColorFunction fill = &OpenSurface::InternalFillColor,
                                      fillGdi = &OpenSurface::InternalFillColorGDI,
                                      fillMmx = &OpenSurface::InternalFillColorMMX,
                                      fillCpu = &OpenSurface::InternalFillColorCPU;
    const CSurface::CopyBltFunction copyGdi = &OpenSurface::InternalCopyBltGDI,
                                    copyMmx = &OpenSurface::InternalCopyBltMMX;
    const CSurface::CopyBltFunction copy = static_cast<CSurface::CopyBltFunction>(&OpenSurface::InternalCopyBlt);
    EXPECT_EQ(fills(0, 0, 0), fill);
    EXPECT_EQ(fills(5, 5, 5), fill);
    EXPECT_EQ(fills(5, 4, 3), fillGdi);
    EXPECT_EQ(fills(5, 3, 3), fillGdi);
    EXPECT_EQ(fills(5, 2, 3), fillMmx);
    EXPECT_EQ(fills(5, 6, -1), fillGdi);
    EXPECT_EQ(copies(5, 5, 5), copy);
    EXPECT_EQ(copies(5, 4, 4), copyMmx);
    EXPECT_EQ(copies(5, 4, 3), copyGdi);

    EnableMMX(0);
    EXPECT_EQ(fills(5, 2, 3), fillCpu);
    EXPECT_EQ(copies(5, 3, 4), copy);   // compared with the loop's time, though its MMX form can't run
    EXPECT_EQ(copies(5, 3, 2), copyGdi);
}

TEST_F(CopyFill, TheProcessorIsTestedOnceAndNotWhileSwitchedOff) {
    s_MMXDetected = 0;
    EnableMMX(0);
    EXPECT_EQ(UseMMX(), 0);
    EXPECT_EQ(s_MMXDetected, 0);
    EnableMMX(7);
    EXPECT_EQ(UseMMX(), rastel::platform::ProcessorHasMmx() ? 1 : 0);
    EXPECT_EQ(s_MMXDetected, UseMMX());
    EXPECT_EQ(s_MMXEnabled, 7);
}

TEST_F(CopyFill, AnOverrideIsReachedThroughTheChosenPointer) {
    class Counting : public TestStore {
    public:
        using TestStore::TestStore;
        int fills = 0;
        int InternalFillColor(CRect&, DWORD color) override {
            ++fills;
            return color == 0x12345678 ? 77 : 0;
        }
    };
    OpenSurface::UseBestProfile();
    Counting store(4, 4);
    EXPECT_EQ(store.FillColor(nullptr, 0x12345678, nullptr), 77);   // the colour arrives as it was given
    EXPECT_EQ(store.fills, 1);
}

}   // namespace
