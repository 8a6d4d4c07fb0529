// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "sensor/Rotation.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"

namespace vastrelline {
namespace {

constexpr int32_t kLowest = std::numeric_limits<int32_t>::min();
constexpr int32_t kHighest = std::numeric_limits<int32_t>::max();

// The turned frame, with the size that it then has.
Frame Turned(Frame frame, int32_t angle) {
    EXPECT_EQ(RotateBuffer(frame.Data(), frame.width, frame.height, angle), 1);
    if (angle != 180) std::swap(frame.width, frame.height);
    return frame;
}

Frame Flipped(Frame frame, int32_t mode) {
    EXPECT_EQ(FlipBuffer(frame.Data(), frame.width, frame.height, mode), 1);
    return frame;
}

Frame SixPixels() { return FromRows({{1, 2, 3}, {4, 5, 6}}); }

TEST(RotateBuffer, TurnsAThreeByTwoFrame) {
    EXPECT_THAT(Turned(SixPixels(), 90), EqualsFrame(FromRows({{4, 1}, {5, 2}, {6, 3}})));
    EXPECT_THAT(Turned(SixPixels(), -90), EqualsFrame(FromRows({{3, 6}, {2, 5}, {1, 4}})));
    EXPECT_THAT(Turned(SixPixels(), 270), EqualsFrame(FromRows({{3, 6}, {2, 5}, {1, 4}})));
    EXPECT_THAT(Turned(SixPixels(), 180), EqualsFrame(FromRows({{6, 5, 4}, {3, 2, 1}})));
}

TEST(RotateBuffer, OneRowBecomesOneColumn) {
    EXPECT_THAT(Turned(FromRows({{1, 2, 3}}), 90), EqualsFrame(FromRows({{1}, {2}, {3}})));
    EXPECT_THAT(Turned(FromRows({{1, 2, 3}}), -90), EqualsFrame(FromRows({{3}, {2}, {1}})));
    EXPECT_THAT(Turned(FromRows({{1}, {2}, {3}}), 90), EqualsFrame(FromRows({{3, 2, 1}})));
    EXPECT_THAT(Turned(FromRows({{1}, {2}, {3}}), -90), EqualsFrame(FromRows({{1, 2, 3}})));
}

TEST(RotateBuffer, RefusesOtherAnglesAndLeavesTheBuffer) {
    for (const int32_t angle : {0, 1, 3, 45, 91, -180, -270, 360, 450, kLowest, kHighest}) {
        SCOPED_TRACE(angle);
        Frame frame = SixPixels();
        EXPECT_EQ(RotateBuffer(frame.Data(), 3, 2, angle), 0);
        EXPECT_THAT(frame, EqualsFrame(SixPixels()));
    }
}

// Larger than any block that a turn may go in, with sides that divide into none.
class RotationSizesTest : public testing::TestWithParam<std::pair<int32_t, int32_t>> {
protected:
    Frame frame_ = Noise(GetParam().first, GetParam().second, 65535, 17);
};

TEST_P(RotationSizesTest, QuarterTurnsPutEachPixelInItsPlace) {
    const Frame clockwise = Turned(frame_, 90);
    const Frame counterclockwise = Turned(frame_, -90);
    Frame expectedClockwise(frame_.height, frame_.width);
    Frame expectedCounterclockwise(frame_.height, frame_.width);
    for (int32_t y = 0; y < frame_.height; ++y)
        for (int32_t x = 0; x < frame_.width; ++x) {
            // The top row becomes the last column, or the first one from the bottom up.
            expectedClockwise.At(frame_.height - 1 - y, x) = frame_.At(x, y);
            expectedCounterclockwise.At(y, frame_.width - 1 - x) = frame_.At(x, y);
        }
    EXPECT_THAT(clockwise, EqualsFrame(expectedClockwise));
    EXPECT_THAT(counterclockwise, EqualsFrame(expectedCounterclockwise));
}

TEST_P(RotationSizesTest, FourQuarterTurnsGiveTheFrameBack) {
    for (const int32_t angle : {90, -90, 270})
        EXPECT_THAT(Turned(Turned(Turned(Turned(frame_, angle), angle), angle), angle), EqualsFrame(frame_));
}

TEST_P(RotationSizesTest, TwoQuarterTurnsAreAHalfTurn) {
    EXPECT_THAT(Turned(Turned(frame_, 90), 90), EqualsFrame(Turned(frame_, 180)));
    EXPECT_THAT(Turned(Turned(frame_, -90), -90), EqualsFrame(Turned(frame_, 180)));
    EXPECT_THAT(Turned(Turned(frame_, 180), 180), EqualsFrame(frame_));
}

TEST_P(RotationSizesTest, FlipsMirrorAndFlippedTwiceGiveTheFrameBack) {
    EXPECT_THAT(Flipped(frame_, 1), EqualsFrame(MirrorLeftRight(frame_)));
    EXPECT_THAT(Flipped(frame_, 2), EqualsFrame(MirrorTopBottom(frame_)));
    EXPECT_THAT(Flipped(Flipped(frame_, 1), 1), EqualsFrame(frame_));
    EXPECT_THAT(Flipped(Flipped(frame_, 2), 2), EqualsFrame(frame_));
}

TEST_P(RotationSizesTest, BothFlipsAreAHalfTurn) {
    EXPECT_THAT(Flipped(Flipped(frame_, 1), 2), EqualsFrame(Turned(frame_, 180)));
}

INSTANTIATE_TEST_SUITE_P(Sizes, RotationSizesTest,
                         testing::Values(std::pair{0, 0}, std::pair{0, 3}, std::pair{4, 0}, std::pair{1, 1},
                                         std::pair{1, 40}, std::pair{65, 1}, std::pair{3, 2},
                                         std::pair{32, 32}, std::pair{31, 64}, std::pair{33, 97},
                                         std::pair{70, 65}),
                         [](const auto& test) {
                             return std::to_string(test.param.first) + "x" +
                                    std::to_string(test.param.second);
                         });

TEST(FlipBuffer, MirrorsRowsOrTheirOrder) {
    EXPECT_THAT(Flipped(SixPixels(), 1), EqualsFrame(FromRows({{3, 2, 1}, {6, 5, 4}})));
    EXPECT_THAT(Flipped(SixPixels(), 2), EqualsFrame(FromRows({{4, 5, 6}, {1, 2, 3}})));
}

TEST(FlipBuffer, MiddleRowAndColumnOfOddSizesStay) {
    const Frame frame = FromRows({{1, 2, 3}, {4, 5, 6}, {7, 8, 9}});
    EXPECT_THAT(Flipped(frame, 1), EqualsFrame(FromRows({{3, 2, 1}, {6, 5, 4}, {9, 8, 7}})));
    EXPECT_THAT(Flipped(frame, 2), EqualsFrame(FromRows({{7, 8, 9}, {4, 5, 6}, {1, 2, 3}})));
}

TEST(FlipBuffer, OtherModesDoNothingAndAreNoFailure) {
    for (const int32_t mode : {0, 3, 4, -1, kLowest, kHighest})
        EXPECT_THAT(Flipped(SixPixels(), mode), EqualsFrame(SixPixels()));
}

struct RotateAndFlipCase {
    const char* name;
    int32_t rotation;
    int32_t flip;
    std::vector<uint16_t> pixels;  // of the 3 by 2 frame, in the order of memory
};

class RotateAndFlipTest : public testing::TestWithParam<RotateAndFlipCase> {};

TEST_P(RotateAndFlipTest, TurnsAndThenMirrorsWithTheSizesGiven) {
    Frame frame = SixPixels();
    EXPECT_EQ(RotateAndFlip(frame.Data(), 3, 2, GetParam().rotation, GetParam().flip), 1);
    EXPECT_EQ(frame.pixels, GetParam().pixels);
}

// After a quarter turn the memory reads 4 1 / 5 2 / 6 3 or 3 6 / 2 5 / 1 4, yet it is mirrored as two rows of
// three.
INSTANTIATE_TEST_SUITE_P(
    Codes, RotateAndFlipTest,
    testing::Values(RotateAndFlipCase{"NothingToDo", 0, 0, {1, 2, 3, 4, 5, 6}},
                    RotateAndFlipCase{"LeftToRight", 0, 1, {3, 2, 1, 6, 5, 4}},
                    RotateAndFlipCase{"TopToBottom", 0, 2, {4, 5, 6, 1, 2, 3}},
                    RotateAndFlipCase{"Both", 0, 3, {6, 5, 4, 3, 2, 1}},
                    RotateAndFlipCase{"Clockwise", 1, 0, {4, 1, 5, 2, 6, 3}},
                    RotateAndFlipCase{"ClockwiseLeftToRight", 1, 1, {5, 1, 4, 3, 6, 2}},
                    RotateAndFlipCase{"ClockwiseTopToBottom", 1, 2, {2, 6, 3, 4, 1, 5}},
                    RotateAndFlipCase{"ClockwiseBoth", 1, 3, {3, 6, 2, 5, 1, 4}},
                    RotateAndFlipCase{"Counterclockwise", 2, 0, {3, 6, 2, 5, 1, 4}},
                    RotateAndFlipCase{"CounterclockwiseLeftToRight", 2, 1, {2, 6, 3, 4, 1, 5}},
                    RotateAndFlipCase{"CounterclockwiseTopToBottom", 2, 2, {5, 1, 4, 3, 6, 2}},
                    RotateAndFlipCase{"CounterclockwiseBoth", 2, 3, {4, 1, 5, 2, 6, 3}},
                    RotateAndFlipCase{"HalfTurn", 3, 0, {6, 5, 4, 3, 2, 1}},
                    RotateAndFlipCase{"HalfTurnLeftToRight", 3, 1, {4, 5, 6, 1, 2, 3}},
                    RotateAndFlipCase{"HalfTurnTopToBottom", 3, 2, {3, 2, 1, 6, 5, 4}},
                    RotateAndFlipCase{"TwoHalfTurns", 3, 3, {1, 2, 3, 4, 5, 6}},
                    RotateAndFlipCase{"RotationAboveTheCodesIsNone", 4, 1, {3, 2, 1, 6, 5, 4}},
                    RotateAndFlipCase{"AnglesAreNoCodes", 90, 180, {1, 2, 3, 4, 5, 6}},
                    RotateAndFlipCase{"NegativeCodesAreNone", -1, -3, {1, 2, 3, 4, 5, 6}},
                    RotateAndFlipCase{"LargestCodesAreNone", kHighest, kHighest, {1, 2, 3, 4, 5, 6}},
                    RotateAndFlipCase{"LowestCodesAreNone", kLowest, kLowest, {1, 2, 3, 4, 5, 6}}),
    [](const auto& test) { return std::string(test.param.name); });

TEST(RotateAndFlip, RefusesANullFrame) {
    EXPECT_EQ(RotateAndFlip(nullptr, 3, 2, 0, 0), 0);
    EXPECT_EQ(RotateAndFlip(nullptr, 0, 0, 1, 1), 0);
}

TEST(RotateAndFlip, SizesWithoutPixelsAreNoFailure) {
    const std::vector<std::pair<int32_t, int32_t>> sizes = {
        {0, 0}, {0, 5}, {5, 0}, {-3, 2}, {3, -2}, {-3, -2}, {kLowest, kHighest}, {kLowest, kLowest}};
    for (const auto& [width, height] : sizes) {
        for (int32_t rotation = 0; rotation <= 3; ++rotation)
            for (int32_t flip = 0; flip <= 3; ++flip) {
                Frame frame = Flat(1, 1, 7);
                EXPECT_EQ(RotateAndFlip(frame.Data(), width, height, rotation, flip), 1);
                EXPECT_EQ(frame.At(0, 0), 7);
            }
    }
}

}  // namespace
}  // namespace vastrelline
