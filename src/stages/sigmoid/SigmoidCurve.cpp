// SPDX-License-Identifier: Apache-2.0
#include "stages/sigmoid/SigmoidCurve.h"

#include <algorithm>
#include <cassert>

#include "elementary/Exponential.h"
#include "operators/histogram/Histogram.h"
#include "pixels/FrameLimits.h"
#include "pixels/Truncate.h"

namespace vastrelline {

namespace {

constexpr int32_t kLowMargin = 100;  // levels by which the curve begins below the first occupied one
constexpr int32_t kHeadroom = 1500;  // above the output's top, which only flattens the shoulder
constexpr double kSlope = -4.0;

// The first level at which the running count of pixels passes the fraction `ratio` of them; 0 if there is
// none.
int32_t FindCentre(std::span<const uint32_t> histogram, int32_t pixelCount, double ratio) {
    const int32_t target = TruncateToInt32(pixelCount * ratio);
    int32_t sum = 0;
    for (size_t level = 0; level < histogram.size(); ++level) {
        sum += static_cast<int32_t>(histogram[level]);
        if (sum > target) return static_cast<int32_t>(level);
    }
    return 0;
}

SigmoidPlace FindPlace(std::span<const uint32_t> histogram, int32_t pixelCount, double ratio,
                       int32_t limitBin) {
    const HistogramCut cut = FindHistogramCut(histogram, limitBin);
    const int32_t low = std::max(cut.low - kLowMargin, 0);
    const int32_t high = std::max(cut.high, 0);
    if (ratio == 0.0) {
        const int32_t width = high - low;
        return {low, high, low + width / 2, width};
    }
    const int32_t centre = FindCentre(histogram, pixelCount, ratio);
    return {low, high, centre, 2 * (high - centre)};
}

}  // namespace

SigmoidShape::SigmoidShape(std::span<const uint32_t> histogram, int32_t pixelCount, int32_t outputRange,
                           double ratio, int32_t limitBin)
    : place_(FindPlace(histogram, pixelCount, ratio, limitBin)),
      outputRange_(outputRange),
      top_(WrappingAdd(outputRange, kHeadroom)),
      floor_(CurveAt(place_.low)),
      ceiling_(CurveAt(place_.high)) {}

uint16_t SigmoidShape::EntryAt(int32_t level) const {
    if (level < place_.low) return Stretch(floor_);
    return Stretch(level < place_.high ? CurveAt(level) : ceiling_);
}

// Without a width this is a division of 0 by 0 at the centre, and the conversion makes it INT32_MIN.
int32_t SigmoidShape::CurveAt(int32_t level) const {
    return TruncateToInt32(top_ / (1 + Exp(kSlope * (level - place_.centre) / place_.width)));
}

uint16_t SigmoidShape::Stretch(int32_t value) const {
    const double rise = WrappingSubtract(ceiling_, floor_);
    const double share = WrappingSubtract(LowBits16(value), floor_) / rise;
    return LowBits16(TruncateToInt32(outputRange_ * share));
}

std::vector<uint16_t> SigmoidShape::Table(int32_t maxValue) const {
    // The low end is at or below the high one, and both are in the table.
    std::vector<uint16_t> table(static_cast<size_t>(maxValue) + 1);
    const auto begin = table.begin();
    std::fill(begin, begin + place_.low, Stretch(floor_));
    for (int32_t level = place_.low; level < place_.high; ++level) begin[level] = EntryAt(level);
    std::fill(begin + place_.high, table.end(), Stretch(ceiling_));
    return table;
}

std::vector<uint16_t> BuildSigmoidCurve(const uint16_t* pixels, int32_t width, int32_t height,
                                        int32_t maxValue, int32_t outputRange, double ratio,
                                        int32_t limitBin) {
    assert(0 <= maxValue && maxValue <= kTopPixel);
    const SigmoidShape shape(BuildUnclampedHistogram(pixels, width, height, maxValue), width * height,
                             outputRange, ratio, limitBin);
    return shape.Table(maxValue);
}

}  // namespace vastrelline
