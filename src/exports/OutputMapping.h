// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace vastrelline {

// Maps a frame in place through a fixed window, level 2000 and width 10000 over 0..4095: 0 becomes 1228,
// 2000 becomes 2047, 4095 becomes 2905. The window is wider than the pixels' range, which flattens the frame:
// hosts' stored pictures depend on it. Pixels above 4095 take the entry of 4095.
void ApplyOutputMapping(uint16_t* pixels, int32_t width, int32_t height);

}  // namespace vastrelline
