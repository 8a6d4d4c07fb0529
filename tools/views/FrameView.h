// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <vector>

#include "frames/Frame.h"
#include "frames/GreyWindow.h"

namespace vastrelline {

// A part of a frame on a screen: what begins at (x, y) and is w x h pixels of the frame large, at pw x ph
// pixels. (0, 0) is the left upper corner of the frame's first pixel.
struct ViewRequest {
    double x = 0.0;
    double y = 0.0;
    double w = 0.0;
    double h = 0.0;
    uint32_t pw = 0;
    uint32_t ph = 0;
};

inline constexpr uint32_t kMaxViewSide = 8192;
inline constexpr uint32_t kMaxViewPixels = uint32_t{1} << 24;
inline constexpr double kMaxViewReach = 1e6;  // of x, y, w, h

// Whether all of it is finite and within the limits; w, h, pw, ph above 0.
bool IsUsableView(const ViewRequest& view);

// The part through a window, row by row. In a direction in which it becomes smaller, or stays as it is, a
// pixel of the screen is the mean of what lies under it, pixels of the frame that are half under it by half;
// the mean is rounded to a whole level, half up, before it goes through the window. In a direction in which
// it becomes larger it is the pixel under its middle. A pixel whose middle is outside of the frame is 128.
std::vector<uint8_t> RenderView(const Frame& frame, const ViewRequest& view, const GreyWindow& window);

// The same of b minus a, two frames of one size: 128 stands for equal, and each level of difference, which is
// not rounded before, for `gain`. Rounded to nearest, half up.
std::vector<uint8_t> RenderDifference(const Frame& a, const Frame& b, const ViewRequest& view, double gain);

}  // namespace vastrelline
