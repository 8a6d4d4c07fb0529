// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

#include "frames/Frame.h"
#include "frames/GreyWindow.h"

namespace vastrelline {

// A picture of a page as its source: an 8-bit PNG within the text.
struct StillPicture {
    std::string source;  // "data:image/png;base64,..."
    int32_t width = 0;
    int32_t height = 0;
};

// A frame through a window, made smaller where it does not fit into a square of so many pixels.
StillPicture DrawStill(const Frame& frame, GreyWindow window, int32_t box);

// Differences in the same way, but of the pixels that share one the largest is shown, so that none is lost.
StillPicture DrawStillDifference(const Frame& differences, int32_t white, int32_t box);

}  // namespace vastrelline
