// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>

namespace vastrelline {

// Cuts the bins of a tile's histogram to a limit and spreads what is cut over all bins, as evenly as the
// limit lets them take it. What no bin can take is lost.
//
// block   the histogram's bins, not none; changed in place
// clip    the limit, 1 or more
void ClipHistogram(std::span<uint32_t> block, uint32_t clip);

// Turns a tile's histogram into its curve, in place: the share of the tile's pixels up to each bin, scaled to
// min..max.
//
// pixelsPerTile   not 0; the scale is held as a 32-bit float
// Rounding        truncation, then at most `max`; what does not fit into 32 bits gives `max`
void MapHistogram(std::span<uint32_t> block, uint16_t min, uint16_t max, uint32_t pixelsPerTile);

}  // namespace vastrelline
