// SPDX-License-Identifier: Apache-2.0
#include "operators/separable/FilterSchedule.h"

#if VASTRELLINE_VECTOR_FORMS

#include <emmintrin.h>

#include <algorithm>

#include "pixels/Truncate.h"

#define TARGET TARGET_BASELINE

namespace vastrelline {

namespace {

using Vector = __m128d;
constexpr int32_t kLanes = 2;
constexpr int32_t kColumnVectors = 2;

TARGET inline Vector Zero() { return _mm_setzero_pd(); }
TARGET inline Vector Load(const double* place) { return _mm_loadu_pd(place); }
TARGET inline void Store(double* place, Vector value) { _mm_storeu_pd(place, value); }
// The vector at a place, which is `places` places into `first`, before `next`.
template <int32_t places>
TARGET inline Vector Shifted(const double* place, Vector /*first*/, Vector /*next*/) {
    return Load(place);
}
TARGET inline Vector Broadcast(double value) { return _mm_set1_pd(value); }
TARGET inline Vector MultiplyAdd(Vector sum, Vector value, Vector tap) {
    return _mm_add_pd(sum, _mm_mul_pd(value, tap));
}
TARGET inline Vector LoadPixels(const uint16_t* pixels) { return _mm_setr_pd(pixels[0], pixels[1]); }
TARGET inline void LoadPairs(const uint16_t* pixels, Vector& first, Vector& second) {
    first = _mm_setr_pd(pixels[0], pixels[2]);
    second = _mm_setr_pd(pixels[1], pixels[3]);
}
TARGET inline void StorePixels(uint16_t* pixels, Vector sum, int32_t maxValue) {
    double sums[kLanes];
    _mm_storeu_pd(sums, sum);
    for (int32_t i = 0; i < kLanes; ++i) {
        pixels[i] = LowBits16(std::max(std::min(TruncateToInt32(sums[i]), maxValue), 0));
    }
}

#include "operators/separable/SeparableFilterVector.inl"

}  // namespace

void FilterFrameBaseline(const FilterCall& call) { RunFilterSchedule(call, kKernels); }

void FilterRowsBaseline(const RowFilterCall& call) { RunRowSchedule(call, kKernels); }

void FilterAndHalveBaseline(const HalvingCall& call) { RunHalvingSchedule(call, kKernels); }

}  // namespace vastrelline

#endif
