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
        return _mm256_permutevar8x32_epi32(_mm256_packs_epi16(words, words), _mm256_setr_epi32(0, 4, 1, 5, 0, 0, 0, 0));
    }

    // Blending.
    using PixelBytes = std::uint64_t;
    struct Weights {
        V low, high;
    };
    static V Set64(std::uint64_t value) { return _mm256_set1_epi64x(static_cast<long long>(value)); }
    static V Equal8(V a, V b) { return _mm256_cmpeq_epi8(a, b); }
    static V Subtract8(V a, V b) { return _mm256_sub_epi8(a, b); }
    static V Add16(V a, V b) { return _mm256_add_epi16(a, b); }
    static V Subtract16(V a, V b) { return _mm256_sub_epi16(a, b); }
    static V Min16(V a, V b) { return _mm256_min_epi16(a, b); }
    static bool IsEqual(V a, V b) {
        const V difference = _mm256_xor_si256(a, b);
        return _mm256_testz_si256(difference, difference) != 0;
    }
    static V LoadTwo(const BYTE* at) {
        return _mm256_castsi128_si256(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(at)));
    }
    static void StoreTwo(BYTE* at, V value) {
        _mm_storel_epi64(reinterpret_cast<__m128i*>(at), _mm256_castsi256_si128(value));
    }
    // A byte a pixel to 32 bits a pixel.
    static V WidenPixelBytes(PixelBytes packed) {
        return _mm256_cvtepu8_epi32(_mm_cvtsi64_si128(static_cast<long long>(packed)));
    }
    static V SpreadPixelBytes(PixelBytes packed) {   // each byte four times
        return _mm256_shuffle_epi8(WidenPixelBytes(packed),
                                   InBothLanes(_mm_setr_epi8(0, 0, 0, 0, 4, 4, 4, 4, 8, 8, 8, 8, 12, 12, 12, 12)));
    }
    static V InBothLanes(__m128i lane) { return _mm256_broadcastsi128_si256(lane); }
    static Weights MakeWeights(V weights) {
        const V rest = _mm256_sub_epi8(Set8(128), weights);
        return {_mm256_unpacklo_epi8(rest, weights), _mm256_unpackhi_epi8(rest, weights)};
    }
    // (back * (128 - weight) + source * weight) >> 7, which is back + ((source - back) * weight >> 7). With 128 taken
    // off every byte the sum of products fits signed 16 bits, and 128 comes off the shifted sum.
    static V Blend7(V back, V source, Weights weights) {
        const V bias = Set8(128);
        const V b = Xor(back, bias), s = Xor(source, bias);
        const V low = _mm256_srai_epi16(_mm256_maddubs_epi16(weights.low, _mm256_unpacklo_epi8(b, s)), 7);
        const V high = _mm256_srai_epi16(_mm256_maddubs_epi16(weights.high, _mm256_unpackhi_epi8(b, s)), 7);
        return Xor(_mm256_packs_epi16(low, high), bias);
    }
    // From 32 bits a pixel to 16 bits for each byte of the pixels that WidenLow and WidenHigh give.
    static V RepeatLow(V wide) {
        return _mm256_shuffle_epi8(wide, InBothLanes(_mm_setr_epi8(0, 1, 0, 1, 0, 1, 0, 1, 4, 5, 4, 5, 4, 5, 4, 5)));
    }
    static V RepeatHigh(V wide) {
        return _mm256_shuffle_epi8(wide,
                                   InBothLanes(_mm_setr_epi8(8, 9, 8, 9, 8, 9, 8, 9, 12, 13, 12, 13, 12, 13, 12, 13)));
    }
    static PixelBytes PackPixelBytes(V wide) {
        const V packed =
            _mm256_shuffle_epi8(wide, InBothLanes(_mm_setr_epi8(0, 4, 8, 12, 0, 4, 8, 12, 0, 4, 8, 12, 0, 4, 8, 12)));
        const __m128i both = _mm_unpacklo_epi32(_mm256_castsi256_si128(packed), _mm256_extracti128_si256(packed, 1));
        return static_cast<PixelBytes>(_mm_cvtsi128_si64(both));
    }
    // 65536 / coverage, truncated, at most 65535; 65535 at 0. The quotient of two floats is never rounded up to the
    // next whole number here: it stays at least 1/255 below.
    static V Reciprocals(V coverage) {
        const V divisor = _mm256_max_epi32(coverage, _mm256_set1_epi32(1));
        const V quotient = _mm256_cvttps_epi32(_mm256_div_ps(_mm256_set1_ps(65536.0f), _mm256_cvtepi32_ps(divisor)));
        return _mm256_min_epi32(quotient, _mm256_set1_epi32(65535));
    }

    // Filters.
    static V Add8(V a, V b) { return _mm256_add_epi8(a, b); }
    static V Add32(V a, V b) { return _mm256_add_epi32(a, b); }
    static V Subtract32(V a, V b) { return _mm256_sub_epi32(a, b); }
    static V LoadAsWords(const BYTE* at) {
        return _mm256_cvtepu8_epi16(_mm_loadu_si128(reinterpret_cast<const __m128i*>(at)));
    }
    static V LoadWordsWide(const WORD* at) {
        return _mm256_cvtepu16_epi32(_mm_loadu_si128(reinterpret_cast<const __m128i*>(at)));
    }
    static V PrefixSum32(V a) {
        const V pairs = _mm256_add_epi32(a, _mm256_slli_si256(a, 4));
        const V lanes = _mm256_add_epi32(pairs, _mm256_slli_si256(pairs, 8));
        // The low lane's total goes onto all of the high lane.
        const V total = _mm256_shuffle_epi32(_mm256_permute2x128_si256(lanes, lanes, 0x08), 0xFF);
        return _mm256_add_epi32(lanes, total);
    }
    static V RepeatLast32(V a) { return _mm256_permutevar8x32_epi32(a, _mm256_set1_epi32(7)); }
    static V ScaledDown(V sum, float scale) {
        const __m256 centred = _mm256_add_ps(_mm256_cvtepi32_ps(sum), _mm256_set1_ps(0.5f));
        return _mm256_cvttps_epi32(_mm256_mul_ps(centred, _mm256_set1_ps(scale)));
    }
};

#include "rastel/surface/kernel_bodies.inc"

#include "rastel/surface/blend_bodies.inc"

#include "rastel/surface/filter_bodies.inc"

#include "rastel/surface/filled_table.inc"

}   // namespace

constinit const RowTable avx2Table = FilledTable("avx2", platform::ProcessorHasAvx2);

}   // namespace rastel::kernels
