#include "stages/pre_processing/PreProcessFrame.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "operators/median/MedianWindow.h"
#include "pixels/AllocZeroed.h"
#include "pixels/FrameView.h"
#include "pixels/Truncate.h"
#include "stages/pre_processing/MidBand.h"

namespace vastrelline {

namespace {

// The darkest pixel above 0, but 4095 at most.
uint16_t FindFloor(const FrameView<uint16_t>& frame) {
    constexpr uint16_t kStart = 0xFFF;
    uint16_t floor = kStart;
    for (const uint16_t pixel : frame)
        if (pixel > 0) floor = std::min(floor, pixel);
    return floor;
}

}  // namespace

void PreProcessFrame(uint16_t* image, int32_t width, int32_t height, int32_t maxValue,
                     const PreProcessingParams& params) {
    const FrameView<uint16_t> frame(image, width, height);
    const uint16_t floor = FindFloor(frame);
    std::vector<uint16_t> first = AllocZeroed<uint16_t>(width, height);
    std::vector<uint16_t> base = AllocZeroed<uint16_t>(width, height);
    Median3x3ToBuffer(image, first.data(), width, height);
    Median3x3ToBuffer(first.data(), base.data(), width, height);
    std::vector<uint16_t>& detail = first;
    for (size_t i = 0; i < detail.size(); ++i) detail[i] = LowBits16(first[i] - base[i]);
    EnhanceMidBand(base.data(), width, height, maxValue,
                   {params.PREPROCESSING_GAUSSIANPOWER, params.PREPROCESSING_ENHANCESCALE,
                    static_cast<float>(params.PREPROCESSING_AUMALPHA),
                    static_cast<float>(params.PREPROCESSING_AUMWEIGHT),
                    static_cast<float>(params.PREPROCESSING_AUMPOWER),
                    static_cast<float>(params.PREPROCESSING_AUMRANGE)});
    size_t i = 0;
    for (uint16_t& pixel : frame) {
        const int32_t sum = base[i] + detail[i];
        pixel = std::max(sum > maxValue ? base[i] : static_cast<uint16_t>(sum), floor);
        ++i;
    }
}

}  // namespace vastrelline
