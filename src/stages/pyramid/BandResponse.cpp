// SPDX-License-Identifier: Apache-2.0
#include "stages/pyramid/BandResponse.h"

#include <cstdlib>

#include "elementary/Exponential.h"
#include "elementary/Power.h"
#include "pixels/Truncate.h"

namespace vastrelline {

namespace {

// A power of the magnitude, which lifts faint structure most; below the noise a straight line through zero.
class PowerResponse {
public:
    PowerResponse(const BandLevels& levels, double gain, TailMode tailMode)
        : levels_(levels),
          noiseLimit_(levels.noiseLimit),
          top_(noiseLimit_ * gain),
          noiseFactor_(PowerOf(levels.noise / noiseLimit_)),
          tailMode_(tailMode),
          tailStep_(top_ * PowerOf((noiseLimit_ - 1) / noiseLimit_) -
                    top_ * PowerOf(noiseLimit_ / levels.absMax)) {}

    double At(int32_t v) const {
        const int32_t magnitude = std::abs(v);
        const double a = magnitude;
        if (magnitude < levels_.noise) return v / static_cast<double>(levels_.noise) * top_ * noiseFactor_;
        if (magnitude < levels_.noiseLimit) {
            if (magnitude == 0) return 0;
            return v / a * top_ * PowerOf(a / noiseLimit_);
        }
        switch (tailMode_) {
            case TailMode::Follow:
                return v / a * top_ * PowerOf(a / levels_.absMax) + v / a * tailStep_;
            case TailMode::Pass:
                return v;
            default:
                return 0;
        }
    }

private:
    static double PowerOf(double x) {
        constexpr double kExponent = 0.6;
        return Pow(x, kExponent);
    }

    BandLevels levels_;
    double noiseLimit_;
    double top_;          // the response at the noise limit
    double noiseFactor_;  // what the power is where the straight line ends
    TailMode tailMode_;
    double tailStep_;  // lifts the curve's last part to where the one before it ended
};

// The plain gain with noise faded out by a sigmoid.
double SigmoidGateAt(int32_t v, const BandLevels& levels, double gain) {
    const int32_t a = std::abs(v);
    if (a >= levels.noise) return v * gain + 0.5;  // so is it without a noise zone
    const double gate = 1 / (1 + Exp(4 - 8.0 * a / levels.noise));
    return v * gate * gain + 0.5;
}

// The same with a power.
double PowerGateAt(int32_t v, const BandLevels& levels, double gain) {
    constexpr double kExponent = 2.5;
    const int32_t a = std::abs(v);
    if (a >= levels.noise) return v * gain + 0.5;
    return v * Pow(a / static_cast<double>(levels.noise), kExponent) * gain + 0.5;
}

template <typename Response>
std::vector<int32_t> Tabulate(int32_t min, int32_t max, Response responseAt) {
    std::vector<int32_t> table;
    table.reserve(static_cast<size_t>(max - min) + 1);
    for (int32_t v = min; v <= max; ++v) table.push_back(TruncateToInt32(responseAt(v)));
    return table;
}

}  // namespace

std::vector<int32_t> BuildBandResponse(int32_t min, int32_t max, const BandLevels& levels, double gain,
                                       BandCurve curve, TailMode tailMode) {
    switch (curve) {
        case BandCurve::SigmoidGate:
            return Tabulate(min, max, [&](int32_t v) { return SigmoidGateAt(v, levels, gain); });
        case BandCurve::Power: {
            const PowerResponse response(levels, gain, tailMode);
            return Tabulate(min, max, [&](int32_t v) { return response.At(v); });
        }
        case BandCurve::PowerGate:
            return Tabulate(min, max, [&](int32_t v) { return PowerGateAt(v, levels, gain); });
    }
    return {};
}

}  // namespace vastrelline
