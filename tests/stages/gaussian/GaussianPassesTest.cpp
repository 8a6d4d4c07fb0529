// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <limits>

#include "operators/separable/SeparableFilter.h"
#include "stages/gaussian/GaussianPasses.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"

namespace vastrelline {
namespace {

constexpr int32_t kTwelveBits = 4095;

Frame Smoothed(Frame frame, const GaussianParams& params) {
    SmoothGaussian(frame.Data(), frame.width, frame.height, kTwelveBits, params);
    return frame;
}

// On both sides of the pass from which on the frame is watched.
TEST(SmoothGaussian, RunsAsManyPassesAsAsked) {
    Frame expected = Noise(23, 17, 4095, 5);
    const Frame frame = expected;
    for (int32_t passes = 1; passes <= 20; ++passes) {
        GaussFilterReplicate(expected.Data(), 23, 17, kTwelveBits, 0.8);
        EXPECT_THAT(Smoothed(frame, {0.8, passes, 1, 1}), EqualsFrame(expected)) << passes;
    }
}

// Pass after pass until nothing changes any more, without the watching that the stage does.
Frame SmoothedToTheEnd(Frame frame, void (*filter)(uint16_t*, int32_t, int32_t, int32_t, double)) {
    for (Frame before = Flat(1, 1, 0); !(before == frame);) {
        before = frame;
        filter(frame.Data(), frame.width, frame.height, kTwelveBits, 1.0);
    }
    return frame;
}

TEST(SmoothGaussian, PassesForEverEndWhereTheFrameStandsStill) {
    const Frame frame = Noise(9, 6, 4095, 8);
    EXPECT_THAT(Smoothed(frame, {1.0, INT_MAX, 1, 1}),
                EqualsFrame(SmoothedToTheEnd(frame, GaussFilterReplicate)));
    EXPECT_THAT(Smoothed(frame, {1.0, INT_MAX, 1, 0}), EqualsFrame(SmoothedToTheEnd(frame, GaussFilterWrap)));
}

TEST(SmoothGaussian, ReducedPassesForEverComeToAnEnd) {
    // At a sigma this small the second pass changes nothing any more.
    const Frame frame = FromRows({{100, 9, 200, 9}, {9, 9, 9, 9}, {300, 9, 500, 9}, {9, 9, 9, 9}});
    EXPECT_THAT(
        Smoothed(frame, {0.02, INT_MAX, 2, 1}),
        EqualsFrame(FromRows(
            {{100, 150, 200, 200}, {200, 275, 200, 200}, {300, 300, 500, 500}, {300, 300, 500, 500}})));
}

TEST(SmoothGaussian, SizeThatIsNotANumberLeavesTheProtectedFrame) {
    const Frame frame = Noise(7, 5, 4095, 2);
    EXPECT_THAT(Smoothed(frame, {std::numeric_limits<double>::quiet_NaN(), 1, 1, 1}), EqualsFrame(frame));
}

}  // namespace
}  // namespace vastrelline
