// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>

#include "stages/adaptive_unsharp/ActivityWeightedUnsharp.h"
#include "stages/adaptive_unsharp/HistogramShapedUnsharp.h"
#include "stages/adaptive_unsharp/UnsharpModes.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"

namespace vastrelline {
namespace {

constexpr int32_t kMaxValue = 4000;  // below some of the pixels: the band difference changes no others

Frame MakeFrame() { return Noise(37, 29, 4095, 20240517); }

UnsharpParams ParamsOfMode(int32_t mode) {
    UnsharpParams params;
    params.GAUSSIAN_SIZE_CONTRAST = 2.0;
    params.ENAHCNED_RATIO_CONTRAST = 1.5;
    params.NOISE_WIDTH_CONTRAST = 5;
    params.PROTECTOUTLINE_CONTRAST = 3;
    params.ReduceTimeRatio_CONTRAST = 7;
    params.MODE_CONTRAST = mode;
    return params;
}

Frame Sharpened(int32_t mode) {
    Frame frame = MakeFrame();
    SharpenByMode(frame.Data(), frame.width, frame.height, kMaxValue, ParamsOfMode(mode));
    return frame;
}

Frame SharpenedAsFixed(int32_t mode) {
    Frame frame = MakeFrame();
    SharpenByFixedMode(frame.Data(), nullptr, frame.width, frame.height, kMaxValue, ParamsOfMode(mode));
    return frame;
}

TEST(UnsharpModes, BothChainsShareThreeMethods) {
    for (const int32_t mode : {1, 3, 4}) {
        EXPECT_NE(Sharpened(mode), MakeFrame()) << mode;
        EXPECT_THAT(SharpenedAsFixed(mode), EqualsFrame(Sharpened(mode))) << mode;
    }
}

TEST(UnsharpModes, FifthMethodIsOfTheConfiguredChainAlone) {
    Frame expected = MakeFrame();
    ActivityWeightedUnsharp(expected.Data(), 37, 29, kMaxValue, 5, 7, 3, 2.0, 1.5);
    ASSERT_NE(expected, MakeFrame());
    EXPECT_THAT(Sharpened(5), EqualsFrame(expected));
    EXPECT_THAT(SharpenedAsFixed(5), EqualsFrame(MakeFrame()));
}

TEST(UnsharpModes, MaskGoesToTheHistogramShapedMethod) {
    Frame mask = Flat(37, 29, 0);
    std::fill_n(mask.pixels.begin(), 400, uint16_t{255});
    Frame expectedMask = mask;
    Frame expected = MakeFrame();
    HistogramShapedUnsharp(expected.Data(), 37, 29, kMaxValue, 2.0, 1.5, 5, expectedMask.Data());
    Frame frame = MakeFrame();
    SharpenByFixedMode(frame.Data(), mask.Data(), 37, 29, kMaxValue, ParamsOfMode(3));
    EXPECT_THAT(frame, EqualsFrame(expected));
    EXPECT_NE(frame, Sharpened(3));
    EXPECT_THAT(mask, EqualsFrame(expectedMask));
}

TEST(UnsharpModes, OtherModesLeaveTheFrame) {
    for (const int32_t mode : {-1, 0, 2, 6, INT32_MAX, INT32_MIN}) {
        EXPECT_THAT(Sharpened(mode), EqualsFrame(MakeFrame())) << mode;
        EXPECT_THAT(SharpenedAsFixed(mode), EqualsFrame(MakeFrame())) << mode;
    }
}

}  // namespace
}  // namespace vastrelline
