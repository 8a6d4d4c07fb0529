// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <limits>

namespace vastrelline {

// A double as a 32-bit integer, truncated toward zero. What has no such integer (not a number, infinite,
// outside 32 bits) gives INT32_MIN, as the conversion instruction of the x86 does. The one rule for every
// conversion in the library.
inline int32_t TruncateToInt32(double value) {
    // Both bounds are exact, and a comparison with a value that is not a number is false.
    if (value > -2147483649.0 && value < 2147483648.0) return static_cast<int32_t>(value);
    return std::numeric_limits<int32_t>::min();
}

// The low 16 bits of a 32-bit integer: what a pixel or a table entry of 16 bits keeps of it.
inline uint16_t LowBits16(int32_t value) { return static_cast<uint16_t>(static_cast<uint32_t>(value)); }

// Sums and differences that wrap like the target's 32-bit registers.
inline int32_t WrappingAdd(int32_t a, int32_t b) {
    return static_cast<int32_t>(static_cast<uint32_t>(a) + static_cast<uint32_t>(b));
}
inline int32_t WrappingSubtract(int32_t a, int32_t b) {
    return static_cast<int32_t>(static_cast<uint32_t>(a) - static_cast<uint32_t>(b));
}

}  // namespace vastrelline
