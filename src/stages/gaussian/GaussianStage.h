// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "config/FixedSettings.h"
#include "report/LogFile.h"

namespace vastrelline {

// The Gaussian stage of the configured chain: smooths the frame in place and writes the dump
// "%02d_PreGaussian.raw", which has this name wherever the stage stands, and its log lines as the run's
// switches ask.
//
// position   in the stage list, which names its keys
void RunGaussianStage(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue, LogFile& log,
                      int32_t position);

// The two places of the Gaussian in the fixed chain: one pass with the edge pixels repeated, at
// PRE_GAUSSIAN_SIZE and POST_GAUSSIAN_SIZE. Both dump as "%02d_PreGaussian.raw": the number tells them apart.
// The driver runs them only with PRE_GAUSSIAN and POST_GAUSSIAN on.
//
// dumpCounter   the run's next dump number
void RunPreGaussian(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue, int32_t& dumpCounter,
                    LogFile& log, const FixedSettings& settings);
void RunPostGaussian(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue, int32_t& dumpCounter,
                     LogFile& log, const FixedSettings& settings);

}  // namespace vastrelline
