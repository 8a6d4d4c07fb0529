// SPDX-License-Identifier: Apache-2.0
#include "phantom/ExactTurn.h"

#include <cmath>

namespace vastrelline {
namespace {

constexpr int kTerms = 10;       // for an eighth of a turn the first term left out is below 1e-20
constexpr double kSmall = 1e-9;  // the sine of less is its argument, to the last bit
constexpr double kQuarter = 0.25;

// The power series; angle -pi/4 to pi/4.
double SineSeries(double angle) {
    const double square = angle * angle;
    double sum = 1.0;
    for (int term = kTerms; term > 0; --term) sum = 1.0 - sum * square / (2.0 * term * (2.0 * term + 1.0));
    return sum * angle;
}

double CosineSeries(double angle) {
    const double square = angle * angle;
    double sum = 1.0;
    for (int term = kTerms; term > 0; --term) sum = 1.0 - sum * square / (2.0 * term * (2.0 * term - 1.0));
    return sum;
}

}  // namespace

double SineOfTurns(double turns) {
    const double quarters = std::floor(turns / kQuarter + 0.5);
    const double angle = (turns - quarters * kQuarter) * 2.0 * kPi;
    const double cycle = quarters - 4.0 * std::floor(quarters / 4.0);  // 0, 1, 2 or 3
    if (cycle == 0.0) return SineSeries(angle);
    if (cycle == 1.0) return CosineSeries(angle);
    if (cycle == 2.0) return -SineSeries(angle);
    return -CosineSeries(angle);
}

double CosineOfTurns(double turns) { return SineOfTurns(turns + kQuarter); }

double WaveLeftByAverage(double x) {
    if (std::fabs(x) < kSmall) return 1.0;
    return SineOfTurns(x / 2.0) / (kPi * x);
}

}  // namespace vastrelline
