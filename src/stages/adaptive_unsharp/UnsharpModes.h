// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "stages/adaptive_unsharp/UnsharpParams.h"

namespace vastrelline {

// Sharpens a frame, in place, by the method that MODE_CONTRAST picks. The keys are read by the methods as
// follows:
//
// Mode                          GAUSSIAN_SIZE  ENAHCNED_RATIO  NOISE_WIDTH    ReduceTimeRatio  PROTECTOUTLINE
// 1 EdgeWeightedUnsharp         sigma          ratio           noise          reduce           -
// 3 HistogramShapedUnsharp      sigma          ratio           noise          -                -
// 4 BandDifferenceUnsharp       sigma          ratio           noise percent  reduce           -
// 5 ActivityWeightedUnsharp     gain           second gain     radius         base radius      second radius
//
// In every other mode, 2 and the default 0 included, the frame stays as it is.
void SharpenByMode(uint16_t* image, int32_t width, int32_t height, int32_t maxValue,
                   const UnsharpParams& params);

// The same in the fixed chain, where mode 5 leaves the frame as it is.
//
// mask   width * height values, 255 on the dark tail of the frame before its stretch and 0 elsewhere, or null
//        for none; mode 3 takes it, and smooths it
void SharpenByFixedMode(uint16_t* image, uint16_t* mask, int32_t width, int32_t height, int32_t maxValue,
                        const UnsharpParams& params);

}  // namespace vastrelline
