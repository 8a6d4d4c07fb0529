// SPDX-License-Identifier: Apache-2.0
#include "elementary/WideValue.h"

#include <algorithm>
#include <bit>

namespace vastrelline {

namespace {

// A binary format of floating point.
struct Format {
    int fractionBits;   // behind the leading one
    int smallestPlace;  // the smallest number above 0 is 2 to the power of it
    int signBit;
    uint64_t infinity;
};

constexpr Format kDouble{52, -1074, 63, uint64_t{0x7FF} << 52};
constexpr Format kFloat{23, -149, 31, uint64_t{0xFF} << 23};

// The bits of the nearest number. Those of numbers above 0 stand in the order of the numbers, so that a
// carry out of the fraction makes the next exponent, and in the end infinity.
uint64_t NearestMagnitude(const WideValue& value, const Format& format) {
    constexpr int kCountedBits = 192;
    constexpr int kTop = 62;  // leaves room for a carry
    constexpr int kLastCounted = kTop + 1 - kCountedBits;
    constexpr int kUncounted = WideNumber::kFractionBits + kLastCounted;
    const WideNumber half = WideNumber(1).Shifted(-1);
    const int top = value.magnitude.TopBit();
    const WideNumber raised = value.magnitude.Shifted(kTop - top) + half.Shifted(kLastCounted);
    const WideNumber counted = raised.Shifted(-kUncounted).Shifted(kUncounted);
    const int place = top + value.exponent;
    const int lastPlace = std::max(place - format.fractionBits, format.smallestPlace);
    const WideNumber scaled = counted.Shifted(place - kTop - lastPlace);
    const uint64_t whole = scaled.Whole();
    const WideNumber rest = scaled.Fraction();
    const bool isTie = !(rest < half) && !(half < rest);
    const bool roundsUp = isTie ? whole % 2 != 0 : half < rest;
    const auto binade = static_cast<uint64_t>(lastPlace - format.smallestPlace);
    if (binade > format.infinity >> format.fractionBits) return format.infinity;
    return std::min(format.infinity, (binade << format.fractionBits) + whole + (roundsUp ? 1 : 0));
}

uint64_t NearestBits(const WideValue& value, const Format& format) {
    const uint64_t sign = uint64_t{value.isNegative} << format.signBit;
    return value.magnitude.IsZero() ? sign : sign | NearestMagnitude(value, format);
}

}  // namespace

DoubleParts SplitDouble(double x) {
    constexpr uint64_t kLeadingOne = uint64_t{1} << 52;
    const auto bits = std::bit_cast<uint64_t>(x);
    const auto binade = static_cast<int>((bits >> kDouble.fractionBits) & 0x7FF);
    const uint64_t fraction = bits & (kLeadingOne - 1);
    return {binade == 0 ? fraction : fraction | kLeadingOne, std::max(binade - 1, 0) + kDouble.smallestPlace,
            (bits >> kDouble.signBit) != 0};
}

double RoundToDouble(const WideValue& value) { return std::bit_cast<double>(NearestBits(value, kDouble)); }

float RoundToFloat(const WideValue& value) {
    return std::bit_cast<float>(static_cast<uint32_t>(NearestBits(value, kFloat)));
}

}  // namespace vastrelline
