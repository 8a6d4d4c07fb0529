// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "elementary/WideNumber.h"

namespace vastrelline {

// What the definitions of the elementary functions compute with: magnitude * 2^exponent, less than 0 where it
// is so marked.
struct WideValue {
    WideNumber magnitude;
    int exponent = 0;
    bool isNegative = false;
};

// A finite double, magnitude * 2^exponent with nothing cut off.
struct DoubleParts {
    uint64_t magnitude;
    int exponent;
    bool isNegative;
};
DoubleParts SplitDouble(double x);

// The nearest number of the format, ties to even, rounded once also where it is subnormal; infinity beyond
// the largest, and a zero of either sign. What lies within 2^-192 of itself from a number of half a last
// place is taken to be that number: so an exact tie is seen for all that was cut off on its way, and no other
// value of an elementary function comes that near to one.
//
// value   right to some 200 bits
double RoundToDouble(const WideValue& value);
float RoundToFloat(const WideValue& value);

}  // namespace vastrelline
