// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <stdexcept>
#include <utility>
#include <vector>

#include "operators/resample/Resize.h"
#include "operators/separable/SeparableFilter.h"
#include "pixels/Border.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"

namespace vastrelline {
namespace {

Frame Resized(const Frame& source, double scale) {
    const OwnedFrame frame = ResizeBilinear(source.Data(), source.width, source.height, scale);
    return {frame.width, frame.height, frame.pixels};
}

TEST(ResizeBilinear, HalfTakesEveryOtherPixel) {
    EXPECT_THAT(Resized(Ramp(6, 4, 0, 1, 10), 0.5), EqualsFrame(FromRows({{0, 2, 4}, {20, 22, 24}})));
}

TEST(ResizeBilinear, HalfOfOddSidesLeavesOutTheLastPixel) {
    EXPECT_THAT(Resized(Ramp(5, 3, 0, 1, 10), 0.5), EqualsFrame(FromRows({{0, 2}})));
}

TEST(ResizeBilinear, DoubleGivesTruncatedMeansAndRepeatsTheLastRowAndColumn) {
    // Row 1: (10 + 5) / 2 = 7.5, (10 + 13 + 5 + 8) / 4 = 9, (13 + 8) / 2 = 10.5, (13 + 20 + 8 + 2) / 4
    // = 10.75; the last source column is not interpolated downwards either.
    EXPECT_THAT(
        Resized(FromRows({{10, 13, 20}, {5, 8, 2}}), 2.0),
        EqualsFrame(FromRows(
            {{10, 11, 13, 16, 20, 20}, {7, 9, 10, 10, 20, 20}, {5, 5, 8, 8, 2, 2}, {5, 5, 8, 8, 2, 2}})));
}

TEST(ResizeBilinear, DoubleOfTheTopLevelStays) {
    EXPECT_THAT(Resized(Flat(9, 5, 65535), 2.0), EqualsFrame(Flat(18, 10, 65535)));
}

TEST(ResizeBilinear, OneStaysTheSame) {
    const Frame frame = Noise(7, 5, 65535, 3);
    EXPECT_THAT(Resized(frame, 1.0), EqualsFrame(frame));
}

TEST(ResizeBilinear, ThreeInterpolatesInThirds) {
    // 0, 3.33, 6.67, then the last column; rows in the same way, 40 apart: 13.33 and 26.67.
    EXPECT_THAT(Resized(FromRows({{0, 10}, {40, 50}}), 3.0),
                EqualsFrame(FromRows({{0, 3, 6, 10, 10, 10},
                                      {13, 16, 20, 10, 10, 10},
                                      {26, 30, 33, 10, 10, 10},
                                      {40, 40, 40, 50, 50, 50},
                                      {40, 40, 40, 50, 50, 50},
                                      {40, 40, 40, 50, 50, 50}})));
}

TEST(ResizeBilinear, ThirdTakesEveryThirdPixel) {
    EXPECT_THAT(Resized(Ramp(6, 3, 0, 1, 10), 1.0 / 3), EqualsFrame(FromRows({{0, 3}})));
}

TEST(ResizeBilinear, TooSmallForOnePixelIsEmpty) {
    EXPECT_THAT(Resized(Flat(1, 1, 5), 0.5), EqualsFrame(Frame(0, 0)));
}

TEST(ResizeBilinear, NegativeScaleIsRefused) {
    const Frame frame = Flat(2, 2, 5);
    EXPECT_THROW((void)ResizeBilinear(frame.Data(), 2, 2, -1.0), std::length_error);
}

TEST(ReducedScaleGaussian, FactorOfOneIsTheGaussianItself) {
    Frame reduced = Noise(20, 15, 4095, 1);
    Frame plain = reduced;
    ReducedScaleGaussian(reduced.Data(), 20, 15, 4095, 1.5, 1);
    GaussFilterReplicate(plain.Data(), 20, 15, 4095, 1.5);
    EXPECT_THAT(reduced, EqualsFrame(plain));
}

TEST(ReducedScaleGaussian, FactorBelowOneLeavesTheFrame) {
    for (const int32_t factor : {0, -1, std::numeric_limits<int32_t>::min()}) {
        Frame frame = Noise(6, 4, 4095, 2);
        ReducedScaleGaussian(frame.Data(), 6, 4, 4095, 2.0, factor);
        EXPECT_THAT(frame, EqualsFrame(Noise(6, 4, 4095, 2))) << factor;
    }
}

// So small a sigma has the kernel 0, 1, 0, and what is left is the way down and up again: every other pixel,
// and the means between them. The last reduced row and column is repeated.
constexpr double kTinySigma = 0.02;

TEST(ReducedScaleGaussian, MultipleOfTheFactorGetsNoPadding) {
    Frame frame = FromRows({{0, 99, 8, 99}, {99, 99, 99, 99}});
    ReducedScaleGaussian(frame.Data(), 4, 2, 4095, kTinySigma, 2);
    EXPECT_THAT(frame, EqualsFrame(FromRows({{0, 0, 8, 8}, {0, 0, 8, 8}})));
}

TEST(ReducedScaleGaussian, OtherSidesArePaddedToTheNextMultiple) {
    // Padded to 4 x 4, reduced to {0 8 / 20 28}.
    Frame frame = FromRows({{0, 99, 8}, {99, 99, 99}, {20, 99, 28}});
    ReducedScaleGaussian(frame.Data(), 3, 3, 4095, kTinySigma, 2);
    EXPECT_THAT(frame, EqualsFrame(FromRows({{0, 4, 8}, {10, 14, 8}, {20, 20, 28}})));
}

TEST(ReducedScaleGaussian, ThirdsLieBetweenTheReducedPixels) {
    // Reduced to {0 10 / 20 31}; the last reduced row and column is not interpolated in either direction.
    Frame frame = Flat(6, 6, 99);
    frame.At(0, 0) = 0;
    frame.At(3, 0) = 10;
    frame.At(0, 3) = 20;
    frame.At(3, 3) = 31;
    ReducedScaleGaussian(frame.Data(), 6, 6, 4095, kTinySigma, 3);
    EXPECT_THAT(frame, EqualsFrame(FromRows({{0, 3, 6, 10, 10, 10},
                                             {6, 10, 13, 10, 10, 10},
                                             {13, 16, 20, 10, 10, 10},
                                             {20, 20, 20, 31, 31, 31},
                                             {20, 20, 20, 31, 31, 31},
                                             {20, 20, 20, 31, 31, 31}})));
}

TEST(ReducedScaleGaussian, FrameSmallerThanTheFactorTakesItsFirstPixel) {
    Frame frame = FromRows({{7, 1, 2}, {3, 4, 5}});
    ReducedScaleGaussian(frame.Data(), 3, 2, 4095, kTinySigma, 4);
    EXPECT_THAT(frame, EqualsFrame(Flat(3, 2, 7)));
}

// None of these has a kernel; going down and up alone would cost detail and smooth nothing.
TEST(ReducedScaleGaussian, SigmaWithoutAKernelLeavesTheFrame) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();
    for (const double sigma : {-2.0, -1e300, 1e9, 1e300, kInfinity, -kInfinity, kNotANumber}) {
        for (const int32_t factor : {1, 2, 3}) {
            Frame frame = Noise(6, 4, 4095, 2);
            ReducedScaleGaussian(frame.Data(), 6, 4, 4095, sigma, factor);
            EXPECT_THAT(frame, EqualsFrame(Noise(6, 4, 4095, 2))) << sigma << ' ' << factor;
        }
    }
}

// The kernel of the reduced frame counts: -0.5 alone has none, a half of it has the fixed one.
TEST(ReducedScaleGaussian, SigmaThatHasAKernelOnceReducedSmooths) {
    Frame frame = FromRows({{1000, 1000, 0, 0, 0, 0, 0, 0, 0, 0}, {0, 0, 0, 0, 0, 0, 0, 0, 0, 0}});
    // Reduced to 1000, 0, 0, 0, 0, smoothed to 400, 250, 50, 50, 250.
    ReducedScaleGaussian(frame.Data(), 10, 2, 4095, -0.5, 2);
    EXPECT_THAT(frame, EqualsFrame(FromRows({{400, 400, 250, 250, 50, 50, 50, 50, 250, 250},
                                             {400, 400, 250, 250, 50, 50, 50, 50, 250, 250}})));
}

// 49 * (1.0 / 49) is a little below 1, so nothing is left of the reduced frame and nothing is written.
TEST(ReducedScaleGaussian, ReductionToNothingLeavesTheFrame) {
    ASSERT_LT(49 * (1.0 / 49), 1.0);
    Frame frame = Noise(6, 4, 4095, 2);
    ReducedScaleGaussian(frame.Data(), 6, 4, 4095, 2.0, 49);
    EXPECT_THAT(frame, EqualsFrame(Noise(6, 4, 4095, 2)));
}

TEST(ReducedScaleGaussian, FactorBeyondAllMemoryLeavesTheFrame) {
    for (const int32_t factor : {1 << 15, 1 << 30, std::numeric_limits<int32_t>::max()}) {
        Frame frame = Noise(6, 4, 4095, 2);
        ReducedScaleGaussian(frame.Data(), 6, 4, 4095, 2.0, factor);
        EXPECT_THAT(frame, EqualsFrame(Noise(6, 4, 4095, 2))) << factor;
    }
}

// The way down and up written out step by step.
TEST(ReducedScaleGaussian, IsItsStepsAtEveryFactor) {
    for (const auto& [width, height] : {std::pair{41, 29}, {37, 50}}) {
        for (const int32_t factor : {2, 3, 5, 7, 8}) {
            const Frame frame = Noise(width, height, 4095, 8);
            const int32_t padWidth = (factor - width % factor) % factor;
            const int32_t padHeight = (factor - height % factor) % factor;
            const auto padded =
                ExtendImage(frame.Data(), width, height, padWidth, padHeight, BorderMode::BorderTrailing);
            ASSERT_TRUE(padded.has_value());
            Frame reduced = Resized(Frame(width + padWidth, height + padHeight, *padded), 1.0 / factor);
            GaussFilterReplicate(reduced.Data(), reduced.width, reduced.height, 4095, 3.0 / factor);
            const Frame enlarged = Resized(reduced, factor);
            Frame expected(width, height);
            CropImage(enlarged.Data(), expected.Data(), width + padWidth, height + padHeight, padWidth,
                      padHeight, BorderMode::BorderTrailing);
            Frame result = frame;
            ReducedScaleGaussian(result.Data(), width, height, 4095, 3.0, factor);
            EXPECT_THAT(result, EqualsFrame(expected)) << width << " x " << height << " by " << factor;
        }
    }
}

}  // namespace
}  // namespace vastrelline
