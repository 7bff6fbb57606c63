// How blits between composites decide: colour, plane and key together.
#include <gtest/gtest.h>

#include <climits>

#include "rastel/composite/adv_surface.h"
#include "tests/composite/composite_fixture.h"

using rastel::test::Bytes;
using rastel::test::CompositeTest;
using rastel::test::OpenComposite;
using rastel::test::Plane;

namespace {

constexpr DWORD red = 0x00FF0000, green = 0x0000FF00, blue = 0x000000FF;
constexpr DWORD redKey = 0x000000FF;   // the same red as a COLORREF

class CompositeBlit : public CompositeTest {
protected:
    static void Prepare(OpenComposite& composite, const std::vector<DWORD>& colors, const Bytes& alphas = {}) {
        composite.SetColors(colors);
        if (!alphas.empty()) {
            composite.SetAlphas(alphas);
        }
    }
};

TEST_F(CompositeBlit, AnOpaqueSourceMakesItsRectangleOpaque) {
    OpenComposite target(4, 1, 1), source(2, 1, 0);
    Prepare(target, {blue, blue, blue, blue}, {9, 9, 9, 9});
    Prepare(source, {red, green});
    EXPECT_EQ(target.Blt(1, 0, source, nullptr, nullptr), 1);
    EXPECT_EQ(target.Colors(), (std::vector<DWORD>{blue, red, green, blue}));
    EXPECT_EQ(target.Alphas(), (Bytes{9, 255, 255, 9}));
    Prepare(target, {blue, blue, blue, blue}, {9, 9, 9, 9});
    EXPECT_EQ(target.Blt(-2, 0, source, nullptr, nullptr), 1);   // only touches the edge
    EXPECT_EQ(target.Blt(4, 0, source, nullptr, nullptr), 1);
    EXPECT_EQ(target.Alphas(), (Bytes{9, 9, 9, 9}));
    EXPECT_EQ(target.Blt(5, 0, source, nullptr, nullptr), 0);
}

TEST_F(CompositeBlit, AKeyedSourceLeavesColourAndPlaneUnderItsKey) {
    OpenComposite target(3, 1, 1), source(3, 1, 0), plain(3, 1, 0);
    Prepare(target, {blue, blue, blue}, {9, 9, 9});
    Prepare(source, {red, green, red});
    source.SetColorKey(redKey);
    EXPECT_EQ(target.Blt(0, 0, source, nullptr, nullptr), 1);
    EXPECT_EQ(target.Colors(), (std::vector<DWORD>{blue, green, blue}));
    EXPECT_EQ(target.Alphas(), (Bytes{9, 255, 9}));
    EXPECT_EQ(plain.Blt(0, 0, source, nullptr, nullptr), 1);
    EXPECT_EQ(plain.Colors(), (std::vector<DWORD>{0, green, 0}));
    EXPECT_EQ(target.CopyBlt(0, 0, source, nullptr, nullptr), 1);   // the literal copy takes the key along
    EXPECT_EQ(target.Colors(), (std::vector<DWORD>{red, green, red}));
}

TEST_F(CompositeBlit, ASourceWithAPlaneGoesThroughAlphaBltAndItsKeyIsIgnored) {
    struct Recording : OpenComposite {
        using OpenComposite::OpenComposite;
        int blends = 0;
        int AlphaBlt(int x, int y, CAdvSurface& src, CAlphaChannel& alpha, CRect* part, CRect* clip) override {
            ++blends;
            EXPECT_EQ(clip, nullptr);   // clipped already
            return CAdvSurface::AlphaBlt(x, y, src, alpha, part, clip);
        }
    };
    Recording target(4, 1, 0);
    OpenComposite source(4, 1, 1);
    Prepare(source, {red, red, red, red}, {255, 0, 255, 0});
    source.SetColorKey(redKey);
    CRect clip(0, 0, 2, 1);
    EXPECT_EQ(target.Blt(0, 0, source, nullptr, &clip), 1);
    EXPECT_EQ(target.blends, 1);
    EXPECT_EQ(target.Colors()[0] & 0xFE0000, 0xFE0000u);
    EXPECT_EQ(target.Colors()[2], 0u);
}

TEST_F(CompositeBlit, CopyMovesPlanesOnlyWhereBothHaveOne) {
    OpenComposite target(2, 1, 1), bare(2, 1, 0), source(2, 1, 1);
    Prepare(source, {red, green}, {1, 2});
    Prepare(target, {0, 0}, {8, 9});
    EXPECT_EQ(target.CopyBlt(0, 0, source, nullptr, nullptr), 1);
    EXPECT_EQ(target.Alphas(), (Bytes{1, 2}));
    EXPECT_EQ(bare.CopyBlt(0, 0, source, nullptr, nullptr), 1);
    EXPECT_EQ(bare.Colors(), (std::vector<DWORD>{red, green}));
    EXPECT_EQ(bare.GetAlphaChannel(), nullptr);
    EXPECT_EQ(target.CopyBlt(0, 0, bare, nullptr, nullptr), 1);
    EXPECT_EQ(target.Alphas(), (Bytes{1, 2}));
}

TEST_F(CompositeBlit, FadesGoThroughAMaskInTheSourcesPlace) {
    struct Recording : OpenComposite {
        using OpenComposite::OpenComposite;
        Bytes mask;
        int AlphaBlt(int, int, CAdvSurface&, CAlphaChannel& alpha, CRect*, CRect*) override {
            mask = rastel::test::BytesOf(alpha);
            return 55;
        }
    };
    const LONG stores = CSurfaceBase::GetSurfacesAllocated();
    {
        Recording target(4, 1, 1);
        OpenComposite source(3, 1, 1), keyed(3, 1, 0);
        Prepare(source, {red, red, red}, {255, 200, 0});
        Prepare(keyed, {red, green, red});
        CRect part(1, 0, 2, 1);
        EXPECT_EQ(target.AlphaConstBlt(0, 0, source, 128, &part, nullptr), 55);
        EXPECT_EQ(target.mask, (Bytes{127, 100, 0}));
        EXPECT_EQ(target.AlphaConstBlt(0, 0, keyed, 200, nullptr, nullptr), 55);
        EXPECT_EQ(target.mask, (Bytes{200, 200, 200}));
        keyed.SetColorKey(redKey);
        EXPECT_EQ(target.AlphaConstBlt(0, 0, keyed, 200, nullptr, nullptr), 55);
        EXPECT_EQ(target.mask, (Bytes{0, 199, 0}));
        target.mask.clear();
        EXPECT_EQ(target.AlphaConstBlt(0, 0, source, 0, nullptr, nullptr), 1);
        EXPECT_EQ(target.AlphaConstBlt(0, 0, source, INT_MIN, nullptr, nullptr), 1);
        EXPECT_TRUE(target.mask.empty());
        EXPECT_EQ(target.AlphaConstBlt(0, 0, source, 255, nullptr, nullptr), 55);   // Blt, and so AlphaBlt
        EXPECT_EQ(target.mask, source.Alphas());
        EXPECT_EQ(target.AlphaConstBlt(0, 0, source, INT_MAX, nullptr, nullptr), 55);
    }
    EXPECT_EQ(CSurfaceBase::GetSurfacesAllocated(), stores);
}

TEST_F(CompositeBlit, WithoutPlanesAFadeTakesTheConstantKernels) {
    OpenComposite target(4, 1, 0), source(4, 1, 0);
    Prepare(target, {0, 0, 0, 0});
    Prepare(source, {red, green, red, green});
    EXPECT_EQ(target.AlphaConstBlt(0, 0, source, 128, nullptr, nullptr), 1);
    EXPECT_EQ(target.Colors(), (std::vector<DWORD>{0x7F0000, 0x7F00, 0x7F0000, 0x7F00}));
    source.SetColorKey(redKey);
    Prepare(target, {blue, blue, blue, blue});
    EXPECT_EQ(target.AlphaConstBlt(0, 0, source, 128, nullptr, nullptr), 1);
    EXPECT_EQ(target.Colors()[0], blue);
    EXPECT_EQ(target.Colors()[1], 0x00007F7Fu);   // 255 - 128 rounds down to 127
}

TEST_F(CompositeBlit, StretchesEachKindOnItsOwnPath) {
    const LONG stores = CSurfaceBase::GetSurfacesAllocated();
    {
        OpenComposite target(4, 2, 1), source(2, 1, 1);
        Prepare(source, {red, green}, {255, 0});
        Prepare(target, std::vector<DWORD>(8, blue), Bytes(8, 255));
        EXPECT_EQ(target.StretchBlt(nullptr, source, nullptr, nullptr), 1);
        EXPECT_EQ(target.Colors()[1] & 0xFE0000, 0xFE0000u);
        EXPECT_EQ(target.Colors()[2] & 0xFF, 0xFEu);   // blended, so rounded a little
        EXPECT_EQ(target.Alphas(), Bytes(8, 255));

        OpenComposite keyed(2, 1, 0);
        Prepare(keyed, {red, green});
        keyed.SetColorKey(redKey);
        Prepare(target, std::vector<DWORD>(8, blue), Bytes(8, 9));
        CRect clip(0, 1, 4, 2);
        EXPECT_EQ(target.StretchBlt(nullptr, keyed, nullptr, &clip), 1);
        EXPECT_EQ(target.Colors(), (std::vector<DWORD>{blue, blue, blue, blue, blue, blue, green, green}));
        EXPECT_EQ(target.Alphas(), Bytes(8, 9));   // only equal sizes would maintain the plane here

        CRect same(1, 0, 3, 1), flat(0, 0, 0, 1);
        EXPECT_EQ(target.StretchBlt(&same, keyed, nullptr, nullptr), 1);
        EXPECT_EQ(target.Alphas()[2], 255);
        EXPECT_EQ(target.StretchBlt(&flat, keyed, nullptr, nullptr), 1);
        keyed.SetColorKey(0xFFFFFFFF);
        EXPECT_NE(target.StretchBlt(nullptr, keyed, nullptr, nullptr), 0);
        EXPECT_EQ(target.Colors()[0], red);
        CRect negative(4, 2, 0, 0), huge(0, 0, INT_MAX, INT_MAX);
        target.StretchBlt(&negative, source, nullptr, nullptr);
        EXPECT_EQ(target.StretchBlt(&huge, source, nullptr, nullptr), 0);
    }
    EXPECT_EQ(CSurfaceBase::GetSurfacesAllocated(), stores);
}

TEST_F(CompositeBlit, WithoutAColourStoreEverythingRefuses) {
    OpenComposite whole(4, 4, 1);
    Plane plane(4, 4);
    CAdvSurface empty;
    EXPECT_EQ(whole.Blt(0, 0, empty, nullptr, nullptr), 0);
    EXPECT_EQ(empty.Blt(0, 0, whole, nullptr, nullptr), 0);
    EXPECT_EQ(empty.CopyBlt(0, 0, whole, nullptr, nullptr), 0);
    EXPECT_EQ(whole.AlphaBlt(0, 0, empty, plane, nullptr, nullptr), 0);
    EXPECT_EQ(empty.AlphaColorBlt(0, 0, 1, plane, nullptr, nullptr), 0);
    EXPECT_EQ(whole.AlphaConstBlt(0, 0, empty, 0, nullptr, nullptr), 0);
    EXPECT_EQ(empty.FillColor(nullptr, 1, nullptr), 0);
    EXPECT_EQ(empty.ShadowBlt(nullptr, 50), 0);
    CRect box(0, 0, 5, 5), flat(0, 0, 5, 0);
    EXPECT_EQ(empty.StretchBlt(&box, whole, nullptr, nullptr), 0);
    EXPECT_EQ(whole.StretchBlt(nullptr, empty, nullptr, nullptr), 0);
    EXPECT_EQ(whole.StretchBlt(&flat, empty, nullptr, nullptr), 1) << "a stretch onto nothing asks for nothing";
    EXPECT_EQ(whole.Blt(0, 0, whole, nullptr, nullptr), 0);   // onto itself
    EXPECT_NE(whole.LockData(), nullptr);
    whole.UnlockData();
}

}   // namespace
