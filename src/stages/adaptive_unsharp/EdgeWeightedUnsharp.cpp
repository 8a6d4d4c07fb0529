// SPDX-License-Identifier: Apache-2.0
#include "stages/adaptive_unsharp/EdgeWeightedUnsharp.h"

#include <cstddef>
#include <vector>

#include "operators/box_mean/BoxMean.h"
#include "operators/histogram/PixelRange.h"
#include "operators/resample/Resize.h"
#include "operators/separable/GaussKernel.h"
#include "pixels/FrameView.h"
#include "pixels/ScratchVector.h"
#include "stages/adaptive_unsharp/DetailLoops.h"
#include "stages/adaptive_unsharp/SobelMagnitude.h"

namespace vastrelline {

namespace {

void SmoothBase(const FrameView<uint16_t>& base, int32_t maxValue, double sigma, int32_t reduce) {
    constexpr int32_t kBoxFilter = -1;
    if (reduce == kBoxFilter) {
        BoxMeanInPlace(base.begin(), base.Width(), base.Height(), GaussMaskSize(sigma) / 2);
    } else {
        ReducedScaleGaussian(base.begin(), base.Width(), base.Height(), maxValue, sigma, reduce);
    }
}

// The gain of each edge strength up to the strongest one.
std::vector<double> BuildEdgeGains(int32_t flattest, int32_t strongest, double ratio, int32_t noise) {
    const double low = noise / 100.0;
    std::vector<double> gains(static_cast<size_t>(strongest) + 1, low);
    const auto square = [&](int32_t strength) {
        const double part = static_cast<double>(strength) / strongest;
        return part * part;
    };
    // One strength everywhere has no range to divide by.
    if (flattest == strongest) return gains;
    const double smallest = square(flattest);
    const double largest = square(strongest);
    for (int32_t strength = flattest; strength <= strongest; ++strength) {
        gains[static_cast<size_t>(strength)] =
            (square(strength) - smallest) * (ratio - low) / (largest - smallest) + low;
    }
    return gains;
}

}  // namespace

void EdgeWeightedUnsharp(uint16_t* image, int32_t width, int32_t height, int32_t maxValue, double sigma,
                         double ratio, int32_t noise, int32_t reduce) {
    const FrameView<uint16_t> frame(image, width, height);
    if (frame.Count() == 0) return;
    const ScratchVector<uint16_t> original(frame.begin(), frame.end());
    ScratchVector<uint16_t> base = original;
    SmoothBase({base.data(), width, height}, maxValue, sigma, reduce);
    SobelMagnitudeInPlace(image, width, height);
    const auto [smallest, largest] = FindPixelRange(image, width, height);
    const std::vector<double> gains = BuildEdgeGains(smallest, largest, ratio, noise);
    FastestOf(DetailVariants())
        .run->blendByEdges({image, original.data(), base.data(), frame.Count(), maxValue, gains});
}

}  // namespace vastrelline
