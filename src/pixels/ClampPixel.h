// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstdint>

#include "pixels/Truncate.h"

namespace vastrelline {

// A number as a pixel: clamped to maxValue from above, then to 0 from below. So a maxValue below 0 gives 0;
// of one beyond 16 bits the low 16 bits of the pixel are kept.
inline uint16_t ClampToPixel(int32_t value, int32_t maxValue) {
    return LowBits16(std::max(std::min(value, maxValue), 0));
}

}  // namespace vastrelline
