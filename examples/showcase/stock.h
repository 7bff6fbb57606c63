// The stores that the page is composed of: photographs, sprites on a key colour, planes.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "examples/support/stores.h"

namespace rastel::showcase {

inline constexpr COLORREF spriteKey = 0xFF00FF;   // what the sprites' surroundings have, and nothing in them

struct Stock {
    std::vector<example::Surface> photos;   // at least one
    example::Plane brightness;              // of the first photograph
    example::Surface balloon, cup;          // on spriteKey
    example::Plane cupCoverage;
    std::string folder;   // where the files came from

    CSurface& Photo(std::size_t index) const { return *photos[index % photos.size()]; }
};

// The given files, or where there are none those that come along: from the folder beside the program, else from the
// one it was built from. Where these can't be read generated pictures take their place. Nothing: `error` says why.
std::optional<Stock> LoadStock(CDisplayManager& manager, const std::vector<std::string>& files,
                               const std::string& program, std::string& error);

}   // namespace rastel::showcase
