// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace vastrelline {

// Counts the pixels of each level.
//
// maxValue   the top level, 0..65535; a pixel above it counts in the top bin
// Returns    maxValue + 1 bins; no bin for a negative maxValue
std::vector<uint32_t> BuildHistogram(const uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue);

// The same without the clamp: a pixel above maxValue is not counted.
std::vector<uint32_t> BuildUnclampedHistogram(const uint16_t* pixels, int32_t width, int32_t height,
                                              int32_t maxValue);

// Smooths a histogram with a moving average.
//
// histogram, smoothed   `bins` bins each; must not overlap
// window                bins of the average, 0 or more; an even one is raised by one. half = window / 2
// Average               bin i averages the bins i - half to i + half - 1: one short of symmetric on the
//                       right, yet divided by `window` where all of them exist, so a little low; results
//                       depend on both
// Edges                 near the ends: the bins that exist, divided by their number
// Rounding              down
// Special case          `bins` not above window + 3: a plain copy
void SmoothHistogram(const uint32_t* histogram, uint32_t* smoothed, int32_t bins, int32_t window);

// The first or last occupied level of a histogram that stands out of the noise.
struct HistogramCut {
    int32_t low;   // first bin from 0 up, -1 if there is none
    int32_t high;  // last bin from the top down to 1, -1 if there is none
};

// Looks for bins whose smoothed value is strictly above `limit` (a signed comparison) and whose raw bin is
// not empty.
HistogramCut FindHistogramCut(std::span<const uint32_t> histogram, int32_t limit);

}  // namespace vastrelline
