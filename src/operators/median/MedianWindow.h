// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace vastrelline {

// Medians over a window that moves over a frame. Each pixel becomes the middle value of the window around it:
// of `count` values in ascending order the one with index count / 2.
//
// pixels, source, destination   width * height pixels each
// mask    width of the window in pixels, `half` is mask / 2; a window that fits nowhere changes nothing
// Edges   pixels closer than `half` to an edge that the window would cross are not written
// Return  1 always
// Errors  none; an empty frame does nothing
//
// A mask below 3 acts as 3 and an even one as the next odd one in the first three functions. The last two
// take the mask as it comes: an even window reaches mask / 2 pixels up and left and one less down and right,
// and a mask of 0 or less changes nothing.

// Windows of mask x 1 pixels, in place.
int32_t MedianRows(uint16_t* pixels, int32_t width, int32_t height, int32_t mask);

// Windows of 1 x mask pixels, in place.
int32_t MedianColumns(uint16_t* pixels, int32_t width, int32_t height, int32_t mask);

// Square windows; writes the rows from `firstRow` to `lastRow`, both inclusive, of `destination`, which must
// not overlap `source`. Rows closer than `half` to the upper or lower edge are not written either.
int32_t MedianSquareRange(const uint16_t* source, uint16_t* destination, int32_t width, int32_t height,
                          int32_t mask, int32_t firstRow, int32_t lastRow);

// Square windows, in place.
int32_t MedianSquare(uint16_t* pixels, int32_t width, int32_t height, int32_t mask);

// Square windows; pixels that have no window are copied, so that all of `destination` is written. `source`
// and `destination` must not overlap.
int32_t MedianSquareToBuffer(const uint16_t* source, uint16_t* destination, int32_t width, int32_t height,
                             int32_t mask);
int32_t Median3x3ToBuffer(const uint16_t* source, uint16_t* destination, int32_t width, int32_t height);

// The mask that the first three functions work with.
int32_t WidenMedianMask(int32_t mask);

}  // namespace vastrelline
