// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <vector>

namespace vastrelline {

// A ramp around a centre: from 0 at half a window below it to the top of the output at half a window above,
// flat outside.
struct WindowCurve {
    int32_t highEdge;             // the level at which the ramp ends; it can lie outside the table
    std::vector<uint16_t> table;  // one entry for each level from 0 to the frame's highest: low 16 bits
    int32_t lowEdge;              // the level at which the ramp begins
    int32_t outputRange;          // may pass 16 bits

    int32_t ValueAt(int32_t level) const;
};

// Builds the curve for a frame, whose pixels say only how far the table goes.
//
// windowWidth   levels; half of it is rounded to the nearest, halves up
// centre        a level; the window's ends wrap in 32 bits
// outputRange   the output at the ramp's end and above
// Rounding      truncation toward zero, within 0..outputRange
WindowCurve BuildWindowCurve(const uint16_t* pixels, int32_t width, int32_t height, int32_t windowWidth,
                             int32_t centre, int32_t outputRange);

// The same without a table.
WindowCurve MakeWindowCurve(int32_t windowWidth, int32_t centre, int32_t outputRange);

}  // namespace vastrelline
