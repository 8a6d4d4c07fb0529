// SPDX-License-Identifier: Apache-2.0
#include "operators/box_mean/BoxMeanSchedule.h"

#if VASTRELLINE_VECTOR_FORMS

#include <immintrin.h>

#define TARGET TARGET_BASELINE

namespace vastrelline {

namespace {

using Vector = __m128i;

struct Divider {
    Vector factor;
    Vector shift;
};

// Sums of 32 bits.
struct WideLanes {
    using Sum = uint32_t;
    static constexpr int32_t kCount = 4;

    TARGET static Divider MakeDivider(WindowDivision division) {
        return {_mm_set1_epi32(static_cast<int32_t>(division.factor)), _mm_cvtsi32_si128(division.shift)};
    }
    TARGET static Vector Broadcast(uint32_t value) { return _mm_set1_epi32(static_cast<int32_t>(value)); }
    TARGET static Vector Add(Vector a, Vector b) { return _mm_add_epi32(a, b); }
    TARGET static Vector Subtract(Vector a, Vector b) { return _mm_sub_epi32(a, b); }
    TARGET static Vector Load(const uint32_t* place) {
        return _mm_loadu_si128(reinterpret_cast<const __m128i*>(place));
    }
    TARGET static void Store(uint32_t* place, Vector value) {
        _mm_storeu_si128(reinterpret_cast<__m128i*>(place), value);
    }
    TARGET static Vector LoadPixels(const uint16_t* pixels) {
        const __m128i words = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(pixels));
        return _mm_unpacklo_epi16(words, _mm_setzero_si128());
    }
    TARGET static void StorePixels(uint16_t* pixels, Vector values) {
        // Pixels are packed with signed saturation, there being no other: as numbers of 16 bits with a sign.
        const __m128i isSigned = _mm_srai_epi32(_mm_slli_epi32(values, 16), 16);
        _mm_storel_epi64(reinterpret_cast<__m128i*>(pixels), _mm_packs_epi32(isSigned, isSigned));
    }
    TARGET static Vector PrefixSums(Vector values) {
        values = _mm_add_epi32(values, _mm_slli_si128(values, 4));
        return _mm_add_epi32(values, _mm_slli_si128(values, 8));
    }
    TARGET static Vector BroadcastLast(Vector values) { return _mm_shuffle_epi32(values, 0xFF); }
    TARGET static Vector Divide(Vector sums, const Divider& divider) {
        const __m128i even = _mm_srli_epi64(_mm_mul_epu32(sums, divider.factor), 32);
        const __m128i odd = _mm_mul_epu32(_mm_srli_epi64(sums, 32), divider.factor);
        const __m128i high = _mm_or_si128(even, _mm_and_si128(odd, _mm_set1_epi64x(-0x100000000)));
        return _mm_srl_epi32(high, divider.shift);
    }
};

// Sums of 16 bits.
struct NarrowLanes {
    using Sum = uint16_t;
    static constexpr int32_t kCount = 8;

    TARGET static Divider MakeDivider(WindowDivision division) {
        return {_mm_set1_epi16(static_cast<int16_t>(division.factor)), _mm_cvtsi32_si128(division.shift)};
    }
    TARGET static Vector Broadcast(uint16_t value) { return _mm_set1_epi16(static_cast<int16_t>(value)); }
    TARGET static Vector Add(Vector a, Vector b) { return _mm_add_epi16(a, b); }
    TARGET static Vector Subtract(Vector a, Vector b) { return _mm_sub_epi16(a, b); }
    TARGET static Vector Load(const uint16_t* place) {
        return _mm_loadu_si128(reinterpret_cast<const __m128i*>(place));
    }
    TARGET static void Store(uint16_t* place, Vector value) {
        _mm_storeu_si128(reinterpret_cast<__m128i*>(place), value);
    }
    TARGET static Vector LoadPixels(const uint16_t* pixels) { return Load(pixels); }
    TARGET static void StorePixels(uint16_t* pixels, Vector values) { Store(pixels, values); }
    TARGET static Vector PrefixSums(Vector values) {
        values = _mm_add_epi16(values, _mm_slli_si128(values, 2));
        values = _mm_add_epi16(values, _mm_slli_si128(values, 4));
        return _mm_add_epi16(values, _mm_slli_si128(values, 8));
    }
    TARGET static Vector BroadcastLast(Vector values) {
        return _mm_shuffle_epi32(_mm_shufflehi_epi16(values, 0xFF), 0xFF);
    }
    TARGET static Vector Divide(Vector sums, const Divider& divider) {
        return _mm_srl_epi16(_mm_mulhi_epu16(sums, divider.factor), divider.shift);
    }
};

#include "operators/box_mean/BoxMeanVector.inl"

}  // namespace

void BoxMeanBaseline(const BoxMeanCall& call) { RunBoxMeanSchedule(call, kKernels); }

}  // namespace vastrelline

#endif
