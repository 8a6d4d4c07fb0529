// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "frames/Frame.h"

namespace vastrelline {

enum class Corner : uint8_t { TopLeft, TopRight, BottomLeft, BottomRight };

inline constexpr std::array<Corner, 4> kCorners{Corner::TopLeft, Corner::TopRight, Corner::BottomLeft,
                                                Corner::BottomRight};

// "top left"
std::string_view CornerName(Corner corner);

// A corner of the frame whose pixels are all of one level, as a sensor's rounded corners are, which no
// radiation reaches.
struct FlatCorner {
    int32_t width = 0;  // pixels along the frame's upper or lower edge; 0: the corner is not flat
    int32_t height = 0;
    uint16_t level = 0;
};

// Looks from the corner along both edges. What takes more than a third of an edge is no corner but a dark
// side, and what takes a single pixel is chance.
FlatCorner FindFlatCorner(const Frame& frame, Corner corner);

}  // namespace vastrelline
