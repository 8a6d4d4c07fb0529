// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdint>

#include "stages/adaptive_smoothing/DeviationSmooth.h"
#include "stages/adaptive_smoothing/SavgolSmooth.h"
#include "stages/adaptive_smoothing/SmoothingModes.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"

namespace vastrelline {
namespace {

constexpr int32_t kTwelveBits = 4095;

Frame MakeFrame() { return Noise(23, 19, kTwelveBits, 6); }

Frame Smoothed(const AdaptiveSmoothingParams& params) {
    Frame frame = MakeFrame();
    SmoothByMode(frame.Data(), frame.width, frame.height, kTwelveBits, params);
    return frame;
}

TEST(SmoothingModes, SavgolTakesTheMaskTruncated) {
    Frame expected = MakeFrame();
    SavgolSmooth(expected.Data(), 23, 19, kTwelveBits, 7, 2);
    ASSERT_NE(expected, MakeFrame());
    EXPECT_THAT(Smoothed({7.9, 2, 0}), EqualsFrame(expected));
}

TEST(SmoothingModes, DeviationTakesTheMaskAsItIs) {
    Frame expected = MakeFrame();
    DeviationWeightedSmooth(expected.Data(), 23, 19, kTwelveBits, 1.9, 4);
    ASSERT_NE(expected, MakeFrame());
    EXPECT_THAT(Smoothed({1.9, 4, 1}), EqualsFrame(expected));
}

TEST(SmoothingModes, AnyOtherModeLeavesTheFrame) {
    for (const int32_t mode : {-1, 2, INT32_MAX, INT32_MIN})
        EXPECT_THAT(Smoothed({7.0, 2, mode}), EqualsFrame(MakeFrame())) << mode;
}

}  // namespace
}  // namespace vastrelline
