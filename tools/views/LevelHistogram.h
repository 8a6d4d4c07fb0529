// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <vector>

#include "frames/Frame.h"

namespace vastrelline {

// How many pixels have each level, a bin a level, from the least to the greatest level that occurs.
struct LevelHistogram {
    uint32_t first = 0;  // the level of the first bin
    std::vector<uint32_t> counts;
};

// frame   of at least one pixel
LevelHistogram CountLevels(const Frame& frame);

}  // namespace vastrelline
