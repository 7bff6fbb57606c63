// The operations that the storm calls. One more is one more entry.
#pragma once

#include <span>
#include <string>

#include "tests/storm/scene.h"

namespace rastel::storm {

struct Operation {
    std::string name;
    int (*run)(Scene& scene);   // draws its own arguments from the scene
    bool formsDiffer = false;   // plain and vector arithmetic have numbers of their own
};

std::span<const Operation> Operations();

// Makes CopyBlt and FillColor run without a display having been measured.
void ChooseCopyAndFill();

}   // namespace rastel::storm
