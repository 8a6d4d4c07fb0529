// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "config/FixedSettings.h"
#include "report/LogFile.h"

namespace vastrelline {

// The adaptive smoothing stage of the configured chain: smooths the frame in place by the method that its
// mode names and writes the dump "%02d_SavgolProc.raw", which has this name in every mode, and its log lines
// as the run's switches ask.
//
// position   in the stage list, which names its keys
void RunAdaptiveSmoothingStage(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue,
                               LogFile& log, int32_t position);

// The stage of the fixed chain, which has the Savitzky-Golay method only; its dump is
// "%02d_AdaptiveSmooting.raw".
//
// dumpCounter   the run's next dump
void RunAdaptiveSmoothing(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue,
                          int32_t& dumpCounter, LogFile& log, const FixedSettings& settings);

}  // namespace vastrelline
