// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>
#include <vector>

#include "operators/separable/SeparableFilter.h"
#include "stages/adaptive_smoothing/DeviationSmooth.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"

namespace vastrelline {
namespace {

constexpr int32_t kTwelveBits = 4095;

Frame Smoothed(Frame frame, double sigma, int32_t thresholdPercent, int32_t maxValue = kTwelveBits) {
    DeviationWeightedSmooth(frame.Data(), frame.width, frame.height, maxValue, sigma, thresholdPercent);
    return frame;
}

Frame Blurred(Frame frame, double sigma) {
    GaussFilterReplicate(frame.Data(), frame.width, frame.height, kTwelveBits, sigma);
    return frame;
}

// The light Gaussian that ends each smoothing.
Frame Finished(Frame frame) {
    GaussFilterWrap(frame.Data(), frame.width, frame.height, kTwelveBits, 0.5);
    return frame;
}

// Ten rows of which only row 3 is seen: its windows lie in rows 3 to 6. Where seven pixels are alike, the
// deviation is in proportion to their level, so 15, 30 and 60 stand at 4095.75, 8191.5 and 16383. The
// middle's `middleColumns` are 4 pixels each at level 8191, and 20 pixels of 60 make fewer than 200 above.
Frame ThreeLevels(int32_t middleColumns) {
    const int32_t middle = middleColumns + 6;
    Frame frame(20 + middle + 20, 10);
    for (int32_t x = 0; x < frame.width; ++x) frame.At(x, 3) = x < 20 ? 15 : x < 20 + middle ? 30 : 60;
    return frame;
}

TEST(LocalDeviationMap, LevelOfMoreThan200PixelsIsFullDeviation) {
    const Frame frame = ThreeLevels(51);  // 204 pixels
    const std::vector<double> map = LocalDeviationMap(frame.Data(), frame.width, 10, 3);
    const auto weightAt = [&](int32_t x, int32_t y) {
        return map[static_cast<size_t>(y) * static_cast<size_t>(frame.width) + static_cast<size_t>(x)];
    };
    for (int32_t y = 0; y < 10; ++y) {
        const bool isSeen = y >= 3 && y <= 6;
        EXPECT_EQ(weightAt(2, y), 0.0);
        EXPECT_EQ(weightAt(10, y), isSeen ? 4095.0 / 8191 : 0.0);
        EXPECT_EQ(weightAt(50, y), isSeen ? 1.0 : 0.0);  // at the limit
        EXPECT_EQ(weightAt(90, y), isSeen ? 1.0 : 0.0);  // above it
        EXPECT_EQ(weightAt(frame.width - 3, y), 0.0);
    }
}

TEST(LocalDeviationMap, WithoutSuchALevelAnyDeviationIsFull) {
    const Frame frame = ThreeLevels(50);  // exactly 200 pixels
    const std::vector<double> map = LocalDeviationMap(frame.Data(), frame.width, 10, 3);
    for (int32_t y = 0; y < 10; ++y)
        for (int32_t x = 0; x < frame.width; ++x) {
            const bool isSeen = y >= 3 && y <= 6 && x >= 3 && x < frame.width - 3;
            EXPECT_EQ(map[static_cast<size_t>(y * frame.width + x)], isSeen ? 1.0 : 0.0) << x << ", " << y;
        }
}

// The steps one after the other on an image of doubles.
Frame ExpectedSmooth(const Frame& frame, double sigma, int32_t thresholdPercent) {
    std::vector<double> weights = LocalDeviationMap(frame.Data(), frame.width, frame.height, 3);
    const double t = thresholdPercent * 0.01;
    Frame result = Blurred(frame, sigma);
    for (size_t i = 0; i < weights.size(); ++i) {
        double weight = t >= 0 ? (weights[i] - t) / (1.0 - t) : weights[i] / -t;
        if (t >= 0 && weight < 0) weight = 0;
        if (t < 0 && weight > 1.0) weight = 1.0;
        if (thresholdPercent == 100) weight = 0;
        const auto mixed = static_cast<int32_t>(result.pixels[i] * (1.0 - weight) + frame.pixels[i] * weight);
        result.pixels[i] = static_cast<uint16_t>(mixed & 0xFFFF);
    }
    return Finished(result);
}

TEST(DeviationWeightedSmooth, EveryThresholdWeighsAsItShould) {
    const Frame frame = Noise(61, 47, kTwelveBits, 21);
    for (const int32_t percent :
         {0, 4, 50, 99, 100, 101, 102, 250, INT_MAX, -1, -4, -50, -100, -300, INT_MIN}) {
        EXPECT_THAT(Smoothed(frame, 1.5, percent), EqualsFrame(ExpectedSmooth(frame, 1.5, percent)))
            << percent;
    }
}

TEST(DeviationWeightedSmooth, ThresholdOf100SmoothsEverything) {
    const Frame frame = Noise(61, 47, kTwelveBits, 21);
    EXPECT_THAT(Smoothed(frame, 1.5, 100), EqualsFrame(Finished(Blurred(frame, 1.5))));
}

TEST(DeviationWeightedSmooth, ThresholdBelowZeroKeepsAllStructure) {
    const Frame frame = Noise(61, 47, kTwelveBits, 21);
    // From one per cent of full deviation on pixels keep: all of noise but the margin, which two pixels of
    // the light Gaussian bring in by two more.
    const Frame kept = Finished(frame);
    const Frame result = Smoothed(frame, 3.0, -1);
    for (int32_t y = 5; y < 42; ++y)
        for (int32_t x = 5; x < 56; ++x) ASSERT_EQ(result.At(x, y), kept.At(x, y)) << x << ", " << y;
    EXPECT_NE(result.At(1, 20), kept.At(1, 20));
}

TEST(DeviationWeightedSmooth, MarginTakesTheSmoothedCopy) {
    // Nothing but margin: no frame up to 9 rows or 6 columns has a deviation.
    for (const auto& [width, height] : {std::pair{1, 1}, {1, 30}, {30, 1}, {2, 2}, {30, 9}, {6, 30}}) {
        const Frame frame = Noise(width, height, kTwelveBits, 8);
        EXPECT_THAT(Smoothed(frame, 1.0, 0), EqualsFrame(Finished(Blurred(frame, 1.0))))
            << width << " x " << height;
    }
}

// Worked out by hand: sigma 0.5 has the taps 0.0002639, 0.1064508, 0.7865707, 0.1064508, 0.0002639, and a
// column of one pixel per row leaves the rows alone. The copy: 786, 106, 0; then 786 * 0.7865707 + 2 * 106 *
// 0.1064508, and so on.
TEST(DeviationWeightedSmooth, LightGaussianFollowsTheCopy) {
    EXPECT_THAT(Smoothed(FromRows({{0, 0, 0, 1000, 0, 0, 0}}), 0.5, 0),
                EqualsFrame(FromRows({{0, 11, 167, 640, 167, 11, 0}})));
}

TEST(DeviationWeightedSmooth, SigmaWithoutKernelStillBlendsAndFinishes) {
    const Frame frame = Noise(20, 16, kTwelveBits, 5);
    constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();
    for (const double sigma : {kNotANumber, -1.0, -1e308, 1e9, 1e308, 0.0}) {
        EXPECT_THAT(Smoothed(frame, sigma, 4), EqualsFrame(ExpectedSmooth(frame, sigma, 4))) << sigma;
    }
}

TEST(DeviationWeightedSmooth, FlatAndExtremeFramesComeBack) {
    EXPECT_THAT(Smoothed(Flat(31, 22, 0), 2.0, 0), EqualsFrame(Flat(31, 22, 0)));
    const Frame bright = Smoothed(Flat(31, 22, 4095), 2.0, 0);
    for (const uint16_t pixel : bright.pixels) EXPECT_NEAR(pixel, 4095, 3);
    EXPECT_THAT(Smoothed(Frame(0, 3), 2.0, 0), EqualsFrame(Frame(0, 3)));
    EXPECT_THAT(Smoothed(Frame(3, 0), 2.0, 0), EqualsFrame(Frame(3, 0)));
}

}  // namespace
}  // namespace vastrelline
