// What rows of pixels take up in memory, as addresses: pitches may be negative.
#pragma once

#include <cstddef>
#include <cstdint>

#include "rastel/platform/types.h"

namespace rastel::kernels {

// Internal to each file that includes it, as in texel_walk.h.
namespace {

struct MemorySpan {
    std::uintptr_t first, end;
    bool Meets(const MemorySpan& other) const { return first < other.end && other.first < end; }
};

// At least one row.
inline MemorySpan SpanOf(const BYTE* rows, int pitch, std::size_t rowBytes, int height) {
    const auto first = reinterpret_cast<std::uintptr_t>(rows);
    const auto last = reinterpret_cast<std::uintptr_t>(rows + static_cast<std::ptrdiff_t>(height - 1) * pitch);
    return {first < last ? first : last, (first < last ? last : first) + rowBytes};
}

}   // namespace

}   // namespace rastel::kernels
