// SPDX-License-Identifier: Apache-2.0

// The lanes of PixelLanesBaseline.inl for AVX-512, eight at a time.

using Ints = __m256i;
using Doubles = __m512d;
constexpr size_t kLanes = 8;

// All lanes. The unmasked forms of two conversions draw a false warning from GCC 12.
constexpr __mmask8 kAll = 0xFF;

TARGET inline Ints LoadPixels(const uint16_t* p) {
    return _mm256_cvtepu16_epi32(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p)));
}
TARGET inline void StorePixels(uint16_t* p, Ints values) {
    _mm_storeu_si128(reinterpret_cast<__m128i*>(p), _mm256_cvtepi32_epi16(values));
}
TARGET inline Ints LoadInts(const int32_t* p) {
    return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p));
}
TARGET inline Ints BroadcastInt(int32_t value) { return _mm256_set1_epi32(value); }
TARGET inline Ints AddInts(Ints a, Ints b) { return _mm256_add_epi32(a, b); }
TARGET inline Ints SubtractInts(Ints a, Ints b) { return _mm256_sub_epi32(a, b); }
TARGET inline Ints KeepLowBits16(Ints a) { return _mm256_and_si256(a, _mm256_set1_epi32(0xFFFF)); }
TARGET inline Ints ClampInts(Ints value, Ints top) {
    return _mm256_max_epi32(_mm256_min_epi32(value, top), _mm256_setzero_si256());
}

TARGET inline Doubles LoadDoubles(const double* p) { return _mm512_loadu_pd(p); }
TARGET inline void StoreDoubles(double* p, Doubles values) { _mm512_storeu_pd(p, values); }
TARGET inline Doubles Broadcast(double value) { return _mm512_set1_pd(value); }
TARGET inline Doubles Widen(Ints values) { return _mm512_maskz_cvtepi32_pd(kAll, values); }
TARGET inline Ints Truncate(Doubles values) { return _mm512_maskz_cvttpd_epi32(kAll, values); }
TARGET inline Doubles Least(Doubles a, Doubles b) { return _mm512_maskz_min_pd(kAll, a, b); }
TARGET inline Doubles Greatest(Doubles a, Doubles b) { return _mm512_maskz_max_pd(kAll, a, b); }
TARGET inline Doubles RootOf(Doubles values) { return _mm512_maskz_sqrt_pd(kAll, values); }
TARGET inline Doubles LookUp(const double* table, const uint16_t* levels) {
    return _mm512_set_pd(table[levels[7]], table[levels[6]], table[levels[5]], table[levels[4]],
                         table[levels[3]], table[levels[2]], table[levels[1]], table[levels[0]]);
}
TARGET inline Ints KeepWhereAboveZero(Doubles weights, Ints values) {
    return _mm256_maskz_mov_epi32(_mm512_cmp_pd_mask(weights, _mm512_setzero_pd(), _CMP_GT_OQ), values);
}
