#pragma once

#include <optional>
#include <string>

namespace rastel::icons {

struct Options {
    bool help = false;
    std::string file;
    std::optional<std::string> folder;   // where the images go; without one they are listed
};

extern const char usage[];

// Nothing: `error` says what is wrong with the command line.
std::optional<Options> ReadOptions(int count, char** arguments, std::string& error);

}   // namespace rastel::icons
