// SPDX-License-Identifier: Apache-2.0
#include "stages/adaptive_unsharp/SobelMagnitude.h"

#if VASTRELLINE_VECTOR_FORMS

#include <immintrin.h>

#include <cstring>

#define TARGET TARGET_BASELINE

namespace vastrelline {

namespace {

using Words = __m128i;
using Ints = __m128i;  // the lower two lanes
using Doubles = __m128d;
constexpr int32_t kWords = 8;
constexpr int32_t kDoubles = 2;

struct SumPair {
    Ints low;
    Ints high;
};

TARGET inline Words LoadWords(const uint16_t* p) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
}
TARGET inline void StoreWords(uint16_t* p, Words words) {
    _mm_storeu_si128(reinterpret_cast<__m128i*>(p), words);
}
TARGET inline Words AddWords(Words a, Words b) { return _mm_add_epi16(a, b); }
TARGET inline Words SubtractOrZero(Words a, Words b) { return _mm_subs_epu16(a, b); }
TARGET inline Words OrWords(Words a, Words b) { return _mm_or_si128(a, b); }
TARGET inline Words ShiftRightBy2(Words words) { return _mm_srli_epi16(words, 2); }
TARGET inline bool AreBelow14Bits(Words seen) {
    const __m128i high = _mm_srli_epi16(seen, 14);
    return _mm_movemask_epi8(_mm_cmpeq_epi16(high, _mm_setzero_si128())) == 0xFFFF;
}
TARGET inline SumPair SumOfSquares(Words a, Words b) {
    const __m128i low = _mm_unpacklo_epi16(a, b);
    const __m128i high = _mm_unpackhi_epi16(a, b);
    return {_mm_madd_epi16(low, low), _mm_madd_epi16(high, high)};
}
TARGET inline Words PackWords(Ints low, Ints high) { return _mm_packs_epi32(low, high); }
TARGET inline Ints TruncatedRoot(Ints square) {
    const __m128 root = _mm_sqrt_ps(_mm_cvtepi32_ps(square));
    const __m128i nearest = _mm_cvtps_epi32(root);
    return _mm_add_epi32(nearest, _mm_cmpgt_epi32(_mm_madd_epi16(nearest, nearest), square));
}

TARGET inline Ints LoadInts(const uint16_t* p) {
    int32_t pair = 0;
    std::memcpy(&pair, p, sizeof pair);
    return _mm_unpacklo_epi16(_mm_cvtsi32_si128(pair), _mm_setzero_si128());
}
TARGET inline Ints AddInts(Ints a, Ints b) { return _mm_add_epi32(a, b); }
TARGET inline Ints SubtractInts(Ints a, Ints b) { return _mm_sub_epi32(a, b); }
TARGET inline Ints QuarterOfInts(Ints a) {
    return _mm_srai_epi32(_mm_add_epi32(a, _mm_srli_epi32(_mm_srai_epi32(a, 31), 30)), 2);
}
TARGET inline Doubles Widen(Ints a) { return _mm_cvtepi32_pd(a); }
TARGET inline Doubles RootOfSquares(Doubles a, Doubles b) {
    return _mm_sqrt_pd(_mm_add_pd(_mm_mul_pd(a, a), _mm_mul_pd(b, b)));
}
TARGET inline void StoreLowBits(uint16_t* p, Doubles values) {
    const __m128i ints = _mm_cvttpd_epi32(values);
    const int32_t pair = _mm_cvtsi128_si32(_mm_shufflelo_epi16(ints, 0x08));
    std::memcpy(p, &pair, sizeof pair);
}

#include "stages/adaptive_unsharp/SobelRowVector.inl"

}  // namespace

void SobelRowBaseline(const SobelRowCall& call) { SobelRow(call); }

}  // namespace vastrelline

#endif
