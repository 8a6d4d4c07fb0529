// SPDX-License-Identifier: Apache-2.0
#include "sensor/ExposureDecision.h"

#include <algorithm>
#include <cstddef>

#include "pixels/Quotient.h"

namespace vastrelline {

int32_t ClassifyExposure(const uint16_t* /*image*/, int32_t /*width*/, int32_t /*height*/,
                         std::span<const uint32_t> histogram, int32_t threshold, double lowThreshold,
                         int32_t /*maxValue*/, DoseRecord& record) {
    constexpr size_t kLowSignalLevel = 100;
    constexpr size_t kFirstMedianLevel = 5;
    const size_t end = std::min(static_cast<size_t>(std::max(threshold, 0)), histogram.size());
    uint32_t total = 0;
    uint32_t low = 0;
    for (size_t level = 0; level < end; ++level) {
        total += histogram[level];
        if (level < kLowSignalLevel) low += histogram[level];
    }
    record.ObjectTotal = static_cast<int32_t>(total);
    record.LowSignal = static_cast<int32_t>(low);
    record.LowRatio = Quotient(record.LowSignal, record.ObjectTotal);
    // Without an object the ratio is not a number, and the exposure counts as normal.
    record.LowExposure = lowThreshold < record.LowRatio ? 1 : 0;

    // The levels below 5 are not summed, yet they stay in the half. Where no level passes it, the half
    // itself, a number of pixels, is what the record shows.
    const int32_t half = record.ObjectTotal / 2;
    record.ObjectMedian = half;
    int32_t sum = 0;
    for (size_t level = kFirstMedianLevel; level < end; ++level) {
        sum += static_cast<int32_t>(histogram[level]);
        if (sum > half) {
            record.ObjectMedian = static_cast<int32_t>(level);
            break;
        }
    }
    return record.LowExposure;
}

}  // namespace vastrelline
