// SPDX-License-Identifier: Apache-2.0
#include "stages/adaptive_unsharp/UnsharpModes.h"

#include "stages/adaptive_unsharp/ActivityWeightedUnsharp.h"
#include "stages/adaptive_unsharp/BandDifferenceUnsharp.h"
#include "stages/adaptive_unsharp/EdgeWeightedUnsharp.h"
#include "stages/adaptive_unsharp/HistogramShapedUnsharp.h"

namespace vastrelline {

namespace {

enum class UnsharpMode : int32_t {
    EdgeWeighted = 1,
    HistogramShaped = 3,
    BandDifference = 4,
    ActivityWeighted = 5,
};

}  // namespace

void SharpenByMode(uint16_t* image, int32_t width, int32_t height, int32_t maxValue,
                   const UnsharpParams& params) {
    if (static_cast<UnsharpMode>(params.MODE_CONTRAST) != UnsharpMode::ActivityWeighted) {
        SharpenByFixedMode(image, nullptr, width, height, maxValue, params);
        return;
    }
    ActivityWeightedUnsharp(image, width, height, maxValue, params.NOISE_WIDTH_CONTRAST,
                            params.ReduceTimeRatio_CONTRAST, params.PROTECTOUTLINE_CONTRAST,
                            params.GAUSSIAN_SIZE_CONTRAST, params.ENAHCNED_RATIO_CONTRAST);
}

void SharpenByFixedMode(uint16_t* image, uint16_t* mask, int32_t width, int32_t height, int32_t maxValue,
                        const UnsharpParams& params) {
    const double sigma = params.GAUSSIAN_SIZE_CONTRAST;
    const double ratio = params.ENAHCNED_RATIO_CONTRAST;
    const int32_t noise = params.NOISE_WIDTH_CONTRAST;
    const int32_t reduce = params.ReduceTimeRatio_CONTRAST;
    switch (static_cast<UnsharpMode>(params.MODE_CONTRAST)) {
        case UnsharpMode::EdgeWeighted:
            EdgeWeightedUnsharp(image, width, height, maxValue, sigma, ratio, noise, reduce);
            break;
        case UnsharpMode::HistogramShaped:
            HistogramShapedUnsharp(image, width, height, maxValue, sigma, ratio, noise, mask);
            break;
        case UnsharpMode::BandDifference:
            BandDifferenceUnsharp(image, width, height, maxValue, sigma, ratio, noise * 0.01, reduce);
            break;
        default:
            break;
    }
}

}  // namespace vastrelline
