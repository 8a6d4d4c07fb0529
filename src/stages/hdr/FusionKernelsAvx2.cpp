// SPDX-License-Identifier: Apache-2.0
#include "stages/hdr/FusionKernels.h"

#if VASTRELLINE_VECTOR_FORMS

#include <immintrin.h>

#include <algorithm>
#include <cstddef>

#define TARGET TARGET_AVX2

namespace vastrelline {

namespace {

using Vector = __m256;
constexpr int32_t kLanes = 8;
using Wide = __m256d;
constexpr int32_t kWideLanes = 4;

TARGET inline Vector Load(const float* place) { return _mm256_loadu_ps(place); }
TARGET inline void Store(float* place, Vector value) { _mm256_storeu_ps(place, value); }
TARGET inline Vector Broadcast(float value) { return _mm256_set1_ps(value); }
TARGET inline Vector Add(Vector a, Vector b) { return _mm256_add_ps(a, b); }
TARGET inline Vector Subtract(Vector a, Vector b) { return _mm256_sub_ps(a, b); }
TARGET inline Vector Multiply(Vector a, Vector b) { return _mm256_mul_ps(a, b); }
TARGET inline Vector Lowest(Vector a, Vector b) { return _mm256_min_ps(a, b); }
TARGET inline Vector Highest(Vector a, Vector b) { return _mm256_max_ps(a, b); }
TARGET inline Vector LoadPixels(const uint16_t* pixels) {
    const __m128i words = _mm_loadu_si128(reinterpret_cast<const __m128i*>(pixels));
    return _mm256_cvtepi32_ps(_mm256_cvtepu16_epi32(words));
}

TARGET inline Wide LoadWide(const double* place) { return _mm256_loadu_pd(place); }
TARGET inline void StoreWide(double* place, Wide value) { _mm256_storeu_pd(place, value); }
TARGET inline Wide BroadcastWide(double value) { return _mm256_set1_pd(value); }
TARGET inline Wide AddWide(Wide a, Wide b) { return _mm256_add_pd(a, b); }
TARGET inline Wide SubtractWide(Wide a, Wide b) { return _mm256_sub_pd(a, b); }
TARGET inline Wide MultiplyWide(Wide a, Wide b) { return _mm256_mul_pd(a, b); }
TARGET inline Wide DivideWide(Wide a, Wide b) { return _mm256_div_pd(a, b); }
TARGET inline Wide LoadWidePixels(const uint16_t* pixels) {
    const __m128i words = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(pixels));
    return _mm256_cvtepi32_pd(_mm_cvtepu16_epi32(words));
}
TARGET inline Wide LoadWideFloats(const float* place) { return _mm256_cvtps_pd(_mm_loadu_ps(place)); }
TARGET inline void StorePixels(uint16_t* pixels, Wide values, const FusionStretch& stretch) {
    const __m128i value = _mm256_cvttpd_epi32(values);
    const __m128i max = _mm_set1_epi32(stretch.max);
    const __m128i clamped =
        _mm_blendv_epi8(_mm_max_epi32(value, _mm_set1_epi32(stretch.min)), max, _mm_cmpgt_epi32(value, max));
    const __m128i words = _mm_and_si128(clamped, _mm_set1_epi32(0xFFFF));
    _mm_storel_epi64(reinterpret_cast<__m128i*>(pixels), _mm_packus_epi32(words, words));
}

#include "stages/hdr/FusionKernelsVector.inl"

}  // namespace

const FusionKernels kFusionKernelsAvx2 = {WidenRow,  MixRows, CombineRows, CombinePairs,
                                          SumLayers, TurnRow, TurnRowPair, StretchRow};

}  // namespace vastrelline

#endif
