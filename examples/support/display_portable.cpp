#include <cstdlib>

#include "examples/support/display.h"
#include "rastel/platform/portable/display_kind.h"
#include "rastel/platform/portable/memory_display.h"
#include "rastel/platform/user.h"

namespace rastel::example {

namespace {

class MemoryWindow : public Window {
public:
    explicit MemoryWindow(HWND handle) : handle_(handle) {}
    ~MemoryWindow() override { rastel::platform::DestroyMemoryWindow(handle_); }

    HWND Handle() const override { return handle_; }
    SIZE ClientSize() override {
        RECT client = {};
        ::GetClientRect(handle_, &client);
        return {client.right, client.bottom};
    }
    void SetTitle(const std::string&) override {}
    bool Wait(int) override { return true; }   // nobody to wait for

private:
    HWND handle_;
};

}   // namespace

bool UseMemoryDisplay(const MemoryDisplaySize& size) {
    rastel::platform::MemoryDisplayOptions options;
    options.width = size.width;
    options.height = size.height;
    options.bitsPerPixel = size.bitsPerPixel;
    rastel::platform::UseMemoryDisplay(options);
    return true;
}

bool HasDesktop() {
    return rastel::platform::DisplayKind() != L"memory";
}

std::unique_ptr<Window> CoverMemoryDisplay() {
    const RECT screen = {0, 0, ::GetSystemMetrics(SM_CXSCREEN), ::GetSystemMetrics(SM_CYSCREEN)};
    const HWND handle = rastel::platform::CreateMemoryWindow(screen);
    return handle ? std::make_unique<MemoryWindow>(handle) : nullptr;
}

std::string TimingsFolder() {
    const auto absolute = [](const char* name) -> std::string {
        const char* const value = std::getenv(name);
        return value && value[0] == '/' ? value : "";
    };
    std::string folder = absolute("XDG_CONFIG_HOME");
    if (folder.empty()) {
        const std::string home = absolute("HOME");
        if (home.empty()) {
            return "";
        }
        folder = home + "/.config";
    }
    folder += "/rastel/registry";
    return folder;
}

}   // namespace rastel::example
