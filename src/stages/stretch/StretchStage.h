// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "config/FixedSettings.h"
#include "operators/curves/TonedFrame.h"
#include "report/LogFile.h"

namespace vastrelline {

// Each of these takes the pixels of a frame, which it maps at once, or a frame whose curves wait.

// The stretch stage of the configured chain: maps the frame through a curve of three segments, then fills the
// range again, in place. Writes, as the run's switches ask, the curve file "AdjustCurve_Sigmoid.txt" (modes 0
// to 2; without a number, so each run replaces it), the dumps "%02d_StretchImage0.raw" (modes 0 to 2) and
// "%02d_StretchImage2.raw" (after the second step) and its log lines.
//
// position   in the stage list, which names its keys
void RunStretchStage(uint16_t* pixels, int32_t width, int32_t height, int32_t pixelCount, int32_t maxValue,
                     LogFile& log, int32_t position);
void RunStretchStage(TonedFrame& frame, int32_t maxValue, LogFile& log, int32_t position);

// The stretch stage of the fixed chain. In modes 0 to 2 it also marks the dark tail of the frame as it comes
// in, and dumps the marks as "%02d_UnsharpMasking.raw" under the number of the next dump; in all other modes
// only the second step runs.
//
// tailMask   width * height values: 255 where a pixel lies in the dark tail; the rest stays
void RunFixedStretch(uint16_t* pixels, uint16_t* tailMask, int32_t width, int32_t height, int32_t pixelCount,
                     int32_t maxValue, int32_t& dumpCounter, LogFile& log, const FixedSettings& settings);
void RunFixedStretch(TonedFrame& frame, uint16_t* tailMask, int32_t maxValue, int32_t& dumpCounter,
                     LogFile& log, const FixedSettings& settings);

}  // namespace vastrelline
