// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <vector>

namespace vastrelline {

// Smooths a frame where it is flat and keeps it where it has structure, in place: a weight from the local
// deviation decides for each pixel how much of a Gaussian-smoothed copy replaces it. A light Gaussian over
// the whole frame follows.
//
// maxValue           the largest value that the two Gaussians store
// sigma              of the copy, in pixels, as GaussFilterReplicate takes it
// thresholdPercent   0 or more: deviation up to this percentage takes the copy alone, and 100 takes it
//                    everywhere; above 100 pixels move away from the copy, as the arithmetic has it. Below 0:
//                    deviation from this percentage on keeps its pixels
// Edges              the outermost kDeviationRadius pixels always take the copy at a threshold of 0; the
// light
//                    Gaussian wraps around
// Rounding           toward zero at each of the three steps; the mix keeps its low 16 bits
void DeviationWeightedSmooth(uint16_t* image, int32_t width, int32_t height, int32_t maxValue, double sigma,
                             int32_t thresholdPercent);

// The share of full deviation at each pixel, 0 to 1. Full is the highest of kTopDeviationLevel + 1 levels
// above 0 that more than 200 pixels have; without such a level, whatever is above level 0.
//
// radius   pixels, 0 or more; that many at each edge have weight 0
std::vector<double> LocalDeviationMap(const uint16_t* image, int32_t width, int32_t height, int32_t radius);

}  // namespace vastrelline
