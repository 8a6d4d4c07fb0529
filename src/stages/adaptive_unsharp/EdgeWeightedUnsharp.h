// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace vastrelline {

// Sharpens a frame, in place, with a gain that follows the edges: each pixel becomes its smoothed value plus
// gain times what the smoothing took. The gain runs from noise / 100 at the flattest pixel to `ratio` at the
// strongest edge, with the square of the edge's strength between. On a frame without edges it is the former.
//
// sigma    of the smoothing, in pixels
// ratio    gain at the strongest edge
// noise    gain at the flattest pixel, in percent
// reduce   -1 smooths by a box mean as wide as the Gaussian's kernel; 1 by the Gaussian itself, above 1 at a
//          resolution reduced by this factor, fastest at 2; other values do not smooth, and with finite gains
//          the frame stays as it is but for the limit
// Result   truncated toward zero and clamped to 0..maxValue
// Errors   none; ratios and sigmas that are no numbers give pixels of 0 or an unsmoothed frame
void EdgeWeightedUnsharp(uint16_t* image, int32_t width, int32_t height, int32_t maxValue, double sigma,
                         double ratio, int32_t noise, int32_t reduce);

}  // namespace vastrelline
