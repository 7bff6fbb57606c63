#include <immintrin.h>

#include "rastel/platform/portable/gdi/pick_plan.h"
#include "rastel/platform/portable/gdi/row_kernels.h"
#include "rastel/platform/portable/gdi/row_kernels_body.h"

namespace rastel::platform {

// In glyph_mix_avx2.cpp.
void MixRowsByEight(unsigned char* target, std::ptrdiff_t targetPitch, const unsigned char* coverage,
                    std::ptrdiff_t coveragePitch, int width, int height, DWORD color);

namespace {

bool HasAvx2() {
    return __builtin_cpu_supports("avx2") != 0;
}

// Four pixels of 4 bytes become 12 bytes by one shuffle; the 4 bytes behind them are written over by the next four.
void PackTo24(const unsigned char* source, unsigned char* target, int count) {
    const __m128i order = _mm_setr_epi8(0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, -1, -1, -1, -1);
    for (; count >= 6; count -= 4, source += 16, target += 12) {   // 16 bytes of target are there
        const __m128i pixels = _mm_loadu_si128(reinterpret_cast<const __m128i*>(source));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(target), _mm_shuffle_epi8(pixels, order));
    }
    From32To24(source, target, count);
}

void UnpackFrom24(const unsigned char* source, unsigned char* target, int count) {
    const __m128i order = _mm_setr_epi8(0, 1, 2, -1, 3, 4, 5, -1, 6, 7, 8, -1, 9, 10, 11, -1);
    for (; count >= 6; count -= 4, source += 12, target += 16) {   // 16 bytes of source are there
        const __m128i pixels = _mm_loadu_si128(reinterpret_cast<const __m128i*>(source));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(target), _mm_shuffle_epi8(pixels, order));
    }
    From24To32(source, target, count);
}

template <int Windows>
void PickWindows(const unsigned char* source, const PickBlock* blocks, int count, const unsigned char* masks,
                 unsigned char* target) {
    const auto load = [](const unsigned char* from) { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(from)); };
    for (int i = 0; i < count; i += 2, masks += 32 * Windows) {
        // Two blocks go side by side through the halves of a register.
        const unsigned char* const low = source + blocks[i].source;
        const unsigned char* const high = source + blocks[i + 1].source;
        __m256i bytes = _mm256_setzero_si256();
        for (int window = 0; window < Windows; ++window) {
            const __m256i there =
                _mm256_inserti128_si256(_mm256_castsi128_si256(load(low + 16 * window)), load(high + 16 * window), 1);
            const __m256i mask = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(masks + 32 * window));
            bytes = _mm256_or_si256(bytes, _mm256_shuffle_epi8(there, mask));
        }
        _mm_storeu_si128(reinterpret_cast<__m128i*>(target + blocks[i].target), _mm256_castsi256_si128(bytes));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(target + blocks[i + 1].target), _mm256_extracti128_si256(bytes, 1));
    }
}

void Pick(const unsigned char* source, const PickPlan& plan, unsigned char* target) {
    const PickBlock* const blocks = plan.Blocks();
    const int count = plan.BlockCount();
    switch (plan.Windows()) {
        case 1:
            PickWindows<1>(source, blocks, count, plan.Masks(), target);
            break;
        case 2:
            PickWindows<2>(source, blocks, count, plan.Masks(), target);
            break;
        case 3:
            PickWindows<3>(source, blocks, count, plan.Masks(), target);
            break;
        default:
            PickWindows<4>(source, blocks, count, plan.Masks(), target);
            break;
    }
}

// Eight pixels from `Windows` neighbouring windows of eight: each is permuted whole, the bits of the offset above the
// third choose among them.
template <int Windows>
__m256i PickEight(const unsigned char* source, __m256i offsets) {
    const auto picked = [&](int window) {
        const __m256i there = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(source + 32 * window));
        return _mm256_castsi256_ps(_mm256_permutevar8x32_epi32(there, offsets));
    };
    const __m256 odd = _mm256_castsi256_ps(_mm256_slli_epi32(offsets, 28));
    if constexpr (Windows == 1) {
        return _mm256_castps_si256(picked(0));
    } else if constexpr (Windows == 2) {
        return _mm256_castps_si256(_mm256_blendv_ps(picked(0), picked(1), odd));
    } else {
        const __m256 low = _mm256_blendv_ps(picked(0), picked(1), odd);
        const __m256 high = _mm256_blendv_ps(picked(2), picked(3), odd);
        const __m256 upper = _mm256_castsi256_ps(_mm256_slli_epi32(offsets, 27));
        return _mm256_castps_si256(_mm256_blendv_ps(low, high, upper));
    }
}

template <int Windows>
void PickSteps(const unsigned char* source, const PickPlan32& plan, unsigned char* target) {
    const std::int32_t* const starts = plan.Starts();
    const auto* const offsets = reinterpret_cast<const __m256i*>(plan.Offsets());
    const auto step = [&](std::ptrdiff_t i, unsigned char* to) {
        const __m256i picked =
            PickEight<Windows>(source + std::ptrdiff_t{4} * starts[i], _mm256_loadu_si256(offsets + i));
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(to), picked);
    };
    const std::ptrdiff_t last = plan.Steps() - 1;
    for (std::ptrdiff_t i = 0; i < last; ++i) {
        step(i, target + 32 * i);
    }
    step(last, target + std::ptrdiff_t{4} * (plan.Count() - PickPlan32::kStep));
}

// Half the width, the usual thumbnail: no permutation by table.
void PickEverySecond(const unsigned char* source, int count, unsigned char* target) {
    const auto pick = [&](std::ptrdiff_t i) {
        const float* const from = reinterpret_cast<const float*>(source) + 2 * i;
        const __m256 even =
            _mm256_shuffle_ps(_mm256_loadu_ps(from), _mm256_loadu_ps(from + 8), _MM_SHUFFLE(2, 0, 2, 0));
        const __m256i ordered = _mm256_permute4x64_epi64(_mm256_castps_si256(even), _MM_SHUFFLE(3, 1, 2, 0));
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(target + 4 * i), ordered);
    };
    const std::ptrdiff_t last = count - PickPlan32::kStep;
    for (std::ptrdiff_t i = 0; i < last; i += PickPlan32::kStep) {
        pick(i);
    }
    pick(last);
}

void Pick32(const unsigned char* source, const PickPlan32& plan, unsigned char* target) {
    if (plan.TakesEverySecond()) {
        PickEverySecond(source + std::ptrdiff_t{4} * plan.Starts()[0], plan.Count(), target);
        return;
    }
    switch (plan.Windows()) {
        case 1:
            PickSteps<1>(source, plan, target);
            break;
        case 2:
            PickSteps<2>(source, plan, target);
            break;
        default:
            PickSteps<4>(source, plan, target);
            break;
    }
}

}   // namespace

extern const RowKernels kRowKernelsAvx2;
const RowKernels kRowKernelsAvx2 = {
    "avx2",        HasAvx2,       PackTo24,     UnpackFrom24, From32To16<6>, From32To16<5>,
    From16To32<6>, From16To32<5>, From32ToGrey, Pick,         Pick32,        MixRowsByEight,
};

}   // namespace rastel::platform
