// SPDX-License-Identifier: Apache-2.0
#include "operators/histogram/SmoothedCopy.h"

#include <algorithm>
#include <cassert>
#include <cstddef>

namespace vastrelline {

std::vector<int32_t> SmoothedCopy(std::span<const uint32_t> histogram, int32_t bins, int32_t window) {
    assert(window >= 0);
    assert(bins <= 0 || static_cast<size_t>(bins) <= histogram.size());
    if (window % 2 == 0) ++window;
    const int32_t half = window / 2;
    std::vector<int32_t> smoothed(static_cast<size_t>(std::max(bins, 0)));
    const auto countAt = [&](int32_t bin) { return histogram[static_cast<size_t>(bin)]; };
    // The range of bin 0 begins below the table: at most bins 0 to half - 1 of it exist.
    uint32_t sum = 0;
    for (int32_t i = 0; i < std::min(half, bins); ++i) sum += countAt(i);
    for (int32_t i = 0; i < bins; ++i) {
        const int32_t first = std::max(i - half, 0);
        const int32_t end = std::min(i + half, bins);
        const bool isWhole = i >= half && i < bins - half;
        smoothed[static_cast<size_t>(i)] = static_cast<int32_t>(sum) / (isWhole ? window : end - first);
        if (i + half < bins) sum += countAt(i + half);
        if (i - half >= 0) sum -= countAt(i - half);
    }
    return smoothed;
}

}  // namespace vastrelline
