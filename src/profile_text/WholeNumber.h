// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace vastrelline {

// A whole number of 0 or more and below 2^3840: enough to say which double is nearest to a decimal number,
// and which digits a double has. Takes no memory from anywhere; larger results are ours and assert.
class WholeNumber {
public:
    static constexpr size_t kLimbs = 120;

    explicit WholeNumber(uint64_t value = 0);

    size_t BitCount() const;  // 0 for 0
    bool operator<(const WholeNumber& other) const;

    void MultiplyAdd(uint32_t factor, uint32_t addend);
    void MultiplyByPowerOfTen(size_t power);
    void MultiplyByPowerOfTwo(size_t power);
    // A number that is not larger than this one.
    void Subtract(const WholeNumber& other);
    // By a divisor above 0, rounded down. Returns what is left.
    uint32_t DivideBy(uint32_t divisor);
    // To the nearest, ties to even.
    void DivideByPowerOfTwo(size_t power);

private:
    bool Bit(size_t place) const;
    void DropZeros();

    std::array<uint32_t, kLimbs> limbs_{};  // the lowest first
    size_t used_ = 0;                       // all above are 0
};

}  // namespace vastrelline
