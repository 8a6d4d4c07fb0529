#pragma once

#include <cstdint>

#include "config/FixedSettings.h"
#include "report/LogFile.h"

namespace vastrelline {

// The adaptive unsharp stage: sharpens the frame, in place, by the method that "MODE_CONTRAST" picks, and
// writes the dump "%02d_Unsharp%d.raw", whose second number is the mode, and its log lines as the run's
// switches ask. The keys are read by the methods as follows:
//
// Mode                          GAUSSIAN_SIZE  ENAHCNED_RATIO  NOISE_WIDTH    ReduceTimeRatio  PROTECTOUTLINE
// 1 EdgeWeightedUnsharp         sigma          ratio           noise          reduce           -
// 3 HistogramShapedUnsharp      sigma          ratio           noise          -                -
// 4 BandDifferenceUnsharp       sigma          ratio           noise percent  reduce           -
// 5 ActivityWeightedUnsharp     gain           second gain     radius         base radius      second radius
//
// In every other mode, 2 and the default 0 included, the frame stays as it is; dump and log are as ever.

// In the configured chain.
//
// stageNumber   the stage's position in the list, which names its keys
void AdaptiveUnsharpStage(uint16_t* image, int32_t width, int32_t height, int32_t maxValue, LogFile& logFile,
                          int32_t stageNumber);

// In the fixed chain: mode 5 leaves the frame as it is, and "reduce" is 1.
//
// mask   width * height values, 255 on the dark tail of the frame before its stretch and 0 elsewhere, or null
//        for none; mode 3 takes it, and smooths it
void AdaptiveUnsharpStageFixed(uint16_t* image, uint16_t* mask, int32_t width, int32_t height,
                               int32_t maxValue, int32_t& dumpCounter, LogFile& logFile,
                               const FixedSettings& settings);

}  // namespace vastrelline
