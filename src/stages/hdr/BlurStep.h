// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <vector>

#include "pixels/ScratchVector.h"
#include "stages/hdr/FusionKernels.h"

namespace vastrelline {

// A linear step from rows to rows in which each new row is a weighted sum of `taps` neighbouring old ones.
// Old rows go round in a circle.
struct BlurStep {
    int32_t oldRows;
    int32_t taps;
    std::vector<int32_t> firstRows;  // of each new row: the first old row, from anywhere on the circle
    std::vector<float> weights;      // of each new row: `taps` of them

    int32_t NewRows() const { return static_cast<int32_t>(firstRows.size()); }
};

// The place of the surface's blurred image that stands in a row or column of the result. The result is the
// image with its halves swapped; the swap of an odd count loses the middle, and its last row or column shows
// something else.
int32_t BlurredPlace(int32_t index, int32_t count);

// How many rows or columns show blurred places: all, or of an odd count all but the last.
int32_t CountBlurredPlaces(int32_t count);

// The steps that blur `count` rows with exp(-d * d / (2 * sigma * sigma)), where d runs over whole numbers
// and a half, and pick the blurred places. Weights are not divided by their sum.
std::vector<BlurStep> MakeBlurSteps(int32_t count, double sigma);

// Makes a new row. `rows` is scratch and comes back with the step's old rows.
void MakeStepRow(const BlurStep& step, const float* oldRows, int32_t width, int32_t newRow,
                 std::vector<const float*>& rows, const FusionKernels& kernels, float* out);

// Makes all new rows.
ScratchVector<float> ApplyStep(const BlurStep& step, const float* oldRows, int32_t width,
                               const FusionKernels& kernels);

}  // namespace vastrelline
