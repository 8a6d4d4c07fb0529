// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace vastrelline {

// The hyperbolic tangent, the nearest double, ties to even, on every machine. Slow, tens of microseconds.
//
// Special values   a zero for itself, 1 with the sign of an infinity; not a number for itself
// Errors           none; neither errno nor flags are set
double Tanh(double x);

}  // namespace vastrelline
