// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace vastrelline {

// The Gaussian taper of a Savitzky-Golay kernel: exp(-4) at the ends of an odd mask, then divided by its sum.
//
// weights     receives `mask` taps
// mask        taps, 2 or more; 1 gives a tap that is no number
// Precision   the exponential is taken in single precision, the sum in double
void SavgolWindow(double* weights, int32_t mask);

// The taps of the least-squares smoothing filter: the value at the middle of the polynomial that fits the
// window best. From the leftmost tap to the rightmost.
//
// coefficients   receives `mask` taps, one more for an even mask
// mask           taps, 1 or more
// order          degree of the polynomial; one that the window cannot carry, or a singular matrix, gives 1.0
//                for every tap
void SavgolKernel(double* coefficients, int32_t mask, int32_t order);

// The general builder: taps for the derivative of the best polynomial over `left` pixels to the left, the
// middle one, and `right` to the right.
//
// coefficients   receives `tapCount` taps, those that are not needed 0, in wrap-around order: position 0,
//                then -1 down to -left, and from the end backwards 1 up to right
// derivative     0 smooths
// Returns        1, or 0 if the arguments or the matrix are unusable; then the taps are 0
// Not a number   taps of a high degree over a wide window, whose powers leave the range of doubles
[[nodiscard]] int32_t SavgolCoefficients(double* coefficients, int32_t tapCount, int32_t left, int32_t right,
                                         int32_t derivative, int32_t order);

// Changes wrap-around order into that from the leftmost tap to the rightmost, in place.
//
// coefficients   tapCount = left + right + 1 taps
void UnwrapKernel(double* coefficients, int32_t tapCount, int32_t left, int32_t right);

}  // namespace vastrelline
