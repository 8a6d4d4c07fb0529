// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "operators/tile_equalise/ClaheSchedule.h"

#if VASTRELLINE_VECTOR_FORMS

#include <immintrin.h>

#define TARGET TARGET_AVX2

namespace vastrelline {

namespace {

#include "operators/tile_equalise/ClaheBinRow.inl"

// Written out: the compiler widens the shifts to 32 bits, which takes twice as long.
template <typename Index>
TARGET void BinRowAvx2(const uint16_t* levels, uint32_t count, const BinRule& rule, Index* bins) {
    constexpr uint32_t kLanes = 16;
    const __m256i min = _mm256_set1_epi16(static_cast<int16_t>(rule.min));
    const __m256i max = _mm256_set1_epi16(static_cast<int16_t>(rule.max));
    const __m256i multiplier = _mm256_set1_epi16(static_cast<int16_t>(rule.multiplier));
    const __m128i firstShift = _mm_cvtsi32_si128(rule.firstShift);
    const __m128i secondShift = _mm_cvtsi32_si128(rule.secondShift);
    uint32_t x = 0;
    for (; x + kLanes <= count; x += kLanes) {
        const __m256i level = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(levels + x));
        // Saturated, so that a level below the range gives 0.
        const __m256i above = _mm256_subs_epu16(_mm256_min_epu16(level, max), min);
        const __m256i product = _mm256_mulhi_epu16(above, multiplier);
        const __m256i rest = _mm256_srl_epi16(_mm256_sub_epi16(above, product), firstShift);
        const __m256i quotient = _mm256_srl_epi16(_mm256_add_epi16(product, rest), secondShift);
        if constexpr (sizeof(Index) == 1) {
            const __m128i narrow =
                _mm_packus_epi16(_mm256_castsi256_si128(quotient), _mm256_extracti128_si256(quotient, 1));
            _mm_storeu_si128(reinterpret_cast<__m128i*>(bins + x), narrow);
        } else {
            _mm256_storeu_si256(reinterpret_cast<__m256i*>(bins + x), quotient);
        }
    }
    BinRow(levels + x, count - x, rule, bins + x);
}

// The levels of four pixels side by side. Loads that fill a whole register and blends leave the one port of
// the shuffles free.
template <typename Index>
TARGET __m256i LoadCorners(const CornerLevels* corners, const Index* bins) {
    const auto one = [&](size_t pixel) TARGET {
        long long levels = 0;
        __builtin_memcpy(&levels, corners + bins[pixel], sizeof levels);
        return _mm256_set1_epi64x(levels);
    };
    const __m256i low = _mm256_blend_epi32(one(0), one(1), 0b00001100);
    const __m256i high = _mm256_blend_epi32(one(2), one(3), 0b11000000);
    return _mm256_blend_epi32(low, high, 0b11110000);
}

// Quotients of eight sums.
TARGET __m256i Divide(__m256i sums, const SumDivision& division) {
    const __m128i shift = _mm_cvtsi32_si128(static_cast<int32_t>(division.shift));
    if (division.rule == DivisionRule::Shift) return _mm256_srl_epi32(sums, shift);
    const __m256i multiplier = _mm256_set1_epi64x(division.multiplier);
    const __m256i even = _mm256_mul_epu32(sums, multiplier);
    const __m256i odd = _mm256_mul_epu32(_mm256_srli_epi64(sums, 32), multiplier);
    if (division.rule == DivisionRule::Product) {
        return _mm256_or_si256(_mm256_srl_epi64(even, shift),
                               _mm256_slli_epi64(_mm256_srl_epi64(odd, shift), 32));
    }
    const __m256i high = _mm256_blend_epi32(_mm256_srli_epi64(even, 32), odd, 0b10101010);
    const __m256i rest = _mm256_srli_epi32(_mm256_sub_epi32(sums, high), 1);
    return _mm256_srl_epi32(_mm256_add_epi32(high, rest), shift);
}

// Patches of up to kMaxWeightedPixels: a pixel's weights fit 16 bits.
struct WeightedPixels {
    TARGET WeightedPixels(const BlendPatch& patch, uint32_t row) {
        const auto upper = static_cast<int16_t>(patch.height - row);
        const auto bottom = static_cast<int16_t>(row);
        rowShares = _mm256_set_epi16(bottom, bottom, upper, upper, bottom, bottom, upper, upper, bottom,
                                     bottom, upper, upper, bottom, bottom, upper, upper);
    }

    // For each of four pixels the sums of its upper and of its bottom pair.
    TARGET __m256i PairSums(__m256i corners, __m256i columnShares) const {
        return _mm256_madd_epi16(corners, _mm256_mullo_epi16(columnShares, rowShares));
    }

    __m256i rowShares;
};

// Any patch. The products of the rows keep their lowest 32 bits, as those of the definition do.
struct SharedPixels {
    TARGET SharedPixels(const BlendPatch& patch, uint32_t row) {
        const auto upper = static_cast<int32_t>(patch.height - row);
        const auto bottom = static_cast<int32_t>(row);
        rowShares = _mm256_set_epi32(bottom, upper, bottom, upper, bottom, upper, bottom, upper);
    }

    TARGET __m256i PairSums(__m256i corners, __m256i columnShares) const {
        return _mm256_mullo_epi32(_mm256_madd_epi16(corners, columnShares), rowShares);
    }

    __m256i rowShares;
};

template <typename Weights, typename Index>
TARGET void BlendBy(const BlendPatch& sharedPatch, const BlendPiece<Index>& sharedPiece) {
    constexpr uint32_t kLanes = 16;
    // Copies that stores of pixels cannot change.
    const BlendPatch patch = sharedPatch;
    const BlendPiece<Index> piece = sharedPiece;
    const __m256i bias =
        _mm256_set1_epi32(static_cast<int32_t>(patch.width * patch.height * uint32_t{kLevelBias}));
    const __m256i inOrder = _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7);
    const ColumnWeights* const columns = patch.columns + piece.column;
    for (uint32_t y = 0; y < piece.rows; ++y) {
        const Index* const bins = piece.bins + y * piece.stride;
        uint16_t* const pixels = piece.pixels + y * piece.stride;
        const Weights weights(patch, piece.row + y);
        const auto pairSums = [&](uint32_t x) TARGET {
            const auto* shares = reinterpret_cast<const __m256i*>(columns + x);
            return weights.PairSums(LoadCorners(patch.corners, bins + x), _mm256_loadu_si256(shares));
        };
        uint32_t x = 0;
        for (; x + kLanes <= piece.columns; x += kLanes) {
            // Pixels 0 1 4 5 | 2 3 6 7, then 8 more alike.
            const __m256i first = _mm256_add_epi32(_mm256_hadd_epi32(pairSums(x), pairSums(x + 4)), bias);
            const __m256i second =
                _mm256_add_epi32(_mm256_hadd_epi32(pairSums(x + 8), pairSums(x + 12)), bias);
            const __m256i packed =
                _mm256_packus_epi32(Divide(first, patch.division), Divide(second, patch.division));
            _mm256_storeu_si256(reinterpret_cast<__m256i*>(pixels + x),
                                _mm256_permutevar8x32_epi32(packed, inOrder));
        }
        for (; x < piece.columns; ++x)
            pixels[x] = BlendFourCurves(patch, piece.row + y, piece.column + x, bins[x]);
    }
}

template <typename Index>
TARGET void Blend(const BlendPatch& patch, const BlendPiece<Index>& piece) {
    if (patch.width * patch.height <= kMaxWeightedPixels) {
        BlendBy<WeightedPixels>(patch, piece);
    } else {
        BlendBy<SharedPixels>(patch, piece);
    }
}

template <typename Index>
constexpr ClaheKernels<Index> kKernels = {BinRowAvx2<Index>, Blend<Index>};

}  // namespace

void ClaheTilesAvx2(const ClaheCall& call) { RunClaheSchedule(call, kKernels<uint8_t>, kKernels<uint16_t>); }

}  // namespace vastrelline

#endif
