// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "stages/gaussian/GaussianParams.h"

namespace vastrelline {

// Smooths a frame as the keys say, in place. Passes that would change nothing any more are left out; a
// radiograph, though, goes on changing for thousands of them.
void SmoothGaussian(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue,
                    const GaussianParams& params);

}  // namespace vastrelline
