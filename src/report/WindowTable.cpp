// SPDX-License-Identifier: Apache-2.0
#include "report/WindowTable.h"

#include <algorithm>

#include "elementary/Exponential.h"
#include "elementary/Logarithm.h"
#include "elementary/Power.h"
#include "pixels/Truncate.h"

namespace vastrelline {

namespace {

constexpr int32_t kWhite = 255;

enum Curve : int32_t { kLogistic = 1, kLogarithmic = 2, kPowerBright = 3, kPowerDark = 4 };

// Clamped first: a steep curve leaves 32 bits far above a narrow window, and is white there.
uint8_t TruncateToByte(double value) {
    if (!(value > 0)) return 0;  // not a number, too
    return static_cast<uint8_t>(std::min<double>(value, kWhite));
}

uint8_t LogisticEntry(int32_t i, int32_t centre, int32_t width) {
    const double exponent = -4.0 * WrappingSubtract(i, centre) / width;
    return TruncateToByte(kWhite / (1 + Exp(exponent)));
}

// All in 32-bit floats. The lower end takes the centre with its sign changed:
// rendered pictures depend on it.
class LogarithmicCurve {
public:
    LogarithmicCurve(int32_t topValue, int32_t centre, int32_t half) {
        const int32_t a = std::min(WrappingAdd(centre, half), topValue);
        const int32_t b = std::max(WrappingSubtract(half, centre), 1);
        logB_ = Log(static_cast<float>(b));
        const float logA = Log(static_cast<float>(a));
        k_ = logA == logB_ ? 0.0F : kWhite / (logA - logB_);
    }

    uint8_t Entry(int32_t i) const {
        if (i == 0) return 0;
        return TruncateToByte((Log(static_cast<float>(i)) - logB_) * k_ + 0.5F + 1.0F);
    }

private:
    float logB_;
    float k_;
};

uint8_t PowerEntry(int32_t i, int32_t centre, int32_t half, int32_t width, double power) {
    const double place = static_cast<double>(WrappingSubtract(i, WrappingSubtract(centre, half))) / width;
    if (place < 0) return 0;
    return TruncateToByte(kWhite * Pow(place, power));
}

uint8_t LinearEntry(int32_t i, int32_t centre, int32_t half) {
    const int32_t lo = WrappingSubtract(centre, WrappingSubtract(half, 1));
    const int32_t hi = WrappingAdd(centre, half);
    if (i >= hi) return kWhite;
    if (i < lo) return 0;
    const double slope = static_cast<double>(kWhite) / WrappingAdd(WrappingSubtract(hi, lo), 1);
    return TruncateToByte(WrappingSubtract(i, lo) * slope + 0.5);
}

}  // namespace

std::vector<uint8_t> BuildWindowTable(int32_t topValue, int32_t centre, int32_t width, int32_t curve,
                                      int32_t invert) {
    constexpr double kBrightPower = 0.45454545454545453;
    constexpr double kDarkPower = 2.2;
    const int32_t half = width / 2;
    const LogarithmicCurve logarithmic(topValue, centre, half);
    std::vector<uint8_t> table(static_cast<size_t>(topValue) + 1);
    for (int32_t i = 0; i <= topValue; ++i) {
        uint8_t entry = 0;
        switch (curve) {
            case kLogistic:
                entry = LogisticEntry(i, centre, width);
                break;
            case kLogarithmic:
                entry = logarithmic.Entry(i);
                break;
            case kPowerBright:
                entry = PowerEntry(i, centre, half, width, kBrightPower);
                break;
            case kPowerDark:
                entry = PowerEntry(i, centre, half, width, kDarkPower);
                break;
            default:
                entry = LinearEntry(i, centre, half);
                break;
        }
        table[static_cast<size_t>(i)] = static_cast<uint8_t>(invert != 0 ? kWhite - entry : entry);
    }
    return table;
}

}  // namespace vastrelline
