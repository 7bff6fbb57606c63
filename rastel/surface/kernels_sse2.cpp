// The vector forms on SSE2, which every x86-64 has.
#include <emmintrin.h>

#include <cstdint>
#include <cstring>

#include "rastel/platform/cpu.h"
#include "rastel/surface/kernel_tables.h"

namespace rastel::kernels {

namespace {

using V = __m128i;

struct Vec {
    static constexpr int bytes = 16;

    static V Load(const BYTE* at) { return _mm_loadu_si128(reinterpret_cast<const V*>(at)); }
    static void Store(BYTE* at, V value) { _mm_storeu_si128(reinterpret_cast<V*>(at), value); }
    static V Set8(BYTE value) { return _mm_set1_epi8(static_cast<char>(value)); }
    static V Set32(DWORD value) { return _mm_set1_epi32(static_cast<int>(value)); }
    static V And(V a, V b) { return _mm_and_si128(a, b); }
    static V AndNot(V mask, V a) { return _mm_andnot_si128(mask, a); }
    static V Or(V a, V b) { return _mm_or_si128(a, b); }
    static V Xor(V a, V b) { return _mm_xor_si128(a, b); }
    static V Select(V mask, V whereSet, V whereClear) { return Or(And(mask, whereSet), AndNot(mask, whereClear)); }
    static V Equal32(V a, V b) { return _mm_cmpeq_epi32(a, b); }
    static V Max8(V a, V b) { return _mm_max_epu8(a, b); }
    static V WidenLow(V a) { return _mm_unpacklo_epi8(a, _mm_setzero_si128()); }
    static V WidenHigh(V a) { return _mm_unpackhi_epi8(a, _mm_setzero_si128()); }
    static V Narrow(V low, V high) { return _mm_packus_epi16(low, high); }   // each up to 255
    static V Multiply16(V a, V b) { return _mm_mullo_epi16(a, b); }
    template <int count>
    static V ShiftRight16(V a) {
        return _mm_srli_epi16(a, count);
    }
    static V WidenLowUp(V a) { return _mm_unpacklo_epi8(_mm_setzero_si128(), a); }   // times 256
    static V WidenHighUp(V a) { return _mm_unpackhi_epi8(_mm_setzero_si128(), a); }
    static V MultiplyHigh16(V a, V b) { return _mm_mulhi_epu16(a, b); }
    static V LoadHalf(const BYTE* at) { return _mm_loadl_epi64(reinterpret_cast<const V*>(at)); }
    static void StoreHalf(BYTE* at, V value) { _mm_storel_epi64(reinterpret_cast<V*>(at), value); }

    // A byte for each of 16 or 8 pixels: 255 where (pixel & mask) equals `color`.
    static V EqualPixels(const BYTE* source, V mask, V color) {
        const auto equal = [=](int i) { return Equal32(And(Load(source + i * bytes), mask), color); };
        return _mm_packs_epi16(_mm_packs_epi32(equal(0), equal(1)), _mm_packs_epi32(equal(2), equal(3)));
    }
    static V EqualPixelsHalf(const BYTE* source, V mask, V color) {
        const auto equal = [=](int i) { return Equal32(And(Load(source + i * bytes), mask), color); };
        const V words = _mm_packs_epi32(equal(0), equal(1));
        return _mm_packs_epi16(words, words);
    }
};

#include "rastel/surface/kernel_bodies.inc"

}   // namespace

constinit const RowTable sse2Table = FilledTable("sse2", platform::ProcessorHasSse2);

}   // namespace rastel::kernels
