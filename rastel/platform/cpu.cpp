#include "rastel/platform/cpu.h"

#if defined(__x86_64__) || defined(__i386__)
#include <cpuid.h>

#include <cstdint>
#endif

namespace rastel::platform {
namespace {

struct Features {
    bool mmx = false, sse2 = false, avx2 = false;
};

#if defined(__x86_64__) || defined(__i386__)

// The register sets that the system saves when it changes threads.
std::uint32_t SavedRegisterSets() {
    std::uint32_t low = 0, high = 0;
    __asm__ volatile("xgetbv" : "=a"(low), "=d"(high) : "c"(0));
    return low;
}

Features AskProcessor() {
    Features features;
    unsigned a = 0, b = 0, c = 0, d = 0;
    // 0 also where the instruction itself is missing: its flag in the flags register cannot be toggled.
    const auto highestLeaf = static_cast<unsigned>(__get_cpuid_max(0, nullptr));
    if (highestLeaf < 1) {
        return features;
    }
    __cpuid(1, a, b, c, d);
    constexpr unsigned mmxBit = 1u << 23, sse2Bit = 1u << 26, avxBit = 1u << 28, savesBit = 1u << 27;
    features.mmx = (d & mmxBit) != 0;
    features.sse2 = (d & sse2Bit) != 0;
    constexpr std::uint32_t sseAndAvxSets = 6;
    const bool isWideAllowed = (c & avxBit) && (c & savesBit) && (SavedRegisterSets() & sseAndAvxSets) == sseAndAvxSets;
    if (isWideAllowed && highestLeaf >= 7) {
        constexpr unsigned avx2Bit = 1u << 5;
        __cpuid_count(7, 0, a, b, c, d);
        features.avx2 = (b & avx2Bit) != 0;
    }
    return features;
}

#else

Features AskProcessor() {
    return {};
}

#endif

const Features& Known() {
    static const Features features = AskProcessor();
    return features;
}

}   // namespace

bool ProcessorHasMmx() {
    return Known().mmx;
}

bool ProcessorHasSse2() {
    return Known().sse2;
}

bool ProcessorHasAvx2() {
    return Known().avx2;
}

}   // namespace rastel::platform
