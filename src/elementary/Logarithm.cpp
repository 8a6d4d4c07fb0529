// SPDX-License-Identifier: Apache-2.0
#include "elementary/Logarithm.h"

#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>

#include "elementary/FloatRounding.h"
#include "elementary/LogarithmTable.h"
#include "elementary/WideExponential.h"
#include "elementary/WideValue.h"

namespace vastrelline {

namespace {

// x = significand * 2^exponent, the significand about 0.7 to 1.41.
struct Normalised {
    double significand;
    int exponent;
    const LogarithmEntry& nearest;
};

Normalised Normalise(double x) {
    constexpr double kSmallestNormal = 0x1p-1022;
    constexpr int kFractionBits = 52;
    constexpr int kIndexBits = 7;
    constexpr uint64_t kFraction = (uint64_t{1} << kFractionBits) - 1;
    constexpr int kBias = 1023;
    const bool isSubnormal = x < kSmallestNormal;
    const auto bits = std::bit_cast<uint64_t>(isSubnormal ? x * 0x1p54 : x);
    const uint64_t fraction = bits & kFraction;
    const uint64_t twiceIndex = fraction >> (kFractionBits - kIndexBits - 1);
    const auto index = static_cast<int>((twiceIndex + 1) / 2);
    const bool isHalved = index >= kFirstHalvedCentre;
    const auto binade = static_cast<uint64_t>(isHalved ? kBias - 1 : kBias);
    const int exponent = static_cast<int>(bits >> kFractionBits) - kBias - (isSubnormal ? 54 : 0);
    return {std::bit_cast<double>(fraction | (binade << kFractionBits)), isHalved ? exponent + 1 : exponent,
            kLogarithms[static_cast<size_t>(index)]};
}

}  // namespace

// log(x) = exponent log(2) - log(inverse) + log(1 + z), with z = significand * inverse - 1 of at most 2^-7.9
// found without loss (Tang, 1990). Of the series of the last one z, z^2 / 2 and z^3 / 3 are taken in two
// parts. Where x is next to 1 nothing but the series is left, so that small results are as precise.
DoubleDouble LogInPairs(double x) {
    constexpr double kLogOfTwoHigh = 0x1.62e42fefa38p-1;
    constexpr double kLogOfTwoLow = 0x1.ef35793c7673p-45;
    constexpr DoubleDouble kThird{0x1.5555555555555p-2, 0x1.5555555555555p-56};
    const auto [significand, exponent, nearest] = Normalise(x);
    const double upper = UpperHalf(significand);
    const DoubleDouble z = ExactSum(upper * nearest.inverse - 1, (significand - upper) * nearest.inverse);

    const DoubleDouble square = ExactProduct(z.high, z.high);
    const double squareLow = square.low + 2 * z.high * z.low;
    const DoubleDouble cube = ExactProduct(square.high, z.high);
    const double cubeLow = cube.low + squareLow * z.high + square.high * z.low;
    const DoubleDouble third = ExactProduct(cube.high, kThird.high);
    const double thirdLow = third.low + cube.high * kThird.low + cubeLow * kThird.high;
    const double w = z.high;
    const double tail =
        square.high * square.high *
        (-1.0 / 4 +
         w * (1.0 / 5 + w * (-1.0 / 6 + w * (1.0 / 7 + w * (-1.0 / 8 + w * (1.0 / 9 + w * (-1.0 / 10)))))));

    // Both are multiples of 2^-42 and below 2^10, so that nothing is lost.
    const double whole = exponent * kLogOfTwoHigh + nearest.high;
    const double wholeLow = exponent * kLogOfTwoLow + nearest.low;
    const DoubleDouble first = ExactSum(whole, z.high);
    const DoubleDouble second = ExactSum(first.high, -0.5 * square.high);
    const DoubleDouble sum = ExactSum(second.high, third.high);
    const double low =
        (first.low + second.low + sum.low) + (z.low - 0.5 * squareLow + thirdLow + tail + wholeLow);
    return ExactSumOfOrdered(sum.high, low);
}

double Log(double x) {
    if (std::isnan(x) || x < 0) return std::numeric_limits<double>::quiet_NaN();
    if (x == 0) return -std::numeric_limits<double>::infinity();
    if (std::isinf(x)) return x;
    const DoubleDouble logarithm = LogInPairs(x);
    if (IsSurelyRounded(logarithm, logarithm.high * kLogInPairsError)) return logarithm.high + logarithm.low;
    return RoundToDouble(WideLog(x));
}

float Log(float x) {
    const double logarithm = Log(double{x});
    return HasOneFloat(logarithm) ? static_cast<float>(logarithm) : RoundToFloat(WideLog(x));
}

}  // namespace vastrelline
