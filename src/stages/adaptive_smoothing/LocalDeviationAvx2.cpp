#include "stages/adaptive_smoothing/LocalDeviationSchedule.h"

#if VASTRELLINE_VECTOR_FORMS

#include <immintrin.h>

#define TARGET TARGET_AVX2

namespace vastrelline {

namespace {

using Vector = __m256d;
constexpr int32_t kLanes = 4;

TARGET inline Vector Load(const double* from) { return _mm256_loadu_pd(from); }
TARGET inline Vector Broadcast(double value) { return _mm256_set1_pd(value); }
TARGET inline Vector Multiply(Vector a, Vector b) { return _mm256_mul_pd(a, b); }
TARGET inline Vector Divide(Vector a, Vector b) { return _mm256_div_pd(a, b); }
TARGET inline Vector RootAboveZero(Vector value) {
    return _mm256_sqrt_pd(_mm256_max_pd(value, _mm256_setzero_pd()));
}

// Levels of 0 to 32767.
TARGET inline void StoreLevels(uint16_t* to, Vector values) {
    const __m128i words = _mm_packs_epi32(_mm256_cvttpd_epi32(values), _mm_setzero_si128());
    _mm_storeu_si64(to, words);
}

#include "stages/adaptive_smoothing/LocalDeviationVector.inl"

}  // namespace

void QuantiseDeviationAvx2(const DeviationCall& call) { RunDeviationSchedule(call, kKernels); }

void BlendByLevelAvx2(const BlendCall& call) { Blend(call); }

}  // namespace vastrelline

#endif
