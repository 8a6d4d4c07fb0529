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
// saveCurve      not 0: first writes all levels of the table to a curve file
// path, number   the file is `path` followed directly by "%02d_SigmoidCurve.txt" with the number
void ApplySigmoidCurve(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue, int32_t outputRange,
                       double ratio, int32_t limitBin, int32_t saveCurve, const std::wstring& path,
                       int32_t number);
void ApplySigmoidCurve(TonedFrame& frame, int32_t maxValue, int32_t outputRange, double ratio,
                       int32_t limitBin, int32_t saveCurve, const std::wstring& path, int32_t number);

// The sigmoid stage of the configured chain: maps the frame through an S-shaped curve, in place, and writes
// the curve file, the dump "%02d_ResultSigmoid.raw" and its log lines as the run's switches ask.
//
// maxValue   where the frame's largest pixel is above it, that one counts
// position   in the stage list, which names its keys
void RunSigmoidStage(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue, LogFile& log,
                     int32_t position);
void RunSigmoidStage(TonedFrame& frame, int32_t maxValue, LogFile& log, int32_t position);

// The tone curve that every run of the fixed chain ends with: the S-shaped one with POST_SIGMOID_LUT on,
// otherwise the straight ramp. No curve file is written, and the ramp writes no dump either.
//
// maxValue      as above
// dumpCounter   the run's next dump number
void RunFixedSigmoid(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue, int32_t& dumpCounter,
                     LogFile& log, const FixedSettings& settings);
void RunFixedSigmoid(TonedFrame& frame, int32_t maxValue, int32_t& dumpCounter, LogFile& log,
                     const FixedSettings& settings);

}  // namespace vastrelline
