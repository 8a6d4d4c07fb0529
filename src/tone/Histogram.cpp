#include "tone/Histogram.h"

#include <algorithm>
#include <cassert>

#include "image/FrameView.h"

namespace vastrelline {

namespace {

// The window with which every tone stage smooths before it looks for the ends of a histogram.
constexpr int32_t kCutWindow = 50;

// Pixels of all 16-bit levels. Neighbouring pixels are often alike; four tables keep one count from waiting
// for the one before it.
std::vector<uint32_t> CountAllLevels(const FrameView<const uint16_t>& frame) {
    constexpr size_t kLevels = 0x10000;
    std::vector<uint32_t> counts(4 * kLevels);
    uint32_t* const tables[4] = {&counts[0], &counts[kLevels], &counts[2 * kLevels], &counts[3 * kLevels]};
    const uint16_t* pixel = frame.begin();
    for (; frame.end() - pixel >= 4; pixel += 4) {
        ++tables[0][pixel[0]];
        ++tables[1][pixel[1]];
        ++tables[2][pixel[2]];
        ++tables[3][pixel[3]];
    }
    for (; pixel != frame.end(); ++pixel) ++tables[0][*pixel];
    for (size_t level = 0; level < kLevels; ++level) {
        tables[0][level] += tables[1][level] + tables[2][level] + tables[3][level];
    }
    counts.resize(kLevels);
    return counts;
}

}  // namespace

std::vector<uint32_t> BuildUnclampedHistogram(const uint16_t* pixels, int32_t width, int32_t height,
                                              int32_t maxValue) {
    if (maxValue < 0) return {};
    std::vector<uint32_t> counts = CountAllLevels({pixels, width, height});
    counts.resize(static_cast<size_t>(maxValue) + 1);
    return counts;
}

std::vector<uint32_t> BuildHistogram(const uint16_t* pixels, int32_t width, int32_t height,
                                     int32_t maxValue) {
    if (maxValue < 0) return {};
    std::vector<uint32_t> counts = CountAllLevels({pixels, width, height});
    const size_t bins = static_cast<size_t>(maxValue) + 1;
    for (size_t level = bins; level < counts.size(); ++level) counts[bins - 1] += counts[level];
    counts.resize(bins);
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
