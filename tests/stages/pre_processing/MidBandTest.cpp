// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>

#include "operators/resample/Resize.h"
#include "operators/separable/SeparableFilter.h"
#include "stages/pre_processing/MidBand.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"

namespace vastrelline {
namespace {

constexpr int32_t kTwelveBits = 4095;
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();

MidBandParams Params(double sigma, double gain) { return {sigma, gain, 1.0F, 1.0F, 0.0F, 1.0F}; }

Frame Boosted(Frame frame, double sigma, double gain, int32_t smoothing, int32_t maxValue = kTwelveBits) {
    MidBandBoost(frame.Data(), frame.width, frame.height, maxValue, Params(sigma, gain), smoothing);
    return frame;
}

// What the boost makes of a frame and a smoothed copy at gain 2: twice the frame less the copy.
Frame TwiceLess(const Frame& frame, const Frame& smoothed) {
    Frame result = frame;
    for (size_t i = 0; i < frame.pixels.size(); ++i) {
        const int32_t value = 2 * frame.pixels[i] - smoothed.pixels[i];
        result.pixels[i] = static_cast<uint16_t>(std::clamp(value, 0, kTwelveBits));
    }
    return result;
}

struct RadiusCase {
    double sigma;
    int32_t width;
    int32_t radius;
};

class MidBandRadiusTest : public testing::TestWithParam<RadiusCase> {};

TEST_P(MidBandRadiusTest, IsHalvedOnNarrowFramesAndMadeOdd) {
    EXPECT_EQ(MidBandRadius(GetParam().sigma, GetParam().width), GetParam().radius);
}

// Kernels of 31, 7, 17 and 1 taps.
INSTANTIATE_TEST_SUITE_P(Sizes, MidBandRadiusTest,
                         testing::Values(RadiusCase{6.0, 1000, 15}, RadiusCase{6.0, 999, 7},
                                         RadiusCase{1.0, 1000, 3}, RadiusCase{1.0, 999, 1},
                                         RadiusCase{3.0, 1000, 9}, RadiusCase{3.0, 999, 5},
                                         RadiusCase{0.0, 1000, 1}, RadiusCase{0.0, 1, 1}));

// 900 becomes a square of 100: 100 + 2 * (900 - 100) in the middle, 100 + 2 * (0 - 100) around it.
TEST(MidBandBoost, BoxIsTakenOffAndTheRestScaled) {
    EXPECT_THAT(Boosted(Impulse(5, 5, 2, 2, 900), 1.0, 2.0, kBoxSmoothing),
                EqualsFrame(Impulse(5, 5, 2, 2, 1700)));
    EXPECT_THAT(Boosted(Impulse(5, 5, 2, 2, 900), 1.0, 2.0, kBoxSmoothing, 1000),
                EqualsFrame(Impulse(5, 5, 2, 2, 1000)));
}

TEST(MidBandBoost, GainOfOneLeavesTheFrame) {
    const Frame frame = Noise(30, 20, kTwelveBits, 1);
    EXPECT_THAT(Boosted(frame, 6.0, 1.0, kBoxSmoothing), EqualsFrame(frame));
}

TEST(MidBandBoost, OtherSmoothingIsAGaussian) {
    const Frame frame = Noise(30, 20, kTwelveBits, 1);
    // 1 takes the full resolution, and so does 4, which would leave a sigma of 0.25.
    for (const int32_t smoothing : {1, 4}) {
        Frame smoothed = frame;
        GaussFilterReplicate(smoothed.Data(), 30, 20, kTwelveBits, 1.0);
        EXPECT_THAT(Boosted(frame, 1.0, 2.0, smoothing), EqualsFrame(TwiceLess(frame, smoothed)));
    }
    Frame smoothed = frame;
    ReducedScaleGaussian(smoothed.Data(), 30, 20, kTwelveBits, 1.0, 2);
    EXPECT_THAT(Boosted(frame, 1.0, 2.0, 2), EqualsFrame(TwiceLess(frame, smoothed)));
}

// None of these sigmas has a kernel that runs, so the smoothed copy is the frame, and no gain finds a
// difference. Without a smoothing to pick, 0 and INT32_MAX leave the copy alone as well.
TEST(MidBandBoost, SigmaThatCannotSmoothLeavesTheFrame) {
    const Frame frame = Noise(5, 4, kTwelveBits, 1);
    for (const double sigma : {kNotANumber, kInfinity, -kInfinity, -1e308, 1e308, -6.0, 1e9}) {
        for (const int32_t smoothing : {-1, 0, 1, 2, INT32_MIN, INT32_MAX})
            EXPECT_THAT(Boosted(frame, sigma, 2.0, smoothing), EqualsFrame(frame))
                << sigma << ' ' << smoothing;
    }
    for (const int32_t smoothing : {0, 1, 2, INT32_MIN, INT32_MAX})
        EXPECT_THAT(Boosted(frame, 4e8, 2.0, smoothing), EqualsFrame(frame)) << smoothing;
}

// A kernel of 2 * 10^9 taps makes a box half as wide, of which nearly all lies beyond the frame and repeats
// its corners, a quarter each. The rows' means are 2000.5 and 201.5, the columns' 1100.5, rounded down.
TEST(MidBandBoost, WideBoxSeesTheCorners) {
    Frame frame = Noise(5, 4, kTwelveBits, 1);
    frame.At(0, 0) = 1001;
    frame.At(4, 0) = 3000;
    frame.At(0, 3) = 102;
    frame.At(4, 3) = 301;
    EXPECT_THAT(Boosted(frame, 4e8, 2.0, kBoxSmoothing), EqualsFrame(TwiceLess(frame, Flat(5, 4, 1100))));
}

// 900 in the middle of 0 has a mean of 100 there and around it: differences of 800 and -100.
TEST(MidBandBoost, ResultWithoutA32BitIntegerIsBlack) {
    const Frame frame = Impulse(5, 5, 2, 2, 900);
    for (const double gain : {kNotANumber, kInfinity, -kInfinity, -1e308, 1e308, -4e8, 4e8})
        EXPECT_THAT(Boosted(frame, 1.0, gain, kBoxSmoothing), EqualsFrame(Flat(5, 5, 0))) << gain;
    // 100 + -4e5 * -100 still fits, and so does 100 + -4e5 * 800.
    Frame expected = Impulse(5, 5, 2, 2, 0, 0);
    for (int32_t y = 1; y <= 3; ++y)
        for (int32_t x = 1; x <= 3; ++x)
            if (x != 2 || y != 2) expected.At(x, y) = kTwelveBits;
    EXPECT_THAT(Boosted(frame, 1.0, -4e5, kBoxSmoothing), EqualsFrame(expected));
}

TEST(EnhanceMidBand, FlatFrameStaysFlat) {
    for (const int32_t level : {0, 1, 1000, 4095}) {
        const Frame flat = Flat(20, 20, static_cast<uint16_t>(level));
        Frame frame = flat;
        EnhanceMidBand(frame.Data(), 20, 20, kTwelveBits, Params(6.0, 2.5));
        EXPECT_THAT(frame, EqualsFrame(flat));
    }
}

TEST(EnhanceMidBand, GainOfOneLeavesTheFrame) {
    const Frame frame = Noise(30, 20, kTwelveBits, 1);
    Frame enhanced = frame;
    EnhanceMidBand(enhanced.Data(), 30, 20, kTwelveBits, Params(6.0, 1.0));
    EXPECT_THAT(enhanced, EqualsFrame(frame));
}

// On the left of a step from 1000 to 2000, d pixels away, 8 - d of the box's 15 columns are bright: a mean of
// 1000 + 1000 * (8 - d) / 15, from which the gain of 2.5 moves the pixel away by 1.5 times the difference.
// The fine Gaussian makes 1106 of the last dark pixel, the only one that the box sees at 8: 106 / 15 * 1.5
// = 10.6. It loses a level or so everywhere.
TEST(EnhanceMidBand, StepIsLiftedAsFarAsTheBoxReaches) {
    Frame frame = Flat(60, 30, 1000);
    for (int32_t y = 0; y < 30; ++y)
        for (int32_t x = 30; x < 60; ++x) frame.At(x, y) = 2000;
    EnhanceMidBand(frame.Data(), 60, 30, kTwelveBits, Params(6.0, 2.5));
    for (int32_t d = 3; d <= 30; ++d) {
        const int32_t lift = d == 8 ? 10 : 100 * std::max(8 - d, 0);
        EXPECT_NEAR(frame.At(30 - d, 15), 1000 - lift, 4) << d;
        EXPECT_NEAR(frame.At(29 + d, 15), 2000 + lift, 4) << d;
    }
}

TEST(EnhanceMidBand, MirroredFrameGivesTheMirroredResult) {
    const Frame frame = Noise(30, 20, kTwelveBits, 1);
    Frame enhanced = frame;
    EnhanceMidBand(enhanced.Data(), 30, 20, kTwelveBits, Params(2.0, 2.5));
    Frame mirrored = MirrorTopBottom(frame);
    EnhanceMidBand(mirrored.Data(), 30, 20, kTwelveBits, Params(2.0, 2.5));
    // The Gaussian adds its taps in one direction, so a level may differ by the truncation.
    const Frame back = MirrorTopBottom(mirrored);
    for (size_t i = 0; i < back.pixels.size(); ++i) EXPECT_NEAR(back.pixels[i], enhanced.pixels[i], 4);
}

}  // namespace
}  // namespace vastrelline
