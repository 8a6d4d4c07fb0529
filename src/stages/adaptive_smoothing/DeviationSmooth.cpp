// SPDX-License-Identifier: Apache-2.0
#include "stages/adaptive_smoothing/DeviationSmooth.h"

#include <algorithm>
#include <cstddef>

#include "operators/histogram/Histogram.h"
#include "operators/separable/SeparableFilter.h"
#include "pixels/FrameView.h"
#include "pixels/ScratchVector.h"
#include "stages/adaptive_smoothing/LocalDeviation.h"

namespace vastrelline {

namespace {

// A level stands for full deviation only if more pixels than this have it: a few edges are no measure.
constexpr uint32_t kMostPixelsIgnored = 200;

// The light Gaussian that hides the seams between smoothed and kept pixels.
constexpr double kFinalSigma = 0.5;

struct DeviationLevels {
    ScratchVector<uint16_t> levels;  // of the pixels
    int32_t limit = 0;               // the level of full deviation
};

DeviationLevels MeasureDeviation(const FrameView<const uint16_t>& image, int32_t radius) {
    DeviationLevels result;
    result.levels.assign(image.Count(), 0);
    QuantiseDeviation({image.begin(), image.Width(), image.Height(), radius, result.levels.data()});
    const std::vector<uint32_t> histogram =
        BuildHistogram(result.levels.data(), image.Width(), image.Height(), kTopDeviationLevel);
    int32_t level = kTopDeviationLevel;
    while (level > 0 && histogram[static_cast<size_t>(level)] <= kMostPixelsIgnored) --level;
    result.limit = level;
    return result;
}

// The weight of each level, before the threshold.
std::vector<double> MakeLevelWeights(int32_t limit) {
    std::vector<double> weights(kTopDeviationLevel + 1, 1.0);
    weights[0] = 0.0;
    // From the limit on, all are 1.
    for (int32_t level = 1; level < limit; ++level) {
        weights[static_cast<size_t>(level)] = static_cast<double>(level) / limit;
    }
    return weights;
}

void ApplyThreshold(int32_t thresholdPercent, std::vector<double>& weights) {
    const double threshold = thresholdPercent * 0.01;
    for (double& weight : weights) {
        if (threshold < 0) {
            weight = std::min(weight / -threshold, 1.0);
        } else if (threshold == 1.0) {
            weight = 0.0;  // nothing lies above the threshold
        } else {
            weight = std::max((weight - threshold) / (1.0 - threshold), 0.0);
        }
    }
}

}  // namespace

std::vector<double> LocalDeviationMap(const uint16_t* image, int32_t width, int32_t height, int32_t radius) {
    const DeviationLevels deviation = MeasureDeviation({image, width, height}, radius);
    const std::vector<double> weights = MakeLevelWeights(deviation.limit);
    std::vector<double> map(deviation.levels.size());
    std::transform(deviation.levels.begin(), deviation.levels.end(), map.begin(),
                   [&](uint16_t level) { return weights[level]; });
    return map;
}

// The map is never spread out to an image of doubles: all that is done with a weight depends on its level.
void DeviationWeightedSmooth(uint16_t* image, int32_t width, int32_t height, int32_t maxValue, double sigma,
                             int32_t thresholdPercent) {
    const FrameView<uint16_t> frame(image, width, height);
    if (frame.Count() == 0) return;
    const DeviationLevels deviation = MeasureDeviation({image, width, height}, kDeviationRadius);
    std::vector<double> weights = MakeLevelWeights(deviation.limit);
    ApplyThreshold(thresholdPercent, weights);
    ScratchVector<uint16_t> smooth(frame.begin(), frame.end());
    GaussFilterReplicate(smooth.data(), width, height, maxValue, sigma);
    BlendByLevel(
        {image, smooth.data(), deviation.levels.data(), weights, static_cast<int64_t>(frame.Count())});
    GaussFilterWrap(image, width, height, maxValue, kFinalSigma);
}

}  // namespace vastrelline
