// A renderer whose steps can be watched, and composites that tell what is done to them.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cwchar>
#include <string>
#include <vector>

#include "rastel/composite/adv_surface.h"
#include "rastel/display/display_manager.h"
#include "rastel/surface/dib_surface.h"
#include "rastel/surface/reference.h"
#include "rastel/text/text_render.h"
#include "tests/support/pixels.h"
#include "tests/support/plane.h"
#include "tests/support/test_store.h"
#include "tests/text/test_fonts.h"

namespace rastel::test {

// Underlines two pixels thick and more make text smooth.
inline constexpr int kSmoothHeight = 48;
inline constexpr int kThinHeight = 12;

class OpenRender : public CTextRender {
public:
    using CTextRender::GetTempSurface;
    using CTextRender::m_CoverageTable;
    using CTextRender::m_hFont;
    using CTextRender::m_nGlyphBufferSize;
    using CTextRender::m_pGlyphBuffer;
    using CTextRender::m_pGlyphMask;
    using CTextRender::m_pTempSurface;
    void Initilize(const wchar_t* text) override {
        if (prepares) {
            CTextRender::Initilize(text);
        }
    }
    bool prepares = true;
};

class SpySurface : public CDibSurface {
public:
    SpySurface(int width, int height, std::vector<std::string>* log) : log_(log) {
        EXPECT_EQ(InitializeSurface(width, height), 1);
    }
    HDC GetDC() override {
        log_->push_back("GetDC");
        return CDibSurface::GetDC();
    }
    void ReleaseDC(HDC hDC) override {
        log_->push_back("ReleaseDC");
        CDibSurface::ReleaseDC(hDC);
    }
    int AlphaColorBlt(int x, int y, DWORD color, CAlphaChannel& alpha, CRect* pSrcRect, CRect* pClip) override {
        log_->push_back("AlphaColorBlt");
        places.push_back(CPoint(x, y));
        sources.push_back(*pSrcRect);
        return CDibSurface::AlphaColorBlt(x, y, color, alpha, pSrcRect, pClip);
    }

    std::vector<CPoint> places;
    std::vector<CRect> sources;

private:
    std::vector<std::string>* log_;
};

// Keeps what came in through Blt.
class SpyComposite : public CAdvSurface {
public:
    struct Shown {
        std::vector<DWORD> colors;
        Bytes alphas;
        int x, y;
    };
    int Blt(int x, int y, CAdvSurface& src, CRect* pSrcRect, CRect* pClip) override {
        EXPECT_EQ(pSrcRect, nullptr);
        shown.push_back({PixelsOf(*src.GetSurface()), BytesOf(*src.GetAlphaChannel()), x, y});
        return CAdvSurface::Blt(x, y, src, pSrcRect, pClip);
    }
    std::vector<Shown> shown;
};

class TextTest : public ::testing::Test {
protected:
    static void SetUpTestSuite() { ASSERT_TRUE(AddTestFont()); }
    void SetUp() override {
        OpenSurface::UseBestProfile();
        Use(kSmoothHeight);
        render.SetColor(kColor);
    }

    static LOGFONTW Described(int height) {
        LOGFONTW font = {};
        font.lfHeight = -height;
        font.lfCharSet = DEFAULT_CHARSET;
        std::wcsncpy(font.lfFaceName, kTestFont, LF_FACESIZE - 1);
        return font;
    }
    void Use(int height) { Use(Described(height)); }
    void Use(const LOGFONTW& font) { render.SetFont(CreateFontIndirectW(&font), 1); }

    Reference<CAdvSurface> MakeTarget(int withAlpha, int width = 300, int height = 100) {
        Reference<CAdvSurface> target(manager.CreateAdvSurface(width, height, withAlpha));
        EXPECT_TRUE(target);
        target->FillColor(nullptr, 0, nullptr);
        return target;
    }
    // The columns and rows of the colours that are not black; all zero when there are none.
    static CRect Inked(CAdvSurface& target) {
        const std::vector<DWORD> pixels = PixelsOf(*target.GetSurface());
        CRect box(0, 0, 0, 0);
        for (int y = 0; y < target.GetHeight(); ++y) {
            for (int x = 0; x < target.GetWidth(); ++x) {
                if ((pixels[static_cast<std::size_t>(y * target.GetWidth() + x)] & 0xFFFFFF) != 0) {
                    const bool first = box.bottom == 0;
                    box = CRect(first ? x : std::min<int>(box.left, x), first ? y : box.top,
                                first ? x + 1 : std::max<int>(box.right, x + 1), y + 1);
                }
            }
        }
        return box;
    }
    int ExtentOf(const std::wstring& text) {
        SIZE size = {};
        EXPECT_TRUE(GetTextExtentPoint32W(render.GetDC(), text.c_str(), static_cast<int>(text.size()), &size));
        return size.cx;
    }

    static constexpr COLORREF kColor = RGB(200, 250, 100);
    CDisplayManager manager;
    OpenRender render;
};

}   // namespace rastel::test
