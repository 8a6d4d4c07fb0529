// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <vector>

namespace vastrelline {

// The smallest and the largest pixel; of an empty frame 65535 and -32767.
void MinMaxPixels(const uint16_t* pixels, int32_t width, int32_t height, int32_t& outMin, int32_t& outMax);

// Counts the pixels of each level that occurs or lies between such: bin 0 is the smallest pixel's.
//
// outMin, outMax   as from MinMaxPixels
// Returns          outMax - outMin + 1 bins; none for an empty frame
std::vector<uint32_t> ValueHistogram(const uint16_t* pixels, int32_t width, int32_t height, int32_t& outMin,
                                     int32_t& outMax);

// Clamps a frame to its own levels but for the outermost ones: at each end the first level with which more
// than `fraction` of the pixels, rounded to a whole number, have been passed. From above, the smallest level
// is not looked at.
//
// fraction   of the pixels, 0..1
// Returns    1; 0 if an end has no such level or the lower is not below the upper, and nothing was changed
int32_t ClipHistogramTails(uint16_t* pixels, double fraction, int32_t width, int32_t height);

}  // namespace vastrelline
