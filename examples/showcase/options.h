#pragma once

#include <optional>
#include <string>
#include <vector>

#include "examples/support/display.h"

namespace rastel::showcase {

// The ways of presenting that the library chooses from.
enum class Path { StretchDibits, Buffered, NoConvert };

struct Options {
    bool help = false;
    std::optional<std::string> out;                      // the PNG of what the screen shows
    std::optional<int> frames;                           // how many are drawn; nothing: until the window is closed
    std::optional<example::MemoryDisplaySize> display;   // in place of the one that is there
    std::optional<std::size_t> page;                     // of `pages`; nothing: all of them by turns
    std::optional<Path> path;                            // nothing: the one that was measured to be the fastest
    std::vector<std::string> files;                      // pictures in place of the usual ones
};

extern const char usage[];

// Nothing: `error` says what is wrong with the command line.
std::optional<Options> ReadOptions(int count, char** arguments, std::string& error);

}   // namespace rastel::showcase
