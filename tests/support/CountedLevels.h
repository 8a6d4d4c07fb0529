// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "support/Frames.h"

namespace vastrelline {

// So many pixels of a level.
struct LevelCount {
    uint16_t level;
    int32_t count;
};

// A frame of one row with these pixels, in this order.
inline Frame FromCounts(const std::vector<LevelCount>& counts) {
    std::vector<uint16_t> pixels;
    for (const LevelCount& c : counts) pixels.insert(pixels.end(), static_cast<size_t>(c.count), c.level);
    const auto width = static_cast<int32_t>(pixels.size());
    return {width, 1, std::move(pixels)};
}

}  // namespace vastrelline
