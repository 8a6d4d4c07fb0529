// SPDX-License-Identifier: Apache-2.0
#include "sensor/TargetRange.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <vector>

#include "pixels/FrameView.h"
#include "pixels/Truncate.h"

namespace vastrelline {

namespace {

constexpr int32_t kTopLevel = 4095;
constexpr int32_t kTailSlots = 20;
// The estimated range is never narrower than this, in levels.
constexpr float kNarrowestRange = 200.0F;

// The first level at which the running count passes `cutCount`.
std::optional<float> FindLowCut(const std::vector<uint32_t>& histogram, float cutCount) {
    float sum = 0.0F;
    for (size_t level = 0; level < histogram.size(); ++level) {
        sum += static_cast<float>(histogram[level]);
        if (cutCount < sum) return static_cast<float>(level);
    }
    return std::nullopt;
}

// The highest occupied level above 0; 0 if there is none.
int32_t FindTop(const std::vector<uint32_t>& histogram) {
    for (size_t level = histogram.size() - 1; level >= 1; --level) {
        if (histogram[level] > 0) return static_cast<int32_t>(level);
    }
    return 0;
}

// The last slot holds the highest level, slots 18 down to 0 the levels at which the count from the top passes
// 1, 2, ... 19 times `cutCount`. A level fills at most one slot; slots that are not reached stay 0.
std::array<uint16_t, kTailSlots> BuildTailTable(const std::vector<uint32_t>& histogram, int32_t top,
                                                float cutCount) {
    std::array<uint16_t, kTailSlots> slots{};
    slots.back() = LowBits16(top);
    int32_t slot = kTailSlots - 2;
    int32_t multiple = 1;
    float sum = 0.0F;
    for (size_t level = histogram.size() - 1; level >= 1 && slot >= 0; --level) {
        sum += static_cast<float>(histogram[level]);
        const int32_t limit = TruncateToInt32(static_cast<float>(multiple) * cutCount);
        if (sum > static_cast<float>(limit)) {
            slots[static_cast<size_t>(slot)] = static_cast<uint16_t>(level);
            --slot;
            ++multiple;
        }
    }
    return slots;
}

}  // namespace

void ApplyTargetRange(uint16_t* frame, int32_t width, int32_t height, int32_t targetRange,
                      int32_t minimumValue, float maxCut, float minCut) {
    TonedFrame toned({frame, width, height});
    ApplyTargetRange(toned, targetRange, minimumValue, maxCut, minCut);
    toned.Change();
}

void ApplyTargetRange(TonedFrame& frame, int32_t targetRange, int32_t minimumValue, float maxCut,
                      float minCut) {
    if (frame.Count() == 0) return;
    const auto pixelCount = static_cast<float>(frame.Count());
    const float maxCutCount = pixelCount * maxCut;
    const float minCutCount = pixelCount * minCut;
    const std::vector<uint32_t> histogram = frame.Histogram(kTopLevel);
    const float smallest = std::min(4096.0F, static_cast<float>(frame.MinLevel()));
    const auto largest = static_cast<float>(frame.MaxLevel());

    const std::optional<float> cut = FindLowCut(histogram, minCutCount);
    const int32_t top = FindTop(histogram);
    if (!cut || top == 0) return;
    float lowCut = *cut;
    if (lowCut < static_cast<float>(minimumValue)) lowCut += static_cast<float>(minimumValue);

    const std::array<uint16_t, kTailSlots> tail = BuildTailTable(histogram, top, maxCutCount);
    const int32_t threshold = FindIsodataThreshold(tail.data(), kTailSlots, 1, kTopLevel, 0.0001F, 0, top);
    float highCut = static_cast<float>(std::min<int32_t>(threshold, tail[kTailSlots - 2]));
    if (std::fabs(highCut - lowCut) < kNarrowestRange || highCut < lowCut) highCut = lowCut + kNarrowestRange;

    const auto target = static_cast<float>(targetRange);
    const float range = highCut - lowCut;
    if (!(target > range)) return;
    const int32_t scale = std::min(TruncateToInt32(target * (largest - smallest) / range), kTopLevel);
    frame.MapBy([&](int32_t level) {
        const float scaled = static_cast<float>(level) / largest * static_cast<float>(scale);
        // A signed 16-bit number before the limits: what wraps below 0 becomes 0.
        const auto value = static_cast<int16_t>(LowBits16(TruncateToInt32(scaled)));
        return LowBits16(std::clamp<int32_t>(value, 0, kTopLevel));
    });
}

int32_t FindIsodataThreshold(const uint16_t* values, int32_t width, int32_t height, int32_t bins,
                             float epsilon, int32_t low, int32_t high) {
    const FrameView<const uint16_t> all(values, width, height);
    // One bin more than asked for: a value may be equal to `bins`.
    std::vector<uint32_t> histogram(static_cast<size_t>(bins) + 1);
    // The value at index 0 is left out: results depend on it.
    for (size_t i = all.Count(); i-- > 1;) {
        if (all.begin()[i] <= bins) ++histogram[all.begin()[i]];
    }
    const auto countAt = [&](int32_t level) { return histogram[static_cast<size_t>(level)]; };

    uint32_t total = 0;
    for (int32_t level = low; level <= high; ++level) total += countAt(level);
    const int32_t half = TruncateToInt32(total / 2.0);
    int32_t threshold = 0;
    int32_t sum = 0;
    for (int32_t level = low; level <= high; ++level) {
        sum += static_cast<int32_t>(countAt(level));
        if (sum >= half) {
            threshold = level;
            break;
        }
    }

    // Mean of the levels first..last, none of them taken as less than `lowestLevel`.
    const auto meanOf = [&](int32_t first, int32_t last, int32_t lowestLevel) {
        float weighted = 0.0F;
        float count = 0.0F;
        for (int32_t level = first; level <= last; ++level) {
            const auto here = static_cast<float>(countAt(level));
            weighted += static_cast<float>(std::max(level, lowestLevel)) * here;
            count += here;
        }
        return count == 0.0F ? 0.0F : weighted / count;
    };
    // Each round moves the threshold halfway to the middle of the two means; more rounds than levels would
    // be a cycle.
    for (int32_t round = 0; round <= bins; ++round) {
        // Level 0 weighs as 1 in the dark part, and as 0 where a threshold of 0 puts it in the bright one.
        const float meanLow = meanOf(low, threshold - 1, 1);
        const float meanHigh = meanOf(threshold, high, 0);
        const float middle = (meanLow + meanHigh) / 2;
        if (!(middle * epsilon < std::fabs(meanLow - meanHigh))) break;
        const int32_t previous = threshold;
        threshold = TruncateToInt32((middle + static_cast<float>(threshold)) / 2);
        if (previous == threshold) break;
    }
    return threshold;
}

}  // namespace vastrelline
