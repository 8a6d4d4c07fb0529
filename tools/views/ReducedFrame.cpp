// SPDX-License-Identifier: Apache-2.0
#include "views/ReducedFrame.h"

#include <algorithm>

namespace vastrelline {
namespace {

int32_t StepsIn(int32_t length, int32_t step) { return length / step + (length % step == 0 ? 0 : 1); }

uint16_t MeanOf(const Frame& frame, int32_t left, int32_t top, int32_t step) {
    const int32_t right = std::min(frame.width - left, step) + left;
    const int32_t bottom = std::min(frame.height - top, step) + top;
    uint64_t sum = 0;
    for (int32_t y = top; y < bottom; ++y) {
        const uint16_t* const row = frame.pixels.data() + PixelCount(frame.width, y);
        for (int32_t x = left; x < right; ++x) sum += row[x];
    }
    const uint64_t count = PixelCount(right - left, bottom - top);
    return static_cast<uint16_t>((2 * sum + count) / (2 * count));
}

}  // namespace

ReducedFrame ReduceFrame(const Frame& frame, size_t mostPixels) {
    ReducedFrame reduced{{}, 1, frame.width, frame.height};
    const auto size = [&] {
        return PixelCount(StepsIn(frame.width, reduced.step), StepsIn(frame.height, reduced.step));
    };
    while (size() > std::max<size_t>(mostPixels, 1)) ++reduced.step;
    if (reduced.step == 1) {
        reduced.frame = frame;
        return reduced;
    }
    reduced.frame.width = StepsIn(frame.width, reduced.step);
    reduced.frame.height = StepsIn(frame.height, reduced.step);
    reduced.frame.pixels.reserve(size());
    for (int32_t y = 0; y < reduced.frame.height; ++y)
        for (int32_t x = 0; x < reduced.frame.width; ++x)
            reduced.frame.pixels.push_back(MeanOf(frame, x * reduced.step, y * reduced.step, reduced.step));
    return reduced;
}

std::vector<uint8_t> RenderReduced(const ReducedFrame& reduced, ViewRequest view, GreyWindow window) {
    for (double* const length : {&view.x, &view.y, &view.w, &view.h}) *length /= reduced.step;
    return RenderView(reduced.frame, view, window);
}

}  // namespace vastrelline
