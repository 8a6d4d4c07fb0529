// SPDX-License-Identifier: Apache-2.0
#include "operators/separable/FilterSchedule.h"

#if VASTRELLINE_VECTOR_FORMS

#include <immintrin.h>

#define TARGET TARGET_AVX512

namespace vastrelline {

namespace {

using Vector = __m512d;
constexpr int32_t kLanes = 8;
constexpr int32_t kColumnVectors = 4;
// All lanes. The unmasked forms of two conversions draw a false warning from GCC 12.
constexpr __mmask8 kAll = 0xFF;

TARGET inline Vector Zero() { return _mm512_setzero_pd(); }
TARGET inline Vector Load(const double* place) { return _mm512_loadu_pd(place); }
TARGET inline void Store(double* place, Vector value) { _mm512_storeu_pd(place, value); }
// The vector at a place, which is `places` places into `first`, before `next`.
template <int32_t places>
TARGET inline Vector Shifted(const double* /*place*/, Vector first, Vector next) {
    return _mm512_castsi512_pd(
        _mm512_maskz_alignr_epi64(kAll, _mm512_castpd_si512(next), _mm512_castpd_si512(first), places));
}
TARGET inline Vector Broadcast(double value) { return _mm512_set1_pd(value); }
TARGET inline Vector MultiplyAdd(Vector sum, Vector value, Vector tap) {
    return _mm512_add_pd(sum, _mm512_mul_pd(value, tap));
}
TARGET inline Vector LoadPixels(const uint16_t* pixels) {
    const __m128i words = _mm_loadu_si128(reinterpret_cast<const __m128i*>(pixels));
    return _mm512_maskz_cvtepi32_pd(kAll, _mm256_cvtepu16_epi32(words));
}
TARGET inline void LoadPairs(const uint16_t* pixels, Vector& first, Vector& second) {
    const __m256i pairs = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(pixels));
    first = _mm512_maskz_cvtepi32_pd(kAll, _mm256_and_si256(pairs, _mm256_set1_epi32(0xFFFF)));
    second = _mm512_maskz_cvtepi32_pd(kAll, _mm256_srli_epi32(pairs, 16));
}
TARGET inline void StorePixels(uint16_t* pixels, Vector sum, int32_t maxValue) {
    __m256i values = _mm256_min_epi32(_mm512_maskz_cvttpd_epi32(kAll, sum), _mm256_set1_epi32(maxValue));
    values = _mm256_max_epi32(values, _mm256_setzero_si256());
    _mm_storeu_si128(reinterpret_cast<__m128i*>(pixels), _mm256_cvtepi32_epi16(values));
}

#include "operators/separable/SeparableFilterVector.inl"

}  // namespace

void FilterFrameAvx512(const FilterCall& call) { RunFilterSchedule(call, kKernels); }

void FilterRowsAvx512(const RowFilterCall& call) { RunRowSchedule(call, kKernels); }

void FilterAndHalveAvx512(const HalvingCall& call) { RunHalvingSchedule(call, kKernels); }

}  // namespace vastrelline

#endif
