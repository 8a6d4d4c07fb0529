// SPDX-License-Identifier: Apache-2.0
#include "elementary/HyperbolicTangent.h"

#include <cmath>
#include <limits>

#include "elementary/WideExponential.h"
#include "elementary/WideNumber.h"
#include "elementary/WideValue.h"

namespace vastrelline {

// tanh(x) = (e^2x - 1) / (e^2x + 1). Few ever ask for it, so that the definition is all there is.
double Tanh(double x) {
    constexpr double kTiny = 0x1p-28;  // below, x is the nearest number
    constexpr double kLarge = 20;      // beyond, 1 is
    if (std::isnan(x)) return std::numeric_limits<double>::quiet_NaN();
    if (std::abs(x) < kTiny) return x;
    if (std::abs(x) > kLarge) return std::copysign(1.0, x);
    WideValue twice = WideFromDouble(x);
    twice.magnitude = twice.magnitude.Shifted(1);
    twice.isNegative = false;
    const WideValue power = WideExp(twice);
    const WideNumber whole = power.magnitude.Shifted(power.exponent);
    const WideNumber one(1);
    return RoundToDouble({(whole - one) / (whole + one), 0, x < 0});
}

}  // namespace vastrelline
