// SPDX-License-Identifier: Apache-2.0
#include "operators/tile_equalise/ClaheFrame.h"

#include <algorithm>

#include "operators/histogram/PixelRange.h"
#include "operators/tile_equalise/ClaheTiles.h"
#include "pixels/FrameLimits.h"

namespace vastrelline {

int32_t ClaheFrame(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue, int32_t blockSize,
                   int32_t bins, double maxSlope) {
    constexpr int32_t kAlwaysOne = 1;
    if (width <= 0 || height <= 0 || blockSize <= 0) return kAlwaysOne;
    // A border of 1 to blockSize pixels, never none: a frame of whole tiles gets a whole tile more.
    const int32_t tilesX = width / blockSize + 1;
    const int32_t tilesY = height / blockSize + 1;
    const int64_t paddedWidth = int64_t{tilesX} * blockSize;
    const int64_t paddedHeight = int64_t{tilesY} * blockSize;
    if (IsBeyondPixelLimit(paddedWidth, paddedHeight)) return kAlwaysOne;

    const PixelRange range = FindPixelRange(pixels, width, height);
    const int32_t max = range.largest;
    const int32_t min = std::min(maxValue, range.smallest);
    RunClaheTiles({.pixels = pixels,
                   .width = static_cast<uint32_t>(width),
                   .height = static_cast<uint32_t>(height),
                   .padRight = static_cast<uint32_t>(paddedWidth) - static_cast<uint32_t>(width),
                   .padBottom = static_cast<uint32_t>(paddedHeight) - static_cast<uint32_t>(height),
                   .min = static_cast<uint16_t>(min),
                   .max = static_cast<uint16_t>(max),
                   .tilesX = static_cast<uint32_t>(tilesX),
                   .tilesY = static_cast<uint32_t>(tilesY),
                   .bins = static_cast<uint32_t>(bins),
                   .clip = 0},
                  maxSlope);
    return kAlwaysOne;
}

}  // namespace vastrelline
