// SPDX-License-Identifier: Apache-2.0
#include "stages/hdr/FusionKernels.h"

#if VASTRELLINE_VECTOR_FORMS

#include <emmintrin.h>

#include <algorithm>
#include <cstddef>

#define TARGET TARGET_BASELINE

namespace vastrelline {

namespace {

using Vector = __m128;
constexpr int32_t kLanes = 4;
using Wide = __m128d;
constexpr int32_t kWideLanes = 2;

TARGET inline Vector Load(const float* place) { return _mm_loadu_ps(place); }
TARGET inline void Store(float* place, Vector value) { _mm_storeu_ps(place, value); }
TARGET inline Vector Broadcast(float value) { return _mm_set1_ps(value); }
TARGET inline Vector Add(Vector a, Vector b) { return _mm_add_ps(a, b); }
TARGET inline Vector Subtract(Vector a, Vector b) { return _mm_sub_ps(a, b); }
TARGET inline Vector Multiply(Vector a, Vector b) { return _mm_mul_ps(a, b); }
TARGET inline Vector Lowest(Vector a, Vector b) { return _mm_min_ps(a, b); }
TARGET inline Vector Highest(Vector a, Vector b) { return _mm_max_ps(a, b); }
TARGET inline Vector LoadPixels(const uint16_t* pixels) {
    const __m128i words = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(pixels));
    return _mm_cvtepi32_ps(_mm_unpacklo_epi16(words, _mm_setzero_si128()));
}

TARGET inline Wide LoadWide(const double* place) { return _mm_loadu_pd(place); }
TARGET inline void StoreWide(double* place, Wide value) { _mm_storeu_pd(place, value); }
TARGET inline Wide BroadcastWide(double value) { return _mm_set1_pd(value); }
TARGET inline Wide AddWide(Wide a, Wide b) { return _mm_add_pd(a, b); }
TARGET inline Wide SubtractWide(Wide a, Wide b) { return _mm_sub_pd(a, b); }
TARGET inline Wide MultiplyWide(Wide a, Wide b) { return _mm_mul_pd(a, b); }
TARGET inline Wide DivideWide(Wide a, Wide b) { return _mm_div_pd(a, b); }
TARGET inline Wide LoadWidePixels(const uint16_t* pixels) { return _mm_setr_pd(pixels[0], pixels[1]); }
TARGET inline Wide LoadWideFloats(const float* place) { return _mm_setr_pd(place[0], place[1]); }
TARGET inline void StorePixels(uint16_t* pixels, Wide values, const FusionStretch& stretch) {
    int32_t truncated[4];
    _mm_storeu_si128(reinterpret_cast<__m128i*>(truncated), _mm_cvttpd_epi32(values));
    for (int32_t i = 0; i < kWideLanes; ++i) pixels[i] = ClampToRange(truncated[i], stretch);
}

#include "stages/hdr/FusionKernelsVector.inl"

}  // namespace

const FusionKernels kFusionKernelsBaseline = {WidenRow,  MixRows, CombineRows, CombinePairs,
                                              SumLayers, TurnRow, TurnRowPair, StretchRow};

}  // namespace vastrelline

#endif
