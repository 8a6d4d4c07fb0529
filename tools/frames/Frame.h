// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vastrelline {

// A picture of 16-bit grey levels that owns its pixels: rows from the top, no gap between rows.
struct Frame {
    int32_t width = 0;
    int32_t height = 0;
    std::vector<uint16_t> pixels;  // width * height
};

// The number of pixels of a frame of this size; both sides are 0 or more.
constexpr size_t PixelCount(int32_t width, int32_t height) {
    return static_cast<size_t>(width) * static_cast<size_t>(height);
}

}  // namespace vastrelline
