// SPDX-License-Identifier: Apache-2.0

// The lanes of PixelLanesBaseline.inl for AVX2, four at a time.

using Ints = __m128i;
using Doubles = __m256d;
constexpr size_t kLanes = 4;

TARGET inline Ints LoadPixels(const uint16_t* p) {
    return _mm_cvtepu16_epi32(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(p)));
}
TARGET inline void StorePixels(uint16_t* p, Ints values) {
    const Ints low = _mm_and_si128(values, _mm_set1_epi32(0xFFFF));
    _mm_storel_epi64(reinterpret_cast<__m128i*>(p), _mm_packus_epi32(low, low));
}
TARGET inline Ints LoadInts(const int32_t* p) { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p)); }
TARGET inline Ints BroadcastInt(int32_t value) { return _mm_set1_epi32(value); }
TARGET inline Ints AddInts(Ints a, Ints b) { return _mm_add_epi32(a, b); }
TARGET inline Ints SubtractInts(Ints a, Ints b) { return _mm_sub_epi32(a, b); }
TARGET inline Ints KeepLowBits16(Ints a) { return _mm_and_si128(a, _mm_set1_epi32(0xFFFF)); }
TARGET inline Ints ClampInts(Ints value, Ints top) {
    return _mm_max_epi32(_mm_min_epi32(value, top), _mm_setzero_si128());
}

TARGET inline Doubles LoadDoubles(const double* p) { return _mm256_loadu_pd(p); }
TARGET inline void StoreDoubles(double* p, Doubles values) { _mm256_storeu_pd(p, values); }
TARGET inline Doubles Broadcast(double value) { return _mm256_set1_pd(value); }
TARGET inline Doubles Widen(Ints values) { return _mm256_cvtepi32_pd(values); }
TARGET inline Ints Truncate(Doubles values) { return _mm256_cvttpd_epi32(values); }
TARGET inline Doubles Least(Doubles a, Doubles b) { return _mm256_min_pd(a, b); }
TARGET inline Doubles Greatest(Doubles a, Doubles b) { return _mm256_max_pd(a, b); }
TARGET inline Doubles RootOf(Doubles values) { return _mm256_sqrt_pd(values); }
// Loads of single entries: the processor's own gather takes longer.
TARGET inline Doubles LookUp(const double* table, const uint16_t* levels) {
    return _mm256_set_pd(table[levels[3]], table[levels[2]], table[levels[1]], table[levels[0]]);
}
TARGET inline Ints KeepWhereAboveZero(Doubles weights, Ints values) {
    const __m256 isAbove = _mm256_castpd_ps(_mm256_cmp_pd(weights, _mm256_setzero_pd(), _CMP_GT_OQ));
    const __m128 narrow = _mm_shuffle_ps(_mm256_castps256_ps128(isAbove), _mm256_extractf128_ps(isAbove, 1),
                                         _MM_SHUFFLE(2, 0, 2, 0));
    return _mm_and_si128(values, _mm_castps_si128(narrow));
}
