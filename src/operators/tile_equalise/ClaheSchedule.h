// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>

#include "operators/tile_equalise/ClaheTiles.h"
#include "operators/tile_equalise/SumDivision.h"

namespace vastrelline {

// How levels fall into bins: (level - min) / binSize, with the level clamped to min..max first. The division
// is by multiplication: with p = (x * multiplier) >> 16 it is (p + ((x - p) >> firstShift)) >> secondShift,
// which is exact for every x and binSize of 16 bits and needs no more than 16 bits on the way.
struct BinRule {
    uint16_t min;
    uint16_t max;
    uint16_t multiplier;
    uint8_t firstShift;
    uint8_t secondShift;
};

// What the four tiles around a patch make of one bin, side by side so that one load serves a pixel. Each
// level is less by 32768, to fit a signed number; the weights of a pixel add up to the patch's pixels, so
// 32768 times those brings the sum back.
struct alignas(8) CornerLevels {
    int16_t leftUpper;
    int16_t rightUpper;
    int16_t leftBottom;
    int16_t rightBottom;
};
inline constexpr int32_t kLevelBias = 32768;

// Beyond this the weights of a pixel no longer fit a signed 16-bit number; the shares of its columns and of
// its rows, which they are the products of, are then multiplied one after the other. Up to it no sum reaches
// 2^31.
inline constexpr uint32_t kMaxWeightedPixels = 32767;

// The columns' shares of a pixel's weights, for the left and the right tiles, in the order of CornerLevels.
struct alignas(8) ColumnWeights {
    int16_t shares[4];
};

// A patch: the rectangle between the centres of up to four tiles.
struct BlendPatch {
    uint32_t width;
    uint32_t height;
    const CornerLevels* corners;   // by bin
    const ColumnWeights* columns;  // `width` of them
    SumDivision division;          // by width * height
};

// Pixels of a patch that are mapped at once: some columns of some rows, from the patch's row and column on.
template <typename Index>
struct BlendPiece {
    uint32_t row;
    uint32_t column;
    uint32_t rows;
    uint32_t columns;
    const Index* bins;
    uint16_t* pixels;
    size_t stride;  // from row to row, of bins and of pixels
};

// The kernels of a form, for bins held in 8 or in 16 bits.
template <typename Index>
struct ClaheKernels {
    // The bins of `count` levels.
    void (*binRow)(const uint16_t* levels, uint32_t count, const BinRule& rule, Index* bins);

    // Maps the pixels of a piece.
    void (*blend)(const BlendPatch& patch, const BlendPiece<Index>& piece);
};

// One pixel of a patch, for the ends of vectors. Unsigned numbers wrap as they do in the definition; the bias
// wraps away, too.
inline uint16_t BlendFourCurves(const BlendPatch& patch, uint32_t row, uint32_t column, uint32_t bin) {
    const CornerLevels& levels = patch.corners[bin];
    const auto left = static_cast<int32_t>(patch.width - column);
    const auto right = static_cast<int32_t>(column);
    const auto upper = static_cast<uint32_t>(left * levels.leftUpper + right * levels.rightUpper);
    const auto bottom = static_cast<uint32_t>(left * levels.leftBottom + right * levels.rightBottom);
    const uint32_t sum =
        (patch.height - row) * upper + row * bottom + patch.width * patch.height * uint32_t{kLevelBias};
    return static_cast<uint16_t>(DivideSum(sum, patch.division));
}

// The walk over tiles and patches that the fast forms share. It differs from the definition in what it keeps:
// no padded copy, since border pixels are counted as often as they would stand there and never mapped, and
// no more curves than those of two rows of tiles. A patch is mapped as soon as the tiles below it are
// counted; it ends above the tiles that are still to be counted.
//
// Tiles of more than 32767 columns go to the definition, as their shares do not fit ColumnWeights.
void RunClaheSchedule(const ClaheCall& call, const ClaheKernels<uint8_t>& narrow,
                      const ClaheKernels<uint16_t>& wide);

}  // namespace vastrelline
