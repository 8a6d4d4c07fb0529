// SPDX-License-Identifier: Apache-2.0
#include "elementary/Exponential.h"

#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>

#include "elementary/FloatRounding.h"
#include "elementary/PowerTable.h"
#include "elementary/WideExponential.h"
#include "elementary/WideValue.h"

namespace vastrelline {

namespace {

constexpr double kSurelyAbove = 709.79;   // all larger ones have infinity
constexpr double kSurelyBelow = -745.14;  // all smaller ones have 0
constexpr double kLastPlain = -708;       // smaller ones may have subnormal results
constexpr double kFirstLarge = 709.7;

WideValue Definition(double x) { return WideExp(WideFromDouble(x)); }

// x = (count / 64) log(2) + rest: the count is the nearest one. log(2) / 64 comes in parts that the count can
// be multiplied with exactly (Cody and Waite, 1980).
struct Reduced {
    int count;
    DoubleDouble rest;
};

constexpr int kParts = 64;
constexpr double kPartLow = -0x1.b0e2633fe0685p-73;

inline Reduced Reduce(double x) {
    constexpr double kPartsInOne = 0x1.71547652b82fep+6;
    constexpr double kPartHigh = 0x1.62e42ffp-7;
    constexpr double kPartMiddle = -0x1.718432ap-41;
    const int count = static_cast<int>(x * kPartsInOne + (x < 0 ? -0.5 : 0.5));
    return {count, ExactSum(x - count * kPartHigh, -(count * kPartMiddle))};
}

// The whole part of count / 64, counted downwards.
inline int WholePart(int count) { return count >= 0 ? count / kParts : -((kParts - 1 - count) / kParts); }

// (e^r - 1 - r - r^2 / 2) / r^3 by the terms of the series that matter.
inline double CubicTail(double r) {
    return 1.0 / 6 +
           r * (1.0 / 24 + r * (1.0 / 120 + r * (1.0 / 720 + r * (1.0 / 5040 + r * (1.0 / 40320)))));
}

double FastExp(double x) {
    const ScaledPower power = ExpInPairs({x, 0});
    if (!IsSurelyRounded(power.significand, 2 * kExpInPairsError)) return RoundToDouble(Definition(x));
    return (power.significand.high + power.significand.low) * PowerOfTwo(power.exponent);
}

}  // namespace

// e^x is 2^(count / 64) e^rest. The power is 2^(count / 64 - whole part) of a table, and e^rest comes from
// its series (Tang, 1989): rest and rest^2 / 2, which matter most, in two parts.
ScaledPower ExpInPairs(DoubleDouble x) {
    const Reduced reduced = Reduce(x.high);
    const DoubleDouble rest =
        ExactSum(reduced.rest.high, reduced.rest.low - reduced.count * kPartLow + x.low);
    const double r = rest.high;
    const DoubleDouble square = ExactProduct(r, r);
    const DoubleDouble sum = ExactSumOfOrdered(r, 0.5 * square.high);
    const double sumLow =
        sum.low + (rest.low + 0.5 * square.low + r * rest.low + r * square.high * CubicTail(r));

    const int whole = WholePart(reduced.count);
    const DoubleDouble& root = kRootPowers[static_cast<size_t>(reduced.count - whole * kParts)];
    const DoubleDouble product = ExactProduct(root.high, sum.high);
    const DoubleDouble result = ExactSumOfOrdered(root.high, product.high);
    const double low = result.low + (root.low + product.low + root.high * sumLow + root.low * sum.high);
    return {ExactSumOfOrdered(result.high, low), whole};
}

double NearlyExp(double x) {
    const Reduced reduced = Reduce(x);
    const double r = reduced.rest.high;
    const int whole = WholePart(reduced.count);
    const double root = kRootPowers[static_cast<size_t>(reduced.count - whole * kParts)].high;
    return (root + root * (r + r * r * (0.5 + r * CubicTail(r)))) * PowerOfTwo(whole);
}

double Exp(double x) {
    constexpr double kTiny = 0x1p-54;
    if (std::isnan(x)) return std::numeric_limits<double>::quiet_NaN();
    if (x > kSurelyAbove) return std::numeric_limits<double>::infinity();
    if (x < kSurelyBelow) return 0;
    if (std::abs(x) <= kTiny) return 1;
    if (x < kLastPlain || x > kFirstLarge) return RoundToDouble(Definition(x));
    return FastExp(x);
}

float Exp(float x) {
    constexpr float kFirstNearly = -100;
    constexpr float kLastNearly = 100;
    float nearest = 0;
    if (x >= kFirstNearly && x <= kLastNearly && TellFloat(NearlyExp(x), kNearlyExpError, nearest))
        return nearest;
    const double power = Exp(double{x});
    return HasOneFloat(power) ? static_cast<float>(power) : RoundToFloat(Definition(x));
}

float ExpTimes(double x, double factor) {
    // The nearest power and its product with the factor are rounded, too.
    constexpr double kError = 2 * kNearlyExpError;
    float nearest = 0;
    const bool isPlain = x >= kLastPlain && x <= kFirstLarge;
    if (isPlain && TellFloat(NearlyExp(x) * factor, kError, nearest)) return nearest;
    return static_cast<float>(Exp(x) * factor);
}

}  // namespace vastrelline
