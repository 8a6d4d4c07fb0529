#include "image/BoxMeanSchedule.h"

#if VASTRELLINE_X86

#include <immintrin.h>

#define TARGET TARGET_AVX2

namespace vastrelline {

namespace {

using Vector = __m256i;
constexpr int32_t kLanes = 8;

struct Divider {
    Vector factor;
    __m128i shift;
};

TARGET inline Divider MakeDivider(WindowDivision division) {
    return {_mm256_set1_epi32(static_cast<int32_t>(division.factor)), _mm_cvtsi32_si128(division.shift)};
}
TARGET inline Vector Broadcast(uint32_t value) { return _mm256_set1_epi32(static_cast<int32_t>(value)); }
TARGET inline Vector Add(Vector a, Vector b) { return _mm256_add_epi32(a, b); }
TARGET inline Vector Subtract(Vector a, Vector b) { return _mm256_sub_epi32(a, b); }
TARGET inline Vector Load(const uint32_t* place) {
    return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(place));
}
TARGET inline void Store(uint32_t* place, Vector value) {
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(place), value);
}
TARGET inline Vector LoadPixels(const uint16_t* pixels) {
    return _mm256_cvtepu16_epi32(_mm_loadu_si128(reinterpret_cast<const __m128i*>(pixels)));
}
TARGET inline void StorePixels(uint16_t* pixels, Vector values) {
    const __m128i packed =
        _mm_packus_epi32(_mm256_castsi256_si128(values), _mm256_extracti128_si256(values, 1));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(pixels), packed);
}
TARGET inline Vector PrefixSums(Vector values) {
    values = _mm256_add_epi32(values, _mm256_slli_si256(values, 4));
    values = _mm256_add_epi32(values, _mm256_slli_si256(values, 8));
    // The shifts stay within halves: the upper one still lacks the last sum of the lower one.
    const __m256i lastOfHalves = _mm256_shuffle_epi32(values, 0xFF);
    return _mm256_add_epi32(values, _mm256_permute2x128_si256(lastOfHalves, lastOfHalves, 0x08));
}
TARGET inline Vector BroadcastLast(Vector values) {
    return _mm256_permutevar8x32_epi32(values, _mm256_set1_epi32(kLanes - 1));
}
TARGET inline Vector Divide(Vector sums, const Divider& divider) {
    const __m256i even = _mm256_srli_epi64(_mm256_mul_epu32(sums, divider.factor), 32);
    const __m256i odd = _mm256_mul_epu32(_mm256_srli_epi64(sums, 32), divider.factor);
    return _mm256_srl_epi32(_mm256_blend_epi32(even, odd, 0xAA), divider.shift);
}

#include "image/BoxMeanVector.inl"

}  // namespace

void BoxMeanAvx2(const BoxMeanCall& call) { RunBoxMeanSchedule(call, kKernels); }

}  // namespace vastrelline

#endif
