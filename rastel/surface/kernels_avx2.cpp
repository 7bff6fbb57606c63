// The vector forms on AVX2.
#include <immintrin.h>

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <utility>

#include "rastel/platform/cpu.h"
#include "rastel/surface/kernel_tables.h"
#include "rastel/surface/memory_span.h"
#include "rastel/surface/pinned.h"
#include "rastel/surface/texel_walk.h"

namespace rastel::kernels {

namespace {

using V = __m256i;

struct Vec {
    static constexpr int bytes = 32;

    static V Load(const BYTE* at) { return _mm256_loadu_si256(reinterpret_cast<const V*>(at)); }
    static void Store(BYTE* at, V value) { _mm256_storeu_si256(reinterpret_cast<V*>(at), value); }
    static void Prefetch(const BYTE* at) { _mm_prefetch(reinterpret_cast<const char*>(at), _MM_HINT_T0); }
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
    static V LoadQuarter(const BYTE* at) {
        return _mm256_castsi128_si256(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(at)));
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
    static V AlphaBytes(const BYTE* source) {   // the fourth bytes of 32 pixels
        const auto alpha = [=](int i) { return _mm256_srli_epi32(Load(source + i * bytes), 24); };
        const V packed =
            _mm256_packus_epi16(_mm256_packs_epi32(alpha(0), alpha(1)), _mm256_packs_epi32(alpha(2), alpha(3)));
        return _mm256_permutevar8x32_epi32(packed, _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7));
    }
    static V EqualPixelsHalf(const BYTE* source, V mask, V color) {
        const auto equal = [=](int i) { return Equal32(And(Load(source + i * bytes), mask), color); };
        const V words = _mm256_packs_epi32(equal(0), equal(1));
        return _mm256_permutevar8x32_epi32(_mm256_packs_epi16(words, words), _mm256_setr_epi32(0, 4, 1, 5, 0, 0, 0, 0));
    }

    // Display formats.
    template <int count>
    static V ShiftRight32(V a) {
        return _mm256_srli_epi32(a, count);
    }
    static V MultiplyAdd16(V a, V b) { return _mm256_madd_epi16(a, b); }
    static V LowWords(V first, V second) {   // of 32-bit values up to 65535, in order
        return _mm256_permute4x64_epi64(_mm256_packus_epi32(first, second), 0xD8);
    }
    // Stores reach beyond the pixels that they are for, but never beyond the row's. Returns how many it has done.
    // `askBelow(x)` is called once for each cache line of the source, with its first pixel.
    template <class AskBelow>
    static int DropFourthBytes(BYTE* target, const BYTE* source, int width, AskBelow askBelow) {
        const __m128i keptHalf = _mm_setr_epi8(0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, -1, -1, -1, -1);
        const V kept = _mm256_broadcastsi128_si256(keptHalf);
        const auto three = [=](const BYTE* at) { return _mm256_shuffle_epi8(Load(at), kept); };
        // Each group of 8 pixels is turned so that its bytes meet those of the group before at a vector's end.
        const V first = _mm256_setr_epi32(0, 1, 2, 4, 5, 6, 3, 7), second = _mm256_setr_epi32(2, 4, 5, 6, 3, 7, 0, 1),
                third = _mm256_setr_epi32(5, 6, 3, 7, 0, 1, 2, 4), fourth = _mm256_setr_epi32(3, 7, 0, 1, 2, 4, 5, 6);
        int x = 0;
        for (; x + 32 <= width; x += 32) {
            const BYTE* const from = source + x * 4;
            BYTE* const to = target + x * 3;
            askBelow(x);
            askBelow(x + 16);
            const V a = _mm256_permutevar8x32_epi32(three(from), first),
                    b = _mm256_permutevar8x32_epi32(three(from + bytes), second),
                    c = _mm256_permutevar8x32_epi32(three(from + 2 * bytes), third),
                    d = _mm256_permutevar8x32_epi32(three(from + 3 * bytes), fourth);
            Store(to, _mm256_blend_epi32(a, b, 0xC0));
            Store(to + bytes, _mm256_blend_epi32(b, c, 0xF0));
            Store(to + 2 * bytes, _mm256_blend_epi32(c, d, 0xFC));
        }
        for (; x + 11 <= width; x += 8) {
            Store(target + x * 3, _mm256_permutevar8x32_epi32(three(source + x * 4), first));
        }
        for (; x + 6 <= width; x += 4) {
            const __m128i pixels = _mm_loadu_si128(reinterpret_cast<const __m128i*>(source + x * 4));
            _mm_storeu_si128(reinterpret_cast<__m128i*>(target + x * 3), _mm_shuffle_epi8(pixels, keptHalf));
        }
        return x;
    }

    // Blending. The plane bytes of two vectors of pixels become the words of one, ordered as unpacking within lanes
    // wants them: pixels 0 to 3 and 8 to 11 in the low lane, 4 to 7 and 12 to 15 in the high one.
    struct Weights {
        V low, high;   // for the pixels that WidenLow and WidenHigh give
    };
    static V Set64(std::uint64_t value) { return _mm256_set1_epi64x(static_cast<long long>(value)); }
    static V Add16(V a, V b) { return _mm256_add_epi16(a, b); }
    static V Subtract16(V a, V b) { return _mm256_sub_epi16(a, b); }
    static V Min16(V a, V b) { return _mm256_min_epi16(a, b); }
    template <int count>
    static V ShiftLeft16(V a) {
        return _mm256_slli_epi16(a, count);
    }
    static V AddSaturated8(V a, V b) { return _mm256_adds_epu8(a, b); }
    static bool IsEqual(V a, V b) {
        const V difference = _mm256_xor_si256(a, b);
        return _mm256_testz_si256(difference, difference) != 0;
    }
    static V LoadTwo(const BYTE* at) { return LoadQuarter(at); }
    static void StoreTwo(BYTE* at, V value) {
        _mm_storel_epi64(reinterpret_cast<__m128i*>(at), _mm256_castsi256_si128(value));
    }
    static V InBothLanes(__m128i lane) { return _mm256_broadcastsi128_si256(lane); }
    static V OrderedWords(__m128i pixelBytes) {
        return _mm256_cvtepu8_epi16(_mm_shuffle_epi32(pixelBytes, _MM_SHUFFLE(3, 1, 2, 0)));
    }
    static V PixelWords(const BYTE* at) { return OrderedWords(_mm_loadu_si128(reinterpret_cast<const __m128i*>(at))); }
    static V PixelWordsHalf(const BYTE* at) {   // of one vector
        return OrderedWords(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(at)));
    }
    static void StorePixelWords(BYTE* at, V words) {
        _mm_storeu_si128(reinterpret_cast<__m128i*>(at), PackedWords(words));
    }
    static void StorePixelWordsHalf(BYTE* at, V words) {
        _mm_storel_epi64(reinterpret_cast<__m128i*>(at), PackedWords(words));
    }
    static __m128i PackedWords(V words) {
        const V packed = _mm256_packus_epi16(words, words);
        return _mm_unpacklo_epi32(_mm256_castsi256_si128(packed), _mm256_extracti128_si256(packed, 1));
    }
    // A word for each of 32 weights: the bytes weight - 128 and -weight. Only below 0 is there room for 128.
    struct PackedWeights {
        V first, second;   // for two vectors of pixels each, in the order of PixelWords
    };
    // The steps of a blend and the constants that they use, to be made once for a rectangle.
    struct BlendSteps {
        V order = Pinned(_mm256_setr_epi32(0, 2, 4, 6, 1, 3, 5, 7)), topBits = Pinned(Set8(128));
        V firstLow = Pinned(RepeatedWords(0)), firstHigh = Pinned(RepeatedWords(4));
        V secondLow = Pinned(RepeatedWords(8)), secondHigh = Pinned(RepeatedWords(12));
        V minus512 = Pinned(_mm256_set1_epi16(-512));

        PackedWeights PackWeights(V weights) const {
            const V ordered = _mm256_permutevar8x32_epi32(weights, order);
            const V back = Xor(ordered, topBits), source = Subtract8(_mm256_setzero_si256(), ordered);
            return {_mm256_unpacklo_epi8(back, source), _mm256_unpackhi_epi8(back, source)};
        }
        // The words of the first (0) or second (1) vector of pixels, each for the four bytes of a pixel, but nothing
        // for the alpha byte of a pair's first pixel.
        template <int vector>
        Weights WeightsOf(V packed) const {
            return {_mm256_shuffle_epi8(packed, vector == 0 ? firstLow : secondLow),
                    _mm256_shuffle_epi8(packed, vector == 0 ? firstHigh : secondHigh)};
        }
        // (back * (128 - weight) + source * weight) >> 7, which is back + ((source - back) * weight >> 7). The sum
        // comes out negative; times -512 its high half is the sum shifted by 7. A pair's first pixel gets alpha byte 0.
        V BlendPairs(V back, V source, const Weights& weights) const {
            const auto blend = [this](V bytes, V weight) {
                return _mm256_mulhi_epi16(_mm256_maddubs_epi16(bytes, weight), minus512);
            };
            return Narrow(blend(_mm256_unpacklo_epi8(back, source), weights.low),
                          blend(_mm256_unpackhi_epi8(back, source), weights.high));
        }

    private:
        static V RepeatedWords(char at) {
            const __m128i first = _mm_setr_epi8(0, 1, 0, 1, 0, 1, -128, -128, 2, 3, 2, 3, 2, 3, 2, 3);
            return InBothLanes(
                _mm_add_epi8(first, _mm_and_si128(_mm_cmpgt_epi8(first, _mm_set1_epi8(-1)), _mm_set1_epi8(at))));
        }
    };
    // What "over" does with the words of pixels, and its constants.
    struct PixelWordSteps {
        V repeatFirst = Pinned(InBothLanes(_mm_setr_epi8(0, 1, 0, 1, 2, 3, 2, 3, 4, 5, 4, 5, 6, 7, 6, 7)));
        V repeatSecond = Pinned(InBothLanes(_mm_setr_epi8(8, 9, 8, 9, 10, 11, 10, 11, 12, 13, 12, 13, 14, 15, 14, 15)));
        V one = Pinned(_mm256_set1_epi16(1));
        __m256 dividend = Pinned(_mm256_set1_ps(65536.0f));

        // The words of the first (0) or second (1) vector of pixels, each twice.
        template <int vector>
        V RepeatTwice(V words) const {
            return _mm256_shuffle_epi8(words, vector == 0 ? repeatFirst : repeatSecond);
        }
        // 65536 / coverage, truncated, at most 65535. The quotient of two floats is never rounded up to the next whole
        // number here: it stays at least 1/255 below.
        V ReciprocalWords(V coverage) const {
            const V divisor = _mm256_max_epi16(coverage, one);
            const auto quotient = [this](V wide) {
                return _mm256_cvttps_epi32(_mm256_div_ps(dividend, _mm256_cvtepi32_ps(wide)));
            };
            return _mm256_packus_epi32(quotient(_mm256_unpacklo_epi16(divisor, _mm256_setzero_si256())),
                                       quotient(_mm256_unpackhi_epi16(divisor, _mm256_setzero_si256())));
        }
    };

    // Textures. Where the eight texels from a line's first one on lie, and the next eight, and so on.
    class EightPlaces {
    public:
        explicit EightPlaces(const TexelLine& line)
            : u_(Lanes(line.u, line.stepU)),
              v_(Lanes(line.v, line.stepV)),
              nextU_(Set32(line.stepU * 8)),
              nextV_(Set32(line.stepV * 8)) {}
        V Next() {
            const V places = _mm256_blend_epi16(_mm256_srli_epi32(v_, 16), u_, 0xAA);
            u_ = Add32(u_, nextU_);
            v_ = Add32(v_, nextV_);
            return places;
        }

    private:
        static V Lanes(DWORD first, DWORD step) {
            return Add32(Set32(first), _mm256_mullo_epi32(_mm256_setr_epi32(0, 1, 2, 3, 4, 5, 6, 7), Set32(step)));
        }
        V u_, v_, nextU_, nextV_;
    };
    // Runs `group(target, places)` for all texels, eight by eight; the last group may begin with texels that have been
    // done. A place is the texel's row in the low word and its column in the high one. False, and nothing is done, for
    // fewer texels than a group has.
    template <int pixelBytes, class Group>
    static bool ForGroups(const TexelRow& row, Group group) {
        if (row.count < 8) {
            return false;
        }
        for (int first = 0, end = row.count & ~7;; first = row.count - 8, end = row.count) {
            EightPlaces places(row.walk.After(first));
            for (int x = first; x < end; x += 8) {
                group(row.target + x * pixelBytes, places.Next());
            }
            if (end == row.count) {
                return true;
            }
        }
    }
    // Eight texels of each row before the next eight of the first.
    template <int pixelBytes, class Group>
    static bool ForGroups(const TexelTile& tile, Group group) {
        const auto begin = [&]<std::size_t... rows>(std::index_sequence<rows...>) {
            return std::array{EightPlaces(tile.lines[rows])...};
        };
        auto places = begin(std::make_index_sequence<tileRows>());
        for (int x = 0; x < tile.count; x += 8) {
            BYTE* target = tile.target + x * pixelBytes;
            for (EightPlaces& inRow : places) {
                group(target, inRow.Next());
                target += tile.targetPitch;
            }
        }
        return true;
    }
    // How far from the first texel places lie, in texels, by a multiplication with the pitch in texels. Rows and
    // columns fit 16 bits, and so must the pitch.
    static bool FitsWord(int pitch) { return pitch <= 32767 && pitch >= -32768; }
    static V PlaceFactors(int pitch) { return Set32((static_cast<DWORD>(pitch) & 0xFFFF) | 0x10000); }
    // Indexes out of the register by twos, which is cheaper than one by one and than through memory.
    struct Eight {
        explicit Eight(V indexes) {
            const auto two = [this](int i, std::int64_t both) {
                at[i] = static_cast<int>(both);
                at[i + 1] = both >> 32;
            };
            const __m128i low = _mm256_castsi256_si128(indexes), high = _mm256_extracti128_si256(indexes, 1);
            two(0, _mm_cvtsi128_si64(low));
            two(2, _mm_extract_epi64(low, 1));
            two(4, _mm_cvtsi128_si64(high));
            two(6, _mm_extract_epi64(high, 1));
        }
        std::ptrdiff_t at[8];
    };
    // Loads one by one, which beats the processors' own gather.
    static V TexelsAt(const BYTE* source, const Eight& indexes) {
        const auto texel = [=, &indexes](int i) {
            int bits;
            std::memcpy(&bits, source + indexes.at[i] * 4, sizeof(bits));
            return bits;
        };
        const auto four = [=](int i) {
            return _mm_unpacklo_epi64(_mm_insert_epi32(_mm_cvtsi32_si128(texel(i)), texel(i + 1), 1),
                                      _mm_insert_epi32(_mm_cvtsi32_si128(texel(i + 2)), texel(i + 3), 1));
        };
        return _mm256_inserti128_si256(_mm256_castsi128_si256(four(0)), four(4), 1);
    }
    static __m128i BytesAt(const BYTE* source, const Eight& indexes) {
        const auto four = [=, &indexes](int i) {
            __m128i bytesThere = _mm_cvtsi32_si128(source[indexes.at[i]]);
            bytesThere = _mm_insert_epi8(bytesThere, source[indexes.at[i + 1]], 1);
            bytesThere = _mm_insert_epi8(bytesThere, source[indexes.at[i + 2]], 2);
            return _mm_insert_epi8(bytesThere, source[indexes.at[i + 3]], 3);
        };
        return _mm_unpacklo_epi32(four(0), four(4));
    }
    // use(target, texels) for a TexelRow or a TexelTile, a row's texel perhaps twice.
    template <class Texels, class Use>
    static bool GatherTexels(const BYTE* source, int pitch, const Texels& wanted, Use use) {
        const V factors = PlaceFactors(pitch / 4);
        return pitch % 4 == 0 && FitsWord(pitch / 4) && ForGroups<4>(wanted, [=](BYTE* target, V places) {
                   use(target, TexelsAt(source, Eight(_mm256_madd_epi16(places, factors))));
               });
    }
    // blend(target, texels, coverage), with the bytes of a plane at the same places as by CoverageWords, or
    // replace(target, texels) where all of them are solid. Texels of no coverage may be left out.
    template <class Texels, class Replace, class Blend>
    static bool GatherCovered(const BYTE* source, int pitch, const BYTE* plane, int planePitch, const Texels& wanted,
                              Replace replace, Blend blend) {
        if (pitch % 4 != 0 || !FitsWord(pitch / 4) || !FitsWord(planePitch)) {
            return false;
        }
        const V factors = PlaceFactors(pitch / 4), planeFactors = PlaceFactors(planePitch);
        const auto combine = [=](BYTE* target, const Eight& indexes, const Eight& planeIndexes) {
            const __m128i coverage = BytesAt(plane, planeIndexes);
            if (_mm_testc_si128(coverage, _mm_set_epi64x(0, -1)) != 0) {
                replace(target, TexelsAt(source, indexes));
            } else if (_mm_testz_si128(coverage, coverage) == 0) {
                blend(target, TexelsAt(source, indexes), RepeatedWords(coverage));
            }
        };
        if (pitch / 4 == planePitch) {   // as stores of one size mostly have them
            return ForGroups<4>(wanted, [=](BYTE* target, V places) {
                const Eight indexes(_mm256_madd_epi16(places, factors));
                combine(target, indexes, indexes);
            });
        }
        return ForGroups<4>(wanted, [=](BYTE* target, V places) {
            combine(target, Eight(_mm256_madd_epi16(places, factors)), Eight(_mm256_madd_epi16(places, planeFactors)));
        });
    }
    template <class Texels>
    static bool GatherBytes(const BYTE* source, int pitch, const Texels& wanted) {
        const V factors = PlaceFactors(pitch);
        return FitsWord(pitch) && ForGroups<1>(wanted, [=](BYTE* target, V places) {
                   const Eight indexes(_mm256_madd_epi16(places, factors));
                   _mm_storel_epi64(reinterpret_cast<__m128i*>(target), BytesAt(source, indexes));
               });
    }
    // Each of the low 8 bytes as two words.
    static V RepeatedWords(__m128i eightBytes) {
        const V order = _mm256_setr_epi8(0, -1, 0, -1, 1, -1, 1, -1, 2, -1, 2, -1, 3, -1, 3, -1, 4, -1, 4, -1, 5, -1, 5,
                                         -1, 6, -1, 6, -1, 7, -1, 7, -1);
        return _mm256_shuffle_epi8(_mm256_broadcastq_epi64(eightBytes), order);
    }
    static V CoverageWords(const BYTE* at) {   // of one vector of pixels
        return RepeatedWords(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(at)));
    }

    // Filters.
    static DWORD SignBits(V a) { return static_cast<DWORD>(_mm256_movemask_epi8(a)); }
    static V BytesOfBits(DWORD bits) {   // 255 for each bit that is set
        const V inBytes =
            _mm256_shuffle_epi8(Set32(bits), _mm256_setr_epi8(0, 0, 0, 0, 0, 0, 0, 0, 1, 1, 1, 1, 1, 1, 1, 1, 2, 2, 2,
                                                              2, 2, 2, 2, 2, 3, 3, 3, 3, 3, 3, 3, 3));
        const V ownBit = Set64(0x8040201008040201);
        return Equal8(And(inBytes, ownBit), ownBit);
    }
    static V Equal8(V a, V b) { return _mm256_cmpeq_epi8(a, b); }
    static V Subtract8(V a, V b) { return _mm256_sub_epi8(a, b); }
    static V Add8(V a, V b) { return _mm256_add_epi8(a, b); }
    static V Add32(V a, V b) { return _mm256_add_epi32(a, b); }
    static V Subtract32(V a, V b) { return _mm256_sub_epi32(a, b); }
    static V PrefixSum32(V a) {
        const V pairs = _mm256_add_epi32(a, _mm256_slli_si256(a, 4));
        const V lanes = _mm256_add_epi32(pairs, _mm256_slli_si256(pairs, 8));
        // The low lane's total goes onto all of the high lane.
        const V total = _mm256_shuffle_epi32(_mm256_permute2x128_si256(lanes, lanes, 0x08), 0xFF);
        return _mm256_add_epi32(lanes, total);
    }
    static V RepeatLast32(V a) { return _mm256_permutevar8x32_epi32(a, _mm256_set1_epi32(7)); }
    static V Greater16(V a, V b) { return _mm256_cmpgt_epi16(a, b); }
    static V ShiftRight16By(V a, int count) { return _mm256_srl_epi16(a, _mm_cvtsi32_si128(count)); }
    template <int count>
    static V ShiftRightSigned16(V a) {
        return _mm256_srai_epi16(a, count);
    }
    template <int count>
    static V ShiftRightSigned32(V a) {
        return _mm256_srai_epi32(a, count);
    }
    template <int count>
    static V ShiftLeft32(V a) {
        return _mm256_slli_epi32(a, count);
    }
    static V LowThenHighWords(V low, V high) { return _mm256_blend_epi16(low, high, 0xAA); }   // of 32 bits
};

#include "rastel/surface/kernel_bodies.inc"

#include "rastel/surface/blend_bodies.inc"

#include "rastel/surface/filter_bodies.inc"

#include "rastel/surface/texture_bodies.inc"

#include "rastel/surface/convert_bodies.inc"

#include "rastel/surface/filled_table.inc"

}   // namespace

constinit const RowTable avx2Table = FilledTable("avx2", platform::ProcessorHasAvx2);

}   // namespace rastel::kernels
