// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace vastrelline {

// ClaheEqualize's outcome. A refusal leaves the frame as it was; no caller in the chains asks.
enum ClaheStatus : int32_t {
    kClaheFinished = 0,       // also for a slope of exactly 1.0, which leaves the frame as it was
    kClaheWidthUneven = -3,   // the width is not a multiple of tilesX
    kClaheHeightUneven = -4,  // the height is not a multiple of tilesY
    // -5 was for a `max` beyond 16 bits, which its type rules out.
    kClaheNoRange = -6,      // `min` is not below `max`
    kClaheTooFewTiles = -7,  // fewer than two tiles on an axis
    kClaheTooManyBins = -8,  // the tiles' curves would take more memory than a profile may ask for
};

// Contrast-limited adaptive histogram equalisation, in place. Each tile's clipped histogram becomes a curve,
// and each pixel takes the mean of the four nearest curves, weighted by its distance to their tiles' centres.
//
// pixels           width * height pixels; whole multiples of tilesX and tilesY
// min, max         the range of the pixels and of the result; a pixel outside counts as the nearer end
// tilesX, tilesY   tiles on each axis, 2 or more
// bins             bins of a tile's histogram; 0 means 128. So many that a tile's bins take more than 4 MiB,
//                  or those of all tiles 4 GiB, give kClaheTooManyBins
// maxSlope         bins are clipped at this many times the mean of a tile's bins; 0 or below, or not a
//                  number, clips at 16384; beyond 32 bits no bin is clipped
// Edges            the outer half of the outer tiles knows one curve on that side
// Odd tile edges   the halves of an odd edge are rounded down, and each row of tiles is taken as starting
//                  where the one before it ended: one pixel too far left each time; pixels in the gaps and
//                  the last row stay as they are. Results depend on it, so it stays
// Arithmetic       unsigned 32-bit integers that wrap, divided by the tile's pixels, rounded down
// maxValue         without effect
// Returns          a ClaheStatus, the first that holds in the order of their list
// Errors           std::bad_alloc; the frame may then be equalised in part
int32_t ClaheEqualize(uint16_t* pixels, uint32_t width, uint32_t height, uint16_t min, uint16_t max,
                      uint32_t tilesX, uint32_t tilesY, uint32_t bins, double maxSlope, int32_t maxValue);

}  // namespace vastrelline
