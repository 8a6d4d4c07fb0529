// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "runs/StageFrames.h"

namespace vastrelline {

// How far two runs on one frame lie apart at one point.
struct FrameEffect {
    std::string title;            // "input", "00 Gaussian", "00 Gaussian (01 in B)", "result"
    double changedShare = 0.0;    // of the pixels
    double meanDifference = 0.0;  // in levels, of all pixels
    int32_t largest = 0;
};

// The frames of one run, with the stages that they are of.
struct RunFrames {
    std::vector<RanStage> stages;
    std::vector<StageFrame> frames;
};

// Point by point in the order of the first run; stages are set side by side by their kinds, those that only
// one run has are left out. All frames of both are of one size.
std::vector<FrameEffect> CompareRunFrames(const RunFrames& first, const RunFrames& second);

}  // namespace vastrelline
