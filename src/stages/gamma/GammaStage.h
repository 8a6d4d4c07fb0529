// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

#include "config/FixedSettings.h"
#include "operators/curves/TonedFrame.h"
#include "report/LogFile.h"

namespace vastrelline {

// Each of these takes the pixels of a frame, which it maps at once, or a frame whose curves wait.

// Builds the curve of a frame and maps the frame through it, in place. Pixels above maxValue take the last
// entry.
//
// saveCurve      not 0: first writes levels low..high, as far as the table goes, to a curve file
// path, number   the file is `path` followed directly by "%02d_GammaCurve.txt" with the number
void ApplyGammaCurve(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue, int32_t outputRange,
                     double gamma, int32_t limitBin, int32_t inverse, int32_t saveCurve,
                     const std::wstring& path, int32_t number);
void ApplyGammaCurve(TonedFrame& frame, int32_t maxValue, int32_t outputRange, double gamma, int32_t limitBin,
                     int32_t inverse, int32_t saveCurve, const std::wstring& path, int32_t number);

// The gamma stage of the configured chain: maps the frame through a power curve, in place, and writes the
// curve file, the dump "%02d_Result_Gamma.raw" and its log lines as the run's switches ask.
//
// position   in the stage list, which names its keys
void RunGammaStage(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue, LogFile& log,
                   int32_t position);
void RunGammaStage(TonedFrame& frame, int32_t maxValue, LogFile& log, int32_t position);

// The same in the fixed chain, which writes no curve file. Its driver runs it only with POST_GAMMA_LUT on.
//
// dumpCounter   the run's next dump number
void RunFixedGamma(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue, int32_t& dumpCounter,
                   LogFile& log, const FixedSettings& settings);
void RunFixedGamma(TonedFrame& frame, int32_t maxValue, int32_t& dumpCounter, LogFile& log,
                   const FixedSettings& settings);

}  // namespace vastrelline
