#include "rastel/platform/portable/memory_display.h"

#include "rastel/platform/portable/gdi.h"
#include "rastel/platform/portable/screen/display_device.h"
#include "rastel/platform/portable/screen/memory_display_device.h"

namespace rastel::platform {

namespace {

std::shared_ptr<MemoryDisplay> TheMemoryDisplay() {
    return std::dynamic_pointer_cast<MemoryDisplay>(Display());
}

}   // namespace

void UseMemoryDisplay(const MemoryDisplayOptions& options) {
    ReplaceDisplay(std::make_shared<MemoryDisplay>(options));
}

HWND CreateMemoryWindow(const RECT& clientOnScreen) {
    const auto display = TheMemoryDisplay();
    return display ? display->MakeWindow(clientOnScreen) : nullptr;
}

void MoveMemoryWindow(HWND window, const RECT& clientOnScreen) {
    if (const auto display = TheMemoryDisplay()) {
        display->MoveWindow(window, clientOnScreen);
    }
}

void DestroyMemoryWindow(HWND window) {
    if (const auto display = TheMemoryDisplay()) {
        display->EndWindow(window);
    }
}

ScreenView MemoryScreen() {
    const auto display = TheMemoryDisplay();
    return display ? display->View() : ScreenView{};
}

COLORREF MemoryScreenPixel(int x, int y) {
    const auto display = TheMemoryDisplay();
    return display ? display->Pixel(x, y) : CLR_INVALID;
}

}   // namespace rastel::platform
