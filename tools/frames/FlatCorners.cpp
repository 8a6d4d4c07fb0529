// SPDX-License-Identifier: Apache-2.0
#include "frames/FlatCorners.h"

#include <cstddef>

namespace vastrelline {
namespace {

constexpr int32_t kLeastPixels = 2;
constexpr int32_t kCornersInAnEdge = 3;

// The length of the run of the first pixel's level, `count` pixels at most.
int32_t RunLength(const uint16_t* first, ptrdiff_t step, int32_t count) {
    int32_t length = 1;
    while (length < count && first[length * step] == *first) ++length;
    return length;
}

}  // namespace

std::string_view CornerName(Corner corner) {
    switch (corner) {
        case Corner::TopLeft:
            return "top left";
        case Corner::TopRight:
            return "top right";
        case Corner::BottomLeft:
            return "bottom left";
        default:
            return "bottom right";
    }
}

FlatCorner FindFlatCorner(const Frame& frame, Corner corner) {
    if (frame.pixels.empty()) return {};
    const bool isRight = corner == Corner::TopRight || corner == Corner::BottomRight;
    const bool isBottom = corner == Corner::BottomLeft || corner == Corner::BottomRight;
    const ptrdiff_t stride = frame.width;
    const uint16_t* const pixel =
        frame.pixels.data() + (isBottom ? (frame.height - 1) * stride : 0) + (isRight ? frame.width - 1 : 0);
    const int32_t width = RunLength(pixel, isRight ? -1 : 1, frame.width);
    const int32_t height = RunLength(pixel, isBottom ? -stride : stride, frame.height);
    if (width < kLeastPixels || height < kLeastPixels || width > frame.width / kCornersInAnEdge ||
        height > frame.height / kCornersInAnEdge)
        return {};
    return {width, height, *pixel};
}

}  // namespace vastrelline
