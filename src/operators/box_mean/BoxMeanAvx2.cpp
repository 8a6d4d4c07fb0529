// SPDX-License-Identifier: Apache-2.0
#include "operators/box_mean/BoxMeanSchedule.h"

#if VASTRELLINE_VECTOR_FORMS

#include <immintrin.h>

#define TARGET TARGET_AVX2

namespace vastrelline {

namespace {

using Vector = __m256i;

struct Divider {
    Vector factor;
    __m128i shift;
};

// Sums of 32 bits.
struct WideLanes {
    using Sum = uint32_t;
    static constexpr int32_t kCount = 8;

    TARGET static Divider MakeDivider(WindowDivision division) {
        return {_mm256_set1_epi32(static_cast<int32_t>(division.factor)), _mm_cvtsi32_si128(division.shift)};
    }
    TARGET static Vector Broadcast(uint32_t value) { return _mm256_set1_epi32(static_cast<int32_t>(value)); }
    TARGET static Vector Add(Vector a, Vector b) { return _mm256_add_epi32(a, b); }
    TARGET static Vector Subtract(Vector a, Vector b) { return _mm256_sub_epi32(a, b); }
    TARGET static Vector Load(const uint32_t* place) {
        return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(place));
    }
    TARGET static void Store(uint32_t* place, Vector value) {
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(place), value);
    }
    TARGET static Vector LoadPixels(const uint16_t* pixels) {
        return _mm256_cvtepu16_epi32(_mm_loadu_si128(reinterpret_cast<const __m128i*>(pixels)));
    }
    TARGET static void StorePixels(uint16_t* pixels, Vector values) {
        const __m128i packed =
            _mm_packus_epi32(_mm256_castsi256_si128(values), _mm256_extracti128_si256(values, 1));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(pixels), packed);
    }
    TARGET static Vector PrefixSums(Vector values) {
        values = _mm256_add_epi32(values, _mm256_slli_si256(values, 4));
        values = _mm256_add_epi32(values, _mm256_slli_si256(values, 8));
        // The shifts stay within halves: the upper one still lacks the last sum of the lower one.
        const __m256i lastOfHalves = _mm256_shuffle_epi32(values, 0xFF);
        return _mm256_add_epi32(values, _mm256_permute2x128_si256(lastOfHalves, lastOfHalves, 0x08));
    }
    TARGET static Vector BroadcastLast(Vector values) {
        return _mm256_permutevar8x32_epi32(values, _mm256_set1_epi32(kCount - 1));
    }
    TARGET static Vector Divide(Vector sums, const Divider& divider) {
        const __m256i even = _mm256_srli_epi64(_mm256_mul_epu32(sums, divider.factor), 32);
        const __m256i odd = _mm256_mul_epu32(_mm256_srli_epi64(sums, 32), divider.factor);
        return _mm256_srl_epi32(_mm256_blend_epi32(even, odd, 0xAA), divider.shift);
    }
};

// Sums of 16 bits.
struct NarrowLanes {
    using Sum = uint16_t;
    static constexpr int32_t kCount = 16;

    TARGET static Divider MakeDivider(WindowDivision division) {
        return {_mm256_set1_epi16(static_cast<int16_t>(division.factor)), _mm_cvtsi32_si128(division.shift)};
    }
    TARGET static Vector Broadcast(uint16_t value) { return _mm256_set1_epi16(static_cast<int16_t>(value)); }
    TARGET static Vector Add(Vector a, Vector b) { return _mm256_add_epi16(a, b); }
    TARGET static Vector Subtract(Vector a, Vector b) { return _mm256_sub_epi16(a, b); }
    TARGET static Vector Load(const uint16_t* place) {
        return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(place));
    }
    TARGET static void Store(uint16_t* place, Vector value) {
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(place), value);
    }
    TARGET static Vector LoadPixels(const uint16_t* pixels) { return Load(pixels); }
    TARGET static void StorePixels(uint16_t* pixels, Vector values) { Store(pixels, values); }
    TARGET static Vector PrefixSums(Vector values) {
        values = _mm256_add_epi16(values, _mm256_slli_si256(values, 2));
        values = _mm256_add_epi16(values, _mm256_slli_si256(values, 4));
        values = _mm256_add_epi16(values, _mm256_slli_si256(values, 8));
        // As above: the upper half still lacks the last sum of the lower one.
        const __m256i lastOfHalves = _mm256_shuffle_epi8(values, _mm256_set1_epi16(0x0F0E));
        return _mm256_add_epi16(values, _mm256_permute2x128_si256(lastOfHalves, lastOfHalves, 0x08));
    }
    TARGET static Vector BroadcastLast(Vector values) {
        const __m256i lastOfHalves = _mm256_shuffle_epi8(values, _mm256_set1_epi16(0x0F0E));
        return _mm256_permute4x64_epi64(lastOfHalves, 0xFF);
    }
    TARGET static Vector Divide(Vector sums, const Divider& divider) {
        return _mm256_srl_epi16(_mm256_mulhi_epu16(sums, divider.factor), divider.shift);
    }
};

#include "operators/box_mean/BoxMeanVector.inl"

}  // namespace

void BoxMeanAvx2(const BoxMeanCall& call) { RunBoxMeanSchedule(call, kKernels); }

}  // namespace vastrelline

#endif
