// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "elementary/DoubleDouble.h"

namespace vastrelline {

// e^x, the nearest number of the format, ties to even, on every machine.
//
// Special values   1 for either zero, infinity and 0 for the infinities and beyond the range of the format;
//                  not a number for itself
// Errors           none; neither errno nor flags are set
double Exp(double x);
float Exp(float x);

// Exp(x) * factor, a product of doubles, as the nearest float: the same in half the time.
//
// factor   above 0
float ExpTimes(double x, double factor);

// Exp(x) but for an error of less than kNearlyExpError of it.
//
// x   from -708 to 709.7
double NearlyExp(double x);
inline constexpr double kNearlyExpError = 0x1p-50;

// e^x of a number in two parts: the result is significand * 2^exponent.
//
// x          from -708 to 709.7
// Precision  kExpInPairsError of the significand
struct ScaledPower {
    DoubleDouble significand;  // about 0.99 to 2
    int exponent;
};
ScaledPower ExpInPairs(DoubleDouble x);
inline constexpr double kExpInPairsError = 0x1p-70;

}  // namespace vastrelline
