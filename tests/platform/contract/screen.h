// A screen to draw on and windows on it, whatever shows them.
#pragma once

#include "rastel/platform/gdi.h"

namespace rastel::test {

void OpenScreen();   // as it was at first, without windows of ours; where there is none, one in memory

// Visible and above all others; its client area lies there.
class TestWindow {
public:
    explicit TestWindow(const RECT& client);
    ~TestWindow();
    TestWindow(const TestWindow&) = delete;
    TestWindow& operator=(const TestWindow&) = delete;

    HWND Handle() const { return window_; }

private:
    HWND window_;
};

void LetScreenShow();   // what was drawn
COLORREF ScreenColor(int x, int y);

// As close as this screen keeps a colour: by the top bits of its channels, or by the nearest of a palette.
bool IsClose(COLORREF shown, COLORREF wanted);

}   // namespace rastel::test
