// SPDX-License-Identifier: Apache-2.0
#include "stages/pre_processing/DetailPower.h"

#include <algorithm>
#include <cstdlib>

#include "elementary/Power.h"
#include "pixels/FrameView.h"
#include "pixels/Truncate.h"

namespace vastrelline {

namespace {

// One side of the curve: values of the magnitude `a` up to `peak`, linear below `knee`.
struct CurveSide {
    double peak;
    double knee;
};

int32_t CurveAt(int32_t v, int32_t a, const CurveSide& side, float alpha, double exponent) {
    if (a < side.knee)
        return TruncateToInt32(alpha * side.peak * (v / side.knee) * Pow(side.knee / side.peak, exponent));
    const int32_t sign = a == 0 ? 0 : v / a;
    return TruncateToInt32(alpha * side.peak * sign * Pow(a / side.peak, exponent));
}

}  // namespace

void MapDetailPower(int32_t* detail, int32_t startMax, int32_t startMin, int32_t width, int32_t height,
                    float alpha, float weight, float power, float /*range*/) {
    constexpr double kKneeShare = 0.0125;
    const FrameView<int32_t> values(detail, width, height);
    int32_t max = startMax;
    int32_t min = startMin;
    for (const int32_t v : values) {
        max = std::max(max, v);
        min = std::min(min, v);
    }
    if (min < 1 || max <= 0) return;

    double knee = WrappingSubtract(max, min) * kKneeShare;
    CurveSide above{static_cast<double>(max), 0.0};
    CurveSide below{-static_cast<double>(min), 0.0};
    // The lower knee starts from the upper one's limit.
    knee = std::min(knee, above.peak);
    above.knee = knee;
    knee = std::min(knee, below.peak);
    below.knee = knee;
    const double exponent = 1.0 - power;
    for (int32_t& v : values) {
        const int32_t a = std::abs(v);
        const CurveSide& side = v > 0 ? above : below;
        const int32_t r = a > side.peak ? v : CurveAt(v, a, side, alpha, exponent);
        v = TruncateToInt32(v * (1.0 - weight) + r * static_cast<double>(weight));
    }
}

}  // namespace vastrelline
