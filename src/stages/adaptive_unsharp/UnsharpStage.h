// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "config/FixedSettings.h"
#include "report/LogFile.h"

namespace vastrelline {

// The adaptive unsharp stage of the configured chain: sharpens the frame, in place, as SharpenByMode, and
// writes the dump "%02d_Unsharp%d.raw", whose second number is the mode, and its log lines as the run's
// switches ask, also in a mode that leaves the frame as it is.
//
// position   in the stage list, which names its keys
void AdaptiveUnsharpStage(uint16_t* image, int32_t width, int32_t height, int32_t maxValue, LogFile& logFile,
                          int32_t position);

// The same in the fixed chain, which sharpens as SharpenByFixedMode.
//
// mask   as there
void AdaptiveUnsharpStageFixed(uint16_t* image, uint16_t* mask, int32_t width, int32_t height,
                               int32_t maxValue, int32_t& dumpCounter, LogFile& logFile,
                               const FixedSettings& settings);

}  // namespace vastrelline
