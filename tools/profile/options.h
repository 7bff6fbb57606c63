#pragma once

#include <optional>
#include <string>

#include "examples/support/display.h"

namespace rastel::profile {

struct Options {
    bool help = false;
    bool measure = false;   // forget what is stored
    std::optional<example::MemoryDisplaySize> display;
};

extern const char usage[];

// Nothing: `error` says what is wrong with the command line.
std::optional<Options> ReadOptions(int count, char** arguments, std::string& error);

}   // namespace rastel::profile
