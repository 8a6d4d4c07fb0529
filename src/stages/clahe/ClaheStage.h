// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "config/FixedSettings.h"
#include "report/LogFile.h"

namespace vastrelline {

// The CLAHE stage of the configured chain: equalises the frame in place with ClaheFrame, and writes its log
// lines and the dump "%02d_clahe.raw" as the run's switches ask.
//
// pixelCount   has no effect
// position     in the stage list, which names its keys
void RunClaheStage(uint16_t* pixels, int32_t width, int32_t height, int32_t pixelCount, int32_t maxValue,
                   LogFile& log, int32_t position);

// The CLAHE stage of the fixed chain: the same, then CorrectDarkArea if CORRECTVAL says so. With image saving
// on it writes "%02d_clahe_00.raw", the frame before, "%02d_clahe_01.raw", the equalised one, and
// "%02d_clahe.raw", the result, all three under one number.
//
// pixelCount    how many pixels of the frame count as known from before; the others count as 0
// dumpCounter   the run's dump number, stepped after the last dump
void RunClahe(uint16_t* pixels, int32_t width, int32_t height, int32_t pixelCount, int32_t maxValue,
              int32_t& dumpCounter, LogFile& log, const FixedSettings& settings);

}  // namespace vastrelline
