// SPDX-License-Identifier: Apache-2.0
#include "stages/adaptive_unsharp/SobelMagnitude.h"

#if VASTRELLINE_VECTOR_FORMS

#include <immintrin.h>

#define TARGET TARGET_AVX512

namespace vastrelline {

namespace {

using Words = __m512i;
using Ints = __m256i;
using Doubles = __m512d;
constexpr int32_t kWords = 32;
constexpr int32_t kDoubles = 8;
// All lanes. The unmasked forms of some conversions draw a false warning from GCC 12.
constexpr __mmask8 kAllDoubles = 0xFF;
constexpr __mmask16 kAllFloats = 0xFFFF;

struct SumPair {
    __m512i low;
    __m512i high;
};

TARGET inline Words LoadWords(const uint16_t* p) { return _mm512_loadu_si512(p); }
TARGET inline void StoreWords(uint16_t* p, Words words) { _mm512_storeu_si512(p, words); }
TARGET inline Words AddWords(Words a, Words b) { return _mm512_add_epi16(a, b); }
TARGET inline Words SubtractOrZero(Words a, Words b) { return _mm512_subs_epu16(a, b); }
TARGET inline Words OrWords(Words a, Words b) { return _mm512_or_si512(a, b); }
TARGET inline Words ShiftRightBy2(Words words) { return _mm512_srli_epi16(words, 2); }
TARGET inline bool AreBelow14Bits(Words seen) {
    const __m512i high = _mm512_srli_epi16(seen, 14);
    return _mm512_test_epi16_mask(high, high) == 0;
}
TARGET inline SumPair SumOfSquares(Words a, Words b) {
    const __m512i low = _mm512_unpacklo_epi16(a, b);
    const __m512i high = _mm512_unpackhi_epi16(a, b);
    return {_mm512_madd_epi16(low, low), _mm512_madd_epi16(high, high)};
}
// Works in quarters, as the unpacking above does, so that each lane returns to its place.
TARGET inline Words PackWords(__m512i low, __m512i high) { return _mm512_packus_epi32(low, high); }
TARGET inline __m512i TruncatedRoot(__m512i square) {
    const __m512 root = _mm512_maskz_sqrt_ps(kAllFloats, _mm512_maskz_cvtepi32_ps(kAllFloats, square));
    const __m512i nearest = _mm512_maskz_cvtps_epi32(kAllFloats, root);
    const __mmask16 isAbove = _mm512_cmpgt_epi32_mask(_mm512_madd_epi16(nearest, nearest), square);
    return _mm512_mask_sub_epi32(nearest, isAbove, nearest, _mm512_set1_epi32(1));
}

TARGET inline Ints LoadInts(const uint16_t* p) {
    return _mm256_cvtepu16_epi32(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p)));
}
TARGET inline Ints AddInts(Ints a, Ints b) { return _mm256_add_epi32(a, b); }
TARGET inline Ints SubtractInts(Ints a, Ints b) { return _mm256_sub_epi32(a, b); }
TARGET inline Ints QuarterOfInts(Ints a) {
    return _mm256_srai_epi32(_mm256_add_epi32(a, _mm256_srli_epi32(_mm256_srai_epi32(a, 31), 30)), 2);
}
TARGET inline Doubles Widen(Ints a) { return _mm512_maskz_cvtepi32_pd(kAllDoubles, a); }
TARGET inline Doubles RootOfSquares(Doubles a, Doubles b) {
    return _mm512_maskz_sqrt_pd(kAllDoubles, _mm512_add_pd(_mm512_mul_pd(a, a), _mm512_mul_pd(b, b)));
}
TARGET inline void StoreLowBits(uint16_t* p, Doubles values) {
    const __m256i ints = _mm512_maskz_cvttpd_epi32(kAllDoubles, values);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(p), _mm256_cvtepi32_epi16(ints));
}

#include "stages/adaptive_unsharp/SobelRowVector.inl"

}  // namespace

void SobelRowAvx512(const SobelRowCall& call) { SobelRow(call); }

}  // namespace vastrelline

#endif
