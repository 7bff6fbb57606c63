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

TestWindow::TestWindow(const RECT& client)
    : window_(::CreateWindowExW(WS_EX_TOPMOST | WS_EX_TOOLWINDOW, L"STATIC", L"", WS_POPUP | WS_VISIBLE, client.left,
                                client.top, client.right - client.left, client.bottom - client.top, nullptr, nullptr,
                                nullptr, nullptr)) {
    ::UpdateWindow(window_);
    HandleMessages();
}

TestWindow::~TestWindow() {
    ::DestroyWindow(window_);
    HandleMessages();
}

}   // namespace rastel::test
