#pragma once

#include <cstdint>

#include "diagnostics/LogFile.h"

namespace vastrelline {

// The gamma stage of the configured chain: maps the frame through a power curve, in place, and writes the
// curve file, the dump "%02d_Result_Gamma.raw" and its log lines as the run's switches ask.
//
// stageNumber   the stage's position in the list, which names its keys
void RunGammaStage(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue, LogFile& log,
                   int32_t stageNumber);

}  // namespace vastrelline
