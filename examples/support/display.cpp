#include "examples/support/display.h"

#include <algorithm>

#include "examples/support/options.h"

namespace rastel::example {

std::optional<MemoryDisplaySize> ParseDisplay(const std::string& text) {
    const std::string kind = "memory:";
    const std::size_t firstCross = text.find('x', kind.size());
    if (!text.starts_with(kind) || firstCross == std::string::npos) {
        return std::nullopt;
    }
    const std::size_t secondCross = text.find('x', firstCross + 1);
    if (secondCross == std::string::npos) {
        return std::nullopt;
    }
    constexpr int leastSide = 64, mostSide = 8192;
    const auto width = ParseNumber(text.substr(kind.size(), firstCross - kind.size()), leastSide, mostSide);
    const auto height = ParseNumber(text.substr(firstCross + 1, secondCross - firstCross - 1), leastSide, mostSide);
    const auto bits = ParseNumber(text.substr(secondCross + 1), 8, 32);
    constexpr int depths[] = {8, 15, 16, 24, 32};
    if (!width || !height || !bits || std::find(std::begin(depths), std::end(depths), *bits) == std::end(depths)) {
        return std::nullopt;
    }
    return MemoryDisplaySize{*width, *height, *bits};
}

}   // namespace rastel::example
