#include "operators/curves/GammaCurve.h"

#include <algorithm>
#include <cassert>
#include <cmath>

#include "operators/histogram/Histogram.h"
#include "operators/histogram/PixelRange.h"
#include "pixels/AllocZeroed.h"
#include "pixels/FrameLimits.h"
#include "pixels/Truncate.h"

namespace vastrelline {

namespace {

// The first level from `outputRange` down to 1 at which the running count of pixels passes `count`; 0 if
// there is none.
int32_t FindBrightLevel(const uint16_t* pixels, int32_t width, int32_t height, int32_t outputRange,
                        int32_t count) {
    if (outputRange < 1) return 0;
    if (count < 0) return outputRange;
    // No pixel lies above kTopPixel, so the bins beyond it need not exist.
    const std::vector<uint32_t> histogram =
        BuildHistogram(pixels, width, height, std::min(outputRange, kTopPixel));
    uint32_t sum = 0;
    for (size_t level = histogram.size() - 1; level >= 1; --level) {
        sum += histogram[level];
        if (sum > static_cast<uint32_t>(count)) return static_cast<int32_t>(level);
    }
    return 0;
}

}  // namespace

GammaCurve BuildGammaCurve(const uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue,
                           int32_t outputRange, double gamma, int32_t limitBin, int32_t inverse) {
    assert(0 <= maxValue && maxValue <= kTopPixel);
    const auto [smallest, largest] = FindPixelRange(pixels, width, height);
    GammaCurve curve{smallest, largest, AllocZeroed<uint16_t>(maxValue + 1, 1)};
    if (limitBin > 0) {
        const HistogramCut cut =
            FindHistogramCut(BuildUnclampedHistogram(pixels, width, height, maxValue), limitBin);
        if (cut.low >= 0) curve.low = cut.low;
        if (cut.high >= 0) curve.high = cut.high;
    }
    const int32_t range = curve.high - curve.low;
    int32_t base = 0;
    if (outputRange == 0) {
        base = curve.low;
        outputRange = range;
    }
    const double sign = inverse != 0 ? -1.0 : 1.0;
    const int32_t offset = inverse != 0 ? outputRange : 0;

    // With one level x is 0 / 0, not a number, and so is the entry but for the exponent 0.
    const auto entryAt = [&](int32_t level) {
        const double x = (level - curve.low) / static_cast<double>(range);
        const double y = gamma >= 0 ? std::pow(x, gamma) : 1 - std::pow(1 - x, 1 / -gamma);
        return LowBits16(TruncateToInt32(outputRange * y * sign + offset + base));
    };
    const uint16_t belowLow = LowBits16(base);
    const uint16_t aboveHigh = LowBits16(WrappingAdd(outputRange, base));
    for (int32_t level = 0; level <= maxValue; ++level) {
        uint16_t& entry = curve.table[static_cast<size_t>(level)];
        if (level < curve.low) {
            entry = belowLow;
        } else {
            entry = level > curve.high ? aboveHigh : entryAt(level);
        }
    }
    return curve;
}

double ChooseGamma(const uint16_t* pixels, int32_t width, int32_t height, int32_t outputRange, double ratio) {
    if (std::fabs(ratio) >= 1) return ratio;
    // A count that truncates to 0 is 0, also from a negative ratio of tiny magnitude.
    const int32_t count = TruncateToInt32(static_cast<double>(static_cast<int64_t>(width) * height) * ratio);
    const int32_t level = FindBrightLevel(pixels, width, height, outputRange, count);
    double q = (outputRange - level) / (outputRange / 2.0);
    // An outputRange of 0 makes q not a number, which passes both limits.
    if (q < 0) q = 0;
    if (q > 1) q = 1;
    return (1 - q) + 1;
}

}  // namespace vastrelline
