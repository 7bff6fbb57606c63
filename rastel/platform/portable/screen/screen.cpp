#include <cstdlib>
#include <mutex>
#include <utility>

#include "rastel/platform/portable/display_kind.h"
#include "rastel/platform/portable/screen/display_device.h"
#include "rastel/platform/portable/screen/memory_display_device.h"
#include "rastel/platform/portable/screen/x11_display.h"

namespace rastel::platform {

namespace {

struct Choice {
    std::mutex mutex;
    std::shared_ptr<DisplayDevice> display;
    std::wstring declined;
};

// Never destroyed: a context that a host keeps in a static may still draw while the process ends. Only a changed
// mode must not stay behind.
Choice& TheChoice() {
    static Choice* const choice = [] {
        std::atexit([] {
            const std::lock_guard lock(TheChoice().mutex);
            if (TheChoice().display) {
                TheChoice().display->RestoreMode();
            }
        });
        return new Choice;
    }();
    return *choice;
}

}   // namespace

std::shared_ptr<DisplayDevice> Display() {
    Choice& choice = TheChoice();
    const std::lock_guard lock(choice.mutex);
    if (!choice.display) {
        choice.display = ConnectX11Display(nullptr, &choice.declined);
    }
    if (!choice.display) {
        choice.display = std::make_shared<MemoryDisplay>(MemoryDisplayOptions{});
    }
    return choice.display;
}

void ReplaceDisplay(std::shared_ptr<DisplayDevice> display) {
    Choice& choice = TheChoice();
    std::shared_ptr<DisplayDevice> old;
    const std::lock_guard lock(choice.mutex);
    old = std::exchange(choice.display, std::move(display));
    choice.declined.clear();
}

std::wstring DisplayKind() {
    return Display()->Kind();
}

std::wstring DisplayDeclined() {
    Display();
    const std::lock_guard lock(TheChoice().mutex);
    return TheChoice().declined;
}

}   // namespace rastel::platform
