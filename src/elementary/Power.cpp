// SPDX-License-Identifier: Apache-2.0
#include "elementary/Power.h"

#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>

#include "elementary/DoubleDouble.h"
#include "elementary/Exponential.h"
#include "elementary/FloatRounding.h"
#include "elementary/Logarithm.h"
#include "elementary/WideExponential.h"
#include "elementary/WideValue.h"

namespace vastrelline {

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();

bool IsWhole(double x) { return std::floor(x) == x; }
bool IsOdd(double x) { return IsWhole(x) && !IsWhole(0.5 * x); }

// What does not come from the logarithm of the base.
std::optional<double> SpecialPower(double base, double exponent) {
    if (exponent == 0 || base == 1) return 1;
    if (std::isnan(base) || std::isnan(exponent)) return kNotANumber;
    const double magnitude = std::abs(base);
    if (std::isinf(exponent)) {
        if (magnitude == 1) return 1;
        return (magnitude > 1) == (exponent > 0) ? kInfinity : 0;
    }
    const bool isOdd = IsOdd(exponent);
    if (magnitude == 0 || std::isinf(magnitude)) {
        const double limit = (magnitude == 0) == (exponent > 0) ? 0 : kInfinity;
        return isOdd ? std::copysign(limit, base) : limit;
    }
    if (base < 0 && !IsWhole(exponent)) return kNotANumber;
    return std::nullopt;
}

// e^(exponent log(base)), the logarithm being below 2^10: its product with the 53 bits of the exponent does
// not leave the wide number in front, nor does it thereafter, the power being in range.
WideValue Definition(double base, double exponent) {
    const DoubleParts parts = SplitDouble(exponent);
    WideValue product = WideLog(base);
    product.magnitude = (product.magnitude * WideNumber(parts.magnitude)).Shifted(parts.exponent);
    product.isNegative = product.isNegative != parts.isNegative;
    return WideExp(product);
}

// Of a base above 0, other than infinity and 1, to a finite exponent other than 0.
double PositivePower(double base, double exponent) {
    constexpr double kSurelyAbove = 709.79;   // the power is infinity
    constexpr double kSurelyBelow = -745.14;  // the power is 0
    constexpr double kLastPlain = -708;       // below, it may be subnormal
    constexpr double kFirstLarge = 709.7;
    constexpr double kTiny = 0x1p-55;  // the power is 1, and e^x is nearer to it than to its neighbours
    constexpr double kRelativeError = 2 * kLogInPairsError;
    const DoubleDouble logarithm = LogInPairs(base);
    const double estimate = logarithm.high * exponent;
    if (estimate > kSurelyAbove) return kInfinity;
    if (estimate < kSurelyBelow) return 0;
    if (std::abs(estimate) < kTiny) return 1;
    if (estimate < kLastPlain || estimate > kFirstLarge) return RoundToDouble(Definition(base, exponent));
    DoubleDouble product = ExactProduct(logarithm.high, exponent);
    product.low += logarithm.low * exponent;
    const ScaledPower power = ExpInPairs(product);
    const double error = 2 * kExpInPairsError + std::abs(estimate) * kRelativeError;
    if (!IsSurelyRounded(power.significand, error)) return RoundToDouble(Definition(base, exponent));
    return (power.significand.high + power.significand.low) * PowerOfTwo(power.exponent);
}

// The nearest float where a product rounded to a double tells it.
bool TellNearly(float base, float exponent, float& nearest) {
    constexpr double kLargest = 100;    // beyond floats
    constexpr double kError = 0x1p-44;  // twice the roundings of the logarithm and of the product
    const double product = LogInPairs(base).high * exponent;
    return std::abs(product) < kLargest && TellFloat(NearlyExp(product), kError, nearest);
}

}  // namespace

double Pow(double base, double exponent) {
    if (const std::optional<double> special = SpecialPower(base, exponent)) return *special;
    const double power = PositivePower(std::abs(base), exponent);
    return base < 0 && IsOdd(exponent) ? -power : power;
}

float Pow(float base, float exponent) {
    if (base > 0 && base != 1 && std::isfinite(base) && exponent != 0 && std::isfinite(exponent)) {
        float nearest = 0;
        if (TellNearly(base, exponent, nearest)) return nearest;
    }
    const double power = Pow(double{base}, double{exponent});
    if (HasOneFloat(power)) return static_cast<float>(power);
    const float magnitude = RoundToFloat(Definition(std::abs(base), exponent));
    return power < 0 ? -magnitude : magnitude;
}

}  // namespace vastrelline
