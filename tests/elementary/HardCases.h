// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>

#include "EachFunction.h"

namespace vastrelline {

// Arguments whose results lie all but halfway between two neighbours: where an error of little more than
// nothing rounds to the wrong one.
struct HardCase {
    Elementary function;
    Arguments arguments;
    double result;     // the nearest
    int distanceBits;  // from halfway at least 2^-(distanceBits + 1) and below 2^-distanceBits last places
};
std::span<const HardCase> HardCases();

}  // namespace vastrelline
