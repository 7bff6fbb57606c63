// What is drawn through the display is what the server shows, at every depth and by every road.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <tuple>

#include "tests/platform/screen/x_server.h"

namespace {

using namespace rastel::platform;
using namespace rastel::test;

struct Variant {
    const char* name;
    int depth;
    std::vector<std::string> arguments;
    int bitsPerPixel;   // as hosts are told
    PixelFormat format;
};

const Variant kVariants[] = {
    {"Palette8", 8, {"-cc", "3"}, 8, {8, 0, 0, 0}},
    {"Direct8", 8, {"-cc", "4"}, 8, {8, 0x07, 0x38, 0xC0}},
    {"Bits15", 15, {}, 15, {16, 0x7C00, 0x03E0, 0x001F}},
    {"Bits16", 16, {}, 16, {16, 0xF800, 0x07E0, 0x001F}},
    {"Bits24", 24, {}, 32, {32, 0xFF0000, 0x00FF00, 0x0000FF}},
    {"Bits30", 30, {}, 32, {32, 0x3FF00000, 0x000FFC00, 0x3FF}},
};

class X11Display : public ::testing::TestWithParam<std::tuple<Variant, bool>> {
protected:
    void SetUp() override {
        const auto& [variant, isShared] = GetParam();
        std::vector<std::string> arguments = variant.arguments;
        if (!isShared) {
            // Requests of 4 MB at most, so that a whole screen takes several.
            arguments.insert(arguments.end(), {"-extension", "MIT-SHM", "-maxbigreqsize", "1"});
        }
        std::unique_ptr<XServer>& server = Servers()[variant.name + std::to_string(isShared)];
        if (!server) {
            server = std::make_unique<XServer>("1280x1024x" + std::to_string(variant.depth), arguments);
        }
        if (!server->IsRunning()) {
            GTEST_SKIP() << "no Xvfb of this kind";
        }
        client_ = std::make_unique<XClient>(*server);
        display_ = Connect(*server);
        ASSERT_NE(display_, nullptr);
        mask_ = UsedBits(display_->Format());
    }

    static void TearDownTestSuite() { Servers().clear(); }

    const Variant& Kind() const { return std::get<0>(GetParam()); }

    std::unique_ptr<XClient> client_;
    std::shared_ptr<DisplayDevice> display_;
    DWORD mask_ = 0;

private:
    // Each serves many tests: starting one takes longer than most of them.
    static std::map<std::string, std::unique_ptr<XServer>>& Servers() {
        static std::map<std::string, std::unique_ptr<XServer>> servers;
        return servers;
    }
};

TEST_P(X11Display, TellsSizeDepthAndMasks) {
    EXPECT_EQ(display_->Mode().width, 1280);
    EXPECT_EQ(display_->Mode().height, 1024);
    EXPECT_EQ(display_->Mode().bitsPerPixel, Kind().bitsPerPixel);
    PixelFormat format = display_->Format();
    if (Kind().depth == 8 && !format.IsIndexed()) {
        EXPECT_EQ(format.redMask | format.greenMask | format.blueMask, 0xFFu);   // servers differ in the order
    } else {
        EXPECT_EQ(format, Kind().format);
    }
    EXPECT_FALSE(display_->Name().empty());
    EXPECT_EQ(display_->Name().find(L'/'), std::wstring::npos);
    EXPECT_EQ(display_->SystemPalette().size(), format.IsIndexed() ? 256u : 0u);
}

TEST_P(X11Display, WindowsShowWhatWasDrawn) {
    const HWND window = client_->MakeWindow({21, 30, 122, 67}, {.border = 3});
    const Picture picture = NoisePicture(101, 37, mask_, 1);
    ASSERT_TRUE(Draw(*display_, window, 0, 0, picture));
    display_->Flush();
    EXPECT_TRUE(
        SamePicture(picture, client_->Shown({24, 33, 125, 70})));   // the border lies outside of the client area

    const Picture small = NoisePicture(5, 1, mask_, 2);
    ASSERT_TRUE(Draw(*display_, window, 96, 36, small));
    display_->Flush();
    EXPECT_TRUE(SamePicture(small, client_->Shown({120, 69, 125, 70})));
    EXPECT_TRUE(SamePicture(client_->Shown({24, 33, 125, 70}), Look(*display_, window, {0, 0, 101, 37})));
}

TEST_P(X11Display, AWholeScreenIsOnePicture) {
    client_->MakeWindow({10, 10, 500, 500});
    const Picture picture = NoisePicture(1280, 1024, mask_, 3);
    ASSERT_TRUE(Draw(*display_, nullptr, 0, 0, picture));
    display_->Flush();
    EXPECT_TRUE(SamePicture(picture, client_->Shown({0, 0, 1280, 1024}))) << "windows are painted over";
    EXPECT_TRUE(SamePicture(picture, Look(*display_, nullptr, {0, 0, 1280, 1024})));
}

TEST_P(X11Display, ReadingAndWritingKeepsWhatIsLeftAlone) {
    const HWND window = client_->MakeWindow({50, 50, 113, 90});
    Picture picture = NoisePicture(63, 40, mask_, 4);
    ASSERT_TRUE(Draw(*display_, window, 0, 0, picture));
    PixelBuffer pixels;
    ASSERT_TRUE(display_->BeginAccess(window, {3, 5, 60, 35}, Access::ReadWrite, &pixels));
    const int bytes = pixels.format.bitsPerPixel / 8;
    SetRawPixel(pixels.Row(29) + 56 * bytes, bytes, 1);
    display_->EndAccess();
    picture.pixels[34 * 63 + 59] = 1;
    display_->Flush();
    EXPECT_TRUE(SamePicture(picture, client_->Shown({50, 50, 113, 90})));
}

TEST_P(X11Display, PicturesInQuickSuccessionDoNotDisturbEachOther) {
    constexpr int kTiles = 24;
    const HWND window = client_->MakeWindow({0, 0, 600, 768});
    std::vector<Picture> tiles;
    for (int i = 0; i < kTiles; ++i) {
        tiles.push_back(NoisePicture(600, 32, mask_, static_cast<unsigned>(100 + i)));
    }
    for (int round = 0; round < 3; ++round) {
        for (int i = 0; i < kTiles; ++i) {
            // Filled at once, so that the next picture is begun while the server may still read this one.
            PixelBuffer pixels;
            ASSERT_TRUE(display_->BeginAccess(window, {0, i * 32, 600, i * 32 + 32}, Access::Write, &pixels));
            const int bytes = pixels.format.bitsPerPixel / 8;
            for (int y = 0; y < 32; ++y) {
                for (int x = 0; x < 600; ++x) {
                    SetRawPixel(pixels.Row(y) + x * bytes, bytes, tiles[static_cast<std::size_t>(i)].At(x, y));
                }
            }
            display_->EndAccess();
        }
    }
    display_->Flush();
    for (int i = 0; i < kTiles; ++i) {
        ASSERT_TRUE(SamePicture(tiles[static_cast<std::size_t>(i)], client_->Shown({0, i * 32, 600, i * 32 + 32})))
            << "tile " << i;
    }
}

TEST_P(X11Display, PartsOffTheScreenReadAsNothing) {
    const HWND window = client_->MakeWindow({1256, -10, 1296, 20});
    const Picture picture = NoisePicture(40, 30, mask_, 5);
    ASSERT_TRUE(Draw(*display_, window, 0, 0, picture));
    const Picture seen = Look(*display_, window, {0, 0, 40, 30});
    ASSERT_EQ(seen.width, 40);
    for (int y = 0; y < 30; ++y) {
        for (int x = 0; x < 40; ++x) {
            ASSERT_EQ(seen.At(x, y), x < 24 && y >= 10 ? picture.At(x, y) : 0) << x << ", " << y;
        }
    }
    client_->Move(window, -500, -500);
    const Picture unseen = Look(*display_, window, {0, 0, 40, 30});
    ASSERT_EQ(unseen.width, 40);
    EXPECT_EQ(std::count(unseen.pixels.begin(), unseen.pixels.end(), 0u), 40 * 30);
    const HWND unmapped = client_->MakeWindow({0, 0, 20, 20}, {.isMapped = false});
    EXPECT_TRUE(Draw(*display_, unmapped, 0, 0, NoisePicture(20, 20, mask_, 6), Access::ReadWrite));
}

INSTANTIATE_TEST_SUITE_P(AllDepths, X11Display, ::testing::Combine(::testing::ValuesIn(kVariants), ::testing::Bool()),
                         [](const auto& one) {
                             return std::string(std::get<0>(one.param).name) +
                                    (std::get<1>(one.param) ? "Shared" : "Plain");
                         });

}   // namespace
