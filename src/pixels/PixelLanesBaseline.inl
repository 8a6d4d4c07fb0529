// SPDX-License-Identifier: Apache-2.0

// Pixels as vectors of doubles and of 32-bit integers, two at a time, for every x86-64: the loops that follow
// the double arithmetic of a definition lane by lane include it in an unnamed namespace, after they define
// TARGET and include <immintrin.h>. The forms for AVX2 and AVX-512 have the same names. Doubles take the
// compiler's own + - * /.

using Ints = __m128i;  // the lower two lanes; the others hold anything
using Doubles = __m128d;
constexpr size_t kLanes = 2;

TARGET inline Ints LoadPixels(const uint16_t* p) {
    return _mm_unpacklo_epi16(_mm_loadu_si32(p), _mm_setzero_si128());
}
// The low 16 bits of each lane.
TARGET inline void StorePixels(uint16_t* p, Ints values) {
    _mm_storeu_si32(p, _mm_shufflelo_epi16(values, _MM_SHUFFLE(3, 1, 2, 0)));
}
TARGET inline Ints LoadInts(const int32_t* p) { return _mm_loadu_si64(p); }
TARGET inline Ints BroadcastInt(int32_t value) { return _mm_set1_epi32(value); }
TARGET inline Ints AddInts(Ints a, Ints b) { return _mm_add_epi32(a, b); }
TARGET inline Ints SubtractInts(Ints a, Ints b) { return _mm_sub_epi32(a, b); }
TARGET inline Ints KeepLowBits16(Ints a) { return _mm_and_si128(a, _mm_set1_epi32(0xFFFF)); }
TARGET inline Ints ClampInts(Ints value, Ints top) {
    const Ints isAbove = _mm_cmpgt_epi32(value, top);
    const Ints lowered = _mm_or_si128(_mm_and_si128(isAbove, top), _mm_andnot_si128(isAbove, value));
    return _mm_and_si128(lowered, _mm_cmpgt_epi32(lowered, _mm_setzero_si128()));
}

TARGET inline Doubles LoadDoubles(const double* p) { return _mm_loadu_pd(p); }
TARGET inline void StoreDoubles(double* p, Doubles values) { _mm_storeu_pd(p, values); }
TARGET inline Doubles Broadcast(double value) { return _mm_set1_pd(value); }
TARGET inline Doubles Widen(Ints values) { return _mm_cvtepi32_pd(values); }
// As TruncateToInt32: what has no such integer gives the same smallest one.
TARGET inline Ints Truncate(Doubles values) { return _mm_cvttpd_epi32(values); }
TARGET inline Doubles Least(Doubles a, Doubles b) { return _mm_min_pd(a, b); }
TARGET inline Doubles Greatest(Doubles a, Doubles b) { return _mm_max_pd(a, b); }
TARGET inline Doubles RootOf(Doubles values) { return _mm_sqrt_pd(values); }
// The entries of a table at as many levels.
TARGET inline Doubles LookUp(const double* table, const uint16_t* levels) {
    return _mm_set_pd(table[levels[1]], table[levels[0]]);
}
// The integers of the lanes whose weight is above 0, which no weight that is not a number is; 0 elsewhere.
TARGET inline Ints KeepWhereAboveZero(Doubles weights, Ints values) {
    const __m128 isAbove = _mm_castpd_ps(_mm_cmpgt_pd(weights, _mm_setzero_pd()));
    const __m128 narrow = _mm_shuffle_ps(isAbove, isAbove, _MM_SHUFFLE(2, 0, 2, 0));
    return _mm_and_si128(values, _mm_castps_si128(narrow));
}
