// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cstddef>

#include "operators/separable/SeparableFilter.h"
#include "pixels/ScratchVector.h"
#include "pixels/Truncate.h"

namespace vastrelline {

namespace {

// The source index for one that may lie beyond either end of `count` elements.
int32_t EdgeIndex(int32_t index, int32_t count, EdgeRule edges) {
    if (edges == EdgeRule::Replicate) return std::clamp(index, 0, count - 1);
    const int32_t rest = index % count;
    return rest < 0 ? rest + count : rest;
}

}  // namespace

void FilterFrameScalar(const FilterCall& call) {
    const auto size = static_cast<int32_t>(call.kernel.size());
    const int32_t half = size / 2;
    const auto at = [&](int32_t x, int32_t y) {
        return static_cast<size_t>(y) * static_cast<size_t>(call.width) + static_cast<size_t>(x);
    };
    ScratchVector<double> intermediate(at(0, call.height));
    for (int32_t y = 0; y < call.height; ++y) {
        for (int32_t x = 0; x < call.width; ++x) {
            double sum = 0.0;
            for (int32_t k = 0; k < size; ++k) {
                const int32_t column = EdgeIndex(x + k - half, call.width, call.edges);
                sum += call.pixels[at(column, y)] * call.kernel[static_cast<size_t>(k)];
            }
            intermediate[at(x, y)] = sum;
        }
    }
    for (int32_t y = 0; y < call.height; ++y) {
        for (int32_t x = 0; x < call.width; ++x) {
            double sum = 0.0;
            for (int32_t k = 0; k < size; ++k) {
                const int32_t row = EdgeIndex(y + k - half, call.height, call.edges);
                sum += call.kernel[static_cast<size_t>(k)] * intermediate[at(x, row)];
            }
            const int32_t pixel = std::max(std::min(TruncateToInt32(sum), call.maxValue), 0);
            call.pixels[at(x, y)] = LowBits16(pixel);
        }
    }
}

}  // namespace vastrelline
