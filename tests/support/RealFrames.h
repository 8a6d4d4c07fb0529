// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "support/Frames.h"

namespace vastrelline {

// Radiographs as a sensor delivers them, from tests/data/frames: 12 bits, and the more radiation a pixel took
// up, the higher its level. They throw where the data is missing, and on Windows (kReadsPng).
Frame ReadBitewing();    // 1300 x 1668
Frame ReadPeriapical();  // 1012 x 1316

// A piece of the bitewing with a tooth in it, which takes less time than the whole; up to its size.
Frame ReadPieceOfBitewing(int32_t width, int32_t height);

// An eighth of every level, rounded down: a frame of too little exposure.
Frame Weakened(Frame frame);

// The two bottom corners black, as those of an intra-oral sensor are: nothing reaches it there. The radius is
// 150 pixels; a pixel belongs to the corner if its middle does.
Frame WithBlackCorners(Frame frame);

// All of them, the weakened and the cornered ones included, with a name for messages.
std::vector<std::pair<std::string, Frame>> ReadRealFrames();

}  // namespace vastrelline
