// SPDX-License-Identifier: Apache-2.0
#include "profile_text/WholeNumber.h"

#include <algorithm>
#include <bit>
#include <cassert>

namespace vastrelline {

namespace {

constexpr size_t kLimbBits = 32;

}  // namespace

WholeNumber::WholeNumber(uint64_t value) : used_(2) {
    limbs_[0] = static_cast<uint32_t>(value);
    limbs_[1] = static_cast<uint32_t>(value >> kLimbBits);
    DropZeros();
}

size_t WholeNumber::BitCount() const {
    return used_ == 0 ? 0 : used_ * kLimbBits - static_cast<size_t>(std::countl_zero(limbs_[used_ - 1]));
}

bool WholeNumber::operator<(const WholeNumber& other) const {
    if (used_ != other.used_) return used_ < other.used_;
    for (size_t i = used_; i-- > 0;)
        if (limbs_[i] != other.limbs_[i]) return limbs_[i] < other.limbs_[i];
    return false;
}

void WholeNumber::MultiplyAdd(uint32_t factor, uint32_t addend) {
    uint64_t carry = addend;
    for (size_t i = 0; i < used_; ++i) {
        carry += uint64_t{limbs_[i]} * factor;
        limbs_[i] = static_cast<uint32_t>(carry);
        carry >>= kLimbBits;
    }
    if (carry == 0) return;
    assert(used_ < kLimbs);
    limbs_[used_++] = static_cast<uint32_t>(carry);
}

void WholeNumber::MultiplyByPowerOfTen(size_t power) {
    constexpr size_t kStep = 9;
    constexpr uint32_t kTenToTheStep = 1'000'000'000;  // the largest in 32 bits
    for (; power >= kStep; power -= kStep) MultiplyAdd(kTenToTheStep, 0);
    for (; power > 0; --power) MultiplyAdd(10, 0);
}

void WholeNumber::MultiplyByPowerOfTwo(size_t power) {
    if (used_ == 0) return;
    const size_t limbs = power / kLimbBits;
    const size_t places = power % kLimbBits;
    assert(BitCount() + power <= kLimbs * kLimbBits);
    const size_t last = (BitCount() + power - 1) / kLimbBits;
    for (size_t i = last + 1; i-- > 0;) {
        const uint32_t low = i >= limbs + 1 && i - limbs - 1 < used_ ? limbs_[i - limbs - 1] : 0;
        const uint32_t high = i >= limbs && i - limbs < used_ ? limbs_[i - limbs] : 0;
        limbs_[i] = places == 0 ? high : (high << places | low >> (kLimbBits - places));
    }
    used_ = last + 1;
}

void WholeNumber::Subtract(const WholeNumber& other) {
    assert(!(*this < other));
    uint64_t borrow = 0;
    for (size_t i = 0; i < used_; ++i) {
        const uint64_t difference = uint64_t{limbs_[i]} - other.limbs_[i] - borrow;
        limbs_[i] = static_cast<uint32_t>(difference);
        borrow = difference >> 63;
    }
    DropZeros();
}

uint32_t WholeNumber::DivideBy(uint32_t divisor) {
    uint64_t rest = 0;
    for (size_t i = used_; i-- > 0;) {
        rest = rest << kLimbBits | limbs_[i];
        limbs_[i] = static_cast<uint32_t>(rest / divisor);
        rest %= divisor;
    }
    DropZeros();
    return static_cast<uint32_t>(rest);
}

void WholeNumber::DivideByPowerOfTwo(size_t power) {
    if (power == 0) return;
    const bool isHalfOrMore = Bit(power - 1);
    bool isMore = false;
    for (size_t i = 0; i + 1 < power && !isMore; ++i) isMore = Bit(i);
    const bool isOdd = Bit(power);

    const size_t limbs = power / kLimbBits;
    const size_t places = power % kLimbBits;
    for (size_t i = 0; i < used_; ++i) {
        const uint32_t low = i + limbs < used_ ? limbs_[i + limbs] : 0;
        const uint32_t high = i + limbs + 1 < used_ ? limbs_[i + limbs + 1] : 0;
        limbs_[i] = places == 0 ? low : (low >> places | high << (kLimbBits - places));
    }
    DropZeros();
    if (isHalfOrMore && (isMore || isOdd)) MultiplyAdd(1, 1);
}

bool WholeNumber::Bit(size_t place) const {
    return place < used_ * kLimbBits && (limbs_[place / kLimbBits] >> place % kLimbBits & 1) != 0;
}

void WholeNumber::DropZeros() {
    while (used_ > 0 && limbs_[used_ - 1] == 0) --used_;
}

}  // namespace vastrelline
