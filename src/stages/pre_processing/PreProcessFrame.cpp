// SPDX-License-Identifier: Apache-2.0
#include "stages/pre_processing/PreProcessFrame.h"

#include <cstddef>

#include "operators/median/MedianWindow.h"
#include "pixels/AllocFrame.h"
#include "pixels/FrameView.h"
#include "stages/pre_processing/MidBand.h"
#include "stages/pre_processing/MidBandLoops.h"

namespace vastrelline {

void PreProcessFrame(uint16_t* image, int32_t width, int32_t height, int32_t maxValue,
                     const PreProcessingParams& params) {
    constexpr uint16_t kStartOfFloor = 0xFFF;
    const size_t count = FrameView(image, width, height).Count();
    const MidBandLoops& loops = *FastestOf(MidBandVariants()).run;
    const uint16_t floor = loops.findFloor(image, count, kStartOfFloor);
    ScratchVector<uint16_t> base = AllocFrame<uint16_t>(width, height);
    // What was needed of the frame is known: its place takes the detail.
    {
        ScratchVector<uint16_t> first = AllocFrame<uint16_t>(width, height);
        Median3x3ToBuffer(image, first.data(), width, height);
        Median3x3ToBuffer(first.data(), base.data(), width, height);
        loops.subtract(first.data(), base.data(), count, image);
    }
    EnhanceMidBand(base.data(), width, height, maxValue,
                   {params.PREPROCESSING_GAUSSIANPOWER, params.PREPROCESSING_ENHANCESCALE,
                    static_cast<float>(params.PREPROCESSING_AUMALPHA),
                    static_cast<float>(params.PREPROCESSING_AUMWEIGHT),
                    static_cast<float>(params.PREPROCESSING_AUMPOWER),
                    static_cast<float>(params.PREPROCESSING_AUMRANGE)});
    loops.finish(base.data(), image, count, maxValue, floor);
}

}  // namespace vastrelline
