// SPDX-License-Identifier: Apache-2.0
#include "stages/adaptive_unsharp/SobelMagnitude.h"

#if VASTRELLINE_VECTOR_FORMS

#include <immintrin.h>

#define TARGET TARGET_AVX2

namespace vastrelline {

namespace {

using Words = __m256i;
using Ints = __m128i;
using Doubles = __m256d;
constexpr int32_t kWords = 16;
constexpr int32_t kDoubles = 4;

struct SumPair {
    __m256i low;
    __m256i high;
};

TARGET inline Words LoadWords(const uint16_t* p) {
    return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p));
}
TARGET inline void StoreWords(uint16_t* p, Words words) {
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(p), words);
}
TARGET inline Words AddWords(Words a, Words b) { return _mm256_add_epi16(a, b); }
TARGET inline Words SubtractOrZero(Words a, Words b) { return _mm256_subs_epu16(a, b); }
TARGET inline Words OrWords(Words a, Words b) { return _mm256_or_si256(a, b); }
TARGET inline Words ShiftRightBy2(Words words) { return _mm256_srli_epi16(words, 2); }
TARGET inline bool AreBelow14Bits(Words seen) {
    const __m256i high = _mm256_srli_epi16(seen, 14);
    return _mm256_testz_si256(high, high) != 0;
}
TARGET inline SumPair SumOfSquares(Words a, Words b) {
    const __m256i low = _mm256_unpacklo_epi16(a, b);
    const __m256i high = _mm256_unpackhi_epi16(a, b);
    return {_mm256_madd_epi16(low, low), _mm256_madd_epi16(high, high)};
}
// Works in halves, as the unpacking above does, so that each lane returns to its place.
TARGET inline Words PackWords(__m256i low, __m256i high) { return _mm256_packus_epi32(low, high); }
TARGET inline __m256i TruncatedRoot(__m256i square) {
    const __m256 root = _mm256_sqrt_ps(_mm256_cvtepi32_ps(square));
    const __m256i nearest = _mm256_cvtps_epi32(root);
    return _mm256_add_epi32(nearest, _mm256_cmpgt_epi32(_mm256_madd_epi16(nearest, nearest), square));
}

TARGET inline Ints LoadInts(const uint16_t* p) {
    return _mm_cvtepu16_epi32(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(p)));
}
TARGET inline Ints AddInts(Ints a, Ints b) { return _mm_add_epi32(a, b); }
TARGET inline Ints SubtractInts(Ints a, Ints b) { return _mm_sub_epi32(a, b); }
TARGET inline Ints QuarterOfInts(Ints a) {
    return _mm_srai_epi32(_mm_add_epi32(a, _mm_srli_epi32(_mm_srai_epi32(a, 31), 30)), 2);
}
TARGET inline Doubles Widen(Ints a) { return _mm256_cvtepi32_pd(a); }
TARGET inline Doubles RootOfSquares(Doubles a, Doubles b) {
    return _mm256_sqrt_pd(_mm256_add_pd(_mm256_mul_pd(a, a), _mm256_mul_pd(b, b)));
}
TARGET inline void StoreLowBits(uint16_t* p, Doubles values) {
    const __m128i low = _mm_and_si128(_mm256_cvttpd_epi32(values), _mm_set1_epi32(0xFFFF));
    _mm_storel_epi64(reinterpret_cast<__m128i*>(p), _mm_packus_epi32(low, low));
}

#include "stages/adaptive_unsharp/SobelRowVector.inl"

}  // namespace

void SobelRowAvx2(const SobelRowCall& call) { SobelRow(call); }

}  // namespace vastrelline

#endif
