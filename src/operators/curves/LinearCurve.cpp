// SPDX-License-Identifier: Apache-2.0
#include "operators/curves/LinearCurve.h"

#include <algorithm>

#include "operators/histogram/Histogram.h"
#include "pixels/FrameLimits.h"
#include "pixels/Truncate.h"

namespace vastrelline {

namespace {

constexpr int32_t kFromPixelCount = 1;
constexpr int32_t kFullRange = -1;

// Bins above the largest pixel are empty. So many of them are kept, so that the smoothing ends as it would
// with all.
constexpr int32_t kEmptyBins = 64;

// Whether the ramp ends at the top of the range, whatever the frame.
bool IsFullRange(int32_t limitBin, int32_t mode) { return mode != kFromPixelCount && limitBin == kFullRange; }

// The level at which the ramp ends.
int32_t FindRampEnd(std::span<const uint32_t> histogram, int32_t maxValue, int32_t limitBin, int32_t mode) {
    if (IsFullRange(limitBin, mode)) return maxValue;
    if (mode != kFromPixelCount) {
        const int32_t high = FindHistogramCut(histogram, limitBin).high;
        return high >= 0 ? high : maxValue;
    }
    if (limitBin < 0 && maxValue >= 1) return maxValue;  // passed before the first pixel is counted
    int32_t sum = 0;
    for (size_t level = histogram.size() - 1; level >= 1; --level) {
        sum += static_cast<int32_t>(histogram[level]);
        if (limitBin < sum) return static_cast<int32_t>(level);
    }
    return -1;
}

}  // namespace

int32_t RampValue(int32_t outputRange, double place) {
    // The upper limit acts on the double, for past the ramp the product may pass 32 bits.
    const double value = std::min<double>(outputRange * place, outputRange);
    return std::max(TruncateToInt32(value), 0);
}

uint16_t RampEntry(int32_t outputRange, double place) { return LowBits16(RampValue(outputRange, place)); }

LinearRamp FindLinearRamp(const uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue,
                          int32_t outputRange, int32_t limitBin, int32_t mode) {
    if (IsFullRange(limitBin, mode)) return {static_cast<double>(maxValue), outputRange};
    const std::vector<uint32_t> histogram =
        BuildUnclampedHistogram(pixels, width, height, std::min(maxValue, kTopPixel + kEmptyBins));
    return {static_cast<double>(FindRampEnd(histogram, maxValue, limitBin, mode)), outputRange};
}

LinearRamp FindLinearRamp(TonedFrame& frame, int32_t maxValue, int32_t outputRange, int32_t limitBin,
                          int32_t mode) {
    if (IsFullRange(limitBin, mode)) return {static_cast<double>(maxValue), outputRange};
    const std::vector<uint32_t> histogram =
        frame.UnclampedHistogram(std::min(maxValue, kTopPixel + kEmptyBins));
    return {static_cast<double>(FindRampEnd(histogram, maxValue, limitBin, mode)), outputRange};
}

std::vector<uint16_t> MakeRampTable(const LinearRamp& ramp, int32_t maxValue) {
    std::vector<uint16_t> table(static_cast<size_t>(std::min(maxValue, kTopPixel)) + 1);
    for (size_t level = 0; level < table.size(); ++level)
        table[level] = ramp.EntryAt(static_cast<int32_t>(level));
    return table;
}

std::vector<uint16_t> BuildLinearCurve(const uint16_t* pixels, int32_t width, int32_t height,
                                       int32_t maxValue, int32_t outputRange, int32_t limitBin,
                                       int32_t mode) {
    return MakeRampTable(FindLinearRamp(pixels, width, height, maxValue, outputRange, limitBin, mode),
                         maxValue);
}

}  // namespace vastrelline
