// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

namespace vastrelline {

// How a stretch curve divides the levels: a dark tail up to `left`, a straight ramp between `left` and
// `right`, a bright tail from `right` on; and how many output levels each of the three gets.
struct StretchShape {
    int32_t left;        // levels, -1..65536 both
    int32_t right;       // may be `left`, see BuildStretchCurve, or lie below it
    double leftWeight;   // steepness of the tails' logistics
    double rightWeight;  //
    int32_t leftLen;     // output levels; 0 or less leaves the dark tail at its own height
    int32_t midLen;      // 0 gives the ramp a slope of 1
    int32_t rightLen;    // 0 or less leaves the bright tail at its own height
};

// Builds a curve over the levels minLevel..maxLevel of a frame, of maxValue + 1 entries of 32 bits.
//
// maxValue        top level of the table, 0..65535
// Dark tail       half of a logistic; its entries are rounded to the nearest, all others toward zero
// Bright tail     half of a logistic on top of the ramp; it stops short of the top of the range
// Below minLevel  the entry of minLevel, not rounded; above maxLevel the bright tail's last entry
// Special case    `left` equal to `right`: the ramp's slope is infinite, and what follows from it has no
//                 integer. Entries up to `left` are as ever, those up to maxLevel come out as 0
// Errors          none: entries may lie outside 16 bits, of which a frame keeps the low ones
std::vector<int32_t> BuildStretchCurve(int32_t minLevel, int32_t maxLevel, int32_t maxValue,
                                       const StretchShape& shape);

// The same as a function of the levels 0..maxValue.
std::function<int32_t(int32_t level)> MakeStretchCurve(int32_t minLevel, int32_t maxLevel, int32_t maxValue,
                                                       const StretchShape& shape);

// The table over the levels of a frame.
//
// pixels   width * height of them
std::vector<int32_t> BuildStretchCurve(const uint16_t* pixels, int32_t width, int32_t height,
                                       int32_t maxValue, int32_t left, int32_t right, double leftWeight,
                                       double rightWeight, int32_t leftLen, int32_t midLen, int32_t rightLen);

}  // namespace vastrelline
