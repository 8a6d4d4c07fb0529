// SPDX-License-Identifier: Apache-2.0
#include "operators/median/MedianSchedule.h"

#if VASTRELLINE_VECTOR_FORMS

#include <immintrin.h>

#include <algorithm>
#include <initializer_list>
#include <utility>

#include "operators/median/MedianPlan.h"

#define TARGET TARGET_AVX512

namespace vastrelline {

namespace {

using Vector = __m512i;
constexpr size_t kLanes = 32;

TARGET inline Vector Load(const uint16_t* place) { return _mm512_loadu_si512(place); }
TARGET inline void Store(uint16_t* place, Vector value) { _mm512_storeu_si512(place, value); }
TARGET inline Vector LoadPixels(const uint16_t* pixels) { return Load(pixels); }
TARGET inline void StorePixels(uint16_t* pixels, Vector value) { Store(pixels, value); }
TARGET inline Vector Minimum(Vector a, Vector b) { return _mm512_min_epu16(a, b); }
TARGET inline Vector Maximum(Vector a, Vector b) { return _mm512_max_epu16(a, b); }

#include "operators/median/MedianFilterVector.inl"

}  // namespace

void FilterMedianAvx512(const MedianCall& call) { RunMedianSchedule(call, kKernels, kLanes, kScratchPixels); }

}  // namespace vastrelline

#endif
