#include <algorithm>

#include "examples/support/window.h"
#include "rastel/platform/user.h"

namespace rastel::example {

namespace {

constexpr wchar_t className[] = L"RastelExample";

LRESULT CALLBACK OnMessage(HWND window, UINT message, WPARAM wide, LPARAM parameter) {
    switch (message) {
        case WM_CLOSE:
        case WM_DESTROY:
            ::PostQuitMessage(0);
            return 0;
        case WM_PAINT:   // the next frame paints all of it
            ::ValidateRect(window, nullptr);
            return 0;
        case WM_ERASEBKGND:
            return 1;
        default:
            return ::DefWindowProcW(window, message, wide, parameter);
    }
}

std::wstring Wide(const std::string& text) {
    const int length = static_cast<int>(text.size());
    std::wstring wide(text.size(), L'\0');
    const int units = ::MultiByteToWideChar(CP_UTF8, 0, text.data(), length, wide.data(), length);
    wide.resize(static_cast<std::size_t>(std::max(units, 0)));
    return wide;
}

class PlainWindow : public Window {
public:
    explicit PlainWindow(HWND handle) : handle_(handle) {}
    ~PlainWindow() override { ::DestroyWindow(handle_); }

    HWND Handle() const override { return handle_; }
    SIZE ClientSize() override {
        RECT client = {};
        ::GetClientRect(handle_, &client);
        return {client.right, client.bottom};
    }
    void SetTitle(const std::string& title) override { ::SetWindowTextW(handle_, Wide(title).c_str()); }

    bool Wait(int milliseconds) override {
        const ULONGLONG limit = ::GetTickCount64() + static_cast<ULONGLONG>(milliseconds);
        for (;;) {
            MSG message;
            while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
                if (message.message == WM_QUIT) {
                    return false;
                }
                ::TranslateMessage(&message);
                ::DispatchMessageW(&message);
            }
            const ULONGLONG now = ::GetTickCount64();
            if (now >= limit) {
                return true;
            }
            ::MsgWaitForMultipleObjects(0, nullptr, FALSE, static_cast<DWORD>(limit - now), QS_ALLINPUT);
        }
    }

private:
    HWND handle_;
};

}   // namespace

std::unique_ptr<Window> OpenWindow(const std::string& title, SIZE clientSize, std::string& error) {
    const HINSTANCE module = ::GetModuleHandleW(nullptr);
    WNDCLASSW kind = {};
    kind.lpfnWndProc = OnMessage;
    kind.hInstance = module;
    kind.hCursor = ::LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_ARROW));
    kind.lpszClassName = className;
    ::RegisterClassW(&kind);   // a second window finds it registered
    RECT rect = {0, 0, std::min<LONG>(clientSize.cx, ::GetSystemMetrics(SM_CXSCREEN)),
                 std::min<LONG>(clientSize.cy, ::GetSystemMetrics(SM_CYSCREEN))};
    ::AdjustWindowRect(&rect, WS_OVERLAPPEDWINDOW, FALSE);
    const HWND handle =
        ::CreateWindowExW(0, className, Wide(title).c_str(), WS_OVERLAPPEDWINDOW, CW_USEDEFAULT, CW_USEDEFAULT,
                          rect.right - rect.left, rect.bottom - rect.top, nullptr, nullptr, module, nullptr);
    if (!handle) {
        error = "the window can't be made";
        return nullptr;
    }
    ::ShowWindow(handle, SW_SHOWNORMAL);
    return std::make_unique<PlainWindow>(handle);
}

}   // namespace rastel::example
