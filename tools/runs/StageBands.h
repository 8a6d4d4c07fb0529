// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "frames/SignedLevels.h"
#include "runs/CurveFile.h"

namespace vastrelline {

// A band of the pyramid: what is finer than the next layer, as signed levels.
struct StageBand {
    int32_t number = 0;  // 0: the finest
    SignedFrame before;
    SignedFrame after;
    std::vector<CurvePoint> curve;  // that made one of the other; empty: the band was left alone
};

// The bands among the dumps of a folder, from the finest on. Their files carry no number of the stage, so
// they are those of the last pyramid that ran. What is missing or of a wrong length is left out.
//
// Errors   InputError if a file cannot be read
std::vector<StageBand> ReadStageBands(const std::string& folder);

}  // namespace vastrelline
