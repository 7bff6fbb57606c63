// The vector forms on SSE2, which every x86-64 has.
#include <emmintrin.h>

#include <bit>
#include <cstdint>
#include <cstring>

#include "rastel/platform/cpu.h"
#include "rastel/surface/kernel_tables.h"
#include "rastel/surface/memory_span.h"
#include "rastel/surface/pinned.h"
#include "rastel/surface/texel_walk.h"

namespace rastel::kernels {

namespace {

using V = __m128i;

struct Vec {
    static constexpr int bytes = 16;

    static V Load(const BYTE* at) { return _mm_loadu_si128(reinterpret_cast<const V*>(at)); }
    static void Store(BYTE* at, V value) { _mm_storeu_si128(reinterpret_cast<V*>(at), value); }
    static void Prefetch(const BYTE* at) { _mm_prefetch(reinterpret_cast<const char*>(at), _MM_HINT_T0); }
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
    static V LoadQuarter(const BYTE* at) {
        int fourBytes;
        std::memcpy(&fourBytes, at, sizeof(fourBytes));
        return _mm_cvtsi32_si128(fourBytes);
    }
    static void StoreHalf(BYTE* at, V value) { _mm_storel_epi64(reinterpret_cast<V*>(at), value); }

    // A byte for each of 16 or 8 pixels: 255 where (pixel & mask) equals `color`.
    static V EqualPixels(const BYTE* source, V mask, V color) {
        const auto equal = [=](int i) { return Equal32(And(Load(source + i * bytes), mask), color); };
        return _mm_packs_epi16(_mm_packs_epi32(equal(0), equal(1)), _mm_packs_epi32(equal(2), equal(3)));
    }
    static V AlphaBytes(const BYTE* source) {   // the fourth bytes of 16 pixels
        const auto alpha = [=](int i) { return _mm_srli_epi32(Load(source + i * bytes), 24); };
        return _mm_packus_epi16(_mm_packs_epi32(alpha(0), alpha(1)), _mm_packs_epi32(alpha(2), alpha(3)));
    }
    static V EqualPixelsHalf(const BYTE* source, V mask, V color) {
        const auto equal = [=](int i) { return Equal32(And(Load(source + i * bytes), mask), color); };
        const V words = _mm_packs_epi32(equal(0), equal(1));
        return _mm_packs_epi16(words, words);
    }

    // Display formats.
    template <int count>
    static V ShiftRight32(V a) {
        return _mm_srli_epi32(a, count);
    }
    static V MultiplyAdd16(V a, V b) { return _mm_madd_epi16(a, b); }
    static V LowWords(V first, V second) {   // of 32-bit values up to 65535: made signed, as the packing wants them
        const auto asSigned = [](V a) { return _mm_srai_epi32(_mm_slli_epi32(a, 16), 16); };
        return _mm_packs_epi32(asSigned(first), asSigned(second));
    }
    template <class AskBelow>
    static int DropFourthBytes(BYTE*, const BYTE*, int, AskBelow) {
        return 0;   // no byte shuffle in this set
    }

    // Blending. The plane bytes of two vectors of pixels become the words of one.
    struct Weights {
        V low, high;   // for the pixels that WidenLow and WidenHigh give
    };
    static V Set64(std::uint64_t value) { return _mm_set1_epi64x(static_cast<long long>(value)); }
    static V Add16(V a, V b) { return _mm_add_epi16(a, b); }
    static V Subtract16(V a, V b) { return _mm_sub_epi16(a, b); }
    static V Min16(V a, V b) { return _mm_min_epi16(a, b); }
    template <int count>
    static V ShiftLeft16(V a) {
        return _mm_slli_epi16(a, count);
    }
    static V AddSaturated8(V a, V b) { return _mm_adds_epu8(a, b); }
    static bool IsEqual(V a, V b) { return _mm_movemask_epi8(_mm_cmpeq_epi8(a, b)) == 0xFFFF; }
    static V LoadTwo(const BYTE* at) { return LoadHalf(at); }
    static void StoreTwo(BYTE* at, V value) { StoreHalf(at, value); }
    static V PixelWords(const BYTE* at) { return WidenLow(LoadHalf(at)); }
    static V PixelWordsHalf(const BYTE* at) { return WidenLow(LoadQuarter(at)); }   // of one vector
    static void StorePixelWords(BYTE* at, V words) { StoreHalf(at, Narrow(words, words)); }
    static void StorePixelWordsHalf(BYTE* at, V words) {
        const int pixelBytes = _mm_cvtsi128_si32(Narrow(words, words));
        std::memcpy(at, &pixelBytes, sizeof(pixelBytes));
    }
    // What "over" does with the words of pixels.
    struct PixelWordSteps {
        // The words of the first (0) or second (1) vector of pixels, each twice.
        template <int vector>
        static V RepeatTwice(V words) {
            return vector == 0 ? _mm_unpacklo_epi16(words, words) : _mm_unpackhi_epi16(words, words);
        }
        // 65536 / coverage, truncated, at most 65535. The quotient of two floats is never rounded up to the next whole
        // number here: it stays at least 1/255 below.
        static V ReciprocalWords(V coverage) {
            const V divisor = _mm_max_epi16(coverage, _mm_set1_epi16(1));
            const auto quotient = [](V wide) {
                const V whole = _mm_cvttps_epi32(_mm_div_ps(_mm_set1_ps(65536.0f), _mm_cvtepi32_ps(wide)));
                return _mm_sub_epi32(whole, _mm_set1_epi32(32768));   // packing takes signed numbers
            };
            return Xor(_mm_packs_epi32(quotient(_mm_unpacklo_epi16(divisor, _mm_setzero_si128())),
                                       quotient(_mm_unpackhi_epi16(divisor, _mm_setzero_si128()))),
                       _mm_set1_epi16(-32768));
        }
    };
    struct PackedWeights {
        V first, second;   // words for two vectors of pixels each
    };
    // The steps of a blend.
    struct BlendSteps {
        static PackedWeights PackWeights(V weights) { return {WidenLow(weights), WidenHigh(weights)}; }
        template <int vector>
        static Weights WeightsOf(V packed) {
            const V twice = PixelWordSteps::RepeatTwice<vector>(packed);
            return {_mm_unpacklo_epi32(twice, twice), _mm_unpackhi_epi32(twice, twice)};
        }
        // back + ((source - back) * weight >> 7), weights 0 to 128: the product fits 16 bits. A pair's first pixel gets
        // alpha byte 0.
        static V BlendPairs(V back, V source, const Weights& weights) {
            const auto blend = [](V b, V s, V weight) {
                return _mm_add_epi16(b, _mm_srai_epi16(_mm_mullo_epi16(_mm_sub_epi16(s, b), weight), 7));
            };
            return And(Set64(0xFFFFFFFF00FFFFFF), Narrow(blend(WidenLow(back), WidenLow(source), weights.low),
                                                         blend(WidenHigh(back), WidenHigh(source), weights.high)));
        }
    };

    // Textures. Nothing is gathered in this set.
    template <class... Anything>
    static bool GatherTexels(const Anything&...) {
        return false;
    }
    template <class... Anything>
    static bool GatherCovered(const Anything&...) {
        return false;
    }
    template <class... Anything>
    static bool GatherBytes(const Anything&...) {
        return false;
    }
    static V CoverageWords(const BYTE* at) {   // of one vector of pixels
        const V words = WidenLow(LoadQuarter(at));
        return _mm_unpacklo_epi16(words, words);
    }

    // Filters.
    static DWORD SignBits(V a) { return static_cast<DWORD>(_mm_movemask_epi8(a)); }
    static V BytesOfBits(DWORD bits) {   // 255 for each bit that is set
        const V once = _mm_cvtsi32_si128(static_cast<int>(bits));
        const V fourTimes = _mm_shufflelo_epi16(_mm_unpacklo_epi8(once, once), _MM_SHUFFLE(1, 1, 0, 0));
        const V ownBit = Set64(0x8040201008040201);
        return Equal8(And(_mm_shuffle_epi32(fourTimes, _MM_SHUFFLE(1, 1, 0, 0)), ownBit), ownBit);
    }
    static V Equal8(V a, V b) { return _mm_cmpeq_epi8(a, b); }
    static V Subtract8(V a, V b) { return _mm_sub_epi8(a, b); }
    static V Add8(V a, V b) { return _mm_add_epi8(a, b); }
    static V Add32(V a, V b) { return _mm_add_epi32(a, b); }
    static V Subtract32(V a, V b) { return _mm_sub_epi32(a, b); }
    static V PrefixSum32(V a) {
        const V pairs = _mm_add_epi32(a, _mm_slli_si128(a, 4));
        return _mm_add_epi32(pairs, _mm_slli_si128(pairs, 8));
    }
    static V RepeatLast32(V a) { return _mm_shuffle_epi32(a, 0xFF); }
    static V Greater16(V a, V b) { return _mm_cmpgt_epi16(a, b); }
    static V ShiftRight16By(V a, int count) { return _mm_srl_epi16(a, _mm_cvtsi32_si128(count)); }
    template <int count>
    static V ShiftRightSigned16(V a) {
        return _mm_srai_epi16(a, count);
    }
    template <int count>
    static V ShiftRightSigned32(V a) {
        return _mm_srai_epi32(a, count);
    }
    template <int count>
    static V ShiftLeft32(V a) {
        return _mm_slli_epi32(a, count);
    }
    static V LowThenHighWords(V low, V high) {   // of 32 bits
        return Select(Set32(0xFFFF), low, high);
    }
};

#include "rastel/surface/kernel_bodies.inc"

#include "rastel/surface/blend_bodies.inc"

#include "rastel/surface/filter_bodies.inc"

#include "rastel/surface/texture_bodies.inc"

#include "rastel/surface/convert_bodies.inc"

#include "rastel/surface/filled_table.inc"

}   // namespace

constinit const RowTable sse2Table = FilledTable("sse2", platform::ProcessorHasSse2);

}   // namespace rastel::kernels
