// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>

namespace vastrelline {

// Evens out a raw frame, in place: every pixel gets an exponent of its own from the mean brightness of its
// neighbourhood, so that dark regions are lifted and bright ones lowered, while 0 stays 0 and the brightest
// level stays. A frame whose brightest level is 0 or 1 stays as it is.
//
// frame      width * height pixels
// maskSize   side of the neighbourhood in pixels
// strength   without effect: the base of the exponents is fixed at 1.5
// Order      32-bit floats but for the last product, which is in doubles; truncated
void ApplySpotCorrection(uint16_t* frame, int32_t maskSize, int32_t width, int32_t height, float strength);

// inverse[i] = peak - frame[i], in 16 bits, for `count` pixels of each; they may be the same.
void InvertToBuffer(const uint16_t* frame, uint16_t* inverse, uint16_t peak, size_t count);

// Mean of a square around each pixel, from -r to +r in both directions with r = maskSize / 2, divided by
// maskSize squared, whatever the square's own size.
//
// output, input   width * height pixels each; must not overlap
// maskSize        below 1: the input is copied
// Edges           a band of r + 1 pixels at the left and the top and of r at the right and the bottom copies
//                 the input; results depend on the asymmetry
// Rounding        down
void SquareBoxMean(uint16_t* output, const uint16_t* input, int32_t maskSize, int32_t width, int32_t height);

}  // namespace vastrelline
