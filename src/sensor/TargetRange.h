// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "operators/curves/TonedFrame.h"

namespace vastrelline {

// Range normalisation: estimates the range of levels that the frame's signal covers and, if that is narrower
// than the target, multiplies the whole frame up, about 0, so that the range reaches the target.
//
// frame          width * height pixels, changed in place; made for 12 bits: results lie in 0..4095, and
//                pixels of 4096 or more count as level 4095 in the estimate
// targetRange    levels; not above the estimated range, which is 200 or more: the frame stays as it is
// minimumValue   a low cut below it is raised by it (added, not replaced)
// maxCut         fraction of the pixels that each of 19 steps from the top takes in
// minCut         fraction of the darkest pixels that the low cut leaves out
// Unchanged      a black frame, and a minCut that no count passes (1 or more)
// Arithmetic     32-bit floats
void ApplyTargetRange(uint16_t* frame, int32_t width, int32_t height, int32_t targetRange,
                      int32_t minimumValue, float maxCut, float minCut);
void ApplyTargetRange(TonedFrame& frame, int32_t targetRange, int32_t minimumValue, float maxCut,
                      float minCut);

// Isodata threshold (Ridler and Calvard, 1978) between the dark and the bright part of a set of values,
// approached by half steps.
//
// values     width * height of them; the first is left out. Values above `bins` do not count
// epsilon    the search ends once the two means differ by no more than this fraction of their mean
// low, high  the levels looked at, both inclusive, 0..bins
int32_t FindIsodataThreshold(const uint16_t* values, int32_t width, int32_t height, int32_t bins,
                             float epsilon, int32_t low, int32_t high);

}  // namespace vastrelline
