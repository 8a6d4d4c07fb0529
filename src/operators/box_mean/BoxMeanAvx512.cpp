// SPDX-License-Identifier: Apache-2.0
#include "operators/box_mean/BoxMeanSchedule.h"

#if VASTRELLINE_VECTOR_FORMS

#include <immintrin.h>

#define TARGET TARGET_AVX512

namespace vastrelline {

namespace {

using Vector = __m512i;

// The masked forms of the instructions, with all lanes on: the compiler's plain ones start from a value that
// is not set, and it warns of its own text.
constexpr __mmask16 kAllLanes = 0xFFFF;
constexpr __mmask8 kAllWideLanes = 0xFF;

struct Divider {
    Vector factor;
    __m128i shift;
};

// Sums of 32 bits.
struct WideLanes {
    using Sum = uint32_t;
    static constexpr int32_t kCount = 16;

    TARGET static Divider MakeDivider(WindowDivision division) {
        return {_mm512_set1_epi32(static_cast<int32_t>(division.factor)), _mm_cvtsi32_si128(division.shift)};
    }
    TARGET static Vector Broadcast(uint32_t value) { return _mm512_set1_epi32(static_cast<int32_t>(value)); }
    TARGET static Vector Add(Vector a, Vector b) { return _mm512_add_epi32(a, b); }
    TARGET static Vector Subtract(Vector a, Vector b) { return _mm512_sub_epi32(a, b); }
    TARGET static Vector Load(const uint32_t* place) { return _mm512_loadu_si512(place); }
    TARGET static void Store(uint32_t* place, Vector value) { _mm512_storeu_si512(place, value); }
    TARGET static Vector LoadPixels(const uint16_t* pixels) {
        return _mm512_maskz_cvtepu16_epi32(kAllLanes,
                                           _mm256_loadu_si256(reinterpret_cast<const __m256i*>(pixels)));
    }
    TARGET static void StorePixels(uint16_t* pixels, Vector values) {
        _mm512_mask_cvtepi32_storeu_epi16(pixels, kAllLanes, values);
    }
    TARGET static Vector PrefixSums(Vector values) {
        const __m512i zero = _mm512_setzero_si512();
        values = _mm512_add_epi32(values, _mm512_maskz_alignr_epi32(kAllLanes, values, zero, kCount - 1));
        values = _mm512_add_epi32(values, _mm512_maskz_alignr_epi32(kAllLanes, values, zero, kCount - 2));
        values = _mm512_add_epi32(values, _mm512_maskz_alignr_epi32(kAllLanes, values, zero, kCount - 4));
        return _mm512_add_epi32(values, _mm512_maskz_alignr_epi32(kAllLanes, values, zero, kCount - 8));
    }
    TARGET static Vector BroadcastLast(Vector values) {
        return _mm512_maskz_permutexvar_epi32(kAllLanes, _mm512_set1_epi32(kCount - 1), values);
    }
    TARGET static Vector Divide(Vector sums, const Divider& divider) {
        const __m512i even = _mm512_maskz_srli_epi64(
            kAllWideLanes, _mm512_maskz_mul_epu32(kAllWideLanes, sums, divider.factor), 32);
        const __m512i odd = _mm512_maskz_mul_epu32(
            kAllWideLanes, _mm512_maskz_srli_epi64(kAllWideLanes, sums, 32), divider.factor);
        return _mm512_maskz_srl_epi32(kAllLanes, _mm512_mask_blend_epi32(0xAAAA, even, odd), divider.shift);
    }
};

// Sums of 16 bits.
struct NarrowLanes {
    using Sum = uint16_t;
    static constexpr int32_t kCount = 32;

    TARGET static Divider MakeDivider(WindowDivision division) {
        return {_mm512_set1_epi16(static_cast<int16_t>(division.factor)), _mm_cvtsi32_si128(division.shift)};
    }
    TARGET static Vector Broadcast(uint16_t value) { return _mm512_set1_epi16(static_cast<int16_t>(value)); }
    TARGET static Vector Add(Vector a, Vector b) { return _mm512_add_epi16(a, b); }
    TARGET static Vector Subtract(Vector a, Vector b) { return _mm512_sub_epi16(a, b); }
    TARGET static Vector Load(const uint16_t* place) { return _mm512_loadu_si512(place); }
    TARGET static void Store(uint16_t* place, Vector value) { _mm512_storeu_si512(place, value); }
    TARGET static Vector LoadPixels(const uint16_t* pixels) { return Load(pixels); }
    TARGET static void StorePixels(uint16_t* pixels, Vector values) { Store(pixels, values); }
    TARGET static Vector PrefixSums(Vector values) {
        values = _mm512_add_epi16(values, _mm512_bslli_epi128(values, 2));
        values = _mm512_add_epi16(values, _mm512_bslli_epi128(values, 4));
        values = _mm512_add_epi16(values, _mm512_bslli_epi128(values, 8));
        // The shifts stay within quarters, with totals t0 to t3: to the second one t0 must be added, to the
        // third t0 + t1, to the last t0 + t1 + t2.
        const __m512i zero = _mm512_setzero_si512();
        const __m512i totals = _mm512_shuffle_epi8(values, _mm512_set1_epi16(0x0F0E));
        const __m512i by1 = _mm512_maskz_alignr_epi32(kAllLanes, totals, zero, 12);  // 0, t0, t1, t2
        const __m512i by2 = _mm512_maskz_alignr_epi32(kAllLanes, by1, zero, 12);     // 0, 0, t0, t1
        const __m512i by3 = _mm512_maskz_alignr_epi32(kAllLanes, by2, zero, 12);     // 0, 0, 0, t0
        return _mm512_add_epi16(_mm512_add_epi16(values, by1), _mm512_add_epi16(by2, by3));
    }
    TARGET static Vector BroadcastLast(Vector values) {
        const __m512i lastOfQuarters = _mm512_shuffle_epi8(values, _mm512_set1_epi16(0x0F0E));
        return _mm512_maskz_shuffle_i64x2(kAllWideLanes, lastOfQuarters, lastOfQuarters, 0xFF);
    }
    TARGET static Vector Divide(Vector sums, const Divider& divider) {
        return _mm512_srl_epi16(_mm512_mulhi_epu16(sums, divider.factor), divider.shift);
    }
};

#include "operators/box_mean/BoxMeanVector.inl"

}  // namespace

void BoxMeanAvx512(const BoxMeanCall& call) { RunBoxMeanSchedule(call, kKernels); }

}  // namespace vastrelline

#endif
