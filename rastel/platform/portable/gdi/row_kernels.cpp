#include "rastel/platform/portable/gdi/row_kernels.h"

#include <array>

#include "rastel/platform/portable/gdi/glyph_mix_body.h"
#include "rastel/platform/portable/gdi/row_kernels_body.h"

namespace rastel::platform {

#ifdef RASTEL_GDI_HAS_AVX2
extern const RowKernels kRowKernelsAvx2;
#endif

namespace {

constexpr RowKernels kPlain = {
    "plain",       [] { return true; }, From32To24,   From24To32, From32To16<6>, From32To16<5>,
    From16To32<6>, From16To32<5>,       From32ToGrey, nullptr,    nullptr,       MixRows,
};

#ifdef RASTEL_GDI_HAS_AVX2
constexpr std::array<const RowKernels*, 2> kAll = {&kRowKernelsAvx2, &kPlain};
#else
constexpr std::array<const RowKernels*, 1> kAll = {&kPlain};
#endif

const RowKernels& Choose() {
    for (const RowKernels* kernels : kAll) {
        if (kernels->runsHere()) {
            return *kernels;
        }
    }
    return kPlain;
}

}   // namespace

std::span<const RowKernels* const> AllRowKernels() {
    return kAll;
}

const RowKernels& Kernels() {
    static const RowKernels& chosen = Choose();
    return chosen;
}

}   // namespace rastel::platform
