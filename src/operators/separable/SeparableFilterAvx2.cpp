// SPDX-License-Identifier: Apache-2.0
#include "operators/separable/FilterSchedule.h"

#if VASTRELLINE_VECTOR_FORMS

#include <immintrin.h>

#define TARGET TARGET_AVX2

namespace vastrelline {

namespace {

using Vector = __m256d;
constexpr int32_t kLanes = 4;
constexpr int32_t kColumnVectors = 2;

TARGET inline Vector Zero() { return _mm256_setzero_pd(); }
TARGET inline Vector Load(const double* place) { return _mm256_loadu_pd(place); }
TARGET inline void Store(double* place, Vector value) { _mm256_storeu_pd(place, value); }
// The vector at a place, which is `places` places into `first`, before `next`.
template <int32_t places>
TARGET inline Vector Shifted(const double* place, Vector /*first*/, Vector /*next*/) {
    return Load(place);
}
TARGET inline Vector Broadcast(double value) { return _mm256_set1_pd(value); }
TARGET inline Vector MultiplyAdd(Vector sum, Vector value, Vector tap) {
    return _mm256_add_pd(sum, _mm256_mul_pd(value, tap));
}
TARGET inline Vector LoadPixels(const uint16_t* pixels) {
    const __m128i words = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(pixels));
    return _mm256_cvtepi32_pd(_mm_cvtepu16_epi32(words));
}
TARGET inline void LoadPairs(const uint16_t* pixels, Vector& first, Vector& second) {
    const __m128i pairs = _mm_loadu_si128(reinterpret_cast<const __m128i*>(pixels));
    first = _mm256_cvtepi32_pd(_mm_and_si128(pairs, _mm_set1_epi32(0xFFFF)));
    second = _mm256_cvtepi32_pd(_mm_srli_epi32(pairs, 16));
}
TARGET inline void StorePixels(uint16_t* pixels, Vector sum, int32_t maxValue) {
    __m128i values = _mm_min_epi32(_mm256_cvttpd_epi32(sum), _mm_set1_epi32(maxValue));
    values = _mm_max_epi32(values, _mm_setzero_si128());
    _mm_storel_epi64(reinterpret_cast<__m128i*>(pixels), _mm_packus_epi32(values, values));
}

#include "operators/separable/SeparableFilterVector.inl"

}  // namespace

void FilterFrameAvx2(const FilterCall& call) { RunFilterSchedule(call, kKernels); }

void FilterRowsAvx2(const RowFilterCall& call) { RunRowSchedule(call, kKernels); }

void FilterAndHalveAvx2(const HalvingCall& call) { RunHalvingSchedule(call, kKernels); }

}  // namespace vastrelline

#endif
