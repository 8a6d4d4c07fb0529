// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <vector>

#include "pixels/ScratchVector.h"
#include "stages/hdr/BlurStep.h"
#include "stages/hdr/FusionKernels.h"

namespace vastrelline {

// The blur of an image with a wide surface, not divided by its sum.
class CoarseBlur {
public:
    // image   width * height floats; no longer needed afterwards
    CoarseBlur(const float* image, int32_t width, int32_t height, double sigma, const FusionKernels& kernels);

    // The blurred row that stands in a row of the result: CountBlurredPlaces(width) pixels.
    void MakeRow(int32_t row, float* out);

private:
    const FusionKernels& kernels_;
    int32_t width_;
    ScratchVector<float> rows_;  // blurred but for the last step along the columns
    BlurStep lastStep_;
    std::vector<const float*> seen_;
};

}  // namespace vastrelline
