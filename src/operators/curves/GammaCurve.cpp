// SPDX-License-Identifier: Apache-2.0
#include "operators/curves/GammaCurve.h"

#include <algorithm>
#include <cassert>
#include <cmath>

#include "elementary/Power.h"
#include "operators/histogram/Histogram.h"
#include "operators/histogram/PixelRange.h"
#include "pixels/AllocFrame.h"
#include "pixels/FrameLimits.h"
#include "pixels/Quotient.h"
#include "pixels/Truncate.h"

namespace vastrelline {

namespace {

// The first level from `outputRange` down to 1 at which the running count of pixels passes `count`; 0 if
// there is none.
//
// count   gives the histogram up to a level
template <typename Count>
int32_t FindBrightLevel(const Count& countLevels, int32_t outputRange, int32_t count) {
    if (outputRange < 1) return 0;
    if (count < 0) return outputRange;
    // No pixel lies above kTopPixel, so the bins beyond it need not exist.
    const std::vector<uint32_t> histogram = countLevels(std::min(outputRange, kTopPixel));
    uint32_t sum = 0;
    for (size_t level = histogram.size() - 1; level >= 1; --level) {
        sum += histogram[level];
        if (sum > static_cast<uint32_t>(count)) return static_cast<int32_t>(level);
    }
    return 0;
}

template <typename Count>
double ChooseGammaFor(const Count& countLevels, double pixelCount, int32_t outputRange, double ratio) {
    if (std::fabs(ratio) >= 1) return ratio;
    // A count that truncates to 0 is 0, also from a negative ratio of tiny magnitude.
    const int32_t count = TruncateToInt32(pixelCount * ratio);
    const int32_t level = FindBrightLevel(countLevels, outputRange, count);
    double q = Quotient(outputRange - level, outputRange / 2.0);
    // An outputRange of 0 makes q not a number, which passes both limits.
    if (q < 0) q = 0;
    if (q > 1) q = 1;
    return (1 - q) + 1;
}

// The part of a range that stands out of the noise, as far as there is one.
PixelRange CutRange(PixelRange range, const std::vector<uint32_t>& histogram, int32_t limitBin) {
    const HistogramCut cut = FindHistogramCut(histogram, limitBin);
    if (cut.low >= 0) range.smallest = cut.low;
    if (cut.high >= 0) range.largest = cut.high;
    return range;
}

}  // namespace

GammaShape::GammaShape(int32_t low, int32_t high, int32_t outputRange, double gamma, int32_t inverse)
    : low_(low),
      high_(high),
      outputRange_(outputRange == 0 ? high - low : outputRange),
      gamma_(gamma),
      sign_(inverse != 0 ? -1.0 : 1.0),
      offset_(inverse != 0 ? outputRange_ : 0),
      base_(outputRange == 0 ? low : 0) {}

uint16_t GammaShape::EntryAt(int32_t level) const {
    if (level < low_) return LowBits16(base_);
    if (level > high_) return LowBits16(WrappingAdd(outputRange_, base_));
    // With one level x is 0 / 0, not a number, and so is the entry but for the exponent 0.
    const double x = (level - low_) / static_cast<double>(high_ - low_);
    const double y = gamma_ >= 0 ? Pow(x, gamma_) : 1 - Pow(1 - x, 1 / -gamma_);
    return LowBits16(TruncateToInt32(outputRange_ * y * sign_ + offset_ + base_));
}

GammaCurve BuildGammaCurve(const uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue,
                           int32_t outputRange, double gamma, int32_t limitBin, int32_t inverse) {
    PixelRange range = FindPixelRange(pixels, width, height);
    if (limitBin > 0)
        range = CutRange(range, BuildUnclampedHistogram(pixels, width, height, maxValue), limitBin);
    return MakeGammaTable({range.smallest, range.largest, outputRange, gamma, inverse}, maxValue);
}

GammaShape FindGammaShape(TonedFrame& frame, int32_t maxValue, int32_t outputRange, double gamma,
                          int32_t limitBin, int32_t inverse) {
    PixelRange range{frame.MinLevel(), frame.MaxLevel()};
    if (limitBin > 0) range = CutRange(range, frame.UnclampedHistogram(maxValue), limitBin);
    return {range.smallest, range.largest, outputRange, gamma, inverse};
}

GammaCurve MakeGammaTable(const GammaShape& shape, int32_t maxValue) {
    assert(0 <= maxValue && maxValue <= kTopPixel);
    GammaCurve curve{shape.Low(), shape.High(),
                     std::vector<uint16_t>(CountElements<uint16_t>(maxValue + 1, 1))};
    for (int32_t level = 0; level <= maxValue; ++level)
        curve.table[static_cast<size_t>(level)] = shape.EntryAt(level);
    return curve;
}

double ChooseGamma(const uint16_t* pixels, int32_t width, int32_t height, int32_t outputRange, double ratio) {
    return ChooseGammaFor([&](int32_t maxValue) { return BuildHistogram(pixels, width, height, maxValue); },
                          static_cast<double>(static_cast<int64_t>(width) * height), outputRange, ratio);
}

double ChooseGamma(TonedFrame& frame, int32_t outputRange, double ratio) {
    return ChooseGammaFor([&](int32_t maxValue) { return frame.Histogram(maxValue); },
                          static_cast<double>(frame.Count()), outputRange, ratio);
}

}  // namespace vastrelline
