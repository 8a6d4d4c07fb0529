#include "image/BoxMeanSchedule.h"

#if VASTRELLINE_X86

#include <immintrin.h>

#define TARGET TARGET_AVX512

namespace vastrelline {

namespace {

using Vector = __m512i;
constexpr int32_t kLanes = 16;

// The masked forms of the instructions, with all lanes on: the compiler's plain ones start from a value that
// is not set, and it warns of its own text.
constexpr __mmask16 kAllLanes = 0xFFFF;
constexpr __mmask8 kAllWideLanes = 0xFF;

struct Divider {
    Vector factor;
    __m128i shift;
};

TARGET inline Divider MakeDivider(WindowDivision division) {
    return {_mm512_set1_epi32(static_cast<int32_t>(division.factor)), _mm_cvtsi32_si128(division.shift)};
}
TARGET inline Vector Broadcast(uint32_t value) { return _mm512_set1_epi32(static_cast<int32_t>(value)); }
TARGET inline Vector Add(Vector a, Vector b) { return _mm512_add_epi32(a, b); }
TARGET inline Vector Subtract(Vector a, Vector b) { return _mm512_sub_epi32(a, b); }
TARGET inline Vector Load(const uint32_t* place) { return _mm512_loadu_si512(place); }
TARGET inline void Store(uint32_t* place, Vector value) { _mm512_storeu_si512(place, value); }
TARGET inline Vector LoadPixels(const uint16_t* pixels) {
    return _mm512_maskz_cvtepu16_epi32(kAllLanes,
                                       _mm256_loadu_si256(reinterpret_cast<const __m256i*>(pixels)));
}
TARGET inline void StorePixels(uint16_t* pixels, Vector values) {
    _mm512_mask_cvtepi32_storeu_epi16(pixels, kAllLanes, values);
}
TARGET inline Vector PrefixSums(Vector values) {
    const __m512i zero = _mm512_setzero_si512();
    values = _mm512_add_epi32(values, _mm512_maskz_alignr_epi32(kAllLanes, values, zero, kLanes - 1));
    values = _mm512_add_epi32(values, _mm512_maskz_alignr_epi32(kAllLanes, values, zero, kLanes - 2));
    values = _mm512_add_epi32(values, _mm512_maskz_alignr_epi32(kAllLanes, values, zero, kLanes - 4));
    return _mm512_add_epi32(values, _mm512_maskz_alignr_epi32(kAllLanes, values, zero, kLanes - 8));
}
TARGET inline Vector BroadcastLast(Vector values) {
    return _mm512_maskz_permutexvar_epi32(kAllLanes, _mm512_set1_epi32(kLanes - 1), values);
}
TARGET inline Vector Divide(Vector sums, const Divider& divider) {
    const __m512i even = _mm512_maskz_srli_epi64(
        kAllWideLanes, _mm512_maskz_mul_epu32(kAllWideLanes, sums, divider.factor), 32);
    const __m512i odd = _mm512_maskz_mul_epu32(
        kAllWideLanes, _mm512_maskz_srli_epi64(kAllWideLanes, sums, 32), divider.factor);
    return _mm512_maskz_srl_epi32(kAllLanes, _mm512_mask_blend_epi32(0xAAAA, even, odd), divider.shift);
}

#include "image/BoxMeanVector.inl"

}  // namespace

void BoxMeanAvx512(const BoxMeanCall& call) { RunBoxMeanSchedule(call, kKernels); }

}  // namespace vastrelline

#endif
