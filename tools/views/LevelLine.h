// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <vector>

#include "frames/Frame.h"

namespace vastrelline {

// A straight line over a frame; (0, 0) is the left upper corner of the first pixel.
struct FrameLine {
    double x0 = 0.0;
    double y0 = 0.0;
    double x1 = 0.0;
    double y1 = 0.0;
};

struct LinePoint {
    double distance = 0.0;  // from the line's beginning, in pixels
    uint16_t level = 0;
};

inline constexpr int32_t kMostLinePoints = 4096;

// The levels of the pixels that lie under the line, a pixel a step, or as many as kMostLinePoints allow.
// Points outside of the frame are left out.
std::vector<LinePoint> ReadLevelLine(const Frame& frame, const FrameLine& line);

}  // namespace vastrelline
