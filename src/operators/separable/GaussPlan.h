// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "operators/separable/SeparableFilter.h"

namespace vastrelline {

// The kernel and the edge rule with which a Gaussian smooths a frame.
struct GaussPlan {
    std::vector<double> kernel;
    EdgeRule edges;
};

// What GaussFilterWrap and GaussFilterReplicate filter a frame of this size with; none if they leave it as it
// is. Stated apart for those who smooth a frame and keep only a part of the result.
//
// sigma   standard deviation in pixels
std::optional<GaussPlan> PlanGaussWrap(int32_t width, int32_t height, double sigma);
std::optional<GaussPlan> PlanGaussReplicate(int32_t width, int32_t height, double sigma);

}  // namespace vastrelline
