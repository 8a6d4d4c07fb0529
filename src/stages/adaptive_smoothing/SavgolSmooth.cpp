// SPDX-License-Identifier: Apache-2.0
#include "stages/adaptive_smoothing/SavgolSmooth.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

#include "operators/separable/SeparableFilter.h"
#include "pixels/FrameLimits.h"
#include "stages/adaptive_smoothing/SavgolKernel.h"

namespace vastrelline {

namespace {

constexpr int32_t kSmallestMask = 2;

// The same bound as for Gaussians.
bool IsTooWide(int32_t width, int32_t height, int32_t mask) {
    const int64_t pad = int64_t{mask} - 1;
    return IsBeyondPixelLimit(width, height, pad, pad);
}

// The least-squares taps under the taper, their sum divided out.
std::vector<double> MakeTaperedKernel(int32_t mask, int32_t order) {
    const auto count = static_cast<size_t>(mask);
    std::vector<double> kernel(count);
    std::vector<double> coefficients(count + 1);  // an even mask makes one tap too many
    SavgolWindow(kernel.data(), mask);
    SavgolKernel(coefficients.data(), mask, order);
    double sum = 0.0;
    for (size_t i = 0; i < count; ++i) {
        kernel[i] *= coefficients[i];
        sum += kernel[i];
    }
    for (double& tap : kernel) tap /= sum;
    return kernel;
}

}  // namespace

void SavgolSmooth(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue, int32_t mask,
                  int32_t order) {
    if (width <= 0 || height <= 0 || mask < kSmallestMask || IsTooWide(width, height, mask)) return;
    const std::vector<double> kernel = MakeTaperedKernel(mask, order);
    if (!std::all_of(kernel.begin(), kernel.end(), [](double tap) { return std::isfinite(tap); })) return;
    SeparableFilter(pixels, width, height, maxValue, kernel.data(), mask);
}

}  // namespace vastrelline
