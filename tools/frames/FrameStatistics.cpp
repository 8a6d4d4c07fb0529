// SPDX-License-Identifier: Apache-2.0
#include "frames/FrameStatistics.h"

#include <bit>
#include <cassert>
#include <vector>

namespace vastrelline {
namespace {

constexpr size_t kLevels = 65536;
constexpr uint64_t kPercent = 100;

}  // namespace

FrameStatistics MeasureFrame(const Frame& frame) {
    assert(!frame.pixels.empty());
    std::vector<size_t> counts(kLevels);
    for (const uint16_t pixel : frame.pixels) ++counts[pixel];

    FrameStatistics statistics;
    const uint64_t pixelCount = frame.pixels.size();
    uint64_t sum = 0;      // 2^29 pixels of 16 bits stay below 2^45
    uint64_t counted = 0;  // pixels of this level and those below
    unsigned allBits = 0;
    size_t nextPercentile = 0;
    for (size_t level = 0; level < kLevels; ++level) {
        if (counts[level] == 0) continue;
        if (statistics.levels++ == 0) statistics.least = static_cast<uint16_t>(level);
        statistics.greatest = static_cast<uint16_t>(level);
        allBits |= static_cast<unsigned>(level);
        sum += level * counts[level];
        counted += counts[level];
        while (nextPercentile < kPercentiles.size() &&
               counted * kPercent >= pixelCount * static_cast<uint64_t>(kPercentiles[nextPercentile]))
            statistics.percentiles[nextPercentile++] = static_cast<uint16_t>(level);
    }
    statistics.mean = static_cast<double>(sum) / static_cast<double>(pixelCount);
    statistics.atZero = counts[0];
    statistics.atGreatest = counts[statistics.greatest];
    statistics.bitsUsed = static_cast<int32_t>(std::bit_width(unsigned{statistics.greatest}));
    statistics.emptyBits = allBits == 0 ? 0 : std::countr_zero(allBits);
    return statistics;
}

}  // namespace vastrelline
