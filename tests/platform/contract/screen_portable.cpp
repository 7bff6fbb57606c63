#include "rastel/platform/portable/memory_display.h"
#include "tests/platform/contract/screen.h"

namespace rastel::test {

void OpenScreen() {
    platform::UseMemoryDisplay({});
}

TestWindow::TestWindow(const RECT& client) : window_(platform::CreateMemoryWindow(client)) {}

TestWindow::~TestWindow() {
    platform::DestroyMemoryWindow(window_);
}

void LetScreenShow() {}

COLORREF ScreenColor(int x, int y) {
    return platform::MemoryScreenPixel(x, y);
}

}   // namespace rastel::test
