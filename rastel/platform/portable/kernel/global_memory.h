// What tests ask about global memory beyond the system's own functions.
#pragma once

#include <cstddef>

namespace rastel::platform {

// The blocks that are allocated and not yet freed.
std::size_t LiveGlobalBlocks();

}   // namespace rastel::platform
