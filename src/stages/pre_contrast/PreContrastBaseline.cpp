// SPDX-License-Identifier: Apache-2.0
#include "stages/pre_contrast/PreContrast.h"

#if VASTRELLINE_VECTOR_FORMS

#include <emmintrin.h>

namespace vastrelline {

namespace {

// Two pixels of the definition. The conversion truncates as TruncateToInt32 does.
TARGET_BASELINE inline __m128i AmplifyTwo(__m128i smoothed, __m128i difference, __m128d ratio) {
    const __m128d move = _mm_mul_pd(_mm_cvtepi32_pd(difference), ratio);
    return _mm_cvttpd_epi32(_mm_add_pd(_mm_cvtepi32_pd(smoothed), move));
}

// Four pixels of 32 bits, limited. The limit's low 16 bits are spread to all 32, so that packing keeps them.
TARGET_BASELINE inline __m128i AmplifyFour(__m128i image, __m128i smoothed, __m128i maxValue, __m128d ratio) {
    constexpr int kUpperPair = 0xEE;
    constexpr int kLowBits = 16;
    const __m128i difference = _mm_sub_epi32(image, smoothed);
    const __m128i low = AmplifyTwo(smoothed, difference, ratio);
    const __m128i high =
        AmplifyTwo(_mm_shuffle_epi32(smoothed, kUpperPair), _mm_shuffle_epi32(difference, kUpperPair), ratio);
    const __m128i amplified = _mm_unpacklo_epi64(low, high);
    const __m128i raised = _mm_and_si128(amplified, _mm_cmpgt_epi32(amplified, _mm_setzero_si128()));
    const __m128i isAbove = _mm_cmpgt_epi32(raised, maxValue);
    const __m128i limited = _mm_or_si128(_mm_and_si128(isAbove, maxValue), _mm_andnot_si128(isAbove, raised));
    return _mm_srai_epi32(_mm_slli_epi32(limited, kLowBits), kLowBits);
}

}  // namespace

TARGET_BASELINE void AmplifyDifferenceBaseline(const AmplifyCall& call) {
    constexpr size_t kStep = 8;
    const __m128i zero = _mm_setzero_si128();
    const __m128i maxValue = _mm_set1_epi32(call.maxValue);
    const __m128d ratio = _mm_set1_pd(call.ratio);
    size_t i = 0;
    for (; i + kStep <= call.count; i += kStep) {
        auto* place = reinterpret_cast<__m128i*>(call.image + i);
        const __m128i image = _mm_loadu_si128(place);
        const __m128i smoothed = _mm_loadu_si128(reinterpret_cast<const __m128i*>(call.smoothed + i));
        const __m128i low =
            AmplifyFour(_mm_unpacklo_epi16(image, zero), _mm_unpacklo_epi16(smoothed, zero), maxValue, ratio);
        const __m128i high =
            AmplifyFour(_mm_unpackhi_epi16(image, zero), _mm_unpackhi_epi16(smoothed, zero), maxValue, ratio);
        _mm_storeu_si128(place, _mm_packs_epi32(low, high));
    }
    AmplifyDifferenceScalar({call.image + i, call.smoothed + i, call.count - i, call.maxValue, call.ratio});
}

}  // namespace vastrelline

#endif
