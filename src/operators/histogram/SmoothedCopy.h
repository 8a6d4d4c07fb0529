// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace vastrelline {

// Smooths a histogram with the moving average of SmoothHistogram, into a table of its own and in tables of
// any length.
//
// bins       bins of the histogram to smooth, at most its size; none for 0 or less
// window     bins of the average, 0 or more; an even one is raised by one. half = window / 2
// Average    bin i averages the bins i - half to i + half - 1, divided by `window` where i lies `half` or
//            more from both ends: a little low; results depend on it
// Edges      nearer to an end: the bins that exist, divided by their number
// Rounding   toward zero. Sums are signed: 2^31 pixels or more in one window give a negative average
std::vector<int32_t> SmoothedCopy(std::span<const uint32_t> histogram, int32_t bins, int32_t window);

}  // namespace vastrelline
