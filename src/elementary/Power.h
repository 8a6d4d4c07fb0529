// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace vastrelline {

// base^exponent, the nearest number of the format, ties to even, on every machine.
//
// Special values   1 for an exponent of 0 and for a base of 1, whatever the other is, even not a number;
//                  not a number for any other that is none, and for a finite base below 0 with a finite
//                  exponent that is not a whole number. A base of -0, or below 0, has a sign with odd
//                  exponents only. Zeros to a negative exponent give infinity; -1 to an infinite one gives 1
// Errors           none; neither errno nor flags are set
double Pow(double base, double exponent);
float Pow(float base, float exponent);

}  // namespace vastrelline
