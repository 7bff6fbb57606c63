// Which calls the stores see, and what a renderer owns.
#include "tests/text/text_fixture.h"

namespace rastel::test {
namespace {

class TextStores : public TextTest {
protected:
    Reference<SpyComposite> MakeSpied(int withAlpha) {
        Reference<SpyComposite> target(new SpyComposite);
        const Reference<SpySurface> surface(new SpySurface(300, 100, &log));
        colors = surface.get();
        target->SetSurface(surface.get());
        if (withAlpha) {
            const Reference<Plane> plane(new Plane(300, 100));
            target->SetAlphaChannel(plane.get());
        }
        return target;
    }

    std::vector<std::string> log;
    SpySurface* colors = nullptr;
};

using Calls = std::vector<std::string>;

TEST_F(TextStores, ALetterOnPlainColorsIsOneBlendOfItsBox) {
    const auto target = MakeSpied(0);
    render.Draw(*target, 10, 60, L"H.", -1);
    EXPECT_EQ(log, (Calls{"AlphaColorBlt", "AlphaColorBlt"}));
    EXPECT_TRUE(target->shown.empty());
    const CRect ink = Inked(*target);
    EXPECT_EQ(colors->places[0].x, ink.left);
    EXPECT_EQ(colors->places[0].y, ink.top);
    EXPECT_EQ(colors->places[1].y + colors->sources[1].Height(), ink.bottom);
    EXPECT_EQ(colors->sources[0].left, 0);
    EXPECT_EQ(colors->sources[0].top, 0);
    // The largest of the letters make the mask, each side by itself.
    EXPECT_EQ(render.m_pGlyphMask->GetHeight(), colors->sources[0].Height());
    EXPECT_EQ(render.m_pGlyphMask->GetWidth(), colors->sources[0].Width());
    EXPECT_LT(colors->sources[1].Height(), colors->sources[0].Height());
}

TEST_F(TextStores, BlanksAndThinFontsAreLeftToGdi) {
    const auto target = MakeSpied(0);
    render.Draw(*target, 10, 60, L"   ", -1);
    EXPECT_EQ(render.m_pGlyphMask, nullptr);
    render.Draw(*target, 10, 60, L"H H", -1);
    ASSERT_GE(log.size(), 6u);
    EXPECT_EQ(Calls(log.end() - 4, log.end()), (Calls{"AlphaColorBlt", "GetDC", "ReleaseDC", "AlphaColorBlt"}));
    for (std::size_t i = 0; i + 4 < log.size(); ++i) {
        EXPECT_EQ(log[i], i % 2 ? "ReleaseDC" : "GetDC");
    }
    log.clear();
    Use(kThinHeight);
    render.Draw(*target, 10, 60, L"thin", -1);
    EXPECT_EQ(std::count(log.begin(), log.end(), "AlphaColorBlt"), 0);
    EXPECT_GT(std::count(log.begin(), log.end(), "GetDC"), 0);
    EXPECT_EQ(std::count(log.begin(), log.end(), "GetDC"), std::count(log.begin(), log.end(), "ReleaseDC"));
}

TEST_F(TextStores, APlaneGetsSolidColorUnderSoftCoverage) {
    const auto target = MakeSpied(1);
    render.Draw(*target, 10, 60, L"Sg", -1);
    ASSERT_EQ(target->shown.size(), 2u);
    EXPECT_TRUE(log.empty());
    for (const auto& shown : target->shown) {
        int soft = 0;
        for (std::size_t i = 0; i < shown.alphas.size(); ++i) {
            if (shown.alphas[i] > 0) {
                // The blend by 255 falls short by a step or two.
                ASSERT_GE((shown.colors[i] >> 16) & 0xFF, 198u) << i;
                ASSERT_GE((shown.colors[i] >> 8) & 0xFF, 248u) << i;
                ASSERT_LE(shown.alphas[i], 251) << i;
                soft += shown.alphas[i] < 251;
            }
        }
        EXPECT_GT(soft, 0);
    }
    for (const unsigned char byte : BytesOf(*render.m_pGlyphMask)) {
        ASSERT_TRUE(byte == 0 || byte == 255);
    }
}

TEST_F(TextStores, MaskAndBufferGrowAndStayUntilDestroy) {
    const LONG stores = CSurfaceBase::GetSurfacesAllocated();
    EXPECT_EQ(render.GetTempSurface(), nullptr);
    render.Initilize(L"");
    EXPECT_NE(render.m_pGlyphBuffer, nullptr);
    EXPECT_EQ(render.m_nGlyphBufferSize, 0);
    render.Initilize(L"i");
    CAlphaChannel* const narrow = render.m_pGlyphMask;
    ASSERT_NE(narrow, nullptr);
    const int narrowWidth = narrow->GetWidth();
    const CAdvSurface* const temp = render.GetTempSurface();
    ASSERT_NE(temp, nullptr);
    EXPECT_EQ(temp->GetWidth(), narrowWidth);
    EXPECT_EQ(render.GetTempSurface(), temp);
    render.Initilize(L"W");
    EXPECT_GT(render.m_pGlyphMask->GetWidth(), narrowWidth);
    EXPECT_EQ(render.m_pTempSurface, nullptr);
    const int size = render.m_nGlyphBufferSize;
    CAlphaChannel* const wide = render.m_pGlyphMask;
    render.Initilize(L".");
    EXPECT_EQ(render.m_pGlyphMask, wide);
    EXPECT_EQ(render.m_nGlyphBufferSize, size);
    // Too high for the mask: the new one has the size of this text alone.
    render.Initilize(L"|");
    EXPECT_LT(render.m_pGlyphMask->GetWidth(), narrowWidth + 5);

    render.Destroy();
    EXPECT_EQ(render.GetDC(), nullptr);
    EXPECT_EQ(render.m_pGlyphMask, nullptr);
    EXPECT_EQ(render.m_nGlyphBufferSize, 0);
    EXPECT_EQ(CSurfaceBase::GetSurfacesAllocated(), stores);
    Use(kSmoothHeight);
    const auto target = MakeTarget(0);
    render.Draw(*target, 10, 60, L"Alive", -1);   // with the colour it had
    EXPECT_GT(Inked(*target).right, 0);
}

TEST_F(TextStores, OnlyFontsThatWereHandedOverAreDeleted) {
    const LOGFONTW described = Described(20);
    const auto make = [&] { return CreateFontIndirectW(&described); };
    const HFONT kept = make(), owned = make(), unused = make();
    {
        CTextRender other;
        other.SetFont(kept, 0);
        other.SetFont(owned, 1);
        other.SetFont(owned, 1);   // once more the same: it must live
        EXPECT_EQ(GetObjectType(owned), static_cast<DWORD>(OBJ_FONT));
        other.Initilize(L"x");
        EXPECT_EQ(GetCurrentObject(other.GetDC(), OBJ_FONT), owned);
        other.SetFont(kept, 0);
        EXPECT_EQ(GetObjectType(owned), 0u);
        EXPECT_EQ(GetCurrentObject(other.GetDC(), OBJ_FONT), kept);
        other.Destroy();
        other.SetFont(unused, 1);
        other.Destroy();   // without a context the font stays
        EXPECT_EQ(GetObjectType(unused), static_cast<DWORD>(OBJ_FONT));
    }
    EXPECT_EQ(GetObjectType(unused), 0u);
    EXPECT_EQ(GetObjectType(kept), static_cast<DWORD>(OBJ_FONT));
    EXPECT_TRUE(DeleteObject(kept));
}

TEST_F(TextStores, AStoreThatRefusesIsLeftAlone) {
    const Reference<SpyComposite> target(new SpyComposite);
    const Reference<TestStore> store(new TestStore(60, 60, 0, &log));
    store->refuseLock = true;
    target->SetSurface(store.get());
    render.Draw(*target, 5, 50, L"No way", -1);
    EXPECT_FALSE(store->isLocked);
    EXPECT_TRUE(store->GuardsStand());
    EXPECT_EQ(std::count(log.begin(), log.end(), ".ReleaseDC"), 0);   // no context came out
}

}   // namespace
}   // namespace rastel::test
