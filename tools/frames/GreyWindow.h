// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "frames/Frame.h"

namespace vastrelline {

// The grey levels that a picture of 8 bits shows: low becomes black, high becomes white. low < high.
struct GreyWindow {
    int32_t low = 0;
    int32_t high = 0;

    bool operator==(const GreyWindow&) const = default;
};

// "0:4095": two decimal numbers of 0 to 65535, the first below the second. Nothing for any other text.
std::optional<GreyWindow> ParseGreyWindow(std::string_view text);

// The frame through the window: a straight line between low and high, rounded to nearest (half up); levels
// outside become black or white.
std::vector<uint8_t> RenderThroughWindow(const Frame& frame, GreyWindow window);

}  // namespace vastrelline
