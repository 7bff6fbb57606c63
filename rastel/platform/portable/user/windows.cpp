#include "rastel/platform/portable/screen/display_device.h"
#include "rastel/platform/portable/user.h"

namespace {

using rastel::platform::Display;

// To a display no window means the whole screen; to a caller here it means a mistake.
bool FindClientArea(HWND window, RECT* onScreen) {
    return window != nullptr && Display()->ClientArea(window, onScreen);
}

LONG Wrapped(std::int64_t value) {
    return static_cast<LONG>(static_cast<DWORD>(value));
}

}   // namespace

HWND GetDesktopWindow() {
    return Display()->DesktopWindow();
}

BOOL IsWindow(HWND window) {
    RECT client;
    return FindClientArea(window, &client);
}

BOOL GetClientRect(HWND window, LPRECT rect) {
    RECT client;
    if (rect == nullptr || !FindClientArea(window, &client)) {
        return FALSE;
    }
    return SetRect(rect, 0, 0, client.right - client.left, client.bottom - client.top);
}

BOOL GetWindowRect(HWND window, LPRECT rect) {
    RECT area;
    if (rect == nullptr || window == nullptr || !Display()->WindowArea(window, &area)) {
        return FALSE;
    }
    return CopyRect(rect, &area);
}

BOOL ClientToScreen(HWND window, LPPOINT point) {
    RECT client;
    if (point == nullptr || !FindClientArea(window, &client)) {
        return FALSE;
    }
    *point = {Wrapped(std::int64_t{point->x} + client.left), Wrapped(std::int64_t{point->y} + client.top)};
    return TRUE;
}

BOOL ScreenToClient(HWND window, LPPOINT point) {
    RECT client;
    if (point == nullptr || !FindClientArea(window, &client)) {
        return FALSE;
    }
    *point = {Wrapped(std::int64_t{point->x} - client.left), Wrapped(std::int64_t{point->y} - client.top)};
    return TRUE;
}
