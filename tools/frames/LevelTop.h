// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace vastrelline {

// The top of the bits that frames mostly have: 255, 4095 or 65535, the least that is not below a level.
int32_t UsualTop(uint16_t level);

}  // namespace vastrelline
