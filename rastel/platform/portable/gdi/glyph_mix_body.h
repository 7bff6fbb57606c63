// Mixing a colour into pixels of 32 bits, or a level into greys, by coverage, for any processor. Included by one file
// an instruction set: what is here must stay in an unnamed namespace, or the linker would keep one copy for all of
// them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "rastel/platform/portable/types.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace {

// (color * coverage + target * (255 - coverage) + 127) / 255 in both halves of a word. A sum is at most 65152, and
// there (sum + 1 + sum / 256) / 256 is the quotient; neither carries into the other half.
inline DWORD MixHalves(DWORD target, DWORD color, DWORD coverage) {
    const DWORD sum = color * coverage + target * (255 - coverage) + 0x007F007F;
    return ((sum + 0x00010001 + ((sum >> 8) & 0x00FF00FF)) >> 8) & 0x00FF00FF;
}

// Pixels that nothing covers keep all their bits; the others get an alpha byte of 0.
inline void MixPixels(unsigned char* target, const unsigned char* coverage, int count, DWORD color) {
    const DWORD redBlue = color & 0x00FF00FF;
    const DWORD green = (color >> 8) & 0xFF;
    for (int i = 0; i < count; i++) {
        if (coverage[i] != 0) {
            DWORD pixel;
            std::memcpy(&pixel, target + i * 4, sizeof(pixel));
            pixel = MixHalves(pixel & 0x00FF00FF, redBlue, coverage[i]) |
                    (MixHalves((pixel >> 8) & 0xFF, green, coverage[i]) << 8);
            std::memcpy(target + i * 4, &pixel, sizeof(pixel));
        }
    }
}

inline void MixFewGreys(unsigned char* target, const unsigned char* coverage, int count, DWORD level) {
    for (int i = 0; i < count; i++) {
        target[i] = static_cast<unsigned char>(MixHalves(target[i], level, coverage[i]));
    }
}

#if defined(__SSE2__)
// (color * coverage + target * (255 - coverage)) / 255, rounded, on eight channels.
inline __m128i MixChannels(__m128i target, __m128i color, __m128i coverage) {
    const __m128i rest = _mm_sub_epi16(_mm_set1_epi16(255), coverage);
    const __m128i sum = _mm_add_epi16(_mm_add_epi16(_mm_mullo_epi16(color, coverage), _mm_mullo_epi16(target, rest)),
                                      _mm_set1_epi16(128));
    return _mm_mulhi_epu16(sum, _mm_set1_epi16(257));
}

// Four pixels, by a byte of coverage each; those that nothing covers keep all their bits.
inline __m128i MixedFour(__m128i before, std::uint32_t coverage, __m128i wideColor) {
    const __m128i zero = _mm_setzero_si128();
    __m128i shares = _mm_cvtsi32_si128(static_cast<int>(coverage));
    shares = _mm_unpacklo_epi8(shares, shares);
    shares = _mm_unpacklo_epi16(shares, shares);   // each byte four times
    const __m128i low = MixChannels(_mm_unpacklo_epi8(before, zero), wideColor, _mm_unpacklo_epi8(shares, zero));
    const __m128i high = MixChannels(_mm_unpackhi_epi8(before, zero), wideColor, _mm_unpackhi_epi8(shares, zero));
    const __m128i mixed = _mm_and_si128(_mm_packus_epi16(low, high), _mm_set1_epi32(0x00FFFFFF));
    const __m128i bare = _mm_cmpeq_epi8(shares, zero);
    return _mm_or_si128(_mm_and_si128(bare, before), _mm_andnot_si128(bare, mixed));
}

inline __m128i WideColor(DWORD color) {
    return _mm_unpacklo_epi8(_mm_set1_epi32(static_cast<int>(color)), _mm_setzero_si128());
}

inline std::uint32_t FourBytes(const unsigned char* at) {
    std::uint32_t four;
    std::memcpy(&four, at, sizeof(four));
    return four;
}

inline void MixRow(unsigned char* target, const unsigned char* coverage, int count, DWORD color) {
    if (count < 4) {
        MixPixels(target, coverage, count, color);
        return;
    }
    const __m128i wideColor = WideColor(color);
    const auto at = [target](int x) { return reinterpret_cast<__m128i*>(target + x * 4); };
    // The last four are worked out from what was there before any of them is stored.
    const int last = count - 4;
    const __m128i lastMixed = MixedFour(_mm_loadu_si128(at(last)), FourBytes(coverage + last), wideColor);
    for (int x = 0; x < last; x += 4) {
        if (const std::uint32_t four = FourBytes(coverage + x)) {
            _mm_storeu_si128(at(x), MixedFour(_mm_loadu_si128(at(x)), four, wideColor));
        }
    }
    _mm_storeu_si128(at(last), lastMixed);
}

// Bytes of grey.
inline void MixGreys(unsigned char* target, const unsigned char* coverage, int count, DWORD level) {
    if (count < 8) {
        MixFewGreys(target, coverage, count, level);
        return;
    }
    const __m128i wideLevel = _mm_set1_epi16(static_cast<short>(level));
    const auto eight = [](const unsigned char* at) {
        return _mm_unpacklo_epi8(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(at)), _mm_setzero_si128());
    };
    const auto mixed = [&](int x) {
        const __m128i words = MixChannels(eight(target + x), wideLevel, eight(coverage + x));
        return _mm_packus_epi16(words, words);
    };
    const int last = count - 8;
    const __m128i lastMixed = mixed(last);
    for (int x = 0; x < last; x += 8) {
        _mm_storel_epi64(reinterpret_cast<__m128i*>(target + x), mixed(x));
    }
    _mm_storel_epi64(reinterpret_cast<__m128i*>(target + last), lastMixed);
}
#else
inline void MixRow(unsigned char* target, const unsigned char* coverage, int count, DWORD color) {
    MixPixels(target, coverage, count, color);
}

inline void MixGreys(unsigned char* target, const unsigned char* coverage, int count, DWORD level) {
    MixFewGreys(target, coverage, count, level);
}
#endif

inline void MixRows(unsigned char* target, std::ptrdiff_t targetPitch, const unsigned char* coverage,
                    std::ptrdiff_t coveragePitch, int width, int height, DWORD color) {
    for (; height > 0; --height, target += targetPitch, coverage += coveragePitch) {
        MixRow(target, coverage, width, color);
    }
}

inline void MixGreyRows(unsigned char* target, std::ptrdiff_t targetPitch, const unsigned char* coverage,
                        std::ptrdiff_t coveragePitch, int width, int height, DWORD level) {
    for (; height > 0; --height, target += targetPitch, coverage += coveragePitch) {
        MixGreys(target, coverage, width, level);
    }
}

}   // namespace
