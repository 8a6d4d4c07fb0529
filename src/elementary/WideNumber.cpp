// SPDX-License-Identifier: Apache-2.0
#include "elementary/WideNumber.h"

#include <algorithm>
#include <bit>
#include <cassert>

namespace vastrelline {

namespace {

constexpr int kLimbBits = 32;
constexpr size_t kFractionLimbs = WideNumber::kFractionBits / kLimbBits;

}  // namespace

WideNumber::WideNumber(uint64_t whole) {
    limbs_[kFractionLimbs] = static_cast<uint32_t>(whole);
    limbs_[kFractionLimbs + 1] = static_cast<uint32_t>(whole >> kLimbBits);
}

uint64_t WideNumber::Whole() const {
    return (uint64_t{limbs_[kFractionLimbs + 1]} << kLimbBits) | limbs_[kFractionLimbs];
}

WideNumber WideNumber::Fraction() const {
    WideNumber fraction = *this;
    std::fill(fraction.limbs_.begin() + kFractionLimbs, fraction.limbs_.end(), 0U);
    return fraction;
}

int WideNumber::TopBit() const {
    assert(!IsZero());
    size_t limb = kLimbs - 1;
    while (limbs_[limb] == 0) --limb;
    return static_cast<int>(limb) * kLimbBits + static_cast<int>(std::bit_width(limbs_[limb])) - 1 -
           kFractionBits;
}

bool WideNumber::IsZero() const {
    return std::all_of(limbs_.begin(), limbs_.end(), [](uint32_t limb) { return limb == 0; });
}

WideNumber WideNumber::operator+(const WideNumber& other) const {
    WideNumber sum;
    uint64_t carry = 0;
    for (size_t i = 0; i < kLimbs; ++i) {
        carry += uint64_t{limbs_[i]} + other.limbs_[i];
        sum.limbs_[i] = static_cast<uint32_t>(carry);
        carry >>= kLimbBits;
    }
    return sum;
}

WideNumber WideNumber::operator-(const WideNumber& other) const {
    WideNumber difference;
    uint64_t borrow = 0;
    for (size_t i = 0; i < kLimbs; ++i) {
        const uint64_t left = uint64_t{limbs_[i]} - other.limbs_[i] - borrow;
        difference.limbs_[i] = static_cast<uint32_t>(left);
        borrow = left >> (2 * kLimbBits - 1);
    }
    assert(borrow == 0);
    return difference;
}

WideNumber WideNumber::operator*(const WideNumber& other) const {
    std::array<uint32_t, 2 * kLimbs> product{};
    for (size_t i = 0; i < kLimbs; ++i) {
        uint64_t carry = 0;
        for (size_t j = 0; j < kLimbs; ++j) {
            carry += uint64_t{limbs_[i]} * other.limbs_[j] + product[i + j];
            product[i + j] = static_cast<uint32_t>(carry);
            carry >>= kLimbBits;
        }
        product[i + kLimbs] = static_cast<uint32_t>(carry);
    }
    WideNumber result;
    std::copy_n(product.begin() + kFractionLimbs, kLimbs, result.limbs_.begin());
    return result;
}

// Bit by bit, as on paper: first as many bits of the dividend as are surely below the divisor.
WideNumber WideNumber::operator/(const WideNumber& other) const {
    WideNumber quotient;
    if (IsZero()) return quotient;
    const int length = TopBit() + kFractionBits + 1;
    const int taken = std::min(other.TopBit() + kFractionBits, length);
    WideNumber rest = Shifted(taken - length);
    for (int bit = length - taken - 1; bit >= -kFractionBits; --bit) {
        rest = rest.Shifted(1);
        if (bit >= 0) {
            const auto limb = static_cast<size_t>(bit / kLimbBits);
            rest.limbs_[0] |= (limbs_[limb] >> (bit % kLimbBits)) & 1U;
        }
        quotient = quotient.Shifted(1);
        if (rest < other) continue;
        rest = rest - other;
        quotient.limbs_[0] |= 1U;
    }
    return quotient;
}

WideNumber WideNumber::DividedBy(uint32_t divisor) const {
    assert(divisor > 0);
    WideNumber quotient;
    uint64_t rest = 0;
    for (size_t i = kLimbs; i-- > 0;) {
        rest = (rest << kLimbBits) | limbs_[i];
        quotient.limbs_[i] = static_cast<uint32_t>(rest / divisor);
        rest %= divisor;
    }
    return quotient;
}

WideNumber WideNumber::Shifted(int places) const {
    const int whole = places >= 0 ? places / kLimbBits : -((kLimbBits - 1 - places) / kLimbBits);
    const int left = places - whole * kLimbBits;  // 0 to 31
    const auto limbAt = [&](int i) {
        return i >= 0 && i < static_cast<int>(kLimbs) ? uint64_t{limbs_[static_cast<size_t>(i)]} : 0;
    };
    WideNumber shifted;
    for (int i = 0; i < static_cast<int>(kLimbs); ++i) {
        const uint64_t pair = (limbAt(i - whole) << kLimbBits) | limbAt(i - whole - 1);
        shifted.limbs_[static_cast<size_t>(i)] = static_cast<uint32_t>((pair << left) >> kLimbBits);
    }
    return shifted;
}

bool WideNumber::operator<(const WideNumber& other) const {
    return std::lexicographical_compare(limbs_.rbegin(), limbs_.rend(), other.limbs_.rbegin(),
                                        other.limbs_.rend());
}

}  // namespace vastrelline
