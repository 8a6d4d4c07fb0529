// SPDX-License-Identifier: Apache-2.0
#include "operators/resample/ResizeSchedule.h"

#if VASTRELLINE_VECTOR_FORMS

#include <immintrin.h>

#define TARGET TARGET_AVX2

namespace vastrelline {

namespace {

constexpr size_t kLanes = 4;

// The definition's very operations, four columns at once. The weights are 0 to 1, so every sum fits 16 bits.
TARGET inline __m128i BlendLanes(const ResizeBlend& blend, size_t x, __m256d above, __m256d below) {
    const __m256d right = _mm256_loadu_pd(blend.rests + x);
    const __m256d left = _mm256_sub_pd(_mm256_set1_pd(1), right);
    __m256d sum = _mm256_mul_pd(_mm256_mul_pd(left, above), _mm256_loadu_pd(blend.aboveLeft + x));
    sum =
        _mm256_add_pd(sum, _mm256_mul_pd(_mm256_mul_pd(right, above), _mm256_loadu_pd(blend.aboveRight + x)));
    sum =
        _mm256_add_pd(sum, _mm256_mul_pd(_mm256_mul_pd(right, below), _mm256_loadu_pd(blend.belowRight + x)));
    sum = _mm256_add_pd(sum, _mm256_mul_pd(_mm256_mul_pd(left, below), _mm256_loadu_pd(blend.belowLeft + x)));
    return _mm256_cvttpd_epi32(sum);
}

TARGET void BlendRow(const ResizeBlend& blend, uint16_t* result) {
    const __m256d above = _mm256_set1_pd(1 - blend.rowRest);
    const __m256d below = _mm256_set1_pd(blend.rowRest);
    size_t x = 0;
    for (; x + 2 * kLanes <= blend.count; x += 2 * kLanes) {
        const __m128i low = BlendLanes(blend, x, above, below);
        const __m128i high = BlendLanes(blend, x + kLanes, above, below);
        _mm_storeu_si128(reinterpret_cast<__m128i*>(result + x), _mm_packus_epi32(low, high));
    }
    for (; x < blend.count; ++x) {
        result[x] = BlendFourPixels(blend, x);
    }
}

TARGET inline __m128i BlendLanesInRow(const ResizeBlend& blend, size_t x) {
    const __m256d right = _mm256_loadu_pd(blend.rests + x);
    const __m256d left = _mm256_sub_pd(_mm256_set1_pd(1), right);
    return _mm256_cvttpd_epi32(_mm256_add_pd(_mm256_mul_pd(left, _mm256_loadu_pd(blend.aboveLeft + x)),
                                             _mm256_mul_pd(right, _mm256_loadu_pd(blend.aboveRight + x))));
}

TARGET void BlendInRow(const ResizeBlend& blend, uint16_t* result) {
    size_t x = 0;
    for (; x + 2 * kLanes <= blend.count; x += 2 * kLanes) {
        const __m128i low = BlendLanesInRow(blend, x);
        const __m128i high = BlendLanesInRow(blend, x + kLanes);
        _mm_storeu_si128(reinterpret_cast<__m128i*>(result + x), _mm_packus_epi32(low, high));
    }
    for (; x < blend.count; ++x) result[x] = BlendTwoPixels(blend, x);
}

#include "operators/resample/ResizeVector.inl"

}  // namespace

void ResizeFrameAvx2(const ResizeCall& call) { RunResizeSchedule(call, kKernels); }

}  // namespace vastrelline

#endif
