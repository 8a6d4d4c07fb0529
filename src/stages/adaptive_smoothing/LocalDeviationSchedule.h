#pragma once

#include <cstdint>

#include "stages/adaptive_smoothing/LocalDeviation.h"

namespace vastrelline {

// Running sums over the columns of a strip, one for each column, and the row means that leave and enter them.
struct ColumnSums {
    double* sums;
    const double* leaving;
    const double* entering;
};

// The kernels of the fast form for one instruction set, each over `count` neighbouring columns.
struct DeviationKernels {
    // Means of count + 2 * kDeviationRadius pixels and of their squares; `squares` is scratch for as many.
    void (*meanOfRow)(const uint16_t* row, int32_t count, double* squares, double* means,
                      double* squareMeans);
    // Moves the sums down by one row and gives the variance there.
    void (*makeVariances)(const ColumnSums& pixels, const ColumnSums& squares, int32_t count,
                          double* variances);
    // Raises each column's largest to the column's variance.
    void (*keepLargest)(const double* variances, int32_t count, double* largest);
    // Root of what is above 0, as a share of `largestDeviation` in levels.
    void (*quantise)(const double* variances, int32_t count, double largestDeviation, uint16_t* levels);
};

// QuantiseDeviation at radius kDeviationRadius with the given kernels.
void RunDeviationSchedule(const DeviationCall& call, const DeviationKernels& kernels);

}  // namespace vastrelline
