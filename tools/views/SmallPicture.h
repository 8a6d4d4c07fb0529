// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <vector>

#include "frames/Frame.h"

namespace vastrelline {

// A picture as lists show it, of 8-bit grey.
struct SmallPicture {
    int32_t width = 0;
    int32_t height = 0;
    std::vector<uint8_t> grey;  // width * height, rows from the top
};

inline constexpr int32_t kSmallPictureSide = 96;

// The whole frame, made smaller where a side is longer than kSmallPictureSide.
//
// topLevel   becomes white, 0 black; 1 or more
SmallPicture MakeSmallPicture(const Frame& frame, int32_t topLevel);

}  // namespace vastrelline
