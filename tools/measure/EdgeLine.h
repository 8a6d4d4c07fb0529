// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "frames/Frame.h"

namespace vastrelline {

// A straight edge from the top of a frame to its bottom.
struct EdgeLine {
    double place = 0.0;  // column at row 0; pixel centres are whole
    double slope = 0.0;  // columns per row
    bool isBrightRight = true;

    double At(double row) const { return place + slope * row; }
};

// Whether levels change more from row to row than from column to column.
bool IsLyingEdge(const Frame& frame);

// The line through the middle of the steepest rise of each row; rows whose rise lies elsewhere are left out.
//
// frame    at least 20 x 20 pixels
// Errors   CannotMeasure: no edge, not straight, or so upright that it meets the pixels of all rows alike
EdgeLine FindEdgeLine(const Frame& frame);

}  // namespace vastrelline
