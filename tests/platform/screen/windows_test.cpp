// The window system's functions, on the memory display.
#include <gtest/gtest.h>

#include <climits>

#include "rastel/platform/portable/memory_display.h"
#include "rastel/platform/user.h"

namespace {

using namespace rastel::platform;

TEST(Windows, PlacesFollowAMovedWindow) {
    UseMemoryDisplay({});
    const HWND window = CreateMemoryWindow({100, 50, 300, 250});
    POINT point = {-150, 7};
    ASSERT_TRUE(ClientToScreen(window, &point));
    EXPECT_EQ(point.x, -50);
    EXPECT_EQ(point.y, 57);
    MoveMemoryWindow(window, {-20, 10, 30, 40});
    ASSERT_TRUE(ScreenToClient(window, &point));
    EXPECT_EQ(point.x, -30);
    EXPECT_EQ(point.y, 47);
    RECT rect;
    ASSERT_TRUE(GetClientRect(window, &rect));
    const RECT client = {0, 0, 50, 30};
    EXPECT_TRUE(EqualRect(&rect, &client));
    ASSERT_TRUE(GetWindowRect(window, &rect));
    const RECT onScreen = {-20, 10, 30, 40};
    EXPECT_TRUE(EqualRect(&rect, &onScreen));
    point = {INT_MIN, INT_MAX};
    EXPECT_TRUE(ClientToScreen(window, &point));   // wraps
}

TEST(Windows, NoWindowAndEndedWindowsFail) {
    UseMemoryDisplay({});
    const HWND ended = CreateMemoryWindow({0, 0, 10, 10});
    EXPECT_TRUE(IsWindow(ended));
    DestroyMemoryWindow(ended);
    for (const HWND window : {HWND{nullptr}, ended, reinterpret_cast<HWND>(std::uintptr_t{3})}) {
        POINT point = {1, 2};
        RECT rect = {1, 2, 3, 4};
        EXPECT_FALSE(IsWindow(window));
        EXPECT_FALSE(ClientToScreen(window, &point));
        EXPECT_FALSE(ScreenToClient(window, &point));
        EXPECT_FALSE(GetClientRect(window, &rect));
        EXPECT_FALSE(GetWindowRect(window, &rect));
        EXPECT_EQ(point.x, 1);
        EXPECT_EQ(rect.right, 3);
    }
    const HWND alive = CreateMemoryWindow({0, 0, 10, 10});
    EXPECT_FALSE(ClientToScreen(alive, nullptr));
    EXPECT_FALSE(ScreenToClient(alive, nullptr));
    EXPECT_FALSE(GetClientRect(alive, nullptr));
    EXPECT_FALSE(GetWindowRect(alive, nullptr));
}

TEST(Windows, TheDesktopIsAWindowOfTheScreensSize) {
    MemoryDisplayOptions options;
    options.width = 800;
    options.height = 600;
    UseMemoryDisplay(options);
    CreateMemoryWindow({0, 0, 800, 600});
    ASSERT_TRUE(IsWindow(GetDesktopWindow()));
    RECT rect;
    ASSERT_TRUE(GetWindowRect(GetDesktopWindow(), &rect));
    EXPECT_EQ(rect.right, GetSystemMetrics(SM_CXSCREEN));
    EXPECT_EQ(rect.bottom, GetSystemMetrics(SM_CYSCREEN));
    EXPECT_EQ(GetSystemMetrics(-7), 0);
}

TEST(DisplaySettings, CurrentSettingsAndTheListTellWhatTheDisplayIs) {
    MemoryDisplayOptions options;
    options.width = 800;
    options.height = 600;
    options.bitsPerPixel = 15;
    options.refreshHz = 75;
    options.name = L"A display with a name far too long to fit";
    options.modes = {{640, 480, 8}, {800, 600, 24}};
    UseMemoryDisplay(options);
    DEVMODEW mode = {};
    mode.dmSize = sizeof(mode);
    ASSERT_TRUE(EnumDisplaySettingsW(nullptr, ENUM_CURRENT_SETTINGS, &mode));
    EXPECT_EQ(std::wstring(mode.dmDeviceName), options.name.substr(0, 31));
    EXPECT_EQ(mode.dmPelsWidth, 800u);
    EXPECT_EQ(mode.dmPelsHeight, 600u);
    EXPECT_EQ(mode.dmBitsPerPel, 15u);
    EXPECT_EQ(mode.dmDisplayFrequency, 75u);
    EXPECT_EQ(mode.dmFields & (DM_BITSPERPEL | DM_PELSWIDTH), DWORD{DM_BITSPERPEL | DM_PELSWIDTH});
    const std::wstring name = mode.dmDeviceName;
    ASSERT_TRUE(EnumDisplaySettingsW(name.c_str(), 1, &mode));
    EXPECT_EQ(mode.dmPelsWidth, 800u);
    EXPECT_EQ(mode.dmBitsPerPel, 24u);
    EXPECT_FALSE(EnumDisplaySettingsW(nullptr, 2, &mode));
    EXPECT_FALSE(EnumDisplaySettingsW(L"another", 0, &mode));
    EXPECT_FALSE(EnumDisplaySettingsW(nullptr, ENUM_CURRENT_SETTINGS, nullptr));
}

TEST(Rectangles, NullPointersFail) {
    RECT rect = {1, 2, 3, 4};
    EXPECT_FALSE(IntersectRect(nullptr, &rect, &rect));
    EXPECT_FALSE(IntersectRect(&rect, nullptr, &rect));
    EXPECT_FALSE(UnionRect(&rect, &rect, nullptr));
    EXPECT_FALSE(SubtractRect(&rect, nullptr, nullptr));
    EXPECT_FALSE(EqualRect(&rect, nullptr));
    EXPECT_TRUE(IsRectEmpty(nullptr));
    EXPECT_FALSE(CopyRect(&rect, nullptr));
    EXPECT_FALSE(SetRect(nullptr, 1, 2, 3, 4));
    EXPECT_FALSE(SetRectEmpty(nullptr));
    EXPECT_FALSE(OffsetRect(nullptr, 1, 1));
    EXPECT_FALSE(InflateRect(nullptr, 1, 1));
    EXPECT_FALSE(PtInRect(nullptr, {0, 0}));
    EXPECT_EQ(rect.right, 3);
}

}   // namespace
