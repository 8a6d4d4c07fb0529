// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "frames/Frame.h"
#include "frames/GreyWindow.h"
#include "views/FrameView.h"

namespace vastrelline {

// A frame that is kept smaller than it was, so that many of them fit into memory.
struct ReducedFrame {
    Frame frame;  // each pixel is the mean of `step` x `step` of the whole frame, rounded half up; at the
                  // right and lower edge of as many as there are
    int32_t step = 1;   // 1: nothing was lost
    int32_t width = 0;  // of the whole frame
    int32_t height = 0;
};

// By the smallest step that leaves at most so many pixels, or one.
ReducedFrame ReduceFrame(const Frame& frame, size_t mostPixels);

// As RenderView; the request is in pixels of the whole frame.
std::vector<uint8_t> RenderReduced(const ReducedFrame& reduced, ViewRequest view, GreyWindow window);

}  // namespace vastrelline
