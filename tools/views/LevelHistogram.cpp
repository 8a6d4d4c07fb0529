// SPDX-License-Identifier: Apache-2.0
#include "views/LevelHistogram.h"

#include <algorithm>
#include <cstddef>

namespace vastrelline {

LevelHistogram CountLevels(const Frame& frame) {
    const auto [least, greatest] = std::minmax_element(frame.pixels.begin(), frame.pixels.end());
    LevelHistogram histogram;
    histogram.first = *least;
    histogram.counts.resize(size_t{*greatest} - *least + 1);
    for (const uint16_t level : frame.pixels) ++histogram.counts[size_t{level} - histogram.first];
    return histogram;
}

}  // namespace vastrelline
