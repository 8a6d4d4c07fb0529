// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "frames/Frame.h"

namespace vastrelline {

// The shares, in percent, whose levels FrameStatistics tells.
inline constexpr std::array<int32_t, 7> kPercentiles{1, 5, 25, 50, 75, 95, 99};

struct FrameStatistics {
    uint16_t least = 0;
    uint16_t greatest = 0;
    double mean = 0.0;
    std::array<uint16_t, kPercentiles.size()> percentiles{};
    size_t atZero = 0;      // pixels of level 0
    size_t atGreatest = 0;  // pixels of the brightest level
    size_t levels = 0;      // different ones
    int32_t bitsUsed = 0;   // 12 for a brightest level of 2048 to 4095; 0 if all is 0
    int32_t emptyBits = 0;  // low bits that are 0 in every pixel; 0 if all is 0
};

// What the levels of a frame of at least one pixel are. A percentile is the lowest level that so large a
// share of the pixels does not exceed.
FrameStatistics MeasureFrame(const Frame& frame);

}  // namespace vastrelline
