// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "frames/Frame.h"

namespace vastrelline {

struct PixelDifference {
    int32_t x = 0;
    int32_t y = 0;
    uint16_t first = 0;
    uint16_t second = 0;

    bool operator==(const PixelDifference&) const = default;
};

struct FrameDifference {
    size_t count = 0;                     // pixels that differ
    int32_t largest = 0;                  // the largest absolute difference
    PixelDifference largestOne;           // the first place of it; of no meaning for equal frames
    std::vector<PixelDifference> places;  // at most 10, in reading order
    std::vector<size_t> bySize;           // how many pixels differ by 0, 1, 2, ... up to the largest
};

// How two frames of the same size differ. The places are spread over the frame, whatever is the case where:
// its parts take turns, and of each part the first places in reading order are taken.
FrameDifference FindDifference(const Frame& first, const Frame& second);

// The absolute difference of each pixel, of frames of the same size.
Frame AbsoluteDifference(const Frame& first, const Frame& second);

}  // namespace vastrelline
