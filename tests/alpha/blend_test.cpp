// Blending into colour surfaces: both arithmetics, their limits, and what happens to the alpha byte.
#include "rastel/alpha/blend.h"

#include <gtest/gtest.h>

#include <cstring>
#include <functional>

#include "rastel/surface/mmx.h"
#include "tests/support/plane.h"
#include "tests/support/test_store.h"

using rastel::test::Bytes;
using rastel::test::PixelsOf;
using rastel::test::Plane;
using rastel::test::TestStore;

namespace {

int VectorWeight(int alpha) {
    return (alpha << 2) * 0x4041 >> 16 >> 1;
}

class Blending : public ::testing::Test {
protected:
    void TearDown() override { EnableMMX(1); }
};

// The literal arithmetic of each kernel for one byte lane, over the whole domain.
TEST_F(Blending, EachArithmeticIsExactOverItsWholeDomain) {
    constexpr int lanes = 65536;   // every pair of background and source
    std::vector<BYTE> back(lanes * 4), source(lanes * 4), alpha(lanes);
    for (int i = 0; i < lanes; ++i) {
        std::memset(&back[static_cast<std::size_t>(i) * 4], i & 255, 4);
        std::memset(&source[static_cast<std::size_t>(i) * 4], i >> 8, 4);
    }
    for (int a = 0; a < 256; ++a) {
        std::fill(alpha.begin(), alpha.end(), static_cast<BYTE>(a));
        std::vector<BYTE> linePlain = back, lineVector = back, constPlain = back, constVector = back;
        AlphaLineCPU(linePlain.data(), source.data(), alpha.data(), lanes);
        AlphaLineMMX(lineVector.data(), source.data(), alpha.data(), lanes);
        AlphaConstRectCPU(constPlain.data(), 0, source.data(), 0, back.data(), 0, lanes, 1, a);
        AlphaConstRectMMX(constVector.data(), 0, source.data(), 0, back.data(), 0, lanes, 1, a);
        const double step = a * 0.00390625;
        for (int i = 0; i < lanes; ++i) {
            const int d = i & 255, s = i >> 8;
            const auto at = static_cast<std::size_t>(i) * 4 + 1;
            const auto byte = [](int value) { return static_cast<BYTE>(value); };
            const int table = static_cast<int>((s - d + 1) * step);   // the plain constant form's table
            if (linePlain[at] != byte(d + ((s - d) * a >> 8)) ||
                lineVector[at] != byte(d + ((s - d) * VectorWeight(a) >> 7)) || constPlain[at] != byte(d + table) ||
                constVector[at] != byte(d + ((s - d) * (a >> 1) >> 7))) {
                FAIL() << "a " << a << " s " << s << " d " << d;
            }
        }
    }
}

TEST_F(Blending, TheFormsDifferWhereTheyAreKnownTo) {
    const auto blend = [](int mmx, int width, int alpha, DWORD source, DWORD target) {
        EnableMMX(mmx);
        TestStore from(width, 1), to(width, 1);
        Plane plane(width, 1);
        plane.Fill(nullptr, static_cast<unsigned char>(alpha), nullptr);
        for (int x = 0; x < width; ++x) {
            from.SetPixel(x, 0, source);
            to.SetPixel(x, 0, target);
        }
        EXPECT_EQ(to.AlphaBlt(0, 0, from, plane, nullptr, nullptr), 1);
        return PixelsOf(to);
    };
    const DWORD white = 0x00FFFFFF;
    EXPECT_EQ(blend(0, 5, 255, white, 0), std::vector<DWORD>(5, 0x00FEFEFE));
    EXPECT_EQ(blend(1, 5, 255, white, 0), (std::vector<DWORD>{white, white, white, white, 0x00FDFDFD}));
    EXPECT_EQ(blend(1, 3, 255, white, 0), std::vector<DWORD>(3, 0x00FEFEFE));   // too narrow: the plain form
    EXPECT_EQ(blend(1, 4, 255, white, 0), std::vector<DWORD>(4, white));

    // Alpha bytes: plain forms leave them; a pair gets 0 and the blend; the odd last pixel keeps its own.
    EXPECT_EQ(blend(0, 5, 0, 0x80000000, 0x40000000), std::vector<DWORD>(5, 0x40000000));
    EXPECT_EQ(blend(1, 5, 0, 0x80000000, 0x40000000), (std::vector<DWORD>{0, 0x40000000, 0, 0x40000000, 0x40000000}));
    EXPECT_EQ(blend(1, 5, 255, 0x80000000, 0x40000000), (std::vector<DWORD>{0, 0x80000000, 0, 0x80000000, 0x40000000}));
}

TEST_F(Blending, AColourThroughAPlaneTakesTheVectorFormFromAWidthOfThree) {
    const auto draw = [](int mmx, int width) {
        EnableMMX(mmx);
        TestStore to(width, 2, 4);
        Plane plane(width, 2);
        plane.Fill(nullptr, 255, nullptr);
        EXPECT_EQ(to.AlphaColorBlt(0, 0, 0xAA0000FF, plane, nullptr, nullptr), 1);   // red
        EXPECT_TRUE(to.GuardsStand());
        const std::vector<DWORD> pixels = PixelsOf(to);
        return std::vector<DWORD>(pixels.end() - width, pixels.end());
    };
    EXPECT_EQ(draw(0, 3), std::vector<DWORD>(3, 0x00FE0000));
    EXPECT_EQ(draw(1, 2), std::vector<DWORD>(2, 0x00FE0000));
    EXPECT_EQ(draw(1, 3), (std::vector<DWORD>{0x00FF0000, 0x00FF0000, 0x00FD0000}));
}

TEST_F(Blending, ConstantAlphaKeepsTheBackgroundAtZeroAndNearlyReachesTheSourceAt255) {
    const auto blend = [](int mmx, int alpha, DWORD source, DWORD target) {
        EnableMMX(mmx);
        TestStore from(5, 1), to(5, 1);
        for (int x = 0; x < 5; ++x) {
            from.SetPixel(x, 0, source);
            to.SetPixel(x, 0, target);
        }
        EXPECT_EQ(to.AlphaConstBlt(0, 0, from, alpha, nullptr, nullptr), 1);
        return to.Pixel(0, 0);
    };
    EXPECT_EQ(blend(0, 0, 0x00FFFFFF, 0x00123456), 0x00123456u);
    EXPECT_EQ(blend(1, 0, 0x00FFFFFF, 0x00123456), 0x00123456u);
    EXPECT_EQ(blend(0, 255, 0x00FFFFFF, 0), 0x00FFFFFFu);
    EXPECT_EQ(blend(1, 255, 0x00FFFFFF, 0), 0x00FDFDFDu);
    EXPECT_EQ(blend(0, 255, 0, 0x00FFFFFF), 0x00020202u);
    EXPECT_EQ(blend(1, 255, 0, 0x00FFFFFF), 0x00010101u);
    EXPECT_EQ(blend(0, 128, 0, 0x00FFFFFF), 0x00808080u);
    EXPECT_EQ(blend(1, 128, 0, 0x00FFFFFF), 0x007F7F7Fu);
}

TEST_F(Blending, ACrossFadeDoesNotSeeWhatTheDestinationHeld) {
    for (const int mmx : {0, 1}) {
        EnableMMX(mmx);
        TestStore from(9, 4), second(9, 4), first(12, 6), other(12, 6);
        from.FillWithNoise(1);
        second.FillWithNoise(2);
        other.FillWithNoise(3);
        CRect part(2, 1, 8, 4);
        EXPECT_EQ(first.AlphaConstBltEx(3, 2, from, 100, &part, &second, nullptr), 1);
        EXPECT_EQ(other.AlphaConstBltEx(3, 2, from, 100, &part, &second, nullptr), 1);
        for (int y = 2; y < 5; ++y) {
            for (int x = 3; x < 9; ++x) {
                EXPECT_EQ(first.Pixel(x, y) & 0xFFFFFF, other.Pixel(x, y) & 0xFFFFFF);
            }
        }
        // The second surface is read at the source's place.
        const int s = static_cast<int>(from.Pixel(2, 1) & 0xFF), d = static_cast<int>(second.Pixel(2, 1) & 0xFF);
        const int expected = mmx ? d + ((s - d) * 50 >> 7) : d + (s - d + 1) * 100 / 256;
        EXPECT_EQ(static_cast<int>(first.Pixel(3, 2) & 0xFF), expected);
    }
}

TEST_F(Blending, KeyPixelsStayOutWhateverTheirAlphaByte) {
    for (const int mmx : {0, 1}) {
        EnableMMX(mmx);
        TestStore from(5, 1), to(5, 1);
        const DWORD pixels[] = {0x00FF0000, 0x77FF0000, 0x00FF0001, 0x00FF0000, 0x11FF0000};
        for (int x = 0; x < 5; ++x) {
            from.SetPixel(x, 0, pixels[x]);
            to.SetPixel(x, 0, 0x55101010);
        }
        EXPECT_EQ(to.AlphaConstTransBlt(0, 0, from, 255, 0x000000FF, nullptr, nullptr), 1);
        for (const int x : {0, 1, 3, 4}) {
            EXPECT_EQ(to.Pixel(x, 0), mmx ? 0x00101010u : 0x55101010u) << x;   // the vector form clears alpha bytes
        }
        EXPECT_NE(to.Pixel(2, 0) & 0xFFFFFF, 0x101010u);
    }
}

TEST_F(Blending, LocksComeInTheirOrderAndGoOnEveryWayOut) {
    std::vector<std::string> log;
    class LoggedPlane : public Plane {
    public:
        LoggedPlane(std::vector<std::string>* log) : Plane(4, 4), log_(log) {}
        unsigned char* LockData() override {
            log_->push_back("plane.LockData");
            return refuse ? nullptr : Plane::LockData();
        }
        void UnlockData() override {
            log_->push_back("plane.UnlockData");
            Plane::UnlockData();
        }
        bool refuse = false;

    private:
        std::vector<std::string>* log_;
    } plane(&log);
    TestStore target(4, 4, 0, &log), source(4, 4, 0, &log), second(4, 4, 0, &log);
    target.name = "target";
    source.name = "source";
    second.name = "second";
    using Names = std::vector<std::string>;
    EXPECT_EQ(target.AlphaBlt(0, 0, source, plane, nullptr, nullptr), 1);
    EXPECT_EQ(log, (Names{"plane.LockData", "source.LockData", "target.LockData", "target.UnlockData",
                          "source.UnlockData", "plane.UnlockData"}));
    log.clear();
    EXPECT_EQ(target.AlphaColorBlt(0, 0, 1, plane, nullptr, nullptr), 1);
    EXPECT_EQ(log, (Names{"target.LockData", "plane.LockData", "target.UnlockData", "plane.UnlockData"}));
    log.clear();
    EXPECT_EQ(target.AlphaConstBltEx(0, 0, source, 9, nullptr, &second, nullptr), 1);
    EXPECT_EQ(log, (Names{"source.LockData", "second.LockData", "target.LockData", "target.UnlockData",
                          "second.UnlockData", "source.UnlockData"}));
    log.clear();
    plane.refuse = true;
    EXPECT_EQ(target.AlphaColorBlt(0, 0, 1, plane, nullptr, nullptr), 0);
    EXPECT_EQ(log, (Names{"target.LockData", "plane.LockData", "target.UnlockData"}));
    EXPECT_EQ(source.AlphaConstBlt(0, 0, source, 9, nullptr, nullptr), 0);   // onto itself
    EXPECT_FALSE(source.isLocked);
}

TEST_F(Blending, APlaneThatDoesNotCoverTheSourceIsRefused) {
    TestStore target(20, 20), source(20, 20), small(10, 20);
    Plane plane(20, 19);
    CRect upper(0, 0, 20, 19), none(5, 5, 5, 9);
    EXPECT_EQ(target.AlphaBlt(0, 0, source, plane, nullptr, nullptr), 0);
    EXPECT_EQ(target.AlphaBlt(0, 0, source, plane, &upper, nullptr), 1);
    EXPECT_EQ(target.AlphaBlt(0, 0, source, plane, &none, nullptr), 1);
    EXPECT_EQ(target.AlphaConstBltEx(0, 0, source, 9, nullptr, &small, nullptr), 0);
    for (const int alpha : {-1, 256, 100000, -2147483647 - 1}) {   // any number is survived
        target.AlphaConstBlt(0, 0, source, alpha, nullptr, nullptr);
        EnableMMX(0);
        target.AlphaConstBlt(0, 0, source, alpha, nullptr, nullptr);
        target.AlphaConstTransBlt(0, 0, source, alpha, 0, nullptr, nullptr);
        EnableMMX(1);
    }
}

}   // namespace
