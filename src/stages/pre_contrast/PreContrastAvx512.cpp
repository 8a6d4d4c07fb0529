// SPDX-License-Identifier: Apache-2.0
#include "stages/pre_contrast/PreContrast.h"

#if VASTRELLINE_VECTOR_FORMS

#include <immintrin.h>

namespace vastrelline {

namespace {

// All lanes. The unmasked forms of two conversions draw a false warning from GCC 12.
constexpr __mmask8 kAll = 0xFF;

}  // namespace

TARGET_AVX512 void AmplifyDifferenceAvx512(const AmplifyCall& call) {
    constexpr size_t kStep = 8;
    const __m256i maxValue = _mm256_set1_epi32(call.maxValue);
    const __m512d ratio = _mm512_set1_pd(call.ratio);
    size_t i = 0;
    for (; i + kStep <= call.count; i += kStep) {
        auto* place = reinterpret_cast<__m128i*>(call.image + i);
        const __m256i image = _mm256_cvtepu16_epi32(_mm_loadu_si128(place));
        const __m256i smoothed =
            _mm256_cvtepu16_epi32(_mm_loadu_si128(reinterpret_cast<const __m128i*>(call.smoothed + i)));
        const __m512d difference = _mm512_maskz_cvtepi32_pd(kAll, _mm256_sub_epi32(image, smoothed));
        const __m512d sum =
            _mm512_add_pd(_mm512_maskz_cvtepi32_pd(kAll, smoothed), _mm512_mul_pd(difference, ratio));
        // The conversion truncates as TruncateToInt32 does.
        const __m256i raised = _mm256_max_epi32(_mm512_maskz_cvttpd_epi32(kAll, sum), _mm256_setzero_si256());
        _mm_storeu_si128(place, _mm256_cvtepi32_epi16(_mm256_min_epi32(raised, maxValue)));
    }
    AmplifyDifferenceScalar({call.image + i, call.smoothed + i, call.count - i, call.maxValue, call.ratio});
}

}  // namespace vastrelline

#endif
