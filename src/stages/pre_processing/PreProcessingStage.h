// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "report/LogFile.h"

namespace vastrelline {

// The preProcessing stage of the configured chain: processes the frame in place and dumps it as
// "%02d_Preprocessing.raw" if image saving is on. Writes no log line.
//
// maxValue   before the size, unlike in other stages
// logFile    without effect
// position   in the stage list, which names its keys
void PreProcessingStage(uint16_t* image, int32_t maxValue, int32_t width, int32_t height, LogFile& logFile,
                        int32_t position);

}  // namespace vastrelline
