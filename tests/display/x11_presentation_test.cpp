// Presenting on a real server: every way shows the same picture, at every depth, in windows that move and are covered.
#include <gtest/gtest.h>

#include "rastel/display/dx_surface.h"
#include "rastel/surface/reference.h"
#include "tests/display/library_on_memory.h"
#include "tests/platform/screen/x_server.h"
#include "tests/support/pixels.h"

using rastel::Reference;
using rastel::test::OnMemory;
using rastel::test::OpenPrimary;
using rastel::test::Picture;
using rastel::test::RecordingManager;
using rastel::test::XClient;
using rastel::test::XServer;

namespace {

struct Variant {
    const char* name;
    int depth;
    std::vector<std::string> arguments;
    bool isIndexed;
};

const Variant variants[] = {{"Palette8", 8, {"-cc", "3"}, true}, {"Direct8", 8, {"-cc", "4"}, false},
                            {"Bits15", 15, {}, false},           {"Bits16", 16, {}, false},
                            {"Bits24", 24, {}, false},           {"Bits30", 30, {}, false}};

class X11Presentation : public OnMemory, public ::testing::WithParamInterface<Variant> {
protected:
    void SetUp() override {
        OnMemory::SetUp();
        server_ = std::make_unique<XServer>("400x300x" + std::to_string(GetParam().depth), GetParam().arguments);
        if (!server_->IsRunning()) {
            GTEST_SKIP() << "no Xvfb of this kind";
        }
        client = std::make_unique<XClient>(*server_);
        rastel::platform::ReplaceDisplay(rastel::test::Connect(*server_));
        manager = std::make_unique<RecordingManager>();
        manager->StoreUsualTimings();
        manager->Initialize(nullptr);
        primary.reset(new OpenPrimary);
        ASSERT_EQ(primary->Initialize(manager.get()), 1);
    }
    void TearDown() override {
        primary.reset();
        manager.reset();
        rastel::platform::UseMemoryDisplay({});
        client.reset();
        OnMemory::TearDown();
    }
    Reference<CSurface> Chart(int width, int height) {
        Reference<CSurface> surface(manager->CreateSurface(width, height));
        std::vector<DWORD> words;
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                words.push_back(static_cast<DWORD>(x * 255 / width) << 16 | static_cast<DWORD>(y * 255 / height) << 8 |
                                static_cast<DWORD>((x ^ y) & 0xFF));
            }
        }
        rastel::test::SetPixels(*surface, words);
        return surface;
    }
    Picture Shown(const RECT& area) {
        rastel::platform::Display()->Flush();
        return client->Shown(area);
    }

    void KillServer() { server_->Kill(); }

private:
    std::unique_ptr<XServer> server_;

protected:
    std::unique_ptr<XClient> client;
    std::unique_ptr<RecordingManager> manager;
    Reference<OpenPrimary> primary;
};

TEST_P(X11Presentation, EveryWayShowsTheSamePictureInAWindowThatMovesAndIsCovered) {
    const Reference<CSurface> chart = Chart(100, 80);
    const HWND window = client->MakeWindow({20, 30, 110, 100});
    ASSERT_EQ(primary->SetWindow(window), 1);
    client->MakeWindow({90, 80, 200, 200});   // over its corner
    const Picture cover = Shown({110, 100, 120, 110});
    for (const POINT& at : {POINT{20, 30}, POINT{40, 50}, POINT{-15, 60}}) {
        client->Move(window, at.x, at.y);
        Picture wanted;
        for (const CPrimarySurface::BltFunction way :
             {static_cast<CPrimarySurface::BltFunction>(&OpenPrimary::BltStretchDIBits),
              static_cast<CPrimarySurface::BltFunction>(&OpenPrimary::BltBuffered),
              static_cast<CPrimarySurface::BltFunction>(&OpenPrimary::BltDirect),
              static_cast<CPrimarySurface::BltFunction>(&OpenPrimary::BltNoConvert)}) {
            const bool isConverted = way == static_cast<CPrimarySurface::BltFunction>(&OpenPrimary::BltBuffered) ||
                                     way == static_cast<CPrimarySurface::BltFunction>(&OpenPrimary::BltDirect);
            if (GetParam().isIndexed && isConverted) {
                continue;   // by nine bits of the colour, where GDI finds the nearest of all
            }
            primary->m_pfnBlt = way;
            const HDC dc = ::GetDC(window);
            ::PatBlt(dc, 0, 0, 200, 200, BLACKNESS);
            ::ReleaseDC(window, dc);
            ASSERT_EQ(primary->Blt(-3, -2, *chart, nullptr), 1);
            const Picture shown = Shown({0, 0, 400, 300});
            if (wanted.pixels.empty()) {
                wanted = shown;
            }
            EXPECT_EQ(shown.pixels, wanted.pixels) << at.x;
        }
        EXPECT_EQ(Shown({110, 100, 120, 110}).pixels, cover.pixels);
        EXPECT_NE(wanted.At(at.x + 30 + 20, at.y + 15), 0u);
    }
}

TEST_P(X11Presentation, ConvertedPicturesAreCloseToTheirColoursOnAPalette) {
    if (!GetParam().isIndexed) {
        GTEST_SKIP() << "colours are exact here";
    }
    const Reference<CSurface> chart = Chart(64, 64);
    const HWND window = client->MakeWindow({20, 30, 84, 94});
    ASSERT_EQ(primary->SetWindow(window), 1);
    primary->m_pfnBlt = static_cast<CPrimarySurface::BltFunction>(&OpenPrimary::BltBuffered);
    ASSERT_EQ(primary->Blt(0, 0, *chart, nullptr), 1);
    const std::vector<RGBQUAD> palette = rastel::platform::Display()->SystemPalette();
    const Picture shown = Shown({20, 30, 84, 94});
    const std::vector<DWORD> words = rastel::test::PixelsOf(*chart);
    long long distance = 0;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const RGBQUAD& color = palette[shown.pixels[i] & 0xFF];
        distance += std::abs(color.rgbGreen - static_cast<int>(words[i] >> 8 & 0xFF)) +
                    std::abs(color.rgbRed - static_cast<int>(words[i] >> 16 & 0xFF));
    }
    EXPECT_LT(distance / static_cast<long long>(words.size()), 60);
}

TEST_P(X11Presentation, AServerThatGoesAwayTakesOnlyThePictureWithIt) {
    const Reference<CSurface> chart = Chart(100, 80);
    const HWND window = client->MakeWindow({20, 30, 110, 100});
    ASSERT_EQ(primary->SetWindow(window), 1);
    ASSERT_EQ(primary->Blt(0, 0, *chart, nullptr), 1);
    client.reset();
    KillServer();
    for (const CPrimarySurface::BltFunction way :
         {static_cast<CPrimarySurface::BltFunction>(&OpenPrimary::BltStretchDIBits),
          static_cast<CPrimarySurface::BltFunction>(&OpenPrimary::BltBuffered),
          static_cast<CPrimarySurface::BltFunction>(&OpenPrimary::BltDirect),
          static_cast<CPrimarySurface::BltFunction>(&OpenPrimary::BltNoConvert)}) {
        primary->m_pfnBlt = way;
        primary->Blt(0, 0, *chart, nullptr);   // whatever it says, it comes back
    }
    EXPECT_EQ(::IsWindow(window), FALSE);
    EXPECT_EQ(primary->GetDisplayDC(), nullptr);
    EXPECT_EQ(manager->SetMode(640, 480, 32), 0);
    EXPECT_NE(chart->FillColor(nullptr, 0x123456, nullptr), 0);   // memory is there all the same
    manager->WaitForVerticalBlank();
    primary->Destroy();
    EXPECT_EQ(primary->Initialize(manager.get()), 1);
}

INSTANTIATE_TEST_SUITE_P(Depths, X11Presentation, ::testing::ValuesIn(variants),
                         [](const auto& parameters) { return parameters.param.name; });

}   // namespace
