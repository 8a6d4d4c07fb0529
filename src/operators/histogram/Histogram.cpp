// SPDX-License-Identifier: Apache-2.0
#include "operators/histogram/Histogram.h"

#include <algorithm>
#include <cassert>

#include "operators/histogram/PixelRange.h"
#include "pixels/FrameLimits.h"
#include "pixels/FrameView.h"

namespace vastrelline {

namespace {

// The window with which every tone stage smooths before it looks for the ends of a histogram.
constexpr int32_t kCutWindow = 50;

// Pixels of each level up to `last`; what lies above counts there. Neighbouring pixels are often alike: four
// tables keep one count from waiting for the one before it. Tables no larger than the levels stay in the
// nearest cache and cost little to clear.
std::vector<uint32_t> CountLevels(const FrameView<const uint16_t>& frame, uint16_t last) {
    const size_t levels = size_t{last} + 1;
    // Counts of one level a multiple of 4096 bytes apart would be taken for one another, and wait all the
    // same.
    constexpr size_t kGap = 16;
    const size_t stride = levels + kGap;
    std::vector<uint32_t> counts(4 * stride);
    uint32_t* const tables[4] = {&counts[0], &counts[stride], &counts[2 * stride], &counts[3 * stride]};
    constexpr size_t kBlock = 4096;
    uint16_t clamped[kBlock];
    for (size_t start = 0; start < frame.Count(); start += kBlock) {
        const uint16_t* pixels = frame.begin() + start;
        const size_t count = std::min(frame.Count() - start, kBlock);
        // To clamp every pixel to the top would cost more than to see that none is above it.
        if (FindPixelRange(pixels, static_cast<int32_t>(count), 1).largest > last) {
            std::transform(pixels, pixels + count, clamped,
                           [=](uint16_t pixel) { return std::min(pixel, last); });
            pixels = clamped;
        }
        size_t i = 0;
        for (; i + 4 <= count; i += 4) {
            const size_t bins[4] = {pixels[i], pixels[i + 1], pixels[i + 2], pixels[i + 3]};
            ++tables[0][bins[0]];
            ++tables[1][bins[1]];
            ++tables[2][bins[2]];
            ++tables[3][bins[3]];
        }
        for (; i < count; ++i) ++tables[0][pixels[i]];
    }
    for (size_t level = 0; level < levels; ++level) {
        tables[0][level] += tables[1][level] + tables[2][level] + tables[3][level];
    }
    counts.resize(levels);
    return counts;
}

}  // namespace

std::vector<uint32_t> BuildUnclampedHistogram(const uint16_t* pixels, int32_t width, int32_t height,
                                              int32_t maxValue) {
    if (maxValue < 0) return {};
    // One more bin takes what is not to be counted.
    const int32_t last = maxValue < kTopPixel ? maxValue + 1 : kTopPixel;
    std::vector<uint32_t> counts = CountLevels({pixels, width, height}, static_cast<uint16_t>(last));
    counts.resize(static_cast<size_t>(maxValue) + 1);
    return counts;
}

std::vector<uint32_t> BuildHistogram(const uint16_t* pixels, int32_t width, int32_t height,
                                     int32_t maxValue) {
    if (maxValue < 0) return {};
    std::vector<uint32_t> counts =
        CountLevels({pixels, width, height}, static_cast<uint16_t>(std::min(maxValue, kTopPixel)));
    counts.resize(static_cast<size_t>(maxValue) + 1);
    return counts;
}

void SmoothHistogram(const uint32_t* histogram, uint32_t* smoothed, int32_t bins, int32_t window) {
    assert(window >= 0);
    if (window % 2 == 0) ++window;
    if (bins <= window + 3) {
        std::copy_n(histogram, std::max(bins, 0), smoothed);
        return;
    }
    const int32_t half = window / 2;
    uint32_t sum = 0;
    // The range of bin 0 begins below the table: only bins 0 to half - 1 of it exist.
    for (int32_t i = 0; i < half; ++i) sum += histogram[i];
    for (int32_t i = 0; i < bins; ++i) {
        const int32_t first = std::max(i - half, 0);
        const int32_t end = std::min(i + half, bins);
        const bool isWhole = i >= half && i < bins - half;
        const int32_t divisor = isWhole ? window : end - first;
        smoothed[i] = divisor > 0 ? sum / static_cast<uint32_t>(divisor) : 0;
        if (i + half < bins) sum += histogram[i + half];
        if (i - half >= 0) sum -= histogram[i - half];
    }
}

HistogramCut FindHistogramCut(std::span<const uint32_t> histogram, int32_t limit) {
    const int32_t bins = static_cast<int32_t>(histogram.size());
    std::vector<uint32_t> smoothed(histogram.size());
    SmoothHistogram(histogram.data(), smoothed.data(), bins, kCutWindow);
    const auto standsOut = [&](int32_t level) {
        const size_t bin = static_cast<size_t>(level);
        return static_cast<int32_t>(smoothed[bin]) > limit && histogram[bin] != 0;
    };
    HistogramCut cut{-1, -1};
    for (int32_t level = 0; level < bins && cut.low < 0; ++level) {
        if (standsOut(level)) cut.low = level;
    }
    for (int32_t level = bins - 1; level >= 1 && cut.high < 0; --level) {
        if (standsOut(level)) cut.high = level;
    }
    return cut;
}

}  // namespace vastrelline
