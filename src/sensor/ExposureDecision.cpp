#include "sensor/ExposureDecision.h"

#include <algorithm>
#include <vector>

#include "operators/histogram/Histogram.h"

namespace vastrelline {

int32_t ComputeOtsuThreshold(const uint16_t* image, int32_t width, int32_t height, int32_t maxValue) {
    return ComputeOtsuThreshold(BuildHistogram(image, width, height, std::min(maxValue, 0xFFFF)),
                                static_cast<double>(width) * height);
}

int32_t ComputeOtsuThreshold(std::span<const uint32_t> histogram, double pixelCount) {
    // Cumulative probability and first moment of the levels up to each.
    std::vector<double> w(histogram.size());
    std::vector<double> mu(histogram.size());
    for (size_t level = 0; level < histogram.size(); ++level) {
        const double probability = histogram[level] / pixelCount;
        w[level] = level == 0 ? probability : w[level - 1] + probability;
        mu[level] = level == 0 ? 0.0 : mu[level - 1] + static_cast<double>(level) * probability;
    }
    const double muTotal = mu.empty() ? 0.0 : mu.back();

    double best = 0.0;
    int32_t threshold = 0;
    for (size_t t = 0; t < histogram.size(); ++t) {
        if (w[t] == 0) continue;
        if (1 - w[t] == 0) break;
        const double m0 = mu[t] / w[t];
        const double m1 = (muTotal - mu[t]) / (1 - w[t]);
        const double variance = w[t] * (1 - w[t]) * (m0 - m1) * (m0 - m1);
        if (variance > best) {
            best = variance;
            threshold = static_cast<int32_t>(t);
        }
    }
    return threshold;
}

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
    record.LowRatio = static_cast<double>(record.LowSignal) / static_cast<double>(record.ObjectTotal);
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
