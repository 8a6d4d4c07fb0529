// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "config/FixedSettings.h"
#include "operators/curves/TonedFrame.h"
#include "report/LogFile.h"

namespace vastrelline {

// The pyramid stage of the configured chain: enhances the frame in place. As the run's switches ask, it
// writes what each step of the pyramid made, under names without a number ("Laplacian0_1304X1672.raw"), the
// response of each band as a curve file ("EnhancedSlope_0.txt"), the dump "%02d_Pyramid.raw" and its log
// lines.
//
// position   in the stage list, which names its keys
void PyramidStage(TonedFrame& frame, int32_t maxValue, LogFile& logFile, int32_t position);

// The same of the fixed chain. Here values from the noise limit on lose their band altogether, and the
// rebuilt levels are not smoothed.
void PyramidStageFixed(TonedFrame& frame, int32_t maxValue, int32_t& dumpCounter, LogFile& logFile,
                       const FixedSettings& settings);

}  // namespace vastrelline
