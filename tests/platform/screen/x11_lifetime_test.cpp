// Servers that are not there, go away, or change their screen.
#include <gtest/gtest.h>
#include <xcb/randr.h>

#include <algorithm>
#include <fstream>
#include <thread>

#include "rastel/platform/portable/display_kind.h"
#include "rastel/platform/portable/memory_display.h"
#include "rastel/platform/portable/screen/x11_connection.h"
#include "rastel/platform/user.h"
#include "tests/platform/screen/x_server.h"

namespace {

using namespace rastel::platform;
using namespace rastel::test;

// For the time of a test $DISPLAY names another server.
class NamedDisplay {
public:
    explicit NamedDisplay(const char* name) {
        if (const char* const before = std::getenv("DISPLAY")) {
            before_ = before;
        }
        Set(name);
    }
    ~NamedDisplay() {
        Set(before_.c_str());
        ReplaceDisplay(nullptr);
    }
    void Set(const char* name) {
        if (name != nullptr && *name != '\0') {
            setenv("DISPLAY", name, 1);
        } else {
            unsetenv("DISPLAY");
        }
        ReplaceDisplay(nullptr);
    }

private:
    std::string before_;
};

TEST(DisplayChoice, AnsweringServersComeBeforeMemory) {
    NamedDisplay named(nullptr);
    EXPECT_EQ(DisplayKind(), L"memory");
    EXPECT_NE(DisplayDeclined(), L"");
    named.Set(":59731");
    EXPECT_EQ(DisplayKind(), L"memory");
    named.Set("nonsense");
    EXPECT_EQ(DisplayKind(), L"memory");
    EXPECT_NE(MemoryScreen().bits, nullptr);

    const XServer server("640x480x24");
    if (!server.IsRunning()) {
        GTEST_SKIP() << "no Xvfb";
    }
    named.Set(server.Name());
    EXPECT_EQ(DisplayKind(), L"x11");
    EXPECT_EQ(MemoryScreen().bits, nullptr);
    EXPECT_EQ(CreateMemoryWindow({0, 0, 10, 10}), nullptr);
    EXPECT_EQ(GetSystemMetrics(SM_CXSCREEN), 640);
    named.Set((std::string(server.Name()) + ".7").c_str());
    EXPECT_EQ(DisplayKind(), L"memory") << "no such screen";
}

class LostServer : public ::testing::TestWithParam<bool> {};

TEST_P(LostServer, MakesCallsFailAndNothingWorse) {
    XServer server("640x480x24",
                   GetParam() ? std::vector<std::string>{} : std::vector<std::string>{"-extension", "MIT-SHM"});
    if (!server.IsRunning()) {
        GTEST_SKIP() << "no Xvfb";
    }
    ASSERT_NE(signal(SIGPIPE, SIG_DFL), SIG_ERR);   // as in a host that knows nothing of it
    std::shared_ptr<DisplayDevice> display = Connect(server);
    ASSERT_NE(display, nullptr);
    XClient client(server);
    const HWND window = client.MakeWindow({0, 0, 640, 480});
    const Picture picture = NoisePicture(640, 480, 0xFFFFFF, 1);
    ASSERT_TRUE(Draw(*display, window, 0, 0, picture));
    PixelBuffer pixels;
    ASSERT_TRUE(display->BeginAccess(window, {0, 0, 640, 480}, Access::ReadWrite, &pixels));
    server.Kill();
    for (int y = 0; y < 480; ++y) {
        std::fill(pixels.Row(y), pixels.Row(y) + 640 * 4, static_cast<unsigned char>(y));   // still our memory
    }
    display->EndAccess();
    display->Flush();
    RECT rect;
    Region visible;
    EXPECT_FALSE(display->ClientArea(window, &rect));
    EXPECT_FALSE(display->ClientArea(nullptr, &rect));
    EXPECT_FALSE(display->VisibleArea(window, &visible));
    for (const Access access : {Access::Read, Access::Write, Access::ReadWrite}) {
        EXPECT_FALSE(display->BeginAccess(window, {0, 0, 64, 64}, access, &pixels));
        EXPECT_FALSE(display->BeginAccess(nullptr, {0, 0, 640, 480}, access, &pixels));
    }
    EXPECT_FALSE(display->SetMode({640, 480, 32, 0}));
    EXPECT_FALSE(display->RestoreMode());
    EXPECT_FALSE(display->SetSystemPalette(20, {RGBQUAD{}}));
    EXPECT_EQ(display->Mode().width, 640) << "the last that was known";
    display->WaitForBlank();
    sigset_t pending;
    sigpending(&pending);
    EXPECT_FALSE(sigismember(&pending, SIGPIPE));
    display.reset();
}

// True once a thread of this process waits for something.
bool IsWaiting(pid_t thread) {
    std::ifstream file("/proc/self/task/" + std::to_string(thread) + "/stat");
    std::string text;
    std::getline(file, text);
    const std::size_t name = text.rfind(')');
    return name != std::string::npos && text.compare(name, 3, ") S") == 0;
}

TEST_P(LostServer, WhilePixelsAreOnTheirWayEndsTheCall) {
    XServer server("1280x1024x24",
                   GetParam() ? std::vector<std::string>{} : std::vector<std::string>{"-extension", "MIT-SHM"});
    if (!server.IsRunning()) {
        GTEST_SKIP() << "no Xvfb";
    }
    ASSERT_NE(signal(SIGPIPE, SIG_DFL), SIG_ERR);
    const std::shared_ptr<DisplayDevice> display = Connect(server);
    ASSERT_NE(display, nullptr);
    PixelBuffer pixels;
    ASSERT_TRUE(display->BeginAccess(nullptr, {0, 0, 1280, 1024}, Access::Write, &pixels));
    server.Pause();
    const pid_t me = gettid();
    std::thread killer([&server, me] {
        while (!IsWaiting(me)) {
            std::this_thread::yield();
        }
        server.Kill();
    });
    display->EndAccess();
    display->Flush();   // a picture in shared memory isn't on its way before
    killer.join();
    EXPECT_FALSE(display->BeginAccess(nullptr, {0, 0, 1, 1}, Access::Read, &pixels));
}

// A server may die in the moment between looking and writing.
TEST(LostServerSignal, StaysWithTheWriteThatRaisedIt) {
    ASSERT_NE(signal(SIGPIPE, SIG_DFL), SIG_ERR);
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    close(ends[0]);
    sigset_t before, after, pending;
    pthread_sigmask(SIG_BLOCK, nullptr, &before);
    {
        const SigpipeGuard guard;
        const SigpipeGuard inner;
        EXPECT_EQ(write(ends[1], "x", 1), -1);
    }
    close(ends[1]);
    pthread_sigmask(SIG_BLOCK, nullptr, &after);
    EXPECT_EQ(sigismember(&before, SIGPIPE), sigismember(&after, SIGPIPE));

    // One that the host holds back itself is still there afterwards.
    sigset_t block;
    sigemptyset(&block);
    sigaddset(&block, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &block, nullptr);
    pthread_kill(pthread_self(), SIGPIPE);
    { const SigpipeGuard guard; }
    sigpending(&pending);
    EXPECT_TRUE(sigismember(&pending, SIGPIPE));
    const timespec atOnce = {};
    EXPECT_EQ(sigtimedwait(&block, nullptr, &atOnce), SIGPIPE);
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

INSTANTIATE_TEST_SUITE_P(Roads, LostServer, ::testing::Bool(),
                         [](const auto& one) { return one.param ? "Shared" : "Plain"; });

// Offers one more mode on each output, at 60 Hz.
bool AddMode(XClient& client, int width, int height) {
    xcb_connection_t* const xcb = client.Get();
    const xcb_window_t root = client.Screen().root;
    xcb_randr_mode_info_t info{};
    info.width = info.htotal = static_cast<std::uint16_t>(width);
    info.height = info.vtotal = static_cast<std::uint16_t>(height);
    info.dot_clock = static_cast<std::uint32_t>(width * height * 60);
    info.name_len = 4;
    xcb_randr_create_mode_reply_t* const mode =
        xcb_randr_create_mode_reply(xcb, xcb_randr_create_mode(xcb, root, info, 4, "test"), nullptr);
    xcb_randr_get_screen_resources_reply_t* const resources =
        xcb_randr_get_screen_resources_reply(xcb, xcb_randr_get_screen_resources(xcb, root), nullptr);
    const bool can = mode != nullptr && resources != nullptr && resources->num_outputs > 0;
    for (int i = 0; can && i < resources->num_outputs; ++i) {
        xcb_randr_add_output_mode(xcb, xcb_randr_get_screen_resources_outputs(resources)[i], mode->mode);
    }
    client.Sync();
    std::free(mode);
    std::free(resources);
    return can;
}

TEST(ServerModes, ChangeTheScreenAndComeBack) {
    const XServer server("800x600x24");
    if (!server.IsRunning()) {
        GTEST_SKIP() << "no Xvfb";
    }
    XClient client(server);
    if (!AddMode(client, 640, 480)) {
        GTEST_SKIP() << "the server takes no modes";
    }
    std::shared_ptr<DisplayDevice> display = Connect(server);
    ASSERT_NE(display, nullptr);
    const DisplayMode before = display->Mode();
    EXPECT_EQ(display->Modes().size(), 2u);
    EXPECT_FALSE(display->SetMode({640, 480, 8, 0}));
    EXPECT_FALSE(display->SetMode({641, 481, 32, 0}));
    EXPECT_FALSE(display->SetMode({640, 480, 32, 75}));
    ASSERT_TRUE(display->SetMode({640, 480, 32, 60}));
    EXPECT_EQ(display->Mode().width, 640);
    EXPECT_EQ(display->Mode().height, 480);
    EXPECT_EQ(display->Mode().refreshHz, 60);
    EXPECT_EQ(XClient(server).Screen().width_in_pixels, 640);
    ASSERT_TRUE(display->RestoreMode());
    EXPECT_EQ(display->Mode().width, 800);
    EXPECT_EQ(display->Mode().height, 600);
    EXPECT_EQ(display->Mode().refreshHz, before.refreshHz);

    ASSERT_TRUE(display->SetMode({640, 480, 32, 0}));
    display.reset();   // a mode doesn't outlive the one who set it
    EXPECT_EQ(XClient(server).Screen().width_in_pixels, 800);
}

TEST(ServerThreads, ShareOneDisplay) {
    const XServer server("640x480x24");
    if (!server.IsRunning()) {
        GTEST_SKIP() << "no Xvfb";
    }
    const std::shared_ptr<DisplayDevice> display = Connect(server);
    ASSERT_NE(display, nullptr);
    XClient client(server);
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        const HWND window = client.MakeWindow({i * 100, 0, i * 100 + 90, 90});
        threads.emplace_back([&display, window, i] {
            for (unsigned round = 0; round < 20; ++round) {
                const Picture picture = NoisePicture(90, 90, 0xFFFFFF, round + 100u * static_cast<unsigned>(i));
                EXPECT_TRUE(Draw(*display, window, 0, 0, picture));
                EXPECT_TRUE(SamePicture(picture, Look(*display, window, {0, 0, 90, 90})));
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

}   // namespace
