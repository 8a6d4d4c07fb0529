// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>

#include "elementary/DoubleDouble.h"

namespace vastrelline {

// sin(j * pi / 64) for j from 0 on, a whole turn.
extern const std::array<DoubleDouble, 128> kSines;

}  // namespace vastrelline
