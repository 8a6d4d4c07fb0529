// SPDX-License-Identifier: Apache-2.0
#include "stages/adaptive_unsharp/HistogramShapedUnsharp.h"

#include "operators/separable/SeparableFilter.h"
#include "pixels/FrameView.h"
#include "pixels/ScratchVector.h"
#include "stages/adaptive_unsharp/DetailLoops.h"
#include "stages/adaptive_unsharp/ShapeDetail.h"

namespace vastrelline {

void HistogramShapedUnsharp(uint16_t* image, int32_t width, int32_t height, int32_t maxValue, double sigma,
                            double ratio, int32_t noise, uint16_t* mask) {
    constexpr double kSigmaOfFinest = 1.0;
    const FrameView<uint16_t> frame(image, width, height);
    ScratchVector<uint16_t> base(frame.begin(), frame.end());
    GaussFilterReplicate(base.data(), width, height, maxValue, kSigmaOfFinest);
    ScratchVector<uint16_t> shaped = base;
    ShapeDetail(shaped.data(), width, height, maxValue, sigma, ratio, noise, mask);
    FastestOf(DetailVariants()).run->addFinest(image, base.data(), shaped.data(), frame.Count(), maxValue);
}

}  // namespace vastrelline
