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

double FastExp(double x) {
    constexpr double kError = 0x1p-68;
    const ScaledPower power = ExpInPairs({x, 0});
    if (!IsSurelyRounded(power.significand, kError)) return RoundToDouble(Definition(x));
    return (power.significand.high + power.significand.low) * PowerOfTwo(power.exponent);
}

}  // namespace

// With k the nearest whole number to 64 x / log(2), e^x is 2^(k / 64) e^r for an r of at most log(2) / 128,
// which is found without loss as log(2) / 64 comes in parts that k can be multiplied with exactly (Cody and
// Waite, 1980). The power is 2^(k / 64 - whole part) of a table, and e^r comes from its series (Tang, 1989):
// of r and r^2 / 2, which matter most, in two parts.
ScaledPower ExpInPairs(DoubleDouble x) {
    constexpr int kParts = 64;
    constexpr double kPartsInOne = 0x1.71547652b82fep+6;
    constexpr double kPartHigh = 0x1.62e42ffp-7;
    constexpr double kPartMiddle = -0x1.718432ap-41;
    constexpr double kPartLow = -0x1.b0e2633fe0685p-73;
    const int count = static_cast<int>(x.high * kPartsInOne + (x.high < 0 ? -0.5 : 0.5));
    const DoubleDouble reduced = ExactSum(x.high - count * kPartHigh, -(count * kPartMiddle));
    const DoubleDouble rest = ExactSum(reduced.high, reduced.low - count * kPartLow + x.low);
    const double r = rest.high;
    const DoubleDouble square = ExactProduct(r, r);
    const double tail =
        r * square.high *
        (1.0 / 6 + r * (1.0 / 24 + r * (1.0 / 120 + r * (1.0 / 720 + r * (1.0 / 5040 + r * (1.0 / 40320))))));
    const DoubleDouble sum = ExactSumOfOrdered(r, 0.5 * square.high);
    const double sumLow = sum.low + (rest.low + 0.5 * square.low + r * rest.low + tail);

    // Whole parts are counted downwards.
    const int whole = count >= 0 ? count / kParts : -((kParts - 1 - count) / kParts);
    const DoubleDouble& root = kRootPowers[static_cast<size_t>(count - whole * kParts)];
    const DoubleDouble product = ExactProduct(root.high, sum.high);
    const DoubleDouble result = ExactSumOfOrdered(root.high, product.high);
    const double low = result.low + (root.low + product.low + root.high * sumLow + root.low * sum.high);
    return {ExactSumOfOrdered(result.high, low), whole};
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
    const double power = Exp(double{x});
    return HasOneFloat(power) ? static_cast<float>(power) : RoundToFloat(Definition(x));
}

}  // namespace vastrelline
