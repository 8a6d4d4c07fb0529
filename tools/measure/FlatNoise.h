// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "frames/Frame.h"
#include "measure/MeasuredArea.h"

namespace vastrelline {

struct FlatNoise {
    double mean = 0.0;
    double deviation = 0.0;  // in levels
    double clippedShare =
        0.0;  // pixels at 0 or at the clipping level: if there are many, the deviation is too small
};

// Mean and noise of an even area: the standard deviation, as ISO 15739:2023 has it, in blocks of 16 x 16
// pixels from each of which a plane is taken, so that shading does not count, and of all blocks the median,
// so that a scratch or a speck does not either. The median of variances of k degrees of freedom is lower than
// their mean by the factor (1 - 2 / (9 k))^3 (E. B. Wilson, M. M. Hilferty: The distribution of chi-square.
// Proceedings of the National Academy of Sciences 17, 1931), which is made good. Waves much longer than a
// block are not seen.
//
// area            inside of the frame
// clippingLevel   see ClippingLevel
// Errors          CannotMeasure for an area of fewer than 4 pixels' width or height
FlatNoise MeasureFlatNoise(const Frame& frame, const PixelArea& area, int32_t clippingLevel);

}  // namespace vastrelline
