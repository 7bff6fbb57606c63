// The conversions of whole rows, written for a compiler that makes vectors of them. Included by one file an instruction
// set: what is here must stay in an unnamed namespace, or the linker would keep one copy for all of them.
#pragma once

#include <cstring>

#include "rastel/platform/portable/types.h"

namespace {

inline DWORD Load32(const unsigned char* source) {
    DWORD value;
    std::memcpy(&value, source, sizeof(value));
    return value;
}

inline void Store32(unsigned char* target, DWORD value) {
    std::memcpy(target, &value, sizeof(value));
}

inline void From32To24(const unsigned char* __restrict source, unsigned char* __restrict target, int count) {
    // Four pixels make three whole words.
    for (; count >= 4; count -= 4, source += 16, target += 12) {
        const DWORD a = Load32(source) & 0xFFFFFF;
        const DWORD b = Load32(source + 4) & 0xFFFFFF;
        const DWORD c = Load32(source + 8) & 0xFFFFFF;
        const DWORD d = Load32(source + 12) & 0xFFFFFF;
        Store32(target, a | (b << 24));
        Store32(target + 4, (b >> 8) | (c << 16));
        Store32(target + 8, (c >> 16) | (d << 8));
    }
    for (; count > 0; --count, source += 4, target += 3) {
        target[0] = source[0];
        target[1] = source[1];
        target[2] = source[2];
    }
}

inline void From24To32(const unsigned char* __restrict source, unsigned char* __restrict target, int count) {
    for (; count >= 4; count -= 4, source += 12, target += 16) {
        const DWORD a = Load32(source);
        const DWORD b = Load32(source + 4);
        const DWORD c = Load32(source + 8);
        Store32(target, a & 0xFFFFFF);
        Store32(target + 4, (a >> 24) | ((b & 0xFFFF) << 8));
        Store32(target + 8, (b >> 16) | ((c & 0xFF) << 16));
        Store32(target + 12, c >> 8);
    }
    for (; count > 0; --count, source += 3, target += 4) {
        Store32(target, DWORD{source[0]} | (DWORD{source[1]} << 8) | (DWORD{source[2]} << 16));
    }
}

template <int GreenBits>
inline void From32To16(const unsigned char* __restrict source, unsigned char* __restrict target, int count) {
    constexpr int kRedShift = GreenBits + 5;
    constexpr DWORD kGreenMask = ((1u << GreenBits) - 1) << 5;
    constexpr DWORD kRedMask = 0x1Fu << kRedShift;
    for (int i = 0; i < count; ++i) {
        const DWORD value = Load32(source + static_cast<std::ptrdiff_t>(i) * 4);
        const auto packed =
            static_cast<std::uint16_t>(((value >> (19 - kRedShift)) & kRedMask) |
                                       ((value >> (11 - GreenBits)) & kGreenMask) | ((value >> 3) & 0x1F));
        std::memcpy(target + static_cast<std::ptrdiff_t>(i) * 2, &packed, sizeof(packed));
    }
}

template <int GreenBits>
inline void From16To32(const unsigned char* __restrict source, unsigned char* __restrict target, int count) {
    for (int i = 0; i < count; ++i) {
        std::uint16_t packed;
        std::memcpy(&packed, source + static_cast<std::ptrdiff_t>(i) * 2, sizeof(packed));
        const DWORD red = (DWORD{packed} >> (GreenBits + 5)) & 0x1F;
        const DWORD green = (DWORD{packed} >> 5) & ((1u << GreenBits) - 1);
        const DWORD blue = DWORD{packed} & 0x1F;
        Store32(target + static_cast<std::ptrdiff_t>(i) * 4,
                (((red << 3) | (red >> 2)) << 16) |
                    (((green << (8 - GreenBits)) | (green >> (2 * GreenBits - 8))) << 8) | (blue << 3) | (blue >> 2));
    }
}

inline void From32ToGrey(const unsigned char* __restrict source, unsigned char* __restrict target, int count) {
    for (int i = 0; i < count; ++i) {
        const DWORD value = Load32(source + static_cast<std::ptrdiff_t>(i) * 4);
        const DWORD sum = (value & 0xFF) + ((value >> 8) & 0xFF) + ((value >> 16) & 0xFF);
        // (sum + 1) / 3: below 2^15 the factor 2^16 / 3, rounded up, gives the exact quotient.
        target[i] = static_cast<unsigned char>(((sum + 1) * 21846) >> 16);
    }
}

}   // namespace
