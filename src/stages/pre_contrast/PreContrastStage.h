// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "config/FixedSettings.h"
#include "report/LogFile.h"

namespace vastrelline {

// The pre-contrast stage of the configured chain: raises the large-scale contrast of the frame, in place, and
// writes the dumps "%02d_PreContrastGaussian.raw" of the smoothed frame and "%02d_PreContrast.raw" of the
// result, which share one number, and its log lines as the run's switches ask. A mask of 0 skips the stage,
// without a trace.
//
// pixelCount   without effect: width * height
// position     in the stage list, which names its keys
void PreContrastStage(uint16_t* image, int32_t width, int32_t height, int32_t pixelCount, int32_t maxValue,
                      LogFile& logFile, int32_t position);

// The same in the fixed chain, where a mask of 0 runs the stage with the smoothing's fixed kernel. Its driver
// runs it only with PRE_CONTRAST on.
//
// dumpCounter   the run's next dump number
void PreContrastStageFixed(uint16_t* image, int32_t width, int32_t height, int32_t pixelCount,
                           int32_t maxValue, int32_t& dumpCounter, LogFile& logFile,
                           const FixedSettings& settings);

}  // namespace vastrelline
