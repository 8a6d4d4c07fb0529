// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace vastrelline {

inline constexpr double kPi = 3.141592653589793;
inline constexpr double kDegreesOfTurn = 360.0;

// Sine and cosine from additions, multiplications and divisions alone, whose results every machine must agree
// on; the standard library's may differ in the last bit. Error below 1e-15 for arguments of less than one
// turn.
//
// turns   the angle in whole turns: 0.25 is a right angle. Finite
double SineOfTurns(double turns);
double CosineOfTurns(double turns);

// sin(pi x) / (pi x), 1 at 0: what averaging over a length of 1 leaves of a wave of x cycles per length.
double WaveLeftByAverage(double x);

}  // namespace vastrelline
