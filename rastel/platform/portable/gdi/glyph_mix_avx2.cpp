// Mixing by coverage, eight pixels at a time.
#include <immintrin.h>

#include "rastel/platform/portable/gdi/glyph_mix_body.h"

namespace rastel::platform {

namespace {

class EightMixer {
public:
    explicit EightMixer(DWORD color) : color_(_mm256_cvtepu8_epi16(_mm_set1_epi32(static_cast<int>(color)))) {}

    // Eight pixels, by a byte of coverage each; those that nothing covers keep all their bits.
    __m256i Mixed(__m256i before, std::uint64_t coverage) const {
        const __m256i eight = _mm256_set1_epi64x(static_cast<long long>(coverage));
        const __m256i low = Channels(_mm256_unpacklo_epi8(before, zero_), _mm256_shuffle_epi8(eight, lowOrder_));
        const __m256i high = Channels(_mm256_unpackhi_epi8(before, zero_), _mm256_shuffle_epi8(eight, highOrder_));
        const __m256i mixed = _mm256_and_si256(_mm256_packus_epi16(low, high), _mm256_set1_epi32(0x00FFFFFF));
        const __m256i bare = _mm256_cmpeq_epi8(_mm256_shuffle_epi8(eight, pixelOrder_), zero_);
        return _mm256_blendv_epi8(mixed, before, bare);
    }

private:
    // color * coverage + target * (255 - coverage), divided by 255 and rounded.
    __m256i Channels(__m256i target, __m256i coverage) const {
        const __m256i change = _mm256_mullo_epi16(_mm256_sub_epi16(color_, target), coverage);
        const __m256i sum = _mm256_add_epi16(_mm256_mullo_epi16(target, _mm256_set1_epi16(255)),
                                             _mm256_add_epi16(change, _mm256_set1_epi16(128)));
        return _mm256_mulhi_epu16(sum, _mm256_set1_epi16(257));
    }

    __m256i color_;
    __m256i zero_ = _mm256_setzero_si256();
    __m256i lowOrder_ = _mm256_setr_epi8(0, -1, 0, -1, 0, -1, 0, -1, 1, -1, 1, -1, 1, -1, 1, -1, 4, -1, 4, -1, 4, -1, 4,
                                         -1, 5, -1, 5, -1, 5, -1, 5, -1);
    __m256i highOrder_ = _mm256_setr_epi8(2, -1, 2, -1, 2, -1, 2, -1, 3, -1, 3, -1, 3, -1, 3, -1, 6, -1, 6, -1, 6, -1,
                                          6, -1, 7, -1, 7, -1, 7, -1, 7, -1);
    __m256i pixelOrder_ = _mm256_setr_epi8(0, 0, 0, 0, 1, 1, 1, 1, 2, 2, 2, 2, 3, 3, 3, 3, 4, 4, 4, 4, 5, 5, 5, 5, 6, 6,
                                           6, 6, 7, 7, 7, 7);
};

std::uint64_t EightBytes(const unsigned char* at) {
    std::uint64_t eight;
    std::memcpy(&eight, at, sizeof(eight));
    return eight;
}

// Of every row the last eight are worked out from what was there before any of it is stored.
void MixWideRow(const EightMixer& mixer, unsigned char* target, const unsigned char* coverage, int width) {
    const auto at = [target](int x) { return reinterpret_cast<__m256i*>(target + x * 4); };
    const int last = width - 8;
    const __m256i lastMixed = mixer.Mixed(_mm256_loadu_si256(at(last)), EightBytes(coverage + last));
    for (int x = 0; x < last; x += 8) {
        if (const std::uint64_t eight = EightBytes(coverage + x)) {
            _mm256_storeu_si256(at(x), mixer.Mixed(_mm256_loadu_si256(at(x)), eight));
        }
    }
    _mm256_storeu_si256(at(last), lastMixed);
}

// Four to seven pixels: the first four and the last four side by side.
void MixNarrowRow(const EightMixer& mixer, unsigned char* target, const unsigned char* coverage, int width) {
    auto* const first = reinterpret_cast<__m128i*>(target);
    auto* const last = reinterpret_cast<__m128i*>(target + (width - 4) * 4);
    const std::uint64_t bytes = FourBytes(coverage) | std::uint64_t{FourBytes(coverage + width - 4)} << 32;
    const __m256i before =
        _mm256_inserti128_si256(_mm256_castsi128_si256(_mm_loadu_si128(first)), _mm_loadu_si128(last), 1);
    const __m256i mixed = mixer.Mixed(before, bytes);
    _mm_storeu_si128(last, _mm256_extracti128_si256(mixed, 1));
    _mm_storeu_si128(first, _mm256_castsi256_si128(mixed));
}

}   // namespace

void MixRowsByEight(unsigned char* target, std::ptrdiff_t targetPitch, const unsigned char* coverage,
                    std::ptrdiff_t coveragePitch, int width, int height, DWORD color) {
    if (width < 4) {
        MixRows(target, targetPitch, coverage, coveragePitch, width, height, color);
        return;
    }
    const EightMixer mixer(color);
    const auto mixRow = width < 8 ? MixNarrowRow : MixWideRow;
    for (; height > 0; --height, target += targetPitch, coverage += coveragePitch) {
        mixRow(mixer, target, coverage, width);
    }
}

}   // namespace rastel::platform
