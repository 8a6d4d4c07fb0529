// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <bit>
#include <cmath>
#include <cstdint>

namespace vastrelline {

// Whether the nearest float to a number is that to its nearest double x. If not, x may lie in the middle of
// two floats while the number itself does not.
inline bool HasOneFloat(double x) {
    constexpr double kSmallestNormal = 0x1p-126;
    constexpr double kAllZero = 0x1p-151;  // below a quarter of the smallest float
    constexpr uint64_t kDropped = (uint64_t{1} << 29) - 1;
    constexpr uint64_t kMiddle = uint64_t{1} << 28;
    if (std::abs(x) < kSmallestNormal) return std::abs(x) < kAllZero;
    return (std::bit_cast<uint64_t>(x) & kDropped) != kMiddle;
}

// The nearest float to a number above 0, where every number within a share `error` of x has that one.
inline bool TellFloat(double x, double error, float& nearest) {
    nearest = static_cast<float>(x * (1 - error));
    return nearest == static_cast<float>(x * (1 + error));
}

// 2^exponent as a double, for exponents of normal numbers.
inline double PowerOfTwo(int exponent) {
    constexpr int kBias = 1023;
    constexpr int kFractionBits = 52;
    return std::bit_cast<double>(static_cast<uint64_t>(exponent + kBias) << kFractionBits);
}

}  // namespace vastrelline
