// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "stages/pre_processing/PreProcessingParams.h"

namespace vastrelline {

// Lifts the medium-scale structure of a doubly median-filtered copy of the frame, in place, and adds back
// what the second median took away where that is positive: the detail is read as unsigned, so a negative one
// is too large to be added; results depend on it. No pixel comes out darker than the darkest one above 0,
// looked for from 4095 down whatever the frame's depth: a frame without such a pixel comes out at 4095 or
// more.
void PreProcessFrame(uint16_t* image, int32_t width, int32_t height, int32_t maxValue,
                     const PreProcessingParams& params);

}  // namespace vastrelline
