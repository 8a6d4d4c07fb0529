// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "config/FixedSettings.h"
#include "report/LogFile.h"

namespace vastrelline {

// The median stage of the configured chain: filters the frame in place and writes the dump "%02d_Median.raw"
// and its log lines as the run's switches ask.
//
// position   in the stage list, which names its keys
void RunMedianStage(uint16_t* pixels, int32_t width, int32_t height, LogFile& log, int32_t position);

// The median stages of the fixed chain: a square window, taken as wide as the key says, in one pass before
// and some passes after the other stages, on the caller's thread. They write the dumps
// "%02d_PreMedian.raw" and "%02d_Post_Median.raw".
//
// dumpCounter   the run's dump number; a dump takes it and steps it
// settings      the keys, and whether the run logs
void RunPreMedian(uint16_t* pixels, int32_t width, int32_t height, int32_t& dumpCounter, LogFile& log,
                  const FixedSettings& settings);
void RunPostMedian(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue, int32_t& dumpCounter,
                   LogFile& log, const FixedSettings& settings);

}  // namespace vastrelline
