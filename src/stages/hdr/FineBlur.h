// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <vector>

#include "pixels/FrameView.h"
#include "pixels/ScratchVector.h"
#include "stages/hdr/FusionKernels.h"

namespace vastrelline {

// The blur of an image with the fine layer's surface, row by row from the top. It lies half a pixel off the
// image, and so each place is a sum over pairs of pixels at the same distance. The image is at least as wide
// and high as the blur reaches; smaller ones have fewer than two layers and are not fused.
class FineBlur {
public:
    // smallest   taken off each pixel
    // weight     of the blurred image, for a surface not divided by its sum
    FineBlur(const FrameView<const uint16_t>& image, int32_t smallest, double sigma, double weight,
             const FusionKernels& kernels);

    // The blurred row that stands in a row of the result; `row` rises from call to call. As many pixels as
    // CountBlurredPlaces says of the width, valid until the next call.
    const float* MakeRow(int32_t row);

private:
    void KeepRowFilter(int32_t place);
    float* KeptRow(int32_t place);

    FrameView<const uint16_t> image_;
    int32_t smallest_;
    const FusionKernels& kernels_;
    int32_t pairs_;
    std::vector<float> rowWeights_;
    std::vector<float> columnWeights_;
    std::vector<float> line_;    // a row of the image with what it wraps around to on both sides
    ScratchVector<float> kept_;  // filtered rows, round in a circle
    std::vector<const float*> seen_;
    std::vector<float> blurred_;
    int32_t nextPlace_;
};

}  // namespace vastrelline
