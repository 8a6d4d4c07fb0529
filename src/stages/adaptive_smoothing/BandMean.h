// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace vastrelline {

// Mean over a square window of 2 * radius + 1 pixels, for a band of rows, in doubles.
//
// source        width * height elements, rows from the top, stride width
// destination   as many; must not overlap; all of it is written, 0 outside the band
// top, bottom   first and last row of the band, within the frame; an empty band gives zeros
// Edges         row pass: the nearest edge pixel is repeated. Column pass: rows outside the band count as 0
// Displacement  the column pass sees the row means moved down by `top` rows, those pushed past `bottom` lost.
//               With top equal to radius, row y thus is the mean over rows y - 2 * radius to y. Results
//               depend on it: it stays
// Order         running sums: what leaves the window is taken off first, then what enters is added
void BandMeanPixels(const uint16_t* source, double* destination, int32_t width, int32_t height, int32_t top,
                    int32_t bottom, int32_t radius);

// The same of an image of doubles.
void BandMeanDoubles(const double* source, double* destination, int32_t width, int32_t height, int32_t top,
                     int32_t bottom, int32_t radius);

}  // namespace vastrelline
