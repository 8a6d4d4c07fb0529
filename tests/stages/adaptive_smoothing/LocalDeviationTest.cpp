// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <utility>
#include <vector>

#include "stages/adaptive_smoothing/LocalDeviation.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"

namespace vastrelline {
namespace {

constexpr uint16_t kTop = kTopDeviationLevel;

Frame Levels(const Frame& frame, int32_t radius) {
    Frame levels(frame.width, frame.height);
    QuantiseDeviation({frame.Data(), frame.width, frame.height, radius, levels.Data()});
    return levels;
}

// The row means of row 1 are 6, their squares' 36; row 2 likewise. At row 1 the window holds the first alone:
// mean 2, of squares 12, so that the variance is 12 - 4. At rows 2 and 3 it holds both: 24 - 16.
TEST(LocalDeviation, MeasuresWhereTheDisplacedWindowsLie) {
    const Frame frame = Flat(3, 5, 6);
    const std::vector<double> squares(15, 36.0);
    std::vector<double> deviations(15, -7.0);
    LocalDeviation(frame.Data(), squares.data(), deviations.data(), 3, 5, 1, 1, 3);
    std::vector<double> expected(15, -7.0);
    for (const size_t middle : {4U, 7U, 10U}) expected[middle] = std::sqrt(8.0);
    EXPECT_EQ(deviations, expected);
}

TEST(LocalDeviation, NegativeVarianceCountsAsZero) {
    const Frame frame = Flat(3, 5, 6);
    const std::vector<double> squares(15, 1.0);
    std::vector<double> deviations(15, -7.0);
    LocalDeviation(frame.Data(), squares.data(), deviations.data(), 3, 5, 1, 1, 3);
    EXPECT_EQ(deviations[4], 0.0);
    EXPECT_EQ(deviations[7], 0.0);
}

// Only row 1 counts: row 2 is pushed out of the band. The variances are 2/9 of the square where all three
// pixels are alike, 200 and 800, and 3800/9 and 5600/9 between. The roots as shares of the largest: 0.5,
// 0.726483, 0.881917 and 1; of 16383 levels: 8191.5, 11901.97, 14448.4 and all.
TEST(QuantiseDeviation, LargestDeviationBecomesTheTopLevel) {
    Frame frame(9, 4);
    for (int32_t x = 0; x < 9; ++x) frame.At(x, 1) = x < 3 ? 30 : 60;
    for (int32_t x = 0; x < 9; ++x) frame.At(x, 2) = 4000;
    Frame expected(9, 4);
    const uint16_t row[] = {0, 8191, 11901, 14448, kTop, kTop, kTop, kTop, 0};
    for (int32_t y = 1; y <= 2; ++y)
        for (int32_t x = 0; x < 9; ++x) expected.At(x, y) = row[x];
    EXPECT_THAT(Levels(frame, 1), EqualsFrame(expected));
}

// The smallest frame that has a deviation at radius 3: the row means of row 3 are seen by rows 3 to 6.
TEST(QuantiseDeviation, SmallestFrameWithADeviation) {
    Frame expected(7, 10);
    for (int32_t y = 3; y <= 6; ++y) expected.At(3, y) = kTop;
    EXPECT_THAT(Levels(Flat(7, 10, 1), 3), EqualsFrame(expected));
    EXPECT_THAT(Levels(Flat(7, 9, 4095), 3), EqualsFrame(Frame(7, 9)));
    EXPECT_THAT(Levels(Flat(6, 10, 4095), 3), EqualsFrame(Frame(6, 10)));
}

TEST(QuantiseDeviation, FrameWithoutVariationGivesZeros) {
    for (const auto& [width, height] : {std::pair{20, 20}, {1, 1}, {1, 30}, {30, 1}, {2, 2}, {0, 5}, {5, 0}})
        EXPECT_THAT(Levels(Flat(width, height, 0), 3), EqualsFrame(Frame(width, height)));
}

// 65535 squared is 4294836225, in 32 signed bits -131071: no variance is above 0.
TEST(QuantiseDeviation, SquaresWrapIn32Bits) {
    EXPECT_THAT(Levels(Flat(12, 14, 65535), 3), EqualsFrame(Frame(12, 14)));
    EXPECT_THAT(Levels(Flat(12, 14, 65535), 1), EqualsFrame(Frame(12, 14)));
    // 46340 squared still fits.
    EXPECT_EQ(Levels(Flat(12, 14, 46340), 3).At(5, 5), Levels(Flat(12, 14, 1000), 3).At(5, 5));
}

TEST(QuantiseDeviation, MirroredFrameGivesMirroredLevels) {
    const Frame frame = Noise(40, 30, 4095, 9);
    EXPECT_THAT(Levels(MirrorLeftRight(frame), 3), EqualsFrame(MirrorLeftRight(Levels(frame, 3))));
}

TEST(QuantiseDeviation, MarginsStayAtZero) {
    const Frame levels = Levels(Noise(30, 24, 4095, 9), 3);
    for (int32_t y = 0; y < 24; ++y)
        for (int32_t x = 0; x < 30; ++x) {
            const bool isMargin = x < 3 || x > 26 || y < 3 || y > 20;
            EXPECT_EQ(levels.At(x, y) == 0, isMargin) << x << ", " << y;
        }
}

TEST(BlendByLevel, MixesByTheWeightOfTheLevel) {
    const std::vector<double> weights = {0.0, 1.0, 0.25, -1.5, 3.0};
    std::vector<uint16_t> pixels = {100, 100, 101, 100, 100, 1000};
    const std::vector<uint16_t> smooth = {200, 200, 200, 200, 200, 65535};
    const std::vector<uint16_t> levels = {0, 1, 2, 3, 4, 4};
    BlendByLevel({pixels.data(), smooth.data(), levels.data(), weights, 6});
    // 200; 100; 150 + 25.25; 500 - 150; -400 + 300 = -100, as 16 bits 65436; -131070 + 3000 = -128070 +
    // 131072.
    EXPECT_EQ(pixels, (std::vector<uint16_t>{200, 100, 175, 350, 65436, 3002}));
}

}  // namespace
}  // namespace vastrelline
