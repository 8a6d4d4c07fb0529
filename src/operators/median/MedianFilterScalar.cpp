// SPDX-License-Identifier: Apache-2.0
#include <vector>

#include "operators/median/MedianFilter.h"
#include "operators/median/SortInts.h"

namespace vastrelline {

void FilterMedianScalar(const MedianCall& call) {
    const int32_t halfWidth = call.windowWidth / 2;
    const int32_t halfHeight = call.windowHeight / 2;
    const int32_t count = call.windowWidth * call.windowHeight;  // below 2^29, as the window fits the frame
    const auto stride = static_cast<size_t>(call.width);
    std::vector<int32_t> window(static_cast<size_t>(count));
    for (int32_t y = call.firstRow; y <= call.lastRow; ++y) {
        for (int32_t x = halfWidth; x < call.width - halfWidth; ++x) {
            size_t place = 0;
            for (int32_t row = y - halfHeight; row < y - halfHeight + call.windowHeight; ++row) {
                const uint16_t* first = call.source + static_cast<size_t>(row) * stride + (x - halfWidth);
                for (int32_t i = 0; i < call.windowWidth; ++i) window[place++] = first[i];
            }
            SortInts(window.data(), count);
            call.destination[static_cast<size_t>(y) * stride + static_cast<size_t>(x)] =
                static_cast<uint16_t>(window[static_cast<size_t>(count / 2)]);
        }
    }
}

}  // namespace vastrelline
