// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace vastrelline {

// The largest pixel that 16 bits hold.
inline constexpr int32_t kTopPixel = 0xFFFF;

// Frames of this many pixels or more are refused: a buffer of doubles for one would pass 32 bits in bytes.
inline constexpr int64_t kPixelCountLimit = int64_t{1} << 29;

// Whether a frame would reach kPixelCountLimit with so many columns and rows more. Without a column or a row
// it does not.
constexpr bool IsBeyondPixelLimit(int64_t width, int64_t height, int64_t padWidth = 0,
                                  int64_t padHeight = 0) {
    const int64_t paddedWidth = width + padWidth;
    const int64_t paddedHeight = height + padHeight;
    if (paddedWidth <= 0 || paddedHeight <= 0) return false;
    // As a division, for the product of two sides may leave 64 bits.
    return paddedHeight > (kPixelCountLimit - 1) / paddedWidth;
}

}  // namespace vastrelline
