// SPDX-License-Identifier: Apache-2.0
#include "operators/tile_equalise/ClaheEqualize.h"

#include "operators/tile_equalise/ClaheTiles.h"

namespace vastrelline {

namespace {

bool IsMultiple(uint32_t size, uint32_t tiles) { return tiles == 0 ? size == 0 : size % tiles == 0; }

}  // namespace

// Levels beyond maxValue need no care: what is looked up by level is there for all 16 bits.
int32_t ClaheEqualize(uint16_t* pixels, uint32_t width, uint32_t height, uint16_t min, uint16_t max,
                      uint32_t tilesX, uint32_t tilesY, uint32_t bins, double maxSlope,
                      int32_t /*maxValue*/) {
    if (!IsMultiple(width, tilesX)) return kClaheWidthUneven;
    if (!IsMultiple(height, tilesY)) return kClaheHeightUneven;
    return RunClaheTiles({.pixels = pixels,
                          .width = width,
                          .height = height,
                          .padRight = 0,
                          .padBottom = 0,
                          .min = min,
                          .max = max,
                          .tilesX = tilesX,
                          .tilesY = tilesY,
                          .bins = bins,
                          .clip = 0},
                         maxSlope);
}

}  // namespace vastrelline
