// SPDX-License-Identifier: Apache-2.0
#include "elementary/WideExponential.h"

#include <bit>
#include <cassert>
#include <cstdint>

namespace vastrelline {

namespace {

constexpr WideNumber kLogOfTwo({0x6DEBAC98, 0xE7B87620, 0x8BAAFA2B, 0x8A0D175B, 0x7298B62D, 0x40F34326,
                                0x03F2F6AF, 0xC9E3B398, 0xD1CF79AB, 0xB17217F7, 0, 0});
constexpr WideNumber kLogsInOne({0xAA2ED9AC, 0xBC3887EE, 0xA342648F, 0x164A2CD9, 0xBAD2B4B1, 0xD6AEF551,
                                 0xD23A7D11, 0x7D0FFDA0, 0xB82FE177, 0x71547652, 1, 0});

// How often log(2) goes into a number.
uint64_t CountLogsOfTwo(const WideNumber& magnitude) {
    const uint64_t count = (magnitude * kLogsInOne).Whole();
    // What was cut off may have cost one.
    return magnitude - WideNumber(count) * kLogOfTwo < kLogOfTwo ? count : count + 1;
}

// 1 + x + x^2 / 2 + x^3 / 6 + ... of a number below log(2): of its 2^12th part, and the result squared as
// often as that was halved.
WideNumber ExpBelowTwo(const WideNumber& x) {
    constexpr int kHalvings = 12;
    constexpr uint32_t kTerms = 22;  // the next one is below 2^-345
    const WideNumber one(1);
    const WideNumber part = x.Shifted(-kHalvings);
    WideNumber power = one;
    for (uint32_t n = kTerms; n > 0; --n) power = one + (part * power).DividedBy(n);
    for (int i = 0; i < kHalvings; ++i) power = power * power;
    return power;
}

// log(s) = 2 (t + t^3 / 3 + t^5 / 5 + ...) with t = (s - 1) / (s + 1), for s from 0.7 to 1.5.
WideValue LogNearOne(const WideNumber& s) {
    constexpr uint32_t kLastPower = 139;  // with t below 0.2 the next one is below 2^-324
    const WideNumber one(1);
    const bool isBelowOne = s < one;
    const WideNumber t = (isBelowOne ? one - s : s - one) / (s + one);
    const WideNumber square = t * t;
    WideNumber sum;
    for (uint32_t power = kLastPower; power >= 3; power -= 2) sum = square * (sum + one.DividedBy(power));
    return {(t + t * sum).Shifted(1), 0, isBelowOne};
}

}  // namespace

WideValue WideExp(const WideValue& x) {
    assert(x.exponent == 0);
    const uint64_t count = CountLogsOfTwo(x.magnitude);
    const auto whole = static_cast<int>(count);
    if (!x.isNegative) return {ExpBelowTwo(x.magnitude - WideNumber(count) * kLogOfTwo), whole, false};
    return {ExpBelowTwo(WideNumber(count + 1) * kLogOfTwo - x.magnitude), -whole - 1, false};
}

WideValue WideLog(double x) {
    constexpr uint64_t kRootOfTwo = 0x16A09E667F3BCD;  // times 2^52
    DoubleParts parts = SplitDouble(x);
    assert(parts.magnitude > 0 && !parts.isNegative);
    const int top = static_cast<int>(std::bit_width(parts.magnitude)) - 1;
    constexpr int kFractionBits = 52;
    const uint64_t significand = parts.magnitude << (kFractionBits - top);
    const bool isUpper = significand > kRootOfTwo;
    const int exponent = parts.exponent + top + (isUpper ? 1 : 0);
    const WideValue rest =
        LogNearOne(WideNumber(significand).Shifted(isUpper ? -kFractionBits - 1 : -kFractionBits));
    if (exponent == 0) return rest;
    const bool isNegative = exponent < 0;
    const WideNumber whole = WideNumber(static_cast<uint64_t>(isNegative ? -exponent : exponent)) * kLogOfTwo;
    return {rest.isNegative == isNegative ? whole + rest.magnitude : whole - rest.magnitude, 0, isNegative};
}

WideValue WideFromDouble(double x) {
    const DoubleParts parts = SplitDouble(x);
    return {WideNumber(parts.magnitude).Shifted(parts.exponent), 0, parts.isNegative};
}

}  // namespace vastrelline
