// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cmath>

namespace vastrelline {

// a / b for results that are shown. Processors differ in the sign of what is not a number: where a and b are
// numbers but their quotient is none, as that of two zeros, it has the sign that the x86 gives it, "-nan".
inline double Quotient(double a, double b) {
    const double quotient = a / b;
    const bool isNoNumberAnew = std::isnan(quotient) && !std::isnan(a) && !std::isnan(b);
    return isNoNumberAnew ? std::copysign(quotient, -1.0) : quotient;
}

}  // namespace vastrelline
