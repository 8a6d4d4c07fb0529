// SPDX-License-Identifier: Apache-2.0
#include "stages/hdr/FusionKernels.h"

#if VASTRELLINE_VECTOR_FORMS

#include <immintrin.h>

#include <algorithm>
#include <cstddef>

#define TARGET TARGET_AVX512

namespace vastrelline {

namespace {

using Vector = __m512;
constexpr int32_t kLanes = 16;
using Wide = __m512d;
constexpr int32_t kWideLanes = 8;
// All lanes. The unmasked forms of some conversions draw a false warning from GCC 12.
constexpr __mmask8 kAll = 0xFF;
constexpr __mmask16 kAllPixels = 0xFFFF;

TARGET inline Vector Load(const float* place) { return _mm512_loadu_ps(place); }
TARGET inline void Store(float* place, Vector value) { _mm512_storeu_ps(place, value); }
TARGET inline Vector Broadcast(float value) { return _mm512_set1_ps(value); }
TARGET inline Vector Add(Vector a, Vector b) { return _mm512_add_ps(a, b); }
TARGET inline Vector Subtract(Vector a, Vector b) { return _mm512_sub_ps(a, b); }
TARGET inline Vector Multiply(Vector a, Vector b) { return _mm512_mul_ps(a, b); }
TARGET inline Vector Lowest(Vector a, Vector b) { return _mm512_maskz_min_ps(kAllPixels, a, b); }
TARGET inline Vector Highest(Vector a, Vector b) { return _mm512_maskz_max_ps(kAllPixels, a, b); }
TARGET inline Vector LoadPixels(const uint16_t* pixels) {
    const __m256i words = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(pixels));
    return _mm512_maskz_cvtepi32_ps(kAllPixels, _mm512_maskz_cvtepu16_epi32(kAllPixels, words));
}

TARGET inline Wide LoadWide(const double* place) { return _mm512_loadu_pd(place); }
TARGET inline void StoreWide(double* place, Wide value) { _mm512_storeu_pd(place, value); }
TARGET inline Wide BroadcastWide(double value) { return _mm512_set1_pd(value); }
TARGET inline Wide AddWide(Wide a, Wide b) { return _mm512_add_pd(a, b); }
TARGET inline Wide SubtractWide(Wide a, Wide b) { return _mm512_sub_pd(a, b); }
TARGET inline Wide MultiplyWide(Wide a, Wide b) { return _mm512_mul_pd(a, b); }
TARGET inline Wide DivideWide(Wide a, Wide b) { return _mm512_div_pd(a, b); }
TARGET inline Wide LoadWidePixels(const uint16_t* pixels) {
    const __m128i words = _mm_loadu_si128(reinterpret_cast<const __m128i*>(pixels));
    return _mm512_maskz_cvtepi32_pd(kAll, _mm256_cvtepu16_epi32(words));
}
TARGET inline Wide LoadWideFloats(const float* place) {
    return _mm512_maskz_cvtps_pd(kAll, _mm256_loadu_ps(place));
}
TARGET inline void StorePixels(uint16_t* pixels, Wide values, const FusionStretch& stretch) {
    const __m256i value = _mm512_maskz_cvttpd_epi32(kAll, values);
    const __m256i max = _mm256_set1_epi32(stretch.max);
    const __m256i clamped = _mm256_blendv_epi8(_mm256_max_epi32(value, _mm256_set1_epi32(stretch.min)), max,
                                               _mm256_cmpgt_epi32(value, max));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(pixels), _mm256_cvtepi32_epi16(clamped));
}

#include "stages/hdr/FusionKernelsVector.inl"

}  // namespace

const FusionKernels kFusionKernelsAvx512 = {WidenRow,  MixRows, CombineRows, CombinePairs,
                                            SumLayers, TurnRow, TurnRowPair, StretchRow};

}  // namespace vastrelline

#endif
