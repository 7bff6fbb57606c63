#include "rastel/platform/portable/gdi/raster_op.h"

namespace rastel::platform {

namespace {

struct MintermMasks {
    explicit MintermMasks(BYTE minterms) {
        for (int i = 0; i < 8; ++i) {
            masks[i] = 0u - ((minterms >> i) & 1u);
        }
    }

    DWORD Evaluate(DWORD pattern, DWORD source, DWORD target) const {
        const DWORD none = Choose(source, Choose(target, masks[3], masks[2]), Choose(target, masks[1], masks[0]));
        const DWORD all = Choose(source, Choose(target, masks[7], masks[6]), Choose(target, masks[5], masks[4]));
        return Choose(pattern, all, none);
    }

    static DWORD Choose(DWORD selector, DWORD ifSet, DWORD ifClear) {
        return (selector & ifSet) | (~selector & ifClear);
    }

    DWORD masks[8];
};

template <bool HasPattern, bool HasSource>
void Mix(BYTE minterms, const DWORD* __restrict pattern, const DWORD* __restrict source, DWORD* __restrict target,
         int count) {
    const MintermMasks masks(minterms);
    for (int i = 0; i < count; ++i) {
        target[i] = masks.Evaluate(HasPattern ? pattern[i] : 0, HasSource ? source[i] : 0, target[i]);
    }
}

}   // namespace

RasterOp RasterOp::FromPenMix(int mix) {
    const int table = mix >= R2_BLACK && mix <= R2_WHITE ? mix - 1 : R2_COPYPEN - 1;   // bit 2 * pen + target
    int minterms = 0;
    for (int i = 0; i < 8; ++i) {
        const int pen = i >> 2;
        const int target = i & 1;
        minterms |= ((table >> (2 * pen + target)) & 1) << i;
    }
    return RasterOp(static_cast<BYTE>(minterms));
}

void RasterOp::Apply(const DWORD* pattern, const DWORD* source, DWORD* target, int count) const {
    using MixRow = void (*)(BYTE, const DWORD*, const DWORD*, DWORD*, int);
    static constexpr MixRow kMixers[2][2] = {{Mix<false, false>, Mix<false, true>},
                                             {Mix<true, false>, Mix<true, true>}};
    kMixers[NeedsPattern() ? 1 : 0][NeedsSource() ? 1 : 0](minterms_, pattern, source, target, count);
}

DWORD RasterOp::Apply(DWORD pattern, DWORD source, DWORD target) const {
    return MintermMasks(minterms_).Evaluate(pattern, source, target);
}

}   // namespace rastel::platform
