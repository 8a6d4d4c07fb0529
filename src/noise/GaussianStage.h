#pragma once

#include <cstdint>

#include "diagnostics/LogFile.h"
#include "noise/GaussianParams.h"

namespace vastrelline {

// Smooths a frame as the keys say, in place. Passes that would change nothing any more are left out.
void SmoothGaussian(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue,
                    const GaussianParams& params);

// The Gaussian stage of the configured chain: smooths the frame in place and writes the dump
// "%02d_PreGaussian.raw", which has this name wherever the stage stands, and its log lines as the run's
// switches ask.
//
// stageNumber   the stage's position in the list, which names its keys
void RunGaussianStage(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue, LogFile& log,
                      int32_t stageNumber);

}  // namespace vastrelline
