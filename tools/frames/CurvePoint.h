// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace vastrelline {

// What a curve makes of a level.
struct CurvePoint {
    int32_t level = 0;
    int32_t value = 0;

    bool operator==(const CurvePoint&) const = default;
};

}  // namespace vastrelline
