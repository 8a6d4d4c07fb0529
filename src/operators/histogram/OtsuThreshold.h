// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>

namespace vastrelline {

// The level between object and background by Otsu's method (1979): the lowest level at which the variance
// between the two classes is greatest. 0 for a frame of one level, and for one without pixels.
//
// image   width * height pixels; those above maxValue count as maxValue
int32_t ComputeOtsuThreshold(const uint16_t* image, int32_t width, int32_t height, int32_t maxValue);

// The same from the counts of the levels 0..maxValue.
//
// pixelCount   pixels of the frame: the sum of the counts
int32_t ComputeOtsuThreshold(std::span<const uint32_t> histogram, double pixelCount);

}  // namespace vastrelline
