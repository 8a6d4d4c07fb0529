// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace vastrelline {

// A picture of signed levels, as the bands of a pyramid are: rows from the top.
struct SignedFrame {
    int32_t width = 0;
    int32_t height = 0;
    std::vector<int16_t> levels;  // width * height
};

// The least distance from 0 that 99.5 % of the levels do not exceed, at least 1: a few hard edges would make
// a picture grey all over that shows everything.
int32_t FindReach(std::span<const int16_t> levels);

// 8 bits around the middle: 0 becomes 128, reach 255, -reach 1, rounded to nearest (half away from 0); what
// lies beyond is as bright or dark as that.
std::vector<uint8_t> RenderSigned(std::span<const int16_t> levels, int32_t reach);

}  // namespace vastrelline
