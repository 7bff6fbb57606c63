// The rows that take the time of a blit, in a plain form and in wider ones that give the same bytes.
//
// Names of formats: 32 and 24 have blue in the lowest byte, 565 and 555 have it in the lowest bits. The fourth byte of
// what becomes 32 is 0. Counts are pixels and may be 0; any alignment; source and target do not overlap.
#pragma once

#include <cstddef>
#include <span>

#include "rastel/platform/portable/types.h"

namespace rastel::platform {

class PickPlan;
class PickPlan32;

struct RowKernels {
    using ConvertRow = void (*)(const unsigned char* source, unsigned char* target, int count);

    const char* name;     // "avx2", "plain"
    bool (*runsHere)();   // the processor has it

    ConvertRow from32To24;
    ConvertRow from24To32;
    ConvertRow from32To565;
    ConvertRow from32To555;
    ConvertRow from565To32;
    ConvertRow from555To32;
    ConvertRow from32ToGrey;   // 8 bits: the mean of the channels, rounded

    // A row of picked bytes as a plan says; null: only pixel by pixel.
    void (*pick)(const unsigned char* source, const PickPlan& plan, unsigned char* target);

    void (*pick32)(const unsigned char* source, const PickPlan32& plan, unsigned char* target);   // null likewise

    // Pixels of 32 bits become (color * coverage + pixel * (255 - coverage)) / 255, rounded, with a fourth byte of 0;
    // those of no coverage keep all their bits. Pitches in bytes.
    void (*mix)(unsigned char* target, std::ptrdiff_t targetPitch, const unsigned char* coverage,
                std::ptrdiff_t coveragePitch, int width, int height, DWORD color);
};

std::span<const RowKernels* const> AllRowKernels();   // best first; the last runs anywhere
const RowKernels& Kernels();                          // the chosen ones

}   // namespace rastel::platform
