// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <vector>

#include "stages/hdr/FusionKernels.h"
#include "stages/hdr/FusionWeights.h"

namespace vastrelline {

// What stands in place of the blurred images in the last row of a frame of odd height and in the last column
// of one of odd width. The blur by transforms of whole images swaps the halves of the blurred image in the
// buffer of the spectrum, and the swap of odd sizes does not reach there: so it is the real part of the
// spectrum of the image times that of the surface, for both layers together and with their weights.
struct SpectrumEdges {
    std::vector<double> lastRow;     // width entries, or none at an even height
    std::vector<double> lastColumn;  // height entries, or none at an even width
};

SpectrumEdges MakeSpectrumEdges(const uint16_t* normalImage, const uint16_t* hedImage, int32_t width,
                                int32_t height, const FusionWeights& weights, const FusionKernels& kernels);

}  // namespace vastrelline
