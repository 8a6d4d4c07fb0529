// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>

#include "elementary/DoubleDouble.h"

namespace vastrelline {

// 2^(j / 64) for j from 0 on.
extern const std::array<DoubleDouble, 64> kRootPowers;

}  // namespace vastrelline
