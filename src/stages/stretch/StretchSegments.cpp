// SPDX-License-Identifier: Apache-2.0
#include "stages/stretch/StretchSegments.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <vector>

#include "operators/curves/LinearCurve.h"
#include "operators/curves/StretchCurve.h"
#include "pixels/FrameView.h"
#include "pixels/Truncate.h"

namespace vastrelline {

namespace {

// A level counts as occupied from about so many pixels on: more in the frames of a large sensor.
constexpr int32_t kLargeFrameWidth = 1000;
constexpr int32_t kOccupiedInLargeFrame = 100;
constexpr int32_t kOccupied = 10;

// The tails get no more output levels than they have levels.
StretchFunction BuildWithinRange(TonedFrame& frame, int32_t maxValue, int32_t left, int32_t right,
                                 const StretchParams& params) {
    const int32_t leftLen = std::min(params.LEFT_LEN_LIMIT, left);
    const int32_t rightLen = std::min(params.RIGHT_LEN_LIMIT, maxValue - right);
    const int32_t midLen = WrappingSubtract(WrappingSubtract(maxValue + 1, leftLen), rightLen);
    return MakeStretchCurve(
        frame.MinLevel(), frame.MaxLevel(), maxValue,
        {left, right, params.STRETCH_LEFT_WEIGHT, params.STRETCH_RIGHT_WEIGHT, leftLen, midLen, rightLen});
}

// `low` and `top` are the ends of the frame's range: where no valley is found, and in the modes that ask for
// none.
SegmentCurve BuildFromValleys(TonedFrame& frame, int32_t maxValue, int32_t low, int32_t top,
                              const StretchParams& params) {
    const std::vector<uint32_t> histogram = frame.Histogram(maxValue);
    const StretchSegment valleys =
        FindStretchSegments({frame.Width(), frame.Height(), frame.MinLevel(), frame.MaxLevel(), histogram},
                            low, top, params.STRETCH_LIMITBIN);
    const StretchMode mode{params.STRETCH_SEPARATION_CNT};
    const int32_t left = mode == StretchMode::WholeRange ? low : valleys.left;
    const int32_t right = mode == StretchMode::BothValleys ? valleys.right : top;
    return {valleys, BuildWithinRange(frame, maxValue, left, right, params)};
}

// The first level from 0 up at which the running sum of pixels passes `count`; -1 if none does.
int32_t WalkUp(std::span<const uint32_t> histogram, int32_t count) {
    int32_t sum = 0;
    for (size_t level = 0; level < histogram.size(); ++level) {
        sum += static_cast<int32_t>(histogram[level]);
        if (count < sum) return static_cast<int32_t>(level);
    }
    return -1;
}

// The first level from the top down to 1.
int32_t WalkDown(std::span<const uint32_t> histogram, int32_t count) {
    int32_t sum = 0;
    for (size_t level = histogram.size() - 1; level >= 1; --level) {
        sum += static_cast<int32_t>(histogram[level]);
        if (count < sum) return static_cast<int32_t>(level);
    }
    return -1;
}

}  // namespace

SegmentCurve BuildSegmentCurve(TonedFrame& frame, int32_t maxValue, const StretchParams& params) {
    const int32_t limit = frame.Width() < kLargeFrameWidth ? kOccupied : kOccupiedInLargeFrame;
    int32_t low = 0;
    int32_t top = 0;
    FindOccupiedRange(frame.Histogram(maxValue), limit, low, top);
    low = 0;  // whatever was found: the dark tail begins at black
    return BuildFromValleys(frame, maxValue, low, top, params);
}

SegmentCurve BuildFixedSegmentCurve(TonedFrame& frame, int32_t maxValue, const StretchParams& params) {
    return BuildFromValleys(frame, maxValue, frame.MinLevel(), frame.MaxLevel(), params);
}

StretchFunction BuildPercentCurve(TonedFrame& frame, int32_t maxValue, const StretchParams& params) {
    const double pixelCount = static_cast<double>(frame.Count());
    const int32_t count = TruncateToInt32(pixelCount * (params.STRETCH_LIMITBIN * 0.01));
    const std::vector<uint32_t> histogram = frame.UnclampedHistogram(maxValue);
    int32_t left = WalkUp(histogram, count);
    int32_t right = WalkDown(histogram, count);
    int32_t low = 0;
    int32_t top = 0;
    FindOccupiedRange(frame.Histogram(maxValue), kOccupied, low, top);
    const StretchMode mode{params.STRETCH_SEPARATION_CNT};
    if (mode == StretchMode::LeftPercent) right = top;
    if (mode == StretchMode::RightPercent) left = low;

    const int32_t leftLen = params.LEFT_LEN_LIMIT;
    const int32_t rightLen = params.RIGHT_LEN_LIMIT;
    const int32_t midLen = WrappingSubtract(WrappingSubtract(maxValue + 1, leftLen), rightLen);
    return MakeStretchCurve(
        frame.MinLevel(), frame.MaxLevel(), maxValue,
        {left, right, params.STRETCH_LEFT_WEIGHT, params.STRETCH_RIGHT_WEIGHT, leftLen, midLen, rightLen});
}

void MarkDarkTail(const uint16_t* pixels, uint16_t* tailMask, int32_t width, int32_t height, int32_t level) {
    constexpr uint16_t kMarked = 255;
    const FrameView<const uint16_t> frame(pixels, width, height);
    uint16_t* mark = tailMask;
    for (const uint16_t pixel : frame) {
        *mark = pixel < level ? kMarked : *mark;
        ++mark;
    }
}

bool AddRestretch(TonedFrame& frame, int32_t maxValue, int32_t option) {
    constexpr int32_t kFromMinimum = 1;
    constexpr int32_t kLinear = 2;
    if (option == kLinear) {
        const LinearRamp ramp = FindLinearRamp(frame, maxValue, maxValue, 0, 0);
        frame.MapBy([&](int32_t level) { return ramp.EntryAt(std::min(level, maxValue)); });
        return true;
    }
    if (option != kFromMinimum) return false;
    const int32_t minLevel = frame.MinLevel();
    frame.MapBy([=](int32_t level) { return LowBits16(level - minLevel); });
    return true;
}

void AddStretchCurve(TonedFrame& frame, int32_t maxValue, const StretchFunction& curve) {
    frame.MapBy([&](int32_t level) { return LowBits16(curve(std::min(level, maxValue))); });
}

}  // namespace vastrelline
