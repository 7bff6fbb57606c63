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
    switch (DWORD{minterms_} << 16) {
        case SRCCOPY & 0xFF0000u:
            for (int i = 0; i < count; ++i) {
                target[i] = source[i];
            }
            return;
        case SRCPAINT & 0xFF0000u:
            for (int i = 0; i < count; ++i) {
                target[i] |= source[i];
            }
            return;
        case SRCAND & 0xFF0000u:
            for (int i = 0; i < count; ++i) {
                target[i] &= source[i];
            }
            return;
        case SRCINVERT & 0xFF0000u:
            for (int i = 0; i < count; ++i) {
                target[i] ^= source[i];
            }
            return;
        default:
            break;
    }
    const MintermMasks masks(minterms_);
    const bool needsPattern = NeedsPattern();
    const bool needsSource = NeedsSource();
    for (int i = 0; i < count; ++i) {
        target[i] = masks.Evaluate(needsPattern ? pattern[i] : 0, needsSource ? source[i] : 0, target[i]);
    }
}

DWORD RasterOp::Apply(DWORD pattern, DWORD source, DWORD target) const {
    return MintermMasks(minterms_).Evaluate(pattern, source, target);
}

}   // namespace rastel::platform
