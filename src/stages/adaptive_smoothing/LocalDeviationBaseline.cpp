#include "stages/adaptive_smoothing/LocalDeviationSchedule.h"

#if VASTRELLINE_VECTOR_FORMS

#include <immintrin.h>

#define TARGET TARGET_BASELINE

namespace vastrelline {

namespace {

using Vector = __m128d;
constexpr int32_t kLanes = 2;

TARGET inline Vector Load(const double* from) { return _mm_loadu_pd(from); }
TARGET inline Vector Broadcast(double value) { return _mm_set1_pd(value); }
TARGET inline Vector Multiply(Vector a, Vector b) { return _mm_mul_pd(a, b); }
TARGET inline Vector Divide(Vector a, Vector b) { return _mm_div_pd(a, b); }
TARGET inline Vector RootAboveZero(Vector value) { return _mm_sqrt_pd(_mm_max_pd(value, _mm_setzero_pd())); }

// Levels of 0 to 32767.
TARGET inline void StoreLevels(uint16_t* to, Vector values) {
    const __m128i words = _mm_packs_epi32(_mm_cvttpd_epi32(values), _mm_setzero_si128());
    _mm_storeu_si32(to, words);
}

#include "stages/adaptive_smoothing/LocalDeviationVector.inl"

}  // namespace

void QuantiseDeviationBaseline(const DeviationCall& call) { RunDeviationSchedule(call, kKernels); }

void BlendByLevelBaseline(const BlendCall& call) { Blend(call); }

}  // namespace vastrelline

#endif
