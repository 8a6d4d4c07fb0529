// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "stages/median/MedianParams.h"

namespace vastrelline {

// Median-filters a frame as the keys say, in place, a square window on worker threads. A mask below 3 acts as
// 3 and an even one as the next odd one. Passes that would only repeat earlier frames are left out.
void FilterMedianPasses(uint16_t* pixels, int32_t width, int32_t height, const MedianParams& params);

// Runs MedianSquare `repeat` times, on the caller's thread, with the mask as it comes: an even window stays
// even. Here too passes that would only repeat earlier frames are left out.
void FilterMedianSquarePasses(uint16_t* pixels, int32_t width, int32_t height, int32_t mask, int32_t repeat);

}  // namespace vastrelline
