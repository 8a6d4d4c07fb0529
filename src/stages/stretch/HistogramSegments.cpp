// SPDX-License-Identifier: Apache-2.0
#include "stages/stretch/HistogramSegments.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "operators/histogram/Histogram.h"
#include "operators/histogram/OtsuThreshold.h"
#include "operators/histogram/PixelRange.h"
#include "operators/histogram/SmoothedCopy.h"
#include "pixels/Truncate.h"

namespace vastrelline {

namespace {

constexpr int32_t kRangeWindow = 20;
constexpr int32_t kPeakWindow = 101;

// The darkest pixels, as a share of all, and the brightest levels: neither may win the main peak.
constexpr double kDarkShare = 0.005;
constexpr int32_t kBrightLevels = 10;

// Reach of a centred difference of the smoothed histogram, in levels to each side.
constexpr int32_t kSlopeReach = 5;

// The main peak is looked for without these shares of the occupied levels.
constexpr double kShareBelowPeak = 0.2;
constexpr double kShareAbovePeak = 0.1;

// A table over the levels that counts as 0 outside.
template <typename Value>
class LevelTable {
public:
    explicit LevelTable(std::vector<Value> values) : values_(std::move(values)) {}

    Value operator[](int32_t level) const {
        return level >= 0 && level <= Top() ? values_[static_cast<size_t>(level)] : Value{0};
    }
    int32_t Top() const { return static_cast<int32_t>(values_.size()) - 1; }

private:
    std::vector<Value> values_;
};

// The levels in which the object may lie.
struct OccupiedLevels {
    int32_t floorLevel;  // the darkest pixels lie at it and below
    int32_t ceilLevel;   // the brightest pixel
};

OccupiedLevels FindOccupiedLevels(const CountedFrame& frame) {
    const int32_t bins = static_cast<int32_t>(frame.histogram.size());
    const int32_t cut = TruncateToInt32(kDarkShare * frame.width * frame.height);
    OccupiedLevels levels{0, 0};
    int32_t sum = 0;
    for (int32_t level = 0; level < bins; ++level) {
        sum += static_cast<int32_t>(frame.histogram[static_cast<size_t>(level)]);
        if (sum <= cut) continue;
        levels.floorLevel = level;
        break;
    }
    levels.ceilLevel = bins - 1;
    while (levels.ceilLevel > 0 && frame.histogram[static_cast<size_t>(levels.ceilLevel)] == 0) {
        --levels.ceilLevel;
    }
    return levels;
}

// The histogram without the darkest pixels and the brightest levels, smoothed.
LevelTable<int32_t> SmoothObject(std::span<const uint32_t> histogram, const OccupiedLevels& levels) {
    std::vector<uint32_t> object(histogram.begin(), histogram.end());
    const auto blank = [&](int32_t first, int32_t last) {
        std::fill(object.begin() + std::max(first, 0), object.begin() + last + 1, 0);
    };
    blank(levels.ceilLevel - (kBrightLevels - 1), levels.ceilLevel);
    blank(0, levels.floorLevel);
    return LevelTable(SmoothedCopy(object, static_cast<int32_t>(object.size()), kPeakWindow));
}

// Not 0 at the levels where the slope turns from rising to falling.
LevelTable<int32_t> FindPeaks(const LevelTable<int32_t>& smooth) {
    const int32_t top = smooth.Top();
    std::vector<int32_t> slopes(static_cast<size_t>(top) + 1);
    for (int32_t level = kSlopeReach; level <= top - kSlopeReach; ++level) {
        slopes[static_cast<size_t>(level)] = smooth[level + kSlopeReach] - smooth[level - kSlopeReach];
    }
    const LevelTable slope(std::move(slopes));
    std::vector<int32_t> peaks(static_cast<size_t>(top) + 1);
    for (int32_t level = kSlopeReach; level <= top - kSlopeReach; ++level) {
        const int32_t before = slope[level - kSlopeReach];
        const int32_t after = slope[level + kSlopeReach];
        if (before > 0 && after < 0) peaks[static_cast<size_t>(level)] = after - before;
    }
    return LevelTable(std::move(peaks));
}

// The lowest point from `first` up to but not including `end` that is below `limit` and lower than the one at
// `peak`; of equally low ones the first; `fallback` if there is none. An empty gap is no valley: the point
// beside it is.
int32_t FindValley(const LevelTable<int32_t>& smooth, int32_t first, int32_t end, int32_t peak, int32_t limit,
                   int32_t fallback) {
    int32_t valley = fallback;
    int32_t best = smooth[peak];
    for (int32_t level = first; level < std::min(end, smooth.Top() + 1); ++level) {
        const int32_t height = smooth[level];
        if (height == 0 || height >= best || height >= limit) continue;
        best = height;
        valley = level;
    }
    return valley;
}

}  // namespace

void FindOccupiedRange(const uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue, int32_t limit,
                       int32_t& low, int32_t& top) {
    FindOccupiedRange(BuildHistogram(pixels, width, height, maxValue), limit, low, top);
}

void FindOccupiedRange(std::span<const uint32_t> histogram, int32_t limit, int32_t& low, int32_t& top) {
    const int32_t bins = static_cast<int32_t>(histogram.size());
    const std::vector<int32_t> smooth = SmoothedCopy(histogram, bins, kRangeWindow);
    const auto isOccupied = [&](int32_t level) {
        const size_t bin = static_cast<size_t>(level);
        return smooth[bin] > limit && histogram[bin] != 0;
    };
    int32_t level = 0;
    while (level < bins && !isOccupied(level)) ++level;
    if (level < bins) low = level;
    level = bins - 1;
    while (level >= 1 && !isOccupied(level)) --level;
    if (level >= 1) top = level;
}

int32_t FindStretchSegments(const uint16_t* pixels, StretchSegment& segment, int32_t width, int32_t height,
                            int32_t maxValue, int32_t fallbackLow, int32_t fallbackTop, int32_t limit) {
    const std::vector<uint32_t> histogram = BuildHistogram(pixels, width, height, maxValue);
    const auto [smallest, largest] = FindPixelRange(pixels, width, height);
    const CountedFrame frame{width, height, smallest, largest, histogram};
    segment = FindStretchSegments(frame, fallbackLow, fallbackTop, limit);
    return 1;
}

StretchSegment FindStretchSegments(const CountedFrame& frame, int32_t fallbackLow, int32_t fallbackTop,
                                   int32_t limit) {
    if (fallbackLow == 0 && fallbackTop == 0) {
        fallbackLow = frame.minLevel;
        fallbackTop = frame.maxLevel;
    }
    const OccupiedLevels levels = FindOccupiedLevels(frame);
    const LevelTable<int32_t> smooth = SmoothObject(frame.histogram, levels);
    const LevelTable<int32_t> peaks = FindPeaks(smooth);

    const int32_t span = levels.ceilLevel - levels.floorLevel + 1;
    const int32_t peakFrom = TruncateToInt32(levels.floorLevel + span * kShareBelowPeak);
    const int32_t peakTo = TruncateToInt32(levels.ceilLevel - span * kShareAbovePeak);
    int32_t peak = peakFrom + (peakTo - peakFrom) / 2;
    int32_t best = 0;
    // From above, so that of equal heights the higher level wins.
    for (int32_t level = peakTo; level > peakFrom; --level) {
        if (peaks[level] == 0 || smooth[level] <= best) continue;
        best = smooth[level];
        peak = level;
    }

    const int32_t otsu =
        ComputeOtsuThreshold(frame.histogram, static_cast<double>(frame.width) * frame.height);
    const int64_t leftPeakLimit = int64_t{2} * limit;
    int32_t start = 0;
    while (start < otsu && !(peaks[start] != 0 && smooth[start] > leftPeakLimit)) ++start;
    if (start >= otsu) start = levels.floorLevel;

    int32_t end = std::min(fallbackTop, peaks.Top());
    while (end > peakTo && peaks[end] == 0) --end;
    if (end <= peakTo) end = fallbackTop;

    return {FindValley(smooth, start, peak, peak, limit, fallbackLow),
            FindValley(smooth, peak, end, peak, limit, fallbackTop)};
}

}  // namespace vastrelline
