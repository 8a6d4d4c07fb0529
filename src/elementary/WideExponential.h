// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "elementary/WideNumber.h"
#include "elementary/WideValue.h"

namespace vastrelline {

// The exponential function and the natural logarithm by their series, to some 250 bits: their definition,
// from which others follow. Slow, tens of microseconds.

// e^x, with a magnitude from 1 to 2.
//
// x   below 2^20 either way, its exponent 0; what is left out behind the last of its bits is lost in the
//     result, too
WideValue WideExp(const WideValue& x);

// The logarithm to the base e, with the exponent 0.
//
// x   finite and above 0
WideValue WideLog(double x);

// x with the exponent 0: bits behind the last one of a wide number are cut off.
//
// x   below 2^64 either way
WideValue WideFromDouble(double x);

}  // namespace vastrelline
