// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "frames/Frame.h"
#include "frames/FrameDifference.h"

namespace vastrelline {

// So many pixels differ by `least` to `greatest` levels.
struct DifferenceClass {
    int32_t least = 0;
    int32_t greatest = 0;
    size_t count = 0;

    bool operator==(const DifferenceClass&) const = default;
};

// How much two frames of the same size differ.
struct PairFigures {
    size_t pixels = 0;
    size_t count = 0;   // pixels that differ
    size_t beyond = 0;  // pixels that differ by more than the tolerance
    int32_t largest = 0;
    PixelDifference largestPlace;          // of no meaning for equal frames
    std::vector<PixelDifference> places;   // spread over the frame, as FindDifference gives them
    std::vector<DifferenceClass> classes;  // 1, 2, 3 to 4, 5 to 8 and so on, up to the largest difference
    double meanSquare = 0.0;               // of the differences, over all pixels
    int32_t peak = 0;                      // the top of the bits that the brighter frame uses: UsualTop
    std::optional<double> psnr;            // 10 log10(peak^2 / meanSquare), in dB; none for equal frames
};

// tolerance   levels, 0 or more
PairFigures ComparePixels(const Frame& first, const Frame& second, int32_t tolerance);

}  // namespace vastrelline
