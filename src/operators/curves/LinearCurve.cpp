#include "operators/curves/LinearCurve.h"

#include <algorithm>

#include "operators/curves/LookupTable.h"
#include "operators/histogram/Histogram.h"
#include "operators/histogram/PixelRange.h"
#include "pixels/Truncate.h"
#include "platform/TextFormat.h"
#include "report/CurveFile.h"

namespace vastrelline {

namespace {

constexpr int32_t kTopPixel = 0xFFFF;
constexpr int32_t kFromPixelCount = 1;
constexpr int32_t kFullRange = -1;

// Bins above the largest pixel are empty. So many of them are kept, so that the smoothing ends as it would
// with all.
constexpr int32_t kEmptyBins = 64;

// A level's place on a ramp as an output, within 0..outputRange. The upper limit acts on the double, so that
// levels past the ramp map to outputRange also where the product passes 32 bits.
uint16_t RampEntry(int32_t outputRange, double place) {
    const double value = std::min<double>(outputRange * place, outputRange);
    return LowBits16(std::max(TruncateToInt32(value), 0));
}

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

std::vector<uint16_t> BuildLinearCurve(const uint16_t* pixels, int32_t width, int32_t height,
                                       int32_t maxValue, int32_t outputRange, int32_t limitBin,
                                       int32_t mode) {
    if (IsFullRange(limitBin, mode)) {
        return BuildLinearCurve(std::span<const uint32_t>(), maxValue, outputRange, limitBin, mode);
    }
    return BuildLinearCurve(
        BuildUnclampedHistogram(pixels, width, height, std::min(maxValue, kTopPixel + kEmptyBins)), maxValue,
        outputRange, limitBin, mode);
}

std::vector<uint16_t> BuildLinearCurve(std::span<const uint32_t> histogram, int32_t maxValue,
                                       int32_t outputRange, int32_t limitBin, int32_t mode) {
    const double high = FindRampEnd(histogram, maxValue, limitBin, mode);
    std::vector<uint16_t> table(static_cast<size_t>(std::min(maxValue, kTopPixel)) + 1);
    for (size_t level = 0; level < table.size(); ++level) {
        table[level] = RampEntry(outputRange, static_cast<double>(level) / high);
    }
    return table;
}

void ApplyLinearCurve(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue, int32_t outputRange,
                      int32_t limitBin, int32_t mode, int32_t saveCurve, const std::wstring& path,
                      int32_t number) {
    const std::vector<uint16_t> table =
        BuildLinearCurve(pixels, width, height, maxValue, outputRange, limitBin, mode);
    if (saveCurve != 0) {
        WriteCurveFile(path + FormatText(L"%02d_LinearCurve.txt", {number}), 0,
                       static_cast<int32_t>(table.size()) - 1,
                       [&](int32_t level) { return table[static_cast<size_t>(level)]; });
    }
    ApplyLookupTable(pixels, width, height, table);
}

void ApplyWindowCurve(uint16_t* pixels, int32_t width, int32_t height, int32_t windowWidth, int32_t centre,
                      int32_t outputRange, int32_t saveCurve, const std::wstring& path, int32_t number) {
    const int32_t halfWidth = TruncateToInt32(windowWidth / 2.0 + 0.5);
    const int32_t lowEdge = WrappingSubtract(centre, halfWidth);
    const int32_t highEdge = WrappingAdd(centre, halfWidth);
    const double rampWidth = WrappingSubtract(highEdge, lowEdge);
    const int32_t maxPixel = MaxPixel(pixels, width, height);
    std::vector<uint16_t> table(static_cast<size_t>(maxPixel) + 1);
    for (int32_t level = 0; level <= maxPixel; ++level) {
        const double place = level <= highEdge ? WrappingSubtract(level, lowEdge) / rampWidth : 1.0;
        table[static_cast<size_t>(level)] = RampEntry(outputRange, place);
    }
    if (saveCurve != 0) {
        WriteCurveFile(path + FormatText(L"%02d_LinearCurve2.txt", {number}), 0, std::min(highEdge, maxPixel),
                       [&](int32_t level) { return table[static_cast<size_t>(level)]; });
    }
    ApplyLookupTable(pixels, width, height, table);
}

}  // namespace vastrelline
