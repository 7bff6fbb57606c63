// Ternary raster operations: any function of pattern, source and target, bit by bit.
#pragma once

#include "rastel/platform/portable/gdi.h"

namespace rastel::platform {

// The eight minterms: bit (4 * pattern + 2 * source + target) is the result.
class RasterOp {
public:
    explicit constexpr RasterOp(BYTE minterms) : minterms_(minterms) {}

    // From an operation such as SRCCOPY; flags in its highest byte are nothing to us.
    static constexpr RasterOp FromCode(DWORD operation) { return RasterOp(static_cast<BYTE>(operation >> 16)); }

    // From a mix of pen and target such as R2_XORPEN (1 to 16).
    static RasterOp FromPenMix(int mix);

    constexpr BYTE Minterms() const { return minterms_; }
    constexpr bool NeedsPattern() const { return ((minterms_ >> 4) & 0x0F) != (minterms_ & 0x0F); }
    constexpr bool NeedsSource() const { return ((minterms_ >> 2) & 0x33) != (minterms_ & 0x33); }
    constexpr bool NeedsTarget() const { return ((minterms_ >> 1) & 0x55) != (minterms_ & 0x55); }

    // target[i] = f(pattern[i], source[i], target[i]); different arrays, null where not needed.
    void Apply(const DWORD* pattern, const DWORD* source, DWORD* target, int count) const;

    DWORD Apply(DWORD pattern, DWORD source, DWORD target) const;

    constexpr bool operator==(const RasterOp&) const = default;

private:
    BYTE minterms_;
};

inline constexpr RasterOp kSourceCopy = RasterOp::FromCode(SRCCOPY);
inline constexpr RasterOp kPatternCopy = RasterOp::FromCode(PATCOPY);
inline constexpr RasterOp kWhiteness = RasterOp::FromCode(WHITENESS);

}   // namespace rastel::platform
