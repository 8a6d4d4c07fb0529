// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace vastrelline {

// Sharpens a frame, in place, by its middle band of detail (ShapeDetail): the finest detail, which is mostly
// noise, is set aside by a narrow Gaussian and put back at the end without gain.
//
// sigma, ratio, noise, mask   as for ShapeDetail
// Result                      clamped to 0..maxValue
void HistogramShapedUnsharp(uint16_t* image, int32_t width, int32_t height, int32_t maxValue, double sigma,
                            double ratio, int32_t noise, uint16_t* mask);

}  // namespace vastrelline
