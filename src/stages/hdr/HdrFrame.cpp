// SPDX-License-Identifier: Apache-2.0
#include "stages/hdr/HdrFrame.h"

#include <algorithm>

#include "operators/histogram/PixelRange.h"
#include "operators/tile_equalise/ClaheFrame.h"
#include "pixels/FrameLimits.h"
#include "pixels/FrameView.h"
#include "pixels/ScratchVector.h"
#include "stages/hdr/LayerFusion.h"

namespace vastrelline {

namespace {

// Whether the frame, extended to whole tiles, is one that can be equalised. A side of whole tiles gets one
// more tile, too.
bool FitsInTiles(int32_t width, int32_t height, int32_t blockSize) {
    if (blockSize <= 0) return false;
    const int64_t paddedWidth = (int64_t{width} / blockSize + 1) * blockSize;
    const int64_t paddedHeight = (int64_t{height} / blockSize + 1) * blockSize;
    return !IsBeyondPixelLimit(paddedWidth, paddedHeight);
}

}  // namespace

int32_t HdrFrame(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue, int32_t blockSize,
                 int32_t bins, double clipLimit, int32_t edgeMax, int32_t edgeOffset, float maxLambda,
                 float wfSlope, float alphaNorm, float alphaHe, int32_t layerStep) {
    constexpr int32_t kAlwaysOne = 1;
    if (width <= 0 || height <= 0 || !FitsInTiles(width, height, blockSize)) return kAlwaysOne;
    const FrameView<uint16_t> frame(pixels, width, height);
    ScratchVector<uint16_t> normalImage(frame.begin(), frame.end());
    const auto [smallest, max] = FindPixelRange(pixels, width, height);
    const int32_t min = std::min(maxValue, smallest);
    ClaheFrame(pixels, width, height, maxValue, blockSize, bins, clipLimit);
    FuseLayers(normalImage.data(), pixels, width, height, min, max, edgeMax, edgeOffset, maxLambda, wfSlope,
               alphaNorm, alphaHe, layerStep);
    std::copy(normalImage.begin(), normalImage.end(), frame.begin());
    return kAlwaysOne;
}

}  // namespace vastrelline
