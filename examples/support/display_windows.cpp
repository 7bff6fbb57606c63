#include "examples/support/display.h"

namespace rastel::example {

bool UseMemoryDisplay(const MemoryDisplaySize&) {
    return false;
}

bool HasDesktop() {
    return true;
}

std::unique_ptr<Window> CoverMemoryDisplay() {
    return nullptr;
}

std::string TimingsFolder() {
    return "";
}

}   // namespace rastel::example
