// Windows of other programs: where they are, what is seen of them, and colours.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "rastel/platform/gdi.h"
#include "tests/platform/screen/x_server.h"

namespace {

using namespace rastel::platform;
using namespace rastel::test;

class X11Windows : public ::testing::Test {
protected:
    void Start(const std::string& screen, std::vector<std::string> arguments = {}) {
        server_ = std::make_unique<XServer>(screen, std::move(arguments));
        if (!server_->IsRunning()) {
            GTEST_SKIP() << "no Xvfb";
        }
        client_ = std::make_unique<XClient>(*server_);
        display_ = Connect(*server_);
        ASSERT_NE(display_, nullptr);
    }
    void SetUp() override { Start("640x480x24"); }
    void TearDown() override { ReplaceDisplay(nullptr); }

    Region Visible(HWND window) {
        Region visible;
        EXPECT_TRUE(display_->VisibleArea(window, &visible));
        return visible;
    }

    std::unique_ptr<XServer> server_;
    std::unique_ptr<XClient> client_;
    std::shared_ptr<DisplayDevice> display_;
};

TEST_F(X11Windows, AreFoundWhereTheyAreNow) {
    ReplaceDisplay(display_);
    const HWND parent = client_->MakeWindow({100, 80, 300, 280}, {.border = 2});
    const HWND child = client_->MakeWindow({10, 20, 60, 50}, {.border = 1, .parent = XClient::Id(parent)});
    POINT corner = {0, 0};
    ASSERT_TRUE(ClientToScreen(child, &corner));
    EXPECT_EQ(corner.x, 100 + 2 + 10 + 1);
    EXPECT_EQ(corner.y, 80 + 2 + 20 + 1);
    client_->Move(parent, -30, 5);
    corner = {0, 0};
    ASSERT_TRUE(ClientToScreen(child, &corner));
    EXPECT_EQ(corner.x, -30 + 2 + 10 + 1);
    RECT rect;
    ASSERT_TRUE(GetClientRect(child, &rect));
    EXPECT_EQ(rect.right, 50);
    EXPECT_EQ(rect.bottom, 30);
    ASSERT_TRUE(GetWindowRect(parent, &rect));
    EXPECT_EQ(rect.left, -30);
    EXPECT_EQ(rect.right, -30 + 200 + 4);
    ASSERT_TRUE(GetWindowRect(GetDesktopWindow(), &rect));
    EXPECT_EQ(rect.right, 640);
    EXPECT_FALSE(IsWindow(reinterpret_cast<HWND>(~std::uintptr_t{0})));
    EXPECT_FALSE(IsWindow(reinterpret_cast<HWND>(std::uintptr_t{0x100000000} + XClient::Id(parent))));
}

TEST_F(X11Windows, AreCoveredByThoseAboveThem) {
    const HWND low = client_->MakeWindow({10, 10, 110, 110});
    EXPECT_EQ(Visible(low).Complexity(), SIMPLEREGION);
    const HWND high = client_->MakeWindow({60, 60, 200, 200}, {.border = 5});
    Region expected(RECT{10, 10, 110, 110});
    expected.Subtract(RECT{60, 60, 210, 210});
    EXPECT_EQ(Visible(low), expected);
    EXPECT_EQ(Visible(high), Region(RECT{65, 65, 205, 205}));
    client_->Raise(low);
    EXPECT_EQ(Visible(low), Region(RECT{10, 10, 110, 110}));
    client_->Raise(high);
    client_->Move(high, 60, 10);
    EXPECT_EQ(Visible(low), Region(RECT{10, 10, 60, 110}));
    client_->Destroy(high);
    client_->MakeWindow({0, 0, 640, 480}, {.isMapped = false});
    client_->MakeWindow({0, 0, 640, 480}, {.isInputOnly = true});
    EXPECT_EQ(Visible(low), Region(RECT{10, 10, 110, 110})) << "neither of the later ones shows anything";
    client_->Move(low, -50, 470);
    EXPECT_EQ(Visible(low), Region(RECT{0, 470, 50, 480}));
}

// What is known of them is kept between calls, so every kind of change has to be noticed at once.
TEST_F(X11Windows, AreFollowedThroughManyChanges) {
    const HWND parent = client_->MakeWindow({50, 50, 350, 350});
    const HWND child = client_->MakeWindow({10, 20, 110, 120}, {.parent = XClient::Id(parent)});
    const HWND cover = client_->MakeWindow({0, 0, 40, 40});
    RECT own{50, 50, 350, 350}, its{0, 0, 40, 40};
    POINT inside{10, 20};
    bool isCovered = true;
    std::minstd_rand random(5);
    const auto upTo = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
    for (int round = 0; round < 300; ++round) {
        const int x = upTo(200), y = upTo(200);
        switch (upTo(4)) {
            case 0:
                client_->Move(parent, x, y);
                own = {x, y, x + 300, y + 300};
                break;
            case 1:
                client_->Move(child, x, y);
                inside = {x, y};
                break;
            case 2:
                client_->Move(cover, x * 3, y * 2);
                its = {x * 3, y * 2, x * 3 + 40, y * 2 + 40};
                break;
            default:
                client_->Raise(isCovered ? parent : cover);
                isCovered = !isCovered;
        }
        const POINT corner{own.left + inside.x, own.top + inside.y};
        Region expected(RECT{corner.x, corner.y, corner.x + 100, corner.y + 100});
        expected.Intersect(own);
        expected.Intersect(RECT{0, 0, 640, 480});
        if (isCovered) {
            expected.Subtract(its);
        }
        ASSERT_EQ(Visible(child), expected) << round;
    }
    const HWND other = client_->MakeWindow({5, 5, 15, 15}, {.parent = XClient::Id(child)});
    Region before = Visible(child);
    client_->Destroy(other);
    EXPECT_NE(Visible(child), before);
    client_->Destroy(parent);
    RECT area;
    EXPECT_FALSE(display_->ClientArea(child, &area));
}

TEST_F(X11Windows, AreLimitedByParentsAndCoveredByChildrenAndTheirSiblings) {
    const HWND frame = client_->MakeWindow({100, 100, 200, 200});
    const HWND inner = client_->MakeWindow({10, 10, 150, 60}, {.border = 1, .parent = XClient::Id(frame)});
    EXPECT_EQ(Visible(inner), Region(RECT{111, 111, 200, 161}));
    const HWND grandchild = client_->MakeWindow({0, 0, 20, 50}, {.parent = XClient::Id(inner)});
    EXPECT_EQ(Visible(inner), Region(RECT{131, 111, 200, 161}));
    EXPECT_EQ(Visible(grandchild), Region(RECT{111, 111, 131, 161}));
    client_->MakeWindow({0, 0, 100, 31}, {.parent = XClient::Id(frame)});
    EXPECT_EQ(Visible(grandchild), Region(RECT{111, 131, 131, 161}));
    EXPECT_EQ(Visible(frame).Contains({120, 120, 121, 121}), false);
}

TEST_F(X11Windows, HideNothingOfEachOtherUnderACompositor) {
    const HWND low = client_->MakeWindow({10, 10, 110, 110});
    const HWND high = client_->MakeWindow({0, 0, 200, 200});
    EXPECT_TRUE(Visible(low).IsEmpty());
    xcb_intern_atom_reply_t* const atom =
        xcb_intern_atom_reply(client_->Get(), xcb_intern_atom(client_->Get(), 0, 13, "_NET_WM_CM_S0"), nullptr);
    ASSERT_NE(atom, nullptr);
    xcb_set_selection_owner(client_->Get(), XClient::Id(high), atom->atom, XCB_CURRENT_TIME);
    std::free(atom);
    client_->Sync();
    EXPECT_EQ(Visible(low), Region(RECT{10, 10, 110, 110}));
}

TEST_F(X11Windows, DrawOnlyOnThemselves) {
    const HWND low = client_->MakeWindow({10, 10, 74, 74});
    const HWND high = client_->MakeWindow({40, 40, 120, 120});
    const Picture above = NoisePicture(80, 80, 0xFFFFFF, 1);
    const Picture below = NoisePicture(64, 64, 0xFFFFFF, 2);
    ASSERT_TRUE(Draw(*display_, high, 0, 0, above));
    ASSERT_TRUE(Draw(*display_, low, 0, 0, below));
    display_->Flush();
    EXPECT_TRUE(SamePicture(above, client_->Shown({40, 40, 120, 120})));
    EXPECT_EQ(client_->Shown({10, 10, 11, 11}).At(0, 0), below.At(0, 0));
}

TEST_F(X11Windows, FailOnceTheirOwnerDestroyedThem) {
    ReplaceDisplay(display_);
    const HWND window = client_->MakeWindow({10, 10, 74, 74});
    PixelBuffer pixels;
    ASSERT_TRUE(display_->BeginAccess(window, {0, 0, 64, 64}, Access::Write, &pixels));
    client_->Destroy(window);
    display_->EndAccess();   // too late for anything, and no harm
    display_->Flush();
    EXPECT_FALSE(IsWindow(window));
    RECT rect;
    POINT point = {};
    Region visible;
    EXPECT_FALSE(GetClientRect(window, &rect));
    EXPECT_FALSE(GetWindowRect(window, &rect));
    EXPECT_FALSE(ClientToScreen(window, &point));
    EXPECT_FALSE(display_->VisibleArea(window, &visible));
    for (const Access access : {Access::Read, Access::Write, Access::ReadWrite}) {
        EXPECT_FALSE(display_->BeginAccess(window, {0, 0, 64, 64}, access, &pixels));
    }
    const HWND other = client_->MakeWindow({10, 10, 74, 74});
    const Picture picture = NoisePicture(64, 64, 0xFFFFFF, 3);
    ASSERT_TRUE(Draw(*display_, other, 0, 0, picture));
    EXPECT_TRUE(SamePicture(picture, Look(*display_, other, {0, 0, 64, 64})));
}

TEST_F(X11Windows, WithoutPixelsCanNotBeDrawnOn) {
    const HWND window = client_->MakeWindow({10, 10, 74, 74}, {.isInputOnly = true});
    PixelBuffer pixels;
    EXPECT_FALSE(display_->BeginAccess(window, {0, 0, 4, 4}, Access::Write, &pixels));
    EXPECT_TRUE(Visible(window).IsEmpty());
}

TEST_F(X11Windows, WithAnAlphaChannelStayOpaque) {
    const HWND window = client_->MakeWindow({10, 10, 30, 30}, {.depth = 32});
    const Picture picture = NoisePicture(20, 20, 0xFFFFFF, 4);
    ASSERT_TRUE(Draw(*display_, window, 0, 0, picture));
    display_->Flush();
    const Picture shown = client_->Shown({0, 0, 20, 20}, XClient::Id(window));
    ASSERT_EQ(shown.width, 20);
    EXPECT_EQ(shown.At(7, 8), picture.At(7, 8) | 0xFF000000u);
}

class X11Palette : public X11Windows {
protected:
    // Without RENDER, which fills most of the map with colours of its own.
    void SetUp() override { Start("640x480x8", {"-cc", "3", "-extension", "RENDER"}); }

    std::vector<RGBQUAD> OnServer() {
        std::vector<std::uint32_t> cells(256);
        for (std::uint32_t i = 0; i < 256; ++i) {
            cells[i] = i;
        }
        xcb_query_colors_reply_t* const reply = xcb_query_colors_reply(
            client_->Get(), xcb_query_colors(client_->Get(), client_->Screen().default_colormap, 256, cells.data()),
            nullptr);
        std::vector<RGBQUAD> colors;
        for (int i = 0; reply != nullptr && i < 256; ++i) {
            const xcb_rgb_t& one = xcb_query_colors_colors(reply)[i];
            colors.push_back({static_cast<BYTE>(one.blue >> 8), static_cast<BYTE>(one.green >> 8),
                              static_cast<BYTE>(one.red >> 8), 0});
        }
        std::free(reply);
        return colors;
    }
};

TEST_F(X11Palette, RealisedColorsReachTheServerButForFixedAndForeignCells) {
    // Another program has taken a cell.
    xcb_alloc_color_cells_reply_t* const taken = xcb_alloc_color_cells_reply(
        client_->Get(), xcb_alloc_color_cells(client_->Get(), 0, client_->Screen().default_colormap, 40, 0), nullptr);
    ASSERT_NE(taken, nullptr);
    const std::vector<std::uint32_t> foreign(
        xcb_alloc_color_cells_pixels(taken),
        xcb_alloc_color_cells_pixels(taken) + xcb_alloc_color_cells_pixels_length(taken));
    std::free(taken);
    const std::vector<RGBQUAD> before = OnServer();
    std::vector<RGBQUAD> wanted;
    for (int i = 0; i < 256; ++i) {
        wanted.push_back({static_cast<BYTE>(i), static_cast<BYTE>(255 - i), static_cast<BYTE>(i ^ 0x55), 0});
    }
    ASSERT_TRUE(display_->SetSystemPalette(0, wanted));
    const std::vector<RGBQUAD> told = display_->SystemPalette();
    const std::vector<RGBQUAD> after = OnServer();
    int stored = 0;
    for (std::size_t i = 0; i < 256; ++i) {
        const bool isForeign = std::find(foreign.begin(), foreign.end(), i) != foreign.end();
        const bool isFixed = i < 10 || i >= 246;
        EXPECT_EQ(told[i].rgbGreen, after[i].rgbGreen) << i;
        if (isForeign || isFixed) {
            EXPECT_EQ(after[i].rgbGreen, before[i].rgbGreen) << i;
            EXPECT_EQ(after[i].rgbRed, before[i].rgbRed) << i;
        } else {
            stored += after[i].rgbGreen == wanted[i].rgbGreen && after[i].rgbRed == wanted[i].rgbRed &&
                      after[i].rgbBlue == wanted[i].rgbBlue;
        }
    }
    EXPECT_GE(stored, 236 - 40 - 2);
    PixelBuffer pixels;
    ASSERT_TRUE(display_->BeginAccess(nullptr, {0, 0, 1, 1}, Access::Write, &pixels));
    ASSERT_EQ(pixels.colorCount, 256);
    EXPECT_EQ(pixels.colors[200].rgbGreen, after[200].rgbGreen);
    display_->EndAccess();
    EXPECT_FALSE(display_->SetSystemPalette(-1, wanted));
    EXPECT_FALSE(display_->SetSystemPalette(1, wanted));
}

}   // namespace
