// SPDX-License-Identifier: Apache-2.0
#include "operators/median/MedianSchedule.h"

#if VASTRELLINE_VECTOR_FORMS

#include <immintrin.h>

#include <algorithm>
#include <initializer_list>
#include <utility>

#include "operators/median/MedianPlan.h"

#define TARGET TARGET_AVX2

namespace vastrelline {

namespace {

using Vector = __m256i;
constexpr size_t kLanes = 16;

TARGET inline Vector Load(const uint16_t* place) {
    return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(place));
}
TARGET inline void Store(uint16_t* place, Vector value) {
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(place), value);
}
TARGET inline Vector LoadPixels(const uint16_t* pixels) { return Load(pixels); }
TARGET inline void StorePixels(uint16_t* pixels, Vector value) { Store(pixels, value); }
TARGET inline Vector Minimum(Vector a, Vector b) { return _mm256_min_epu16(a, b); }
TARGET inline Vector Maximum(Vector a, Vector b) { return _mm256_max_epu16(a, b); }

#include "operators/median/MedianFilterVector.inl"

}  // namespace

void FilterMedianAvx2(const MedianCall& call) { RunMedianSchedule(call, kKernels, kLanes, kScratchPixels); }

}  // namespace vastrelline

#endif
