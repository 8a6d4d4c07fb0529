#pragma once

#include <cstdint>

#include "config/FixedSettings.h"
#include "report/LogFile.h"

namespace vastrelline {

// The gamma stage of the configured chain: maps the frame through a power curve, in place, and writes the
// curve file, the dump "%02d_Result_Gamma.raw" and its log lines as the run's switches ask.
//
// stageNumber   the stage's position in the list, which names its keys
void RunGammaStage(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue, LogFile& log,
                   int32_t stageNumber);

// The same in the fixed chain, which writes no curve file. Its driver runs it only with POST_GAMMA_LUT on.
//
// dumpCounter   the run's next dump number
void RunFixedGamma(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue, int32_t& dumpCounter,
                   LogFile& log, const FixedSettings& settings);

}  // namespace vastrelline
