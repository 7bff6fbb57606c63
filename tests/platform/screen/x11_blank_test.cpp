// The vertical blank that a server tells of, and servers that tell of none.
#include <gtest/gtest.h>

#include <thread>

#include "rastel/platform/portable/screen/x11_blank.h"
#include "tests/platform/screen/x_server.h"

namespace {

using rastel::platform::X11Blank;
using rastel::test::XServer;

TEST(X11Blank, ComesAgainAndAgainWhoeverWaits) {
    const XServer server("640x480x24");
    if (!server.IsRunning()) {
        GTEST_SKIP() << "no Xvfb";
    }
    X11Blank blank(server.Name());
    std::thread other([&] { EXPECT_TRUE(blank.Wait()); });
    EXPECT_TRUE(blank.Wait());
    EXPECT_TRUE(blank.Wait());
    other.join();
}

TEST(X11Blank, IsGivenUpWhereNoneIsTold) {
    X11Blank nowhere(":4095");
    EXPECT_FALSE(nowhere.Wait());
    XServer lost("640x480x24");
    if (!lost.IsRunning()) {
        GTEST_SKIP() << "no Xvfb";
    }
    X11Blank blank(lost.Name());
    EXPECT_TRUE(blank.Wait());
    lost.Pause();
    EXPECT_FALSE(blank.Wait());
    lost.Kill();
    EXPECT_FALSE(blank.Wait());
}

}   // namespace
