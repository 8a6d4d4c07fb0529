// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace vastrelline {

// What a division of sums by one divisor becomes.
enum class DivisionRule {
    Shift,    // sum >> shift: the divisor is a power of two
    Product,  // (sum * multiplier) >> shift, for sums below 2^31
    // With p = (sum * multiplier) >> 32 it is (p + ((sum - p) >> 1)) >> shift, for every sum of 32 bits.
    WideProduct
};

// The division of sums of weighted levels by their weights, rounded down.
struct SumDivision {
    DivisionRule rule;
    uint32_t multiplier;
    uint32_t shift;
};

// The cheapest exact division by `divisor`, 1 to 2^31, for sums of up to `divisor` times `max`. What of them
// does not fit 32 bits is lost before they are divided.
SumDivision MakeSumDivision(uint32_t divisor, uint16_t max);

// For the ends of vectors, and the definition of what vectors do.
inline uint32_t DivideSum(uint32_t sum, const SumDivision& division) {
    if (division.rule == DivisionRule::Shift) return sum >> division.shift;
    const uint64_t product = uint64_t{sum} * division.multiplier;
    if (division.rule == DivisionRule::Product) return static_cast<uint32_t>(product >> division.shift);
    const auto high = static_cast<uint32_t>(product >> 32U);
    return (high + ((sum - high) >> 1U)) >> division.shift;
}

}  // namespace vastrelline
