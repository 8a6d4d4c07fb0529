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

TEST(MidBandBoost, HostileNumbersAreSafe) {
    for (const double value : {std::numeric_limits<double>::quiet_NaN(),
                               std::numeric_limits<double>::infinity(), -1e308, 1e308, -6.0, 4e8, 1e9}) {
        for (const int32_t smoothing : {-1, 0, 1, 2, INT32_MIN, INT32_MAX}) {
            Boosted(Noise(5, 4, kTwelveBits, 1), value, 2.0, smoothing);
            Boosted(Noise(5, 4, kTwelveBits, 1), 1.0, value, smoothing);
        }
    }
    SUCCEED();
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
