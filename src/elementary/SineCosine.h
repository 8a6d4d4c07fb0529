// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "elementary/DoubleDouble.h"

namespace vastrelline {

// Sine and cosine of an angle in radians, the nearest doubles, ties to even, on every machine.
//
// Special values   not a number for the infinities and for itself; the sine of -0 is -0
// Errors           none; neither errno nor flags are set
double Sin(double x);
double Cos(double x);

// The same in two parts.
//
// x          up to 2^15 either way; beyond 2^-20, no result is nearer to 0 than 2^-20
// Precision  kSinInPairsError of the result
DoubleDouble SinInPairs(double x);
DoubleDouble CosInPairs(double x);
inline constexpr double kSinInPairsError = 0x1p-63;

}  // namespace vastrelline
