// SPDX-License-Identifier: Apache-2.0
#include "operators/separable/GaussPlan.h"

#include <array>

#include "operators/separable/GaussKernel.h"
#include "pixels/FrameLimits.h"
#include "pixels/Truncate.h"

namespace vastrelline {

namespace {

// The kernel for sigmas that give none: the values of single-precision constants, whose sum is
// 1.0000000074505806. Results depend on it: never normalise.
constexpr std::array<double, 5> kFixedKernel = {0.05000000074505806, 0.25, 0.4000000059604645, 0.25,
                                                0.05000000074505806};

// A kernel so wide that the frame extended by its reach would pass 2^29 pixels is not run.
bool IsTooWide(int32_t width, int32_t height, int32_t size) {
    const int64_t pad = int64_t{size} - 1;
    return IsBeyondPixelLimit(width, height, pad, pad);
}

std::optional<GaussPlan> PlanGauss(int32_t width, int32_t height, double sigma, EdgeRule edges) {
    if (!(sigma > 0)) return GaussPlan{{kFixedKernel.begin(), kFixedKernel.end()}, edges};
    int32_t size = GaussMaskSize(sigma);
    if (size < 1 || IsTooWide(width, height, size)) return std::nullopt;
    return GaussPlan{MakeGaussKernel(size, sigma), edges};
}

}  // namespace

std::optional<GaussPlan> PlanGaussWrap(int32_t width, int32_t height, double sigma) {
    return PlanGauss(width, height, sigma, EdgeRule::Wrap);
}

std::optional<GaussPlan> PlanGaussReplicate(int32_t width, int32_t height, double sigma) {
    const int32_t pad = WrappingSubtract(GaussMaskSize(sigma), 1);
    if (pad < 0) return std::nullopt;
    // Without a reach there is no border either: the fixed kernel then wraps around. Results depend on it.
    return PlanGauss(width, height, sigma, pad == 0 ? EdgeRule::Wrap : EdgeRule::Replicate);
}

}  // namespace vastrelline
