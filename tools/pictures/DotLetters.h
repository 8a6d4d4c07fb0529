// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace vastrelline {

inline constexpr int32_t kDotColumns = 5;
inline constexpr int32_t kDotRows = 7;

// A letter of 5 by 7 dots.
struct DotLetter {
    uint8_t columns[kDotColumns];  // from the left; the lowest bit is the top row

    // Inside of the letter only.
    constexpr bool HasDot(int32_t column, int32_t row) const { return (columns[column] >> row & 1) != 0; }
};

// The dots of a printable ASCII character; those of a box for any other byte.
const DotLetter& DotsOf(char letter);

}  // namespace vastrelline
