// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <string>

#include "operators/median/MedianWindow.h"
#include "platform/InstructionSet.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"

namespace vastrelline {
namespace {

Frame Rows(Frame frame, int32_t mask) {
    MedianRows(frame.Data(), frame.width, frame.height, mask);
    return frame;
}

Frame Columns(Frame frame, int32_t mask) {
    MedianColumns(frame.Data(), frame.width, frame.height, mask);
    return frame;
}

Frame Square(Frame frame, int32_t mask) {
    MedianSquare(frame.Data(), frame.width, frame.height, mask);
    return frame;
}

Frame SquareToBuffer(const Frame& frame, int32_t mask) {
    Frame result = Flat(frame.width, frame.height, 0xA5C3);
    MedianSquareToBuffer(frame.Data(), result.Data(), frame.width, frame.height, mask);
    return result;
}

Frame SquareRange(const Frame& frame, int32_t mask, int32_t firstRow, int32_t lastRow) {
    Frame result = Flat(frame.width, frame.height, 99);
    MedianSquareRange(frame.Data(), result.Data(), frame.width, frame.height, mask, firstRow, lastRow);
    return result;
}

struct LineCase {
    const char* name;
    int32_t mask;
    Frame row;
    Frame expected;
};

class MedianLineTest : public testing::TestWithParam<LineCase> {};

TEST_P(MedianLineTest, FiltersARowAndAColumnAlike) {
    const auto& [name, mask, row, expected] = GetParam();
    EXPECT_THAT(Rows(row, mask), EqualsFrame(expected));
    EXPECT_THAT(Columns(Frame(1, row.width, row.pixels), mask),
                EqualsFrame(Frame(1, row.width, expected.pixels)));
}

const Frame kLine = FromRows({{9, 1, 8, 2, 7, 3, 6}});

INSTANTIATE_TEST_SUITE_P(
    Masks, MedianLineTest,
    testing::Values(LineCase{"ThreeLeavesOnePixelAtEachEnd", 3, kLine, FromRows({{9, 8, 2, 7, 3, 6, 6}})},
                    LineCase{"FiveLeavesTwo", 5, kLine, FromRows({{9, 1, 7, 3, 6, 3, 6}})},
                    LineCase{"FourActsAsFive", 4, kLine, FromRows({{9, 1, 7, 3, 6, 3, 6}})},
                    LineCase{"TwoActsAsThree", 2, kLine, FromRows({{9, 8, 2, 7, 3, 6, 6}})},
                    LineCase{"LeastActsAsThree", INT_MIN, kLine, FromRows({{9, 8, 2, 7, 3, 6, 6}})},
                    LineCase{"AsWideAsTheFrameGivesTheMiddle", 7, kLine, FromRows({{9, 1, 8, 6, 7, 3, 6}})},
                    LineCase{"WiderThanTheFrameChangesNothing", 9, kLine, kLine},
                    LineCase{"LargestChangesNothing", INT_MAX, kLine, kLine},
                    LineCase{"LargestEvenChangesNothing", INT_MAX - 1, kLine, kLine},
                    LineCase{"FullRangeIsUnsigned", 3, FromRows({{0, 65535, 32768, 0, 65535}}),
                             FromRows({{0, 32768, 32768, 32768, 65535}})}),
    [](const auto& test) { return std::string(test.param.name); });

TEST(MedianRows, RowsDoNotMix) {
    EXPECT_THAT(Rows(FromRows({{1, 9, 2}, {5, 4, 4}, {7, 0, 8}}), 3),
                EqualsFrame(FromRows({{1, 2, 2}, {5, 4, 4}, {7, 7, 8}})));
}

const Frame kFive = FromRows({{11, 12, 13, 14, 15},
                              {21, 99, 23, 24, 25},
                              {31, 32, 33, 1, 35},
                              {41, 42, 43, 44, 45},
                              {51, 52, 53, 54, 55}});

// By hand: of 11 12 13 21 99 23 31 32 33 the fifth is 23, of 12 13 14 99 23 24 32 33 1 too, and so on.
TEST(MedianSquare, ThreeTakesTheFifthOfNine) {
    EXPECT_THAT(Square(kFive, 3), EqualsFrame(FromRows({{11, 12, 13, 14, 15},
                                                        {21, 23, 23, 23, 25},
                                                        {31, 33, 33, 33, 35},
                                                        {41, 42, 43, 44, 45},
                                                        {51, 52, 53, 54, 55}})));
}

// The window of the only pixel with one, (2, 2), reaches from (0, 0) to (3, 3). In order: 1 11 12 13 14 21 23
// 24 31 32 33 41 42 43 44 99; place 8 is 31.
TEST(MedianSquare, FourTakesTheNinthOfSixteenFromAnUnevenWindow) {
    Frame expected = kFive;
    expected.At(2, 2) = 31;
    EXPECT_THAT(Square(kFive, 4), EqualsFrame(expected));
    EXPECT_THAT(SquareToBuffer(kFive, 4), EqualsFrame(expected));
}

// Windows of 2 x 2, the pixel at the lower right; the third of four.
TEST(MedianSquare, TwoStaysTwo) {
    EXPECT_THAT(Square(FromRows({{1, 2, 3}, {4, 5, 6}, {7, 8, 9}}), 2),
                EqualsFrame(FromRows({{1, 2, 3}, {4, 4, 6}, {7, 8, 9}})));
}

TEST(MedianSquare, ImpulseGoesExceptNearAnEdge) {
    EXPECT_THAT(Square(Impulse(20, 9, 8, 4, 4095, 7), 5), EqualsFrame(Flat(20, 9, 7)));
    EXPECT_THAT(Square(Impulse(20, 9, 8, 1, 4095, 7), 5), EqualsFrame(Impulse(20, 9, 8, 1, 4095, 7)));
    EXPECT_THAT(Square(Impulse(20, 9, 18, 4, 4095, 7), 5), EqualsFrame(Impulse(20, 9, 18, 4, 4095, 7)));
}

TEST(MedianSquare, FlatFramesStayFlat) {
    for (const uint16_t level : {uint16_t{0}, uint16_t{4095}, uint16_t{65535}})
        for (const int32_t mask : {1, 2, 3, 4, 9, 17})
            EXPECT_THAT(Square(Flat(41, 20, level), mask), EqualsFrame(Flat(41, 20, level)));
}

TEST(MedianSquare, MirroredFrameGivesTheMirroredResultForOddMasks) {
    const Frame frame = Noise(45, 23, 4095, 3);
    for (const int32_t mask : {3, 5, 9}) {
        EXPECT_THAT(Square(MirrorLeftRight(frame), mask), EqualsFrame(MirrorLeftRight(Square(frame, mask))));
        EXPECT_THAT(Square(MirrorTopBottom(frame), mask), EqualsFrame(MirrorTopBottom(Square(frame, mask))));
    }
}

// Higher than the bands that the filter in place copies, so that windows cross from one to the next.
TEST(MedianSquare, InPlaceEqualsOutOfPlaceAcrossBands) {
    for (const int32_t mask : {1, 2, 3, 4, 9, 70}) {
        const Frame frame = Noise(80, 211, 4095, 17);
        EXPECT_THAT(Square(frame, mask), EqualsFrame(SquareToBuffer(frame, mask))) << mask;
    }
}

TEST(MedianSquare, MasksThatHaveNoWindowLeaveTheFrame) {
    const Frame frame = Noise(6, 5, 4095, 4);
    for (const int32_t mask : {INT_MIN, -3, 0, 6, 7, 1000, INT_MAX}) {
        EXPECT_THAT(Square(frame, mask), EqualsFrame(frame)) << mask;
        EXPECT_THAT(SquareToBuffer(frame, mask), EqualsFrame(frame)) << mask;
    }
}

TEST(MedianSquare, SmallestFramesAreNoObstacle) {
    for (const int32_t mask : {1, 2, 3, 4}) {
        for (const Frame& frame :
             {Frame(0, 0), Frame(0, 3), Frame(3, 0), Flat(1, 1, 9), FromRows({{3, 1, 2}}),
              Frame(1, 3, {3, 1, 2}), FromRows({{1, 2}, {3, 4}})}) {
            EXPECT_THAT(Square(frame, mask), EqualsFrame(frame));
            EXPECT_THAT(SquareToBuffer(frame, mask), EqualsFrame(frame));
        }
    }
}

TEST(MedianSquareRange, WritesTheColumnsWithWindowsOfItsRowsOnly) {
    EXPECT_THAT(SquareRange(kFive, 3, 2, 2), EqualsFrame(FromRows({{99, 99, 99, 99, 99},
                                                                   {99, 99, 99, 99, 99},
                                                                   {99, 33, 33, 33, 99},
                                                                   {99, 99, 99, 99, 99},
                                                                   {99, 99, 99, 99, 99}})));
}

TEST(MedianSquareRange, WidensSmallAndEvenMasks) {
    const Frame frame = Noise(40, 9, 4095, 5);
    EXPECT_THAT(SquareRange(frame, 4, 2, 6), EqualsFrame(SquareRange(frame, 5, 2, 6)));
    EXPECT_THAT(SquareRange(frame, INT_MIN, 1, 7), EqualsFrame(SquareRange(frame, 3, 1, 7)));
}

TEST(MedianSquareRange, RowsWithoutAWindowAreNotWritten) {
    EXPECT_THAT(SquareRange(kFive, 3, INT_MIN, INT_MAX), EqualsFrame(SquareRange(kFive, 3, 1, 3)));
    EXPECT_THAT(SquareRange(kFive, 3, 3, 2), EqualsFrame(Flat(5, 5, 99)));
}

TEST(MedianSquareToBuffer, ThreeByThreeIsItsMaskThree) {
    const Frame frame = Noise(50, 12, 4095, 6);
    Frame result = Flat(50, 12, 1);
    Median3x3ToBuffer(frame.Data(), result.Data(), 50, 12);
    EXPECT_THAT(result, EqualsFrame(SquareToBuffer(frame, 3)));
    EXPECT_THAT(result, EqualsFrame(Square(frame, 3)));
}

// Equal pixels are the slow case of sorting: with the plain forms asked for, such windows go to the
// histogram.
TEST(MedianWindow, PlainFormsDoNotHangOnLargeFlatWindows) {
    const ScopedInstructionSet limit(InstructionSet::Reference);
    EXPECT_THAT(Square(Impulse(230, 230, 115, 115, 9, 5), 201), EqualsFrame(Flat(230, 230, 5)));
}

TEST(WidenMedianMask, GivesOddMasksFromThreeOn) {
    EXPECT_EQ(3, WidenMedianMask(INT_MIN));
    EXPECT_EQ(3, WidenMedianMask(0));
    EXPECT_EQ(3, WidenMedianMask(3));
    EXPECT_EQ(5, WidenMedianMask(4));
    EXPECT_EQ(INT_MAX, WidenMedianMask(INT_MAX - 1));
    EXPECT_EQ(INT_MAX, WidenMedianMask(INT_MAX));
}

}  // namespace
}  // namespace vastrelline
