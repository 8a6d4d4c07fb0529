// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "comparison/PairFigures.h"

namespace vastrelline {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(ComparePixels, EqualFramesHaveNoRatio) {
    const PairFigures figures = ComparePixels({2, 1, {7, 4095}}, {2, 1, {7, 4095}}, 0);
    EXPECT_EQ(figures.pixels, 2U);
    EXPECT_EQ(figures.count, 0U);
    EXPECT_EQ(figures.beyond, 0U);
    EXPECT_EQ(figures.peak, 4095);
    EXPECT_EQ(figures.meanSquare, 0.0);
    EXPECT_FALSE(figures.psnr.has_value());
    EXPECT_THAT(figures.classes, IsEmpty());
}

// Differences 1, 2, 3, 4, 5 and three equal pixels: squares 1 + 4 + 9 + 16 + 25 = 55, over 8 pixels.
TEST(ComparePixels, CountsByToleranceAndSize) {
    const Frame first{8, 1, {10, 10, 10, 10, 10, 10, 10, 10}};
    const Frame second{8, 1, {11, 8, 13, 6, 15, 10, 10, 10}};
    const PairFigures exact = ComparePixels(first, second, 0);
    EXPECT_EQ(exact.count, 5U);
    EXPECT_EQ(exact.beyond, 5U);
    EXPECT_EQ(exact.largest, 5);
    EXPECT_EQ(exact.largestPlace, (PixelDifference{4, 0, 10, 15}));
    EXPECT_THAT(exact.classes, ElementsAre(DifferenceClass{1, 1, 1}, DifferenceClass{2, 2, 1},
                                           DifferenceClass{3, 4, 2}, DifferenceClass{5, 8, 1}));
    EXPECT_DOUBLE_EQ(exact.meanSquare, 6.875);
    EXPECT_EQ(ComparePixels(first, second, 3).beyond, 2U);
    EXPECT_EQ(ComparePixels(first, second, 5).beyond, 0U);
    EXPECT_EQ(ComparePixels(first, second, 65535).beyond, 0U);
}

// Mean square 100, peak 255: 10 log10(650.25) = 28.130804.
TEST(ComparePixels, TellsTheRatioOfPeakAndNoise) {
    const PairFigures figures = ComparePixels({2, 1, {100, 200}}, {2, 1, {110, 190}}, 0);
    EXPECT_EQ(figures.peak, 255);
    EXPECT_DOUBLE_EQ(figures.meanSquare, 100.0);
    ASSERT_TRUE(figures.psnr.has_value());
    EXPECT_NEAR(*figures.psnr, 28.130804, 1e-6);
}

// All of 16 bits apart: as much noise as signal.
TEST(ComparePixels, LargestDifferenceHasRoom) {
    const PairFigures figures = ComparePixels({1, 1, {0}}, {1, 1, {65535}}, 0);
    EXPECT_EQ(figures.largest, 65535);
    EXPECT_EQ(figures.classes.back(), (DifferenceClass{32769, 65536, 1}));
    EXPECT_NEAR(*figures.psnr, 0.0, 1e-12);
}

}  // namespace
}  // namespace vastrelline
