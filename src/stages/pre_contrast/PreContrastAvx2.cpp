// SPDX-License-Identifier: Apache-2.0
#include "stages/pre_contrast/PreContrast.h"

#if VASTRELLINE_VECTOR_FORMS

#include <immintrin.h>

namespace vastrelline {

namespace {

// Four pixels of the definition, in 32 bits. The conversion truncates as TruncateToInt32 does.
TARGET_AVX2 inline __m128i AmplifyFour(__m128i image, __m128i smoothed, __m128i maxValue, __m256d ratio) {
    const __m256d difference = _mm256_cvtepi32_pd(_mm_sub_epi32(image, smoothed));
    const __m256d sum = _mm256_add_pd(_mm256_cvtepi32_pd(smoothed), _mm256_mul_pd(difference, ratio));
    const __m128i raised = _mm_max_epi32(_mm256_cvttpd_epi32(sum), _mm_setzero_si128());
    return _mm_min_epi32(raised, maxValue);
}

// The low 16 bits of eight pixels.
TARGET_AVX2 inline __m128i PackLowBits(__m128i low, __m128i high) {
    const __m128i mask = _mm_set1_epi32(0xFFFF);
    return _mm_packus_epi32(_mm_and_si128(low, mask), _mm_and_si128(high, mask));
}

}  // namespace

TARGET_AVX2 void AmplifyDifferenceAvx2(const AmplifyCall& call) {
    constexpr size_t kStep = 8;
    const __m128i maxValue = _mm_set1_epi32(call.maxValue);
    const __m256d ratio = _mm256_set1_pd(call.ratio);
    size_t i = 0;
    for (; i + kStep <= call.count; i += kStep) {
        auto* place = reinterpret_cast<__m128i*>(call.image + i);
        const __m256i image = _mm256_cvtepu16_epi32(_mm_loadu_si128(place));
        const __m256i smoothed =
            _mm256_cvtepu16_epi32(_mm_loadu_si128(reinterpret_cast<const __m128i*>(call.smoothed + i)));
        const __m128i low =
            AmplifyFour(_mm256_castsi256_si128(image), _mm256_castsi256_si128(smoothed), maxValue, ratio);
        const __m128i high = AmplifyFour(_mm256_extracti128_si256(image, 1),
                                         _mm256_extracti128_si256(smoothed, 1), maxValue, ratio);
        _mm_storeu_si128(place, PackLowBits(low, high));
    }
    AmplifyDifferenceScalar({call.image + i, call.smoothed + i, call.count - i, call.maxValue, call.ratio});
}

}  // namespace vastrelline

#endif
