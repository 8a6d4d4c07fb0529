// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <vector>

namespace vastrelline {

// The 8-bit entries of a window over the levels 0..topValue.
//
// centre, width   of the window, in levels
// curve           1: logistic. 2: logarithmic, in 32-bit floats. 3: a power of 1 / 2.2. 4: a power of 2.2.
//                 Any other: linear. Curves 3 and 4 are 0 below the window
// invert          not 0: every entry becomes 255 - entry
// Rounding        the linear curve adds 0.5, the logarithmic one 1.5; all are clamped to 0..255, then
//                 truncated. What is not a number gives 0
std::vector<uint8_t> BuildWindowTable(int32_t topValue, int32_t centre, int32_t width, int32_t curve,
                                      int32_t invert);

}  // namespace vastrelline
