// SPDX-License-Identifier: Apache-2.0
#include "stages/adaptive_unsharp/ValueHistogram.h"

#include <cstddef>

#include "operators/histogram/Histogram.h"
#include "operators/histogram/PixelRange.h"
#include "pixels/FrameLimits.h"
#include "pixels/FrameView.h"
#include "pixels/Truncate.h"
#include "stages/adaptive_unsharp/DetailLoops.h"

namespace vastrelline {

void MinMaxPixels(const uint16_t* pixels, int32_t width, int32_t height, int32_t& outMin, int32_t& outMax) {
    const PixelRange range = FindPixelRange(pixels, width, height);
    const bool isEmpty = range.largest < range.smallest;
    outMin = isEmpty ? kTopPixel : range.smallest;
    outMax = isEmpty ? -32767 : range.largest;
}

std::vector<uint32_t> ValueHistogram(const uint16_t* pixels, int32_t width, int32_t height, int32_t& outMin,
                                     int32_t& outMax) {
    MinMaxPixels(pixels, width, height, outMin, outMax);
    if (outMax < outMin) return {};
    // Counted by levels in several tables: neighbours in a smooth image are alike, and would wait for each
    // other in one.
    const std::vector<uint32_t> levels = BuildHistogram(pixels, width, height, outMax);
    return {levels.begin() + outMin, levels.end()};
}

int32_t ClipHistogramTails(uint16_t* pixels, double fraction, int32_t width, int32_t height) {
    int32_t smallest = 0;
    int32_t largest = 0;
    const std::vector<uint32_t> histogram = ValueHistogram(pixels, width, height, smallest, largest);
    const auto bins = static_cast<int32_t>(histogram.size());
    const FrameView<uint16_t> frame(pixels, width, height);
    const int64_t limit = TruncateToInt32(static_cast<double>(frame.Count()) * fraction + 0.5);

    int32_t low = -1;
    int64_t sum = 0;
    for (int32_t bin = 0; bin < bins && low < 0; ++bin) {
        sum += histogram[static_cast<size_t>(bin)];
        if (sum > limit) low = bin + smallest;
    }
    int32_t high = -1;
    sum = 0;
    for (int32_t bin = bins - 1; bin > 0 && high < 0; --bin) {
        sum += histogram[static_cast<size_t>(bin)];
        if (sum > limit) high = bin + smallest;
    }
    if (low < 0 || high < 0 || low >= high) return 0;
    FastestOf(DetailVariants())
        .run->clampToLevels(pixels, frame.Count(), static_cast<uint16_t>(low), static_cast<uint16_t>(high));
    return 1;
}

}  // namespace vastrelline
