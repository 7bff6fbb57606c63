#include <immintrin.h>

#include "rastel/platform/portable/gdi/pick_plan.h"
#include "rastel/platform/portable/gdi/row_kernels.h"
#include "rastel/platform/portable/gdi/row_kernels_body.h"

namespace rastel::platform {

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

}   // namespace

extern const RowKernels kRowKernelsAvx2;
const RowKernels kRowKernelsAvx2 = {
    "avx2",        HasAvx2,       PackTo24,      UnpackFrom24, From32To16<6>,
    From32To16<5>, From16To32<6>, From16To32<5>, From32ToGrey, Pick,
};

}   // namespace rastel::platform
