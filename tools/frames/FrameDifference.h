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
    size_t count = 0;                        // pixels that differ
    int32_t largest = 0;                     // the largest absolute difference
    std::vector<PixelDifference> firstOnes;  // in reading order, at most 10
};

// How two frames of the same size differ.
FrameDifference FindDifference(const Frame& first, const Frame& second);

}  // namespace vastrelline
