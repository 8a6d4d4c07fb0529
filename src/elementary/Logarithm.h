// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "elementary/DoubleDouble.h"

namespace vastrelline {

// The logarithm to the base e, the nearest number of the format, ties to even, on every machine.
//
// Special values   +0 for 1, -infinity for either zero, infinity for itself; not a number for less than 0 and
//                  for not a number
// Errors           none; neither errno nor flags are set
double Log(double x);
float Log(float x);

// The same in two parts.
//
// x          finite and above 0
// Precision  kLogInPairsError of the result
DoubleDouble LogInPairs(double x);
inline constexpr double kLogInPairsError = 0x1p-74;

}  // namespace vastrelline
