#pragma once

namespace vastrelline {

// Sine and cosine of an angle in radians, the nearest doubles, ties to even, on every machine.
//
// Special values   not a number for the infinities and for itself; the sine of -0 is -0
// Errors           none; neither errno nor flags are set
double Sin(double x);
double Cos(double x);

}  // namespace vastrelline
