// SPDX-License-Identifier: Apache-2.0
#include "phantom/BlurredStep.h"

#include <algorithm>
#include <cmath>

#include "phantom/ExactExp.h"
#include "phantom/ExactTurn.h"

namespace vastrelline {
namespace {

constexpr double kNormalReach = 9.0;  // beyond, the tail is below the last bit of 1
constexpr double kInverseRootOfTwoPi = 0.3989422804014327;
constexpr double kNarrowest = 1e-6;  // a box so narrow averages nothing that a level shows
constexpr int kHalvings = 60;        // of a search, until nothing is left to halve

double NormalDensity(double x) { return kInverseRootOfTwoPi * ExactExp(-0.5 * x * x); }

// The first and the second integral of a step that is blurred by a Gaussian, from far left to x.
double FirstIntegral(double x, double blur) {
    if (!(blur > 0.0) || std::fabs(x) > kNormalReach * blur) return std::max(x, 0.0);
    const double scaled = x / blur;
    return blur * (scaled * NormalShare(scaled) + NormalDensity(scaled));
}

double SecondIntegral(double x, double blur) {
    // Far right the integral is that of the sharp step, and half the blur's variance.
    if (!(blur > 0.0) || std::fabs(x) > kNormalReach * blur)
        return x > 0.0 ? 0.5 * (x * x + blur * blur) : 0.0;
    const double scaled = x / blur;
    return 0.5 * blur * blur *
           ((scaled * scaled + 1.0) * NormalShare(scaled) + scaled * NormalDensity(scaled));
}

// Where a function that falls from `low` to `high` has come down to `level`.
template <typename Function>
double FindFall(double low, double high, double level, Function function) {
    for (int i = 0; i < kHalvings; ++i) {
        const double middle = 0.5 * (low + high);
        (function(middle) > level ? low : high) = middle;
    }
    return 0.5 * (low + high);
}

}  // namespace

// G. Marsaglia: Evaluating the normal distribution. Journal of Statistical Software 11, 2004. All terms have
// one sign, so no digits are lost.
double NormalShare(double x) {
    if (x > kNormalReach) return 1.0;
    if (x < -kNormalReach) return 0.0;
    double sum = x;
    double term = x;
    for (double divisor = 3.0; std::fabs(term) > std::fabs(sum) * 1e-17; divisor += 2.0) {
        term *= x * x / divisor;
        sum += term;
    }
    return std::clamp(0.5 + sum * NormalDensity(x), 0.0, 1.0);
}

BlurredStep::BlurredStep(double angleDegrees, double blurPixels)
    : wide_(CosineOfTurns(angleDegrees / kDegreesOfTurn)),
      narrow_(std::fabs(SineOfTurns(angleDegrees / kDegreesOfTurn))),
      blur_(blurPixels) {}

double BlurredStep::ShareAt(double distancePixels) const {
    const double reach = 0.5 * (wide_ + narrow_);
    if (distancePixels > reach + kNormalReach * blur_) return 1.0;
    if (distancePixels < -reach - kNormalReach * blur_) return 0.0;
    double share = 0.0;
    if (narrow_ < kNarrowest) {
        share = (FirstIntegral(distancePixels + 0.5 * wide_, blur_) -
                 FirstIntegral(distancePixels - 0.5 * wide_, blur_)) /
                wide_;
    } else {
        const double inner = 0.5 * (wide_ - narrow_);
        share =
            (SecondIntegral(distancePixels + reach, blur_) - SecondIntegral(distancePixels + inner, blur_) -
             SecondIntegral(distancePixels - inner, blur_) + SecondIntegral(distancePixels - reach, blur_)) /
            (wide_ * narrow_);
    }
    return std::clamp(share, 0.0, 1.0);
}

double BlurredStep::ModulationAt(double frequency) const {
    const double angle = 2.0 * kPi * frequency * blur_;
    return ExactExp(-0.5 * angle * angle) * WaveLeftByAverage(frequency * wide_) *
           WaveLeftByAverage(frequency * narrow_);
}

double BlurredStep::HalfModulation() const {
    return FindFall(0.0, 1.0, 0.5, [this](double frequency) { return ModulationAt(frequency); });
}

double BlurredStep::RiseDistance() const {
    constexpr double kTenth = 0.1;
    // The step is the same from both sides, so half the way is from the middle to nine tenths.
    const double half =
        FindFall(0.0, 2.0 + kNormalReach * blur_, kTenth, [this](double x) { return 1.0 - ShareAt(x); });
    return 2.0 * half;
}

}  // namespace vastrelline
