// SPDX-License-Identifier: Apache-2.0
#include "operators/histogram/OtsuThreshold.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "operators/histogram/Histogram.h"
#include "pixels/FrameLimits.h"

namespace vastrelline {

int32_t ComputeOtsuThreshold(const uint16_t* image, int32_t width, int32_t height, int32_t maxValue) {
    return ComputeOtsuThreshold(BuildHistogram(image, width, height, std::min(maxValue, kTopPixel)),
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

}  // namespace vastrelline
