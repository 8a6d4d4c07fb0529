// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "report/LogFile.h"

namespace vastrelline {

// The HDR stage of the configured chain: processes the frame in place and writes its log lines and the dump
// "%02d_HDR.raw" as the run's switches ask.
//
// pixelCount   not used
// position     in the stage list, which names its keys
void RunHdrStage(uint16_t* pixels, int32_t width, int32_t height, int32_t pixelCount, int32_t maxValue,
                 LogFile& log, int32_t position);

}  // namespace vastrelline
