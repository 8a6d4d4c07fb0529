// SPDX-License-Identifier: Apache-2.0
#include "stages/pre_processing/MidBand.h"

#include <cstddef>

#include "operators/box_mean/BoxMean.h"
#include "operators/resample/Resize.h"
#include "operators/separable/GaussKernel.h"
#include "operators/separable/SeparableFilter.h"
#include "pixels/FrameView.h"
#include "pixels/ScratchVector.h"
#include "pixels/Truncate.h"
#include "stages/pre_processing/MidBandLoops.h"

namespace vastrelline {

namespace {

void SmoothFrame(ScratchVector<uint16_t>& pixels, int32_t width, int32_t height, int32_t maxValue,
                 double sigma, int32_t smoothing) {
    constexpr double kLeastReducedSigma = 0.5;
    if (smoothing == kBoxSmoothing)
        BoxMeanInPlace(pixels.data(), width, height, MidBandRadius(sigma, width));
    else if (smoothing == 1 || sigma / smoothing < kLeastReducedSigma)
        GaussFilterReplicate(pixels.data(), width, height, maxValue, sigma);
    else
        ReducedScaleGaussian(pixels.data(), width, height, maxValue, sigma, smoothing);
}

}  // namespace

int32_t MidBandRadius(double sigma, int32_t width) {
    constexpr int32_t kFullWidth = 1000;
    int32_t radius = GaussMaskSize(sigma) / 2;
    if (width < kFullWidth) radius = TruncateToInt32(radius / 2.0);
    if (radius % 2 == 0) ++radius;
    return radius;
}

void MidBandBoost(uint16_t* buffer, int32_t width, int32_t height, int32_t maxValue,
                  const MidBandParams& params, int32_t smoothing) {
    const FrameView<uint16_t> frame(buffer, width, height);
    ScratchVector<uint16_t> smoothed(frame.begin(), frame.end());
    SmoothFrame(smoothed, width, height, maxValue, params.sigma, smoothing);
    // MapDetailPower would start from limits with which it does nothing, so the difference needs no image.
    FastestOf(MidBandVariants()).run->boost(buffer, smoothed.data(), frame.Count(), maxValue, params.gain);
}

void EnhanceMidBand(uint16_t* buffer, int32_t width, int32_t height, int32_t maxValue,
                    const MidBandParams& params) {
    constexpr double kFineSigma = 0.5;
    const FrameView<uint16_t> frame(buffer, width, height);
    ScratchVector<uint16_t> smoothed(frame.begin(), frame.end());
    GaussFilterReplicate(smoothed.data(), width, height, maxValue, kFineSigma);
    ScratchVector<uint16_t> boosted = smoothed;
    MidBandBoost(boosted.data(), width, height, maxValue, params, kBoxSmoothing);
    FastestOf(MidBandVariants())
        .run->addFine(buffer, smoothed.data(), boosted.data(), frame.Count(), maxValue);
}

}  // namespace vastrelline
