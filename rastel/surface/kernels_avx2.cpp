// The vector forms on AVX2.
#include <immintrin.h>

#include <cstdint>
#include <cstring>

#include "rastel/platform/cpu.h"
#include "rastel/surface/kernel_tables.h"

namespace rastel::kernels {

namespace {

using V = __m256i;

struct Vec {
    static constexpr int bytes = 32;

    static V Load(const BYTE* at) { return _mm256_loadu_si256(reinterpret_cast<const V*>(at)); }
    static void Store(BYTE* at, V value) { _mm256_storeu_si256(reinterpret_cast<V*>(at), value); }
    static V Set8(BYTE value) { return _mm256_set1_epi8(static_cast<char>(value)); }
    static V Set32(DWORD value) { return _mm256_set1_epi32(static_cast<int>(value)); }
    static V And(V a, V b) { return _mm256_and_si256(a, b); }
    static V AndNot(V mask, V a) { return _mm256_andnot_si256(mask, a); }
    static V Or(V a, V b) { return _mm256_or_si256(a, b); }
    static V Xor(V a, V b) { return _mm256_xor_si256(a, b); }
    static V Select(V mask, V whereSet, V whereClear) { return _mm256_blendv_epi8(whereClear, whereSet, mask); }
    static V Equal32(V a, V b) { return _mm256_cmpeq_epi32(a, b); }
    static V Max8(V a, V b) { return _mm256_max_epu8(a, b); }
    static V WidenLow(V a) { return _mm256_unpacklo_epi8(a, _mm256_setzero_si256()); }
    static V WidenHigh(V a) { return _mm256_unpackhi_epi8(a, _mm256_setzero_si256()); }
    static V Narrow(V low, V high) { return _mm256_packus_epi16(low, high); }   // each up to 255
    static V Multiply16(V a, V b) { return _mm256_mullo_epi16(a, b); }
    template <int count>
    static V ShiftRight16(V a) {
        return _mm256_srli_epi16(a, count);
    }
    static V WidenLowUp(V a) { return _mm256_unpacklo_epi8(_mm256_setzero_si256(), a); }   // times 256
    static V WidenHighUp(V a) { return _mm256_unpackhi_epi8(_mm256_setzero_si256(), a); }
    static V MultiplyHigh16(V a, V b) { return _mm256_mulhi_epu16(a, b); }
    static V LoadHalf(const BYTE* at) {
        return _mm256_castsi128_si256(_mm_loadu_si128(reinterpret_cast<const __m128i*>(at)));
    }
    static void StoreHalf(BYTE* at, V value) {
        _mm_storeu_si128(reinterpret_cast<__m128i*>(at), _mm256_castsi256_si128(value));
    }

    // A byte for each of 32 or 16 pixels: 255 where (pixel & mask) equals `color`. Packing works within 16-byte lanes,
    // so the groups of four bytes are put in order at the end.
    static V EqualPixels(const BYTE* source, V mask, V color) {
        const auto equal = [=](int i) { return Equal32(And(Load(source + i * bytes), mask), color); };
        const V packed =
            _mm256_packs_epi16(_mm256_packs_epi32(equal(0), equal(1)), _mm256_packs_epi32(equal(2), equal(3)));
        return _mm256_permutevar8x32_epi32(packed, _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7));
    }
    static V EqualPixelsHalf(const BYTE* source, V mask, V color) {
        const auto equal = [=](int i) { return Equal32(And(Load(source + i * bytes), mask), color); };
        const V words = _mm256_packs_epi32(equal(0), equal(1));
        return _mm256_permutevar8x32_epi32(_mm256_packs_epi16(words, words),
                                           _mm256_setr_epi32(0, 4, 1, 5, 0, 0, 0, 0));
    }
};

#include "rastel/surface/kernel_bodies.inc"

}   // namespace

constinit const RowTable avx2Table = FilledTable("avx2", platform::ProcessorHasAvx2);

}   // namespace rastel::kernels
