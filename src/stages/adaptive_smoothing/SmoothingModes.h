// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "stages/adaptive_smoothing/AdaptiveSmoothingParams.h"

namespace vastrelline {

// The methods that ADAPTIVESMOOTHING_Mode names.
enum class SmoothingMode : int32_t {
    Savgol = 0,     // SavgolSmooth, with the mask truncated to taps
    Deviation = 1,  // DeviationWeightedSmooth
};

// Smooths a frame by the method of its mode, in place; any other mode leaves it as it is.
void SmoothByMode(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue,
                  const AdaptiveSmoothingParams& params);

}  // namespace vastrelline
