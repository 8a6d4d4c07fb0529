// SPDX-License-Identifier: Apache-2.0
#include "elementary/SineCosine.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>

#include "elementary/DoubleDouble.h"
#include "elementary/SineTable.h"
#include "elementary/WideTurn.h"
#include "elementary/WideValue.h"

namespace vastrelline {

namespace {

constexpr double kTiny = 0x1p-27;  // below, x is the nearest number to its sine
constexpr int kTurn = 128;         // parts of pi / 64
constexpr int kQuarterTurn = kTurn / 4;

// An angle as a count of those parts, below a whole turn, and a rest of at most half a part.
struct Angle {
    size_t count;
    DoubleDouble rest;
};

// pi / 64 comes in parts that the count can be multiplied with exactly (Cody and Waite, 1980).
Angle Reduce(double x) {
    constexpr double kPartsInOne = 0x1.45f306dc9c883p+4;
    constexpr double kPartHigh = 0x1.921fb544p-5;
    constexpr double kPartMiddle = 0x1.0b4611a8p-39;
    constexpr double kPartLow = -0x1.d9cceba3f91f2p-71;
    const int count = static_cast<int>(x * kPartsInOne + (x < 0 ? -0.5 : 0.5));
    const DoubleDouble rest = ExactSum(x - count * kPartHigh, -(count * kPartMiddle));
    return {static_cast<size_t>(count & (kTurn - 1)), {rest.high, rest.low - count * kPartLow}};
}

// The sine of angle.count + angle.rest in two parts: sin(a + b) = sin a cos b + cos a sin b (Tang, 1991),
// with cos b - 1 and sin b from their series. What is lost is above all some seven roundings of b^3 / 6, each
// up to 2^-53 of it. The sine is at least b, so that of the sine this is less than 2^-63.4.
DoubleDouble SineOfAngle(const Angle& angle) {
    const DoubleDouble& sine = kSines[angle.count];
    const DoubleDouble& cosine = kSines[(angle.count + kQuarterTurn) % kTurn];
    const double b = angle.rest.high;
    const DoubleDouble square = ExactProduct(b, b);
    const double s = square.high;
    const double sineLow = angle.rest.low * (1 - 0.5 * s) +
                           b * s * (-1.0 / 6 + s * (1.0 / 120 + s * (-1.0 / 5040 + s * (1.0 / 362880))));
    const double cosineLow = -0.5 * square.low - b * angle.rest.low +
                             s * s * (1.0 / 24 + s * (-1.0 / 720 + s * (1.0 / 40320 + s * (-1.0 / 3628800))));
    const DoubleDouble turned = ExactProduct(cosine.high, b);
    const DoubleDouble shortened = ExactProduct(sine.high, -0.5 * s);
    const DoubleDouble first = ExactSum(sine.high, turned.high);
    const DoubleDouble sum = ExactSum(first.high, shortened.high);
    const double low = (first.low + sum.low + turned.low + shortened.low + sine.low) + cosine.low * b +
                       (cosine.high * sineLow + sine.high * cosineLow);
    return ExactSumOfOrdered(sum.high, low);
}

// Whether two parts tell the sine or the cosine of x, and then the nearest double.
bool TellFast(double x, DoubleDouble (*inPairs)(double x), double& result) {
    constexpr double kFarthest = 0x1p15;  // the parts' products with the count are exact to 2^17 and more
    constexpr double kNearZero = 0x1p-20;
    if (std::abs(x) > kFarthest) return false;
    const DoubleDouble pair = inPairs(x);
    // Far from 0 the rest lacks bits that a result near 0 is made of.
    if (std::abs(pair.high) < kNearZero && std::abs(x) > kNearZero) return false;
    if (!IsSurelyRounded(pair, pair.high * kSinInPairsError)) return false;
    result = pair.high + pair.low;
    return true;
}

}  // namespace

DoubleDouble SinInPairs(double x) { return SineOfAngle(Reduce(x)); }

DoubleDouble CosInPairs(double x) {
    Angle angle = Reduce(x);
    angle.count = (angle.count + kQuarterTurn) % kTurn;
    return SineOfAngle(angle);
}

double Sin(double x) {
    if (!std::isfinite(x)) return std::numeric_limits<double>::quiet_NaN();
    if (std::abs(x) < kTiny) return x;
    double result = 0;
    return TellFast(x, SinInPairs, result) ? result : RoundToDouble(WideSin(x));
}

double Cos(double x) {
    if (!std::isfinite(x)) return std::numeric_limits<double>::quiet_NaN();
    double result = 0;
    return TellFast(x, CosInPairs, result) ? result : RoundToDouble(WideCos(x));
}

}  // namespace vastrelline
