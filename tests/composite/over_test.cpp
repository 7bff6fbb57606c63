// "Over" on straight colours with a plane to maintain: both arithmetics over all coverages.
#include <gtest/gtest.h>

#include <cstring>

#include "rastel/composite/adv_kernels.h"
#include "rastel/surface/kernels.h"
#include "tests/composite/composite_fixture.h"

using rastel::Reference;
using rastel::test::Bytes;
using rastel::test::CompositeTest;
using rastel::test::OpenComposite;
using rastel::test::Plane;

namespace {

struct Over {
    int plane, color;
    bool operator==(const Over&) const = default;
};

Over PlainBlend(int a, int da, int s, int d) {
    const int q = (255 - a) * da / 255, o = q + a;
    return {o, o == 0 ? d : (s * a + d * q) / o};
}

Over PlainColorBlend(int a, int da, int s, int d) {
    const int q = da - a * da / 255, o = q + a;
    return {o, o == 0 ? d : (s * a + d * q) / o};
}

Over VectorBlend(int a, int da, int s, int d) {
    const int x = a * da;
    const int m = (x * 257 >> 16) - (x >= 32768 ? 1 : 0);
    const int q = da - m, o = std::min(q + a, 255);
    const unsigned reciprocal = o < 2 ? 65535u : 65536u / static_cast<unsigned>(o);
    const auto t = static_cast<unsigned>((q * d >> 1) + (a * s >> 1));
    return {o, static_cast<int>(std::min((t * reciprocal >> 16) * 2, 255u))};
}

class OverTest : public CompositeTest {
protected:
    // All coverages at once: 256 rows of a, 256 columns of da, one pair of colours.
    static Over At(OpenComposite& target, int a, int da) {
        const std::vector<DWORD> pixels = rastel::test::PixelsOf(*target.GetSurface());
        const Bytes plane = rastel::test::BytesOf(*target.GetAlphaChannel());
        const auto at = static_cast<std::size_t>(a * 256 + da);
        return {plane[at], static_cast<int>(pixels[at] >> 8 & 0xFF)};
    }
};

TEST_F(OverTest, EveryCoverageInEveryArithmetic) {
    Bytes coverages(65536), alphas(65536);
    for (std::size_t i = 0; i < coverages.size(); ++i) {
        alphas[i] = static_cast<unsigned char>(i >> 8);
        coverages[i] = static_cast<unsigned char>(i);
    }
    Plane alpha(256, 256);
    alpha.Set(alphas);
    OpenComposite source(256, 256, 0), target(256, 256, 1);
    CRect all(0, 0, 256, 256);
    for (const auto& [s, d] : {std::pair{255, 0}, {0, 255}, {200, 100}, {10, 20}, {255, 255}, {1, 254}, {77, 78}}) {
        const auto grey = [](int value) { return static_cast<DWORD>(value) * 0x01010101u; };
        const auto prepare = [&, d = d, s = s] {
            rastel::test::SetPixels(*target.GetSurface(), std::vector<DWORD>(65536, grey(d)));
            rastel::test::SetPixels(*source.GetSurface(), std::vector<DWORD>(65536, grey(s)));
            static_cast<Plane&>(*target.GetAlphaChannel()).Set(coverages);
        };
        const auto check = [&, d = d, s = s](auto run, auto formula, const char* name) {
            prepare();
            ASSERT_EQ(run(), 1);
            const std::vector<DWORD> pixels = rastel::test::PixelsOf(*target.GetSurface());
            const Bytes plane = rastel::test::BytesOf(*target.GetAlphaChannel());
            for (int a = 0; a < 256; ++a) {
                for (int da = 0; da < 256; ++da) {
                    const auto at = static_cast<std::size_t>(a * 256 + da);
                    const Over expected = formula(a, da, s, d);
                    const Over got = {plane[at], static_cast<int>(pixels[at] >> 8 & 0xFF)};
                    ASSERT_TRUE(got == expected) << name << " a " << a << " da " << da << " s " << s << " d " << d
                                                 << ": " << got.plane << ", " << got.color;
                }
            }
        };
        const DWORD color = grey(s) & 0xFFFFFF;
        check([&] { return target.InternalAlphaBltAdvCPU(0, 0, source, alpha, all); }, PlainBlend, "plain");
        check([&] { return target.InternalAlphaColorBltAdvCPU(0, 0, color, alpha, all); }, PlainColorBlend,
              "plain colour");
        for (const auto* const table : rastel::kernels::AllTables()) {
            if (rastel::kernels::ForceTable(table->name)) {
                check([&] { return target.InternalAlphaBltAdvMMX(0, 0, source, alpha, all); }, VectorBlend,
                      table->name);
                check([&] { return target.InternalAlphaColorBltAdvMMX(0, 0, color, alpha, all); }, VectorBlend,
                      table->name);
            }
        }
        rastel::kernels::ForceTable(nullptr);
    }
}

TEST_F(OverTest, TheKnownComparisonComesOut) {
    struct Row {
        int a, da, s, d;
        Over blend, colorBlend, vector;
    };
    const Row rows[] = {{255, 0, 255, 0, {255, 255}, {255, 255}, {255, 254}},
                        {255, 255, 0, 255, {255, 0}, {255, 0}, {255, 0}},
                        {128, 255, 200, 100, {255, 150}, {255, 150}, {255, 150}},
                        {128, 128, 200, 100, {191, 167}, {192, 166}, {192, 166}},
                        {0, 255, 10, 20, {255, 20}, {255, 20}, {255, 18}},
                        {0, 0, 10, 20, {0, 20}, {0, 20}, {0, 0}},
                        {1, 1, 200, 200, {1, 200}, {2, 200}, {2, 200}}};
    for (const Row& row : rows) {
        EXPECT_EQ(PlainBlend(row.a, row.da, row.s, row.d), row.blend) << row.a << ' ' << row.da;
        EXPECT_EQ(PlainColorBlend(row.a, row.da, row.s, row.d), row.colorBlend) << row.a << ' ' << row.da;
        EXPECT_EQ(VectorBlend(row.a, row.da, row.s, row.d), row.vector) << row.a << ' ' << row.da;
    }
}

TEST_F(OverTest, AlphaBytesChannelsAndWidthsOfOne) {
    Plane alpha(1, 1);
    alpha.Fill(nullptr, 255, nullptr);
    CRect all(0, 0, 1, 1);
    OpenComposite target(1, 1, 1);
    const auto draw = [&](auto run) {
        rastel::test::SetPixels(*target.GetSurface(), {0x80000000});
        target.GetAlphaChannel()->Fill(nullptr, 0, nullptr);
        EXPECT_EQ(run(), 1);
        return rastel::test::PixelsOf(*target.GetSurface())[0];
    };
    // A COLORREF: red is its lowest byte. The plain form leaves the alpha byte, the vector form fades it.
    EXPECT_EQ(draw([&] { return target.InternalAlphaColorBltAdvCPU(0, 0, 0x00000040, alpha, all); }), 0x80400000u);
    EXPECT_EQ(draw([&] { return target.InternalAlphaColorBltAdvMMX(0, 0, 0xFF000040, alpha, all); }), 0x003E0000u);

    EXPECT_EQ(s_Reciprocal[2], 0x8000);
    EXPECT_EQ(s_Reciprocal[3], 0x5555);
    EXPECT_EQ(s_Reciprocal[255], 0x0101);
    EXPECT_EQ(s_Reciprocal[1], 65535);
    s_Reciprocal[7] = 1;
    InitReciprocalTable();
    EXPECT_EQ(s_Reciprocal[7], 1);   // filled once
    s_Reciprocal[7] = 65536 / 7;
}

TEST_F(OverTest, LocksComeInOrderAndRefusalsUndoThem) {
    OpenComposite target(4, 4, 1), source(4, 4, 0);
    Plane alpha(4, 4), small(3, 3);
    CRect all(0, 0, 4, 4);
    EXPECT_EQ(target.InternalAlphaBltAdvMMX(0, 0, target, alpha, all), 0);   // onto itself
    alpha.LockData();
    EXPECT_EQ(target.InternalAlphaBltAdvCPU(0, 0, source, alpha, all), 0);
    EXPECT_EQ(target.InternalAlphaColorBltAdvMMX(0, 0, 1, alpha, all), 0);
    alpha.UnlockData();
    EXPECT_EQ(target.InternalAlphaBltAdvCPU(0, 0, source, alpha, all), 1);   // nothing was left locked
    EXPECT_EQ(target.InternalAlphaColorBltAdvMMX(0, 0, 1, alpha, all), 1);
    OpenComposite little(3, 3, 0), bare(4, 4, 0);
    EXPECT_EQ(target.AlphaBlt(0, 0, little, alpha, nullptr, nullptr), 0);   // the source doesn't cover the plane
    EXPECT_EQ(target.AlphaBlt(0, 0, source, small, nullptr, nullptr), 1);
    EXPECT_EQ(bare.InternalAlphaBltAdvMMX(0, 0, source, alpha, all), 0);   // no plane to maintain
}

// A host can make a store anew behind the composite that holds it.
TEST_F(OverTest, StoresThatShrankAreNotDrawnBeyond) {
    Plane alpha(16, 16);
    for (const int which : {0, 1, 2}) {
        OpenComposite to(16, 16, 1), from(16, 16, 1);
        if (which == 0) {
            to.GetAlphaChannel()->Initialize(4, 4);
        } else if (which == 1) {
            to.GetSurface()->InitializeSurface(4, 4);
        } else {
            from.GetSurface()->InitializeSurface(4, 4);
        }
        EXPECT_EQ(to.AlphaBlt(0, 0, from, alpha, nullptr, nullptr), 0);
        if (which != 2) {
            EXPECT_EQ(to.AlphaColorBlt(0, 0, 1, alpha, nullptr, nullptr), 0);
        }
        from.SetAlphaChannel(nullptr);
        from.SetColorKey(0);
        EXPECT_EQ(Reference<CAlphaChannel>(from.MakeMask(1, 0, 255)) == nullptr, which == 2);
    }
}

}   // namespace
