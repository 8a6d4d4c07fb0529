// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <vector>

#include "operators/box_mean/BoxMean.h"
#include "stages/adaptive_unsharp/ActivityWeightedUnsharp.h"
#include "stages/adaptive_unsharp/ValueHistogram.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"

namespace vastrelline {
namespace {

constexpr int32_t kLargest = std::numeric_limits<int32_t>::max();
constexpr int32_t kSmallest = std::numeric_limits<int32_t>::min();

struct Keys {
    int32_t radius;
    int32_t baseRadius;
    int32_t secondRadius;
    double gain;
    double secondGain;
};

Frame Sharpen(Frame frame, const Keys& keys, int32_t maxValue = 4095) {
    ActivityWeightedUnsharp(frame.Data(), frame.width, frame.height, maxValue, keys.radius, keys.baseRadius,
                            keys.secondRadius, keys.gain, keys.secondGain);
    return frame;
}

Frame MeanOf(const Frame& frame, int32_t radius) {
    Frame means(frame.width, frame.height);
    BoxMean(frame.Data(), means.Data(), frame.width, frame.height, radius);
    return means;
}

// The weights of an image's levels by formula: a piece of the sine from `start` to `end` over the levels from
// lowShare on up to half of them, scaled to 0..1.
std::vector<double> WeightsByFormula(const Frame& image, double start, double end, int32_t lowShare) {
    const auto [smallest, largest] = std::minmax_element(image.pixels.begin(), image.pixels.end());
    const int32_t count = *largest - *smallest + 1;
    const int32_t first = count * lowShare / 100;
    const int32_t last = count - count / 2 - 1;
    std::vector<double> weights;
    for (int32_t k = first; k <= last; ++k)
        weights.push_back(std::sin((k - first) * ((end - start) / (last - first)) + start));
    const double low = *std::min_element(weights.begin(), weights.end());
    const double high = *std::max_element(weights.begin(), weights.end());
    for (double& weight : weights) weight = (weight - low) / (high - low);
    weights.insert(weights.begin(), static_cast<size_t>(first), weights.front());
    weights.resize(static_cast<size_t>(count), weights.back());
    return weights;
}

// The same step by step, with a frame for each quantity.
Frame SharpenStepByStep(const Frame& image, const Keys& keys, int32_t maxValue) {
    const double pi = 3.14159;
    Frame band = MeanOf(image, keys.radius);
    const Frame wide = MeanOf(image, 2 * keys.radius);
    for (size_t i = 0; i < band.pixels.size(); ++i)
        band.pixels[i] = static_cast<uint16_t>(std::abs(band.pixels[i] - wide.pixels[i]));
    Frame activity = MeanOf(band, keys.radius / 3 + 2 * keys.radius);
    ClipHistogramTails(activity.Data(), 0.0001, activity.width, activity.height);
    const Frame base = MeanOf(image, keys.baseRadius);
    const Frame second = MeanOf(image, keys.secondRadius);
    std::vector<double> bright = WeightsByFormula(base, -pi / 2, pi / 2 + pi / 100.0 * 10.0, 10);
    const std::vector<double> calm = WeightsByFormula(activity, pi / 2, pi * 1.5, 0);
    const auto start = static_cast<size_t>(static_cast<double>(bright.size()) * 0.75);
    const size_t length = bright.size() - start - 1;
    for (size_t j = 1; j <= length; ++j)
        bright[start + j] = (1 - static_cast<double>(j) / static_cast<double>(length)) * bright[start];
    const uint16_t darkest = *std::min_element(base.pixels.begin(), base.pixels.end());
    const uint16_t calmest = *std::min_element(activity.pixels.begin(), activity.pixels.end());
    Frame result = image;
    for (size_t i = 0; i < image.pixels.size(); ++i) {
        const int32_t pixel = image.pixels[i];
        const double weight = bright.at(static_cast<size_t>(base.pixels[i] - darkest)) *
                              calm.at(static_cast<size_t>(activity.pixels[i] - calmest));
        int32_t sum = pixel;
        if (weight > 0) {
            sum += static_cast<int32_t>((pixel - base.pixels[i]) * weight * keys.gain);
            if (keys.secondRadius >= 1 && keys.secondGain > 0)
                sum += static_cast<int32_t>((pixel - second.pixels[i]) * weight * keys.secondGain);
        }
        result.pixels[i] = static_cast<uint16_t>(std::min(sum & 0xFFFF, maxValue));
    }
    return result;
}

// Dark at the left, bright at the right, and busier toward the bottom.
Frame MakeVariedFrame(int32_t width, int32_t height) {
    Frame frame = Noise(width, height, 4095, 20240515);
    for (int32_t y = 0; y < height; ++y)
        for (int32_t x = 0; x < width; ++x)
            frame.At(x, y) = static_cast<uint16_t>(3000 * x / width + frame.At(x, y) * y / (4 * height));
    return frame;
}

TEST(ActivityWeightedUnsharp, EqualsItsStepsOneByOne) {
    const Frame frame = MakeVariedFrame(64, 50);
    for (const Keys& keys : {Keys{2, 3, 0, 2.0, 2.0}, Keys{3, 1, 5, 1.5, 0.5}, Keys{1, 4, 2, 3.0, -1.0},
                             Keys{4, 40, 1, -2.0, 1.0}, Keys{1, 2, 6, 0.0, 1.0}}) {
        EXPECT_THAT(Sharpen(frame, keys), EqualsFrame(SharpenStepByStep(frame, keys, 4095))) << keys.radius;
    }
}

TEST(ActivityWeightedUnsharp, GainsOfZeroLeaveTheFrame) {
    const Frame frame = MakeVariedFrame(40, 30);
    EXPECT_THAT(Sharpen(frame, {2, 3, 5, 0.0, 0.0}), EqualsFrame(frame));
    EXPECT_NE(Sharpen(frame, {2, 3, 5, 1.0, 0.0}), frame);
}

// So strong a gain takes pixels below 0, and those come out at the limit.
TEST(ActivityWeightedUnsharp, SumBelowZeroComesOutAtTheLimit) {
    const Frame frame = MakeVariedFrame(64, 50);
    const Keys keys{2, 3, 0, 20.0, 0.0};
    const Frame result = Sharpen(frame, keys);
    EXPECT_THAT(result, EqualsFrame(SharpenStepByStep(frame, keys, 4095)));
    const Frame base = MeanOf(frame, 3);
    int32_t wrapped = 0;
    for (size_t i = 0; i < frame.pixels.size(); ++i)
        wrapped += frame.pixels[i] < base.pixels[i] && result.pixels[i] == 4095 ? 1 : 0;
    EXPECT_GT(wrapped, 0);
}

TEST(ActivityWeightedUnsharp, WithoutARadiusOnlyTheLimitIsApplied) {
    const Frame frame = FromRows({{0, 50, 100, 101, 4095, 65535}});
    for (const int32_t radius : {0, -1, kSmallest}) {
        EXPECT_THAT(Sharpen(frame, {radius, 1, 1, 3.0, 2.0}, 100),
                    EqualsFrame(FromRows({{0, 50, 100, 100, 100, 100}})));
    }
}

// One level is no activity, and nine levels of brightness are too few.
TEST(ActivityWeightedUnsharp, TooFewLevelsLeaveTheFrame) {
    EXPECT_THAT(Sharpen(Flat(30, 30, 900), {2, 3, 5, 9.0, 9.0}), EqualsFrame(Flat(30, 30, 900)));
    const Frame faint = Noise(30, 30, 8, 20240516);
    EXPECT_THAT(Sharpen(faint, {1, 1, 1, 9.0, 9.0}), EqualsFrame(faint));
}

TEST(ActivityWeightedUnsharp, HostileKeysAndSmallFramesAreSafe) {
    const double infinity = std::numeric_limits<double>::infinity();
    for (const Frame& frame : {Frame(0, 7), Flat(1, 1, 4095), Noise(1, 40, 4095, 1), Noise(40, 1, 4095, 2),
                               Noise(2, 2, 4095, 3), MakeVariedFrame(20, 20)}) {
        for (const Keys& keys :
             {Keys{kLargest, kLargest, kLargest, 1e308, 1e308}, Keys{1, kSmallest, kSmallest, infinity, 1.0},
              Keys{1, 1, 1, std::nan(""), infinity}, Keys{1 << 30, 1, 2, -1e308, 1e308}}) {
            for (const uint16_t pixel : Sharpen(frame, keys).pixels) ASSERT_LE(pixel, 4095);
        }
    }
}

// With the limit out of the way the wrapped sums are seen as they are.
TEST(ActivityWeightedUnsharp, SumBelowZeroKeepsItsLowBits) {
    const Frame frame = MakeVariedFrame(64, 50);
    const Keys keys{2, 3, 0, 20.0, 0.0};
    const Frame result = Sharpen(frame, keys, 65535);
    EXPECT_THAT(result, EqualsFrame(SharpenStepByStep(frame, keys, 65535)));
    EXPECT_TRUE(std::any_of(result.pixels.begin(), result.pixels.end(),
                            [](uint16_t pixel) { return pixel > 40000 && pixel < 65535; }));
}

// The base is the frame itself: nothing differs from it, whatever the gain, and the upper limit is all.
TEST(ActivityWeightedUnsharp, BaseRadiusOfZeroOrLessGivesNoFirstTerm) {
    const Frame frame = Noise(40, 30, 4095, 4);
    Frame limited = frame;
    for (uint16_t& pixel : limited.pixels) pixel = std::min<uint16_t>(pixel, 3000);
    ASSERT_NE(limited, Sharpen(frame, {3, 1, 0, 0.5, 0.0}, 3000));
    for (const int32_t baseRadius : {0, -1, kSmallest})
        EXPECT_THAT(Sharpen(frame, {3, baseRadius, 0, 50.0, 0.0}, 3000), EqualsFrame(limited)) << baseRadius;
}

}  // namespace
}  // namespace vastrelline
