// Drawing on windows and on the screen.
#include "tests/platform/contract/screen.h"
#include "tests/platform/gdi/gdi_test_support.h"

namespace rastel::test {
namespace {

class Windows : public ::testing::Test {
protected:
    void SetUp() override { OpenScreen(); }
};

class WindowContext {
public:
    explicit WindowContext(HWND window) : window_(window), dc_(::GetDC(window)) {}
    ~WindowContext() { ::ReleaseDC(window_, dc_); }
    WindowContext(const WindowContext&) = delete;
    WindowContext& operator=(const WindowContext&) = delete;
    HDC Get() const { return dc_; }

private:
    HWND window_;
    HDC dc_;
};

TEST_F(Windows, KnowWhereTheyAre) {
    const TestWindow window({40, 50, 140, 120});
    RECT client{}, outer{};
    ASSERT_TRUE(::GetClientRect(window.Handle(), &client));
    EXPECT_EQ(client.right, 100);
    EXPECT_EQ(client.bottom, 70);
    POINT corner{3, 4};
    ASSERT_TRUE(::ClientToScreen(window.Handle(), &corner));
    EXPECT_EQ(corner.x, 43);
    EXPECT_EQ(corner.y, 54);
    ASSERT_TRUE(::GetWindowRect(window.Handle(), &outer));
    EXPECT_EQ(outer.left, 40);
    EXPECT_EQ(outer.bottom, 120);
    EXPECT_FALSE(::ClientToScreen(nullptr, &corner));
    EXPECT_FALSE(::GetClientRect(nullptr, &client));
}

TEST_F(Windows, ShowWhatIsDrawnInsideTheirClientArea) {
    const TestWindow window({40, 50, 60, 70});
    Section picture(30, 30, Plain32());
    for (int y = 0; y < 30; ++y) {
        for (int x = 0; x < 30; ++x) {
            SetPixelV(picture.Dc(), x, y, RGB(x * 8, y * 8, 128));
        }
    }
    InfoBlock info(30, 30, Plain32());
    const HBRUSH brush = ::CreateSolidBrush(RGB(0, 128, 0));
    {
        const WindowContext context(window.Handle());
        RECT box{};
        EXPECT_EQ(::GetClipBox(context.Get(), &box), SIMPLEREGION);
        EXPECT_EQ(box.left, 0);
        EXPECT_EQ(box.right, 20);
        const RECT all{-5, -5, 30, 30};
        ::FillRect(context.Get(), &all, brush);
        ASSERT_TRUE(::BitBlt(context.Get(), 5, 5, 30, 30, picture.Dc(), 0, 0, SRCCOPY));
        ASSERT_EQ(::SaveDC(context.Get()), 1);
        ::IntersectClipRect(context.Get(), 0, 0, 4, 4);
        EXPECT_GT(::StretchDIBits(context.Get(), -16, -16, 30, 30, 0, 0, 30, 30, picture.Bits(), info.Info(),
                                  DIB_RGB_COLORS, SRCCOPY),
                  0);
        EXPECT_TRUE(::RestoreDC(context.Get(), -1));
        ::GdiFlush();
        EXPECT_TRUE(IsClose(::GetPixel(context.Get(), 6, 7), RGB(8, 16, 128)));
        EXPECT_TRUE(IsClose(::GetPixel(context.Get(), 4, 4), RGB(0, 128, 0)));
        EXPECT_TRUE(IsClose(::GetPixel(context.Get(), 0, 0), RGB(128, 128, 128)));   // (16, 16) of the picture
        EXPECT_EQ(::GetPixel(context.Get(), 20, 7), CLR_INVALID);
    }
    ::DeleteObject(brush);
}

TEST_F(Windows, TheScreenTellsItsSizeAndDepth) {
    const WindowContext screen(nullptr);
    EXPECT_EQ(::GetDeviceCaps(screen.Get(), HORZRES), ::GetSystemMetrics(SM_CXSCREEN));
    EXPECT_EQ(::GetDeviceCaps(screen.Get(), VERTRES), ::GetSystemMetrics(SM_CYSCREEN));
    const int bits = ::GetDeviceCaps(screen.Get(), BITSPIXEL) * ::GetDeviceCaps(screen.Get(), PLANES);
    EXPECT_GE(bits, 8);
    DEVMODEW mode{};
    mode.dmSize = sizeof(mode);
    ASSERT_TRUE(::EnumDisplaySettingsW(nullptr, ENUM_CURRENT_SETTINGS, &mode));
    EXPECT_EQ(mode.dmPelsWidth, static_cast<DWORD>(::GetSystemMetrics(SM_CXSCREEN)));
    EXPECT_EQ(mode.dmBitsPerPel, static_cast<DWORD>(bits));
    const HDC display = ::CreateDCW(L"DISPLAY", nullptr, nullptr, nullptr);
    ASSERT_NE(display, nullptr);
    EXPECT_EQ(::GetDeviceCaps(display, BITSPIXEL), ::GetDeviceCaps(screen.Get(), BITSPIXEL));
    const HBITMAP bitmap = ::CreateCompatibleBitmap(display, 5, 6);
    BITMAP description{};
    ::GetObjectW(bitmap, sizeof(description), &description);
    EXPECT_EQ(description.bmBitsPixel, ::GetDeviceCaps(display, BITSPIXEL));
    ::DeleteObject(bitmap);
    EXPECT_TRUE(::DeleteDC(display));
}

}   // namespace
}   // namespace rastel::test
