// Which display a host draws on: the desktop that somebody looks at, or a frame buffer in memory.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "examples/support/picture.h"
#include "examples/support/window.h"

namespace rastel::example {

struct MemoryDisplaySize {
    int width, height, bitsPerPixel;
};

// "memory:WxHxBITS", with 8, 15, 16, 24 or 32 bits and sides from 64 to 8192 pixels.
std::optional<MemoryDisplaySize> ParseDisplay(const std::string& text);
inline constexpr char displayForm[] = "memory:WxHxBITS with sides from 64 to 8192 and 8, 15, 16, 24 or 32 bits";

// From now on the process draws in memory; no manager may be alive. False: this build has the desktop only.
bool UseMemoryDisplay(const MemoryDisplaySize& size);

bool HasDesktop();   // false: nobody sees what is drawn

// A window of the memory display that covers all of it.
std::unique_ptr<Window> CoverMemoryDisplay();

std::string TimingsFolder();   // where the registry keeps its files; empty: not in files

}   // namespace rastel::example
