// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>

#include "operators/box_mean/BoxMean.h"
#include "operators/resample/Resize.h"
#include "operators/separable/SeparableFilter.h"
#include "stages/adaptive_unsharp/BandDifferenceUnsharp.h"
#include "stages/adaptive_unsharp/EdgeWeightedUnsharp.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"

namespace vastrelline {
namespace {

constexpr double kSigmaOfRadius1 = 0.4;  // a kernel of 3 taps

// With the box mean for the base.
Frame Sharpen(Frame frame, double sigma, double ratio, int32_t noise, int32_t reduce = -1,
              int32_t maxValue = 4095) {
    EdgeWeightedUnsharp(frame.Data(), frame.width, frame.height, maxValue, sigma, ratio, noise, reduce);
    return frame;
}

// The base is 0 0 40 80 120 100 80 60 60 and the edges 0 0 120 120 0 60 60 0 0 in all rows but the outer
// ones, which have none. Gain 0.5 without an edge, 4.5 at the strongest, at half its strength
// 0.25 * (4.5 - 0.5) + 0.5 = 1.5.
TEST(EdgeWeightedUnsharp, GainFollowsTheSquareOfTheEdge) {
    EXPECT_THAT(Sharpen(FromRows({{0, 0, 0, 120, 120, 120, 60, 60, 60},
                                  {0, 0, 0, 120, 120, 120, 60, 60, 60},
                                  {0, 0, 0, 120, 120, 120, 60, 60, 60}}),
                        kSigmaOfRadius1, 4.5, 50),
                EqualsFrame(FromRows({{0, 0, 20, 100, 120, 110, 70, 60, 60},
                                      {0, 0, 0, 260, 120, 130, 50, 60, 60},
                                      {0, 0, 20, 100, 120, 110, 70, 60, 60}})));
}

TEST(EdgeWeightedUnsharp, ResultIsClampedToTheRangeAndTruncated) {
    // Base 10 around the middle; one gain: 10 + 80 * 2 = 170 and 10 - 10 * 2 = -10.
    const Frame frame = Impulse(5, 5, 2, 2, 90);
    EXPECT_THAT(Sharpen(frame, kSigmaOfRadius1, 2.0, 200), EqualsFrame(Impulse(5, 5, 2, 2, 170)));
    EXPECT_THAT(Sharpen(frame, kSigmaOfRadius1, 2.0, 200, -1, 150), EqualsFrame(Impulse(5, 5, 2, 2, 150)));
    // 10 + 80 * 0.99 = 89.2 and 10 - 10 * 0.99 = 0.1
    EXPECT_THAT(Sharpen(frame, kSigmaOfRadius1, 0.99, 99), EqualsFrame(Impulse(5, 5, 2, 2, 89)));
}

// The base is 30 60 and there is no inner pixel for an edge: 30 - 30 * 2, 60 + 30 * 2.
TEST(EdgeWeightedUnsharp, FrameWithoutEdgesTakesTheLowGain) {
    EXPECT_THAT(Sharpen(FromRows({{0, 90}}), kSigmaOfRadius1, 9.0, 200), EqualsFrame(FromRows({{0, 120}})));
    for (const uint16_t level : {uint16_t{0}, uint16_t{1000}, uint16_t{4095}})
        EXPECT_THAT(Sharpen(Flat(9, 7, level), 1.0, 3.0, 50), EqualsFrame(Flat(9, 7, level)));
}

// With a gain of 0 the result is the base.
TEST(EdgeWeightedUnsharp, ReducePicksTheSmoothing) {
    const Frame frame = Noise(40, 31, 4095, 20240512);
    const auto base = [&](int32_t reduce) { return Sharpen(frame, 2.0, 0.0, 0, reduce); };
    Frame expected = frame;
    BoxMeanInPlace(expected.Data(), 40, 31, 5);  // 11 taps
    EXPECT_THAT(base(-1), EqualsFrame(expected));
    expected = frame;
    GaussFilterReplicate(expected.Data(), 40, 31, 4095, 2.0);
    EXPECT_THAT(base(1), EqualsFrame(expected));
    expected = frame;
    ReducedScaleGaussian(expected.Data(), 40, 31, 4095, 2.0, 1);
    EXPECT_THAT(base(1), EqualsFrame(expected));
    expected = frame;
    ReducedScaleGaussian(expected.Data(), 40, 31, 4095, 2.0, 3);
    EXPECT_THAT(base(3), EqualsFrame(expected));
    for (const int32_t reduce : {0, -2, std::numeric_limits<int32_t>::min()})
        EXPECT_THAT(base(reduce), EqualsFrame(frame)) << reduce;
}

TEST(EdgeWeightedUnsharp, MirroredFrameGivesTheMirroredResult) {
    const Frame frame = Noise(33, 20, 4095, 20240513);
    EXPECT_THAT(Sharpen(MirrorLeftRight(frame), 1.0, 3.0, 50),
                EqualsFrame(MirrorLeftRight(Sharpen(frame, 1.0, 3.0, 50))));
    EXPECT_THAT(Sharpen(MirrorTopBottom(frame), 1.0, 3.0, 50),
                EqualsFrame(MirrorTopBottom(Sharpen(frame, 1.0, 3.0, 50))));
}

// An infinite gain has no integer with any detail: such pixels become 0; without detail there is no number.
TEST(EdgeWeightedUnsharp, RatioWithoutANumberGivesZeroAtTheEdges) {
    const double infinity = std::numeric_limits<double>::infinity();
    const Frame frame = Impulse(5, 5, 2, 2, 90, 90);
    EXPECT_THAT(Sharpen(frame, kSigmaOfRadius1, infinity, 100), EqualsFrame(frame));
    const Frame spot = Impulse(5, 5, 2, 2, 4000, 100);
    for (const double ratio : {infinity, -infinity, std::numeric_limits<double>::quiet_NaN(), 1e308}) {
        const Frame result = Sharpen(spot, kSigmaOfRadius1, ratio, 100);
        EXPECT_EQ(result.At(1, 1), 0) << ratio;
    }
}

TEST(BandDifferenceUnsharp, GivesTheFrameClampedToTheRange) {
    const Frame frame = FromRows({{0, 1, 99, 100, 101, 65535}});
    const auto run = [&](int32_t maxValue) {
        Frame result = frame;
        BandDifferenceUnsharp(result.Data(), 6, 1, maxValue, 3.0, 2.0, 0.5, 1);
        return result;
    };
    EXPECT_THAT(run(100), EqualsFrame(FromRows({{0, 1, 99, 100, 100, 100}})));
    EXPECT_THAT(run(65535), EqualsFrame(frame));
    EXPECT_THAT(run(std::numeric_limits<int32_t>::max()), EqualsFrame(frame));
    EXPECT_THAT(run(-1), EqualsFrame(Flat(6, 1, 0)));
}

TEST(EdgeWeightedUnsharp, SmallFramesAndHostileKeysAreSafe) {
    constexpr int32_t kLargest = std::numeric_limits<int32_t>::max();
    constexpr int32_t kSmallest = std::numeric_limits<int32_t>::min();
    for (const Frame& frame : {Frame(0, 3), Flat(1, 1, 4095), Noise(1, 40, 65535, 1), Noise(40, 1, 4095, 2),
                               Noise(2, 2, 4095, 3), Noise(5, 4, 65535, 4)}) {
        for (const double sigma : {0.0, -1.0, 4e8, 1e308, std::numeric_limits<double>::quiet_NaN()})
            for (const int32_t reduce : {-1, 0, 1, 3, kSmallest, kLargest})
                for (const int32_t noise : {kSmallest, kLargest})
                    for (const uint16_t pixel : Sharpen(frame, sigma, 2.0, noise, reduce).pixels)
                        ASSERT_LE(pixel, 4095);
        // Without a smoothing there is no detail for any gain: the limit alone remains.
        Frame limited = frame;
        for (uint16_t& pixel : limited.pixels) pixel = std::min<uint16_t>(pixel, 4095);
        for (const int32_t reduce : {0, kSmallest})
            for (const int32_t noise : {kSmallest, kLargest})
                EXPECT_THAT(Sharpen(frame, 3.0, 2.0, noise, reduce), EqualsFrame(limited)) << reduce;
    }
}

}  // namespace
}  // namespace vastrelline
