// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace vastrelline {

// A number of 0 or more and below 2^64, with 320 bits behind the point, made of whole numbers of 32 bits: no
// processor, compiler or rounding mode has a say in it. What lies behind its last bit is cut off.
class WideNumber {
public:
    static constexpr int kFractionBits = 320;
    static constexpr int kWholeBits = 64;
    static constexpr size_t kLimbs = (kFractionBits + kWholeBits) / 32;
    using Limbs = std::array<uint32_t, kLimbs>;  // the lowest first

    WideNumber() = default;  // 0
    explicit WideNumber(uint64_t whole);
    constexpr explicit WideNumber(const Limbs& limbs) : limbs_(limbs) {}

    uint64_t Whole() const;
    // Behind the point only.
    WideNumber Fraction() const;
    // The highest bit that is set: e for a number from 2^e on and below 2^(e + 1); asserts that there is one.
    int TopBit() const;
    bool IsZero() const;

    // Sums and products wrap at 2^64; a difference asserts that it is not below 0.
    WideNumber operator+(const WideNumber& other) const;
    WideNumber operator-(const WideNumber& other) const;
    WideNumber operator*(const WideNumber& other) const;
    // The other one is above 0, and the quotient below 2^64.
    WideNumber operator/(const WideNumber& other) const;
    // By a divisor above 0 and below 2^32.
    WideNumber DividedBy(uint32_t divisor) const;
    // Times 2^places, to either side.
    WideNumber Shifted(int places) const;

    bool operator<(const WideNumber& other) const;

private:
    Limbs limbs_{};
};

}  // namespace vastrelline
