// SPDX-License-Identifier: Apache-2.0
#include "operators/median/MedianSchedule.h"

#if VASTRELLINE_VECTOR_FORMS

#include <emmintrin.h>

#include <algorithm>
#include <initializer_list>
#include <utility>

#include "operators/median/MedianPlan.h"

#define TARGET TARGET_BASELINE

namespace vastrelline {

namespace {

using Vector = __m128i;
constexpr size_t kLanes = 8;

TARGET inline Vector Load(const uint16_t* place) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(place));
}
TARGET inline void Store(uint16_t* place, Vector value) {
    _mm_storeu_si128(reinterpret_cast<__m128i*>(place), value);
}
// This set compares signed words only: pixels are kept with their highest bit inverted.
TARGET inline Vector TurnHighestBit(Vector value) { return _mm_xor_si128(value, _mm_set1_epi16(-0x8000)); }
TARGET inline Vector LoadPixels(const uint16_t* pixels) { return TurnHighestBit(Load(pixels)); }
TARGET inline void StorePixels(uint16_t* pixels, Vector value) { Store(pixels, TurnHighestBit(value)); }
TARGET inline Vector Minimum(Vector a, Vector b) { return _mm_min_epi16(a, b); }
TARGET inline Vector Maximum(Vector a, Vector b) { return _mm_max_epi16(a, b); }

#include "operators/median/MedianFilterVector.inl"

}  // namespace

void FilterMedianBaseline(const MedianCall& call) {
    RunMedianSchedule(call, kKernels, kLanes, kScratchPixels);
}

}  // namespace vastrelline

#endif
