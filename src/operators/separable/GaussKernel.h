// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <vector>

namespace vastrelline {

// The width of a Gaussian kernel: trunc(2 * ceil(2.5 * sigma)) + 1, always odd.
//
// sigma     standard deviation in pixels
// Returns   1 or less for a sigma that gives no kernel: 0, negative, not a number or beyond 32 bits
int32_t GaussMaskSize(double sigma);

// A Gaussian kernel of GaussMaskSize(sigma) taps whose sum, in ascending order, was divided out.
//
// outSize   receives the number of taps
// sigma     above 0; one that is not but has a width of 1, or whose square is 0, gives taps that are no
//           numbers
// Errors    std::length_error if the width is below 1
std::vector<double> MakeGaussKernel(int32_t& outSize, double sigma);

}  // namespace vastrelline
