// SPDX-License-Identifier: Apache-2.0
#include "phantom/ExactExp.h"

#include <algorithm>
#include <cmath>

namespace vastrelline {
namespace {

constexpr double kReach = 700.0;  // keeps the power of two inside the exponents of a double
constexpr double kLog2 = 0.6931471805599453;
constexpr int kTerms = 14;  // for |rest| <= 0.35 the first term left out is below 1e-17

}  // namespace

double ExactExp(double x) {
    const double limited = std::clamp(x, -kReach, kReach);
    const double power = std::floor(limited / kLog2 + 0.5);
    const double rest = limited - power * kLog2;
    double sum = 1.0;
    for (int term = kTerms; term > 0; --term) sum = 1.0 + sum * rest / term;
    return std::ldexp(sum, static_cast<int>(power));  // exact
}

}  // namespace vastrelline
