#include "rastel/platform/user.h"
#include "tests/platform/contract/screen.h"

namespace rastel::test {

namespace {

void HandleMessages() {
    MSG message;
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        ::DispatchMessageW(&message);
    }
}

}   // namespace

void OpenScreen() {}

TestWindow::TestWindow(const RECT& client) {
    // It paints nothing by itself, which would cover what tests draw.
    WNDCLASSW look{};
    look.lpfnWndProc = ::DefWindowProcW;
    look.hInstance = ::GetModuleHandleW(nullptr);
    look.lpszClassName = L"Rastel test window";
    ::RegisterClassW(&look);   // again: refused, and there all the same
    window_ = ::CreateWindowExW(WS_EX_TOPMOST | WS_EX_TOOLWINDOW, look.lpszClassName, L"", WS_POPUP | WS_VISIBLE,
                                client.left, client.top, client.right - client.left, client.bottom - client.top,
                                nullptr, nullptr, look.hInstance, nullptr);
    ::UpdateWindow(window_);
    LetScreenShow();   // and what the window begins with
}

TestWindow::~TestWindow() {
    ::DestroyWindow(window_);
    HandleMessages();
}

void LetScreenShow() {
    // What devices draw reaches a screen behind a server some time later, while its thread handles messages.
    const DWORD start = ::GetTickCount();
    while (::GetTickCount() - start < 250) {
        ::GdiFlush();
        ::MsgWaitForMultipleObjects(0, nullptr, FALSE, 20, QS_ALLINPUT);
        HandleMessages();
    }
}

COLORREF ScreenColor(int x, int y) {
    const HDC screen = ::GetDC(nullptr);
    const COLORREF color = ::GetPixel(screen, x, y);
    ::ReleaseDC(nullptr, screen);
    return color;
}

}   // namespace rastel::test
