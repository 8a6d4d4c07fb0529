// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "stages/adaptive_smoothing/LocalDeviation.h"

namespace vastrelline {

// Columns that are worked on together: their row means, nine rows of two kinds, stay in the nearest cache.
inline constexpr size_t kStripColumns = 192;

// The brightest pixel that a frame may have for its rows to be narrow.
inline constexpr int32_t kTopNarrowPixel = 17514;

// What a row of a strip is reckoned with: its pixels, those of the margin at either side included.
struct RowScratch {
    template <typename Value>
    using Row = std::array<Value, kStripColumns + 2 * size_t{kDeviationRadius}>;

    Row<double> wideSquares;
    Row<int32_t> pixels;
    Row<int32_t> pairs;  // of each pixel and the next
    Row<int32_t> squares;
    Row<int32_t> squarePairs;
};

// Running sums over the columns of a strip, one for each column, and the row means that leave and enter them.
struct ColumnSums {
    double* sums;
    const double* leaving;
    const double* entering;
};

// The kernels of the fast form for one instruction set, each over `count` neighbouring columns. All that are
// given but pixels and levels are rows of kStripColumns, of which what lies past the count may change.
struct DeviationKernels {
    using MeanOfRow = void (*)(const uint16_t* row, size_t count, RowScratch& scratch, double* means,
                               double* squareMeans);

    // Means of count + 2 * kDeviationRadius pixels and of their squares, for any pixels and for pixels up to
    // kTopNarrowPixel.
    MeanOfRow meanOfRow;
    MeanOfRow meanOfNarrowRow;
    // Moves the sums down by one row and gives the variance there.
    void (*makeVariances)(const ColumnSums& pixels, const ColumnSums& squares, size_t count,
                          double* variances);
    // Raises each column's largest to the column's variance.
    void (*keepLargest)(const double* variances, size_t count, double* largest);
    // Root of what is above 0, as a share of `largestDeviation` in levels.
    void (*quantise)(const double* variances, size_t count, double largestDeviation, uint16_t* levels);
};

// QuantiseDeviation at radius kDeviationRadius with the given kernels.
void RunDeviationSchedule(const DeviationCall& call, const DeviationKernels& kernels);

}  // namespace vastrelline
